#include "QkDlg/QkFlatToggleBtn.h"
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

    void moveToTrack(int percent) const {
        const POINT at = onTrack(percent);
        moveTo(window_, at.x, at.y);
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
    EXPECT_TRUE(onScreen(window_).contains(kAccent));
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

TEST_F(SwitchTest, SpaceBarAndClickByMessageTellTheHostAndHeedNoMouse) {
    focus(window_);
    keyTap(VK_SPACE);
    EXPECT_FALSE(GetUpdateRect(window_, nullptr, FALSE)) << "shown at once";
    expectShown(true);
    moveToTrack(95);
    for (const bool on : {false, true}) {
        InvalidateRect(window_, nullptr, FALSE);
        SendMessageW(window_, BM_CLICK, 0, 0);
        expectShown(on);
    }
    EXPECT_EQ(host_.timesHeard(command(kSwitch, BN_CLICKED)), 3);
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

TEST_F(SwitchTest, DragSetsTheSideWhereTheThumbIsLetGoAndStopsAtTheEnds) {
    const struct {
        int from, to;
        bool on;
    } drags[] = {
        {10, 90, true}, {90, 75, true}, {90, 20, false}, {10, 200, true}, {90, -99, false}};
    for (const auto& [from, to, on] : drags) {
        drag(window_, onTrack(from), onTrack(to));
        expectShown(on);
    }
    moveToTrack(10);
    press();
    moveToTrack(200);
    EXPECT_EQ(switch_.GetThumb().right, switch_.GetTrack().right);
    EXPECT_TRUE(onScreen(window_).contains(0xFF8080)) << "the colour of dragging";
    SetCapture(host_.window());
    expectShown(false);
    ReleaseCapture();
    release();
    expectShown(false);

    moveToTrack(50);
    press();
    const POINT at = onTrack(50);
    moveTo(window_, at.x + 1, at.y);
    InvalidateRect(window_, nullptr, FALSE);
    drain();
    release();
    EXPECT_TRUE(isOn()) << "a trembling hand still clicks";
}

TEST_F(SwitchTest, DisabledIsGreyAndHighContrastTakesTheWindowColour) {
    CheckDlgButton(host_.window(), kSwitch, BST_CHECKED);
    EnableWindow(window_, FALSE);
    const Image grey = onScreen(window_);
    EXPECT_TRUE(grey.contains(RGB(0xA6, 0xA6, 0xA6)));
    EXPECT_FALSE(grey.contains(kAccent) || grey.contains(RGB(0, 0, 0)));
    EnableWindow(window_, TRUE);
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 64)}});
    const HighContrast contrast;
    InvalidateRect(window_, nullptr, FALSE);
    drain();
    const Image shown = onScreen(window_);
    EXPECT_EQ(shown.at(0, 0), RGB(0, 0, 64));
    EXPECT_TRUE(shown.contains(RGB(255, 255, 191))) << "frame and thumb are its inverse";
}

}  // namespace
