#include <algorithm>
#include <array>
#include <memory>

#include "QkDlg/QkFlatDropBtn.h"
#include "QkDlg/QkFlatSettingsBtn.h"
#include "QkDlg/QkFlatSplitBtn.h"
#include "support/Paper.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kButton = 101;

constexpr COLORREF kFace = RGB(246, 246, 246);
constexpr COLORREF kHotBorder = RGB(126, 180, 234);

class CompoundButtonTest : public WindowTest {
protected:
    template <typename Control>
    HWND addFlat(DWORD style, const wchar_t* text) {
        const HWND window =
            host_.add(L"button", text, style | WS_TABSTOP, scaledArea(20, 20, 120, 40), kButton);
        if constexpr (!std::is_void_v<Control>) {
            control_ = std::make_unique<Control>(kButton);
            control_->Attach(window);
            drain();
        }
        return window;
    }

    /// What the parent hears of a click on the face and of one on the arrow.
    template <typename Control>
    HeardList heardFromClicks() {
        const HWND window = addFlat<Control>(BS_SPLITBUTTON, L"Split");
        host_.forget();
        click(window, scaled(20), scaled(20));
        click(window, scaled(120) - scaled(7), scaled(20));
        HeardList heard = host_.heard();
        DestroyWindow(window);
        control_.reset();
        return heard;
    }

    static bool hasSplitButtons() {
        return FindResourceW(nullptr, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)) != nullptr;
    }

    static Box darkPart(const Image& image) {
        return image.boundingBoxOf([](COLORREF colour) { return GetRValue(colour) < 0xA0; })
            .value_or(Box());
    }

    HostDialog host_{{.width = scaled(300), .height = scaled(200)}};
    std::unique_ptr<QkFlatBtn> control_;
};

TEST_F(CompoundButtonTest, FaceClicksAndArrowDropsDownAsThePlainButtonDoes) {
    const HeardList plain = heardFromClicks<void>();
    EXPECT_EQ(heardFromClicks<QkFlatSplitBtn>(), plain);
    EXPECT_EQ(heardFromClicks<QkFlatDropBtn>(), plain);
    const auto count = [&](const Heard& what) {
        return std::count(plain.begin(), plain.end(), what);
    };
    EXPECT_GE(count(command(kButton, BN_CLICKED)), 1);
    if (hasSplitButtons()) {
        EXPECT_EQ(count(command(kButton, BN_CLICKED)), 1);
        EXPECT_EQ(count(notified(kButton, BCN_DROPDOWN)), 1);
    }
}

TEST_F(CompoundButtonTest, ArrowIsNotLeftPressedByItsMenu) {
    if (!hasSplitButtons())
        GTEST_SKIP() << "split buttons need version 6 of the common controls";
    const HWND window = addFlat<QkFlatDropBtn>(BS_SPLITBUTTON, L"Drop");
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, 1, L"Item");
    int opened = 0;
    host_.onMessage([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const bool drops =
            message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == BCN_DROPDOWN;
        if (!drops)
            return std::nullopt;
        ++opened;
        // The menu takes the mouse; the release that follows goes to it.
        PostMessageW(host_.window(), WM_CANCELMODE, 0, 0);
        TrackPopupMenu(menu, 0, 0, 0, 0, host_.window(), nullptr);
        return 0;
    });
    click(window, scaled(120) - scaled(7), scaled(20));
    moveAway();
    EXPECT_EQ(onScreen(window).at(1, 1), kFace);
    EXPECT_GE(opened, 1);
    DestroyMenu(menu);
}

TEST_F(CompoundButtonTest, ArrowStandsAtTheRightOfTheCaption) {
    const HWND window = addFlat<QkFlatSplitBtn>(BS_SPLITBUTTON, L"");
    SetWindowTextW(window, L"i");
    drain();
    const Image shown = onScreen(window);
    constexpr std::array<int, 8> edges{10, 13, 15, 20, 25, 30, 40, 50};
    const int edge = edges.at(dpiBucket(QkDlgTest::screenDpi()));
    const int arrowLeft = shown.width() - edge - scaled(6);
    const Box arrow = darkPart(shown.part({arrowLeft, 2, shown.width() - 2, shown.height() - 2}));
    EXPECT_LE(arrow.right, edge) << "the padding stays free";
    EXPECT_GT(arrow.right, edge / 2);
    EXPECT_EQ(shown.part({arrowLeft - scaled(6), 2, arrowLeft, 20}).count(kFace), scaled(6) * 18);
}

