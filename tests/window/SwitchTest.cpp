#include "QkDlg/QkFlatToggleBtn.h"
#include "support/Paper.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kSwitch = 101;

class SwitchTest : public WindowTest {
protected:
    SwitchTest() {
        switch_.Attach(window_);
        drain();
    }

    [[nodiscard]] bool isOn() const {
        return IsDlgButtonChecked(host_.window(), kSwitch) == BST_CHECKED;
    }

    /// The switch shows the state: caption, thumb at its end, nothing left to paint.
    void expectShown(bool on) {
        EXPECT_EQ(isOn(), on);
        EXPECT_EQ(textOf(window_), on ? L"On" : L"Off");
        UpdateWindow(window_);
        EXPECT_THAT(onScreen(window_), looksLike(printed(window_)));
        const RECT& thumb = switch_.GetThumb();
        const RECT& track = switch_.GetTrack();
        EXPECT_EQ(on ? thumb.right : thumb.left, on ? track.right : track.left);
    }

    [[nodiscard]] POINT onTrack(int percent) const {
        const RECT& track = switch_.GetTrack();
        return {track.left + (track.right - 1 - track.left) * percent / 100,
                (track.top + track.bottom) / 2};
    }

    HostDialog host_{{.width = scaled(300), .height = scaled(200)}};
    HWND window_ = host_.add(L"button", L"caption", BS_AUTOCHECKBOX | WS_TABSTOP,
                             scaledArea(20, 20, 150, 40), kSwitch);
    QkFlatToggleBtn switch_{kSwitch};
};

TEST_F(SwitchTest, TakesItsSizeAndItsTexts) {
    RECT units{0, 0, 44, 8};
    MapDialogRect(host_.window(), &units);
    const Box client = clientBox(window_);
    EXPECT_EQ(client.right, units.right + 2 * scaled(2));
    EXPECT_EQ(client.bottom, units.bottom + 2 * scaled(2));
    expectShown(false);
    CheckDlgButton(host_.window(), kSwitch, BST_CHECKED);
    expectShown(true);
    EXPECT_TRUE(onScreen(window_).contains(RGB(27, 118, 192)));
    CheckDlgButton(host_.window(), kSwitch, BST_UNCHECKED);
    expectShown(false);
}

TEST_F(SwitchTest, ClickTogglesSilentlyAndTwoQuickClicksTwice) {
    click(window_);
    expectShown(true);
    doubleClick(window_);
    expectShown(true);
    click(window_);
    expectShown(false);
    EXPECT_EQ(host_.timesHeard(command(kSwitch, BN_CLICKED)), 0);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(SwitchTest, ClickWithATremblingHandStillCounts) {
    const POINT at = onTrack(50);
    moveTo(window_, at.x, at.y);
    press();
    moveTo(window_, at.x + 1, at.y);
    InvalidateRect(window_, nullptr, FALSE);
    drain();
    release();
    expectShown(true);
}

TEST_F(SwitchTest, SpaceBarGoesThroughTheStandardCheckBox) {
    focus(window_);
    keyTap(VK_SPACE);
    EXPECT_FALSE(GetUpdateRect(window_, nullptr, FALSE)) << "shown at once";
    expectShown(true);
    EXPECT_EQ(host_.timesHeard(command(kSwitch, BN_CLICKED)), 1);
}

TEST_F(SwitchTest, ClickByMessageTellsTheHostAndHeedsNoMouse) {
    const POINT right = onTrack(95);
    moveTo(window_, right.x, right.y);
    for (const bool on : {true, false}) {
        InvalidateRect(window_, nullptr, FALSE);
        SendMessageW(window_, BM_CLICK, 0, 0);
        expectShown(on);
    }
    EXPECT_EQ(host_.timesHeard(command(kSwitch, BN_CLICKED)), 2);
}

TEST_F(SwitchTest, PressEndsWhereTheHostTakesTheFocusBack) {
    const HWND edit = host_.add(L"edit", L"", WS_TABSTOP, scaledArea(20, 100, 100, 24), 7);
    focus(edit);
    host_.onMessage([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && wParam == MAKEWPARAM(7, EN_KILLFOCUS))
            SetFocus(edit);
        return std::nullopt;
    });
    click(window_);
    EXPECT_EQ(GetCapture(), nullptr);
    expectShown(false);
}

TEST_F(SwitchTest, DragSetsTheSideWhereTheThumbIsLetGo) {
    drag(window_, onTrack(10), onTrack(90));
    expectShown(true);
    drag(window_, onTrack(90), onTrack(75));
    expectShown(true);
    drag(window_, onTrack(90), onTrack(20));
    expectShown(false);
}

TEST_F(SwitchTest, DragBeyondTheEndsStopsThere) {
    drag(window_, onTrack(10), onTrack(200));
    expectShown(true);
    drag(window_, onTrack(90), onTrack(-100));
    expectShown(false);
    const POINT left = onTrack(10);
    moveTo(window_, left.x, left.y);
    press();
    const POINT right = onTrack(200);
    moveTo(window_, right.x, right.y);
    EXPECT_EQ(switch_.GetThumb().right, switch_.GetTrack().right);
    EXPECT_TRUE(onScreen(window_).contains(0xFF8080)) << "the colour of dragging";
    release();
    expectShown(true);
}

TEST_F(SwitchTest, CaptureTakenInTheMiddleLeavesTheState) {
    const POINT left = onTrack(10);
    moveTo(window_, left.x, left.y);
    press();
    const POINT right = onTrack(90);
    moveTo(window_, right.x, right.y);
    SetCapture(host_.window());
    expectShown(false);
    ReleaseCapture();
    release();
    expectShown(false);
}

TEST_F(SwitchTest, DisabledIsGreyInAllItsParts) {
    CheckDlgButton(host_.window(), kSwitch, BST_CHECKED);
    EnableWindow(window_, FALSE);
    const Image shown = onScreen(window_);
    EXPECT_TRUE(shown.contains(RGB(0xE0, 0xE0, 0xE0)));
    EXPECT_TRUE(shown.contains(RGB(0xA6, 0xA6, 0xA6)));
    EXPECT_FALSE(shown.contains(RGB(27, 118, 192)));
    EXPECT_FALSE(shown.contains(RGB(0, 0, 0)));
}

TEST_F(SwitchTest, HighContrastTakesTheWindowColour) {
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 64)}});
    const HighContrast contrast;
    InvalidateRect(window_, nullptr, FALSE);
    drain();
    const Image shown = onScreen(window_);
    EXPECT_EQ(shown.at(0, 0), RGB(0, 0, 64));
    EXPECT_TRUE(shown.contains(RGB(255, 255, 191))) << "frame and thumb are its inverse";
}

TEST_F(SwitchTest, PaintingLeaksNothing) {
    const Paper paper(window_);
    EXPECT_TRUE(doesNotLeak(paintRounds(), [&] { switch_.Paint(paper.dc()); }));
    EXPECT_TRUE(doesNotLeak(paintRounds(), [&] {
        CheckDlgButton(host_.window(), kSwitch, isOn() ? BST_UNCHECKED : BST_CHECKED);
    }));
}

}  // namespace