TEST_F(CompoundButtonTest, DisabledArrowIsPaler) {
    const HWND window = addFlat<QkFlatSplitBtn>(BS_SPLITBUTTON, L"");
    const Box before = darkPart(onScreen(window));
    EXPECT_GT(before.right, before.left);
    EnableWindow(window, FALSE);
    EXPECT_EQ(darkPart(onScreen(window)), Box());
}

// The constructor runs before there is a window to ask or tell. Deliberate.
TEST_F(CompoundButtonTest, DropStyleIsKeptInTheObjectAndNotInTheStandardControl) {
    EXPECT_EQ(QkFlatSplitBtn(1).GetSplitStyle(), 0u);
    EXPECT_EQ(QkFlatDropBtn(1).GetSplitStyle(), UINT32{BCSS_NOSPLIT});
    const auto styleOf = [](HWND window) {
        BUTTON_SPLITINFO info{};
        info.mask = BCSIF_STYLE;
        SendMessageW(window, BCM_GETSPLITINFO, 0, reinterpret_cast<LPARAM>(&info));
        return info.uSplitStyle;
    };
    const HWND window = addFlat<void>(BS_SPLITBUTTON, L"Drop");
    const UINT plain = styleOf(window);
    QkFlatDropBtn drop(kButton);
    drop.Attach(window);
    EXPECT_EQ(styleOf(window), plain);
}

TEST_F(CompoundButtonTest, SettingsButtonTakesTheSizeOfItsGearAboutItsCentre) {
    const HWND window = addFlat<QkFlatSettingsBtn>(BS_PUSHBUTTON, L"");
    constexpr std::array<int, 8> edges{16, 20, 24, 32, 40, 48, 64, 80};
    const int edge = edges.at(dpiBucket(QkDlgTest::screenDpi())) + scaled(4);
    EXPECT_EQ(clientBox(window), Box(0, 0, edge, edge));
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(HWND_DESKTOP, host_.window(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_NEAR(place.left + place.right, 2 * scaled(20) + scaled(120), 2);
    EXPECT_NEAR(place.top + place.bottom, 2 * scaled(20) + scaled(40), 2);
    const Box gear = darkPart(onScreen(window));
    EXPECT_NEAR(gear.left + gear.right, edge, 2);
}

TEST_F(CompoundButtonTest, SettingsButtonHasABorderOnlyUnderTheMouse) {
    const HWND window = addFlat<QkFlatSettingsBtn>(BS_PUSHBUTTON, L"");
    EXPECT_EQ(onScreen(window).at(0, 5), kFace);
    moveTo(window);
    EXPECT_EQ(onScreen(window).at(0, 5), kHotBorder);
    moveAway();
    EXPECT_EQ(onScreen(window).at(0, 5), kFace);
}

TEST_F(CompoundButtonTest, SettingsButtonKeepsAGearThroughHighContrast) {
    const HWND window = addFlat<QkFlatSettingsBtn>(BS_PUSHBUTTON, L"");
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 0)}, {COLOR_BTNFACE, RGB(0, 0, 0)}});
    {
        const HighContrast contrast;
        control_->Refresh();
        drain();
        EXPECT_TRUE(onScreen(window).contains(RGB(255, 255, 255)));
    }
    control_->Refresh();
    drain();
    EXPECT_NE(darkPart(onScreen(window)), Box());
}

TEST_F(CompoundButtonTest, PaintingLeaksNothing) {
    const HWND window = addFlat<QkFlatDropBtn>(BS_SPLITBUTTON, L"Drop");
    QkFlatSettingsBtn settings(2);
    settings.Attach(host_.add(L"button", L"", 0, scaledArea(20, 80, 60, 40), 2));
    const Paper paper(window);
    EXPECT_TRUE(doesNotLeak(paintRounds(), [&] {
        control_->Paint(paper.dc());
        settings.Paint(paper.dc());
    }));
    bool on = false;
    EXPECT_TRUE(doesNotLeak(paintRounds() / 4, [&] {
        for (const HWND button : {window, settings.GetWindow()})
            EnableWindow(button, on ? TRUE : FALSE);
        on = !on;
    }));
}

}  // namespace
