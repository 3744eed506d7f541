#include <array>
#include <memory>

#include "QkDlg/QkFlatDropBtn.h"
#include "QkDlg/QkFlatSettingsBtn.h"
#include "QkDlg/QkFlatSplitBtn.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kButton = 101;

constexpr COLORREF kFace = RGB(246, 246, 246);
constexpr COLORREF kHotBorder = RGB(126, 180, 234);

class CompoundButtonTest : public WindowTest {
protected:
    HWND addPlain(DWORD style, const wchar_t* text) {
        return host_.add(L"button", text, style, scaledArea(20, 20, 120, 40), kButton);
    }
    template <typename Control>
    HWND addFlat(DWORD style, const wchar_t* text) {
        const HWND window = addPlain(style, text);
        control_ = std::make_unique<Control>(kButton);
        control_->Attach(window);
        drain();
        return window;
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

TEST_F(CompoundButtonTest, ArrowIsNotLeftPressedByItsMenu) {
    if (!hasSplitButtons())
        GTEST_SKIP() << "split buttons need version 6 of the common controls";
    const HWND window = addFlat<QkFlatDropBtn>(BS_SPLITBUTTON, L"Drop");
    const std::unique_ptr<HMENU__, decltype(&DestroyMenu)> menu(CreatePopupMenu(), &DestroyMenu);
    AppendMenuW(menu.get(), MF_STRING, 1, L"Item");
    int opened = 0;
    host_.onMessage([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const bool drops =
            message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == BCN_DROPDOWN;
        if (!drops)
            return std::nullopt;
        ++opened;
        // The menu takes the mouse; the release that follows goes to it.
        PostMessageW(host_.window(), WM_CANCELMODE, 0, 0);
        TrackPopupMenu(menu.get(), 0, 0, 0, 0, host_.window(), nullptr);
        return 0;
    });
    click(window, scaled(120) - scaled(7), scaled(20));
    moveAway();
    EXPECT_EQ(onScreen(window).at(1, 1), kFace);
    EXPECT_GE(opened, 1);
}

TEST_F(CompoundButtonTest, ArrowStandsAtTheRightOfTheCaptionAndIsPalerWhenDisabled) {
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
    EnableWindow(window, FALSE);
    SetWindowTextW(window, L"");
    drain();
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
    const HWND window = addPlain(BS_SPLITBUTTON, L"Drop");
    const UINT plain = styleOf(window);
    QkFlatDropBtn drop(kButton);
    drop.Attach(window);
    EXPECT_EQ(styleOf(window), plain);
}

TEST_F(CompoundButtonTest, SettingsButtonIsAsLargeAsItsGearAndHasABorderOnlyUnderTheMouse) {
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
    EXPECT_EQ(onScreen(window).at(0, 5), kFace);
    moveTo(window);
    EXPECT_EQ(onScreen(window).at(0, 5), kHotBorder);
    moveAway();
    EXPECT_EQ(onScreen(window).at(0, 5), kFace);
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 0)}, {COLOR_BTNFACE, RGB(0, 0, 0)}});
    HighContrast contrast;
    control_->Refresh();
    drain();
    EXPECT_TRUE(onScreen(window).contains(RGB(255, 255, 255)));
    contrast.turn(false);
    control_->Refresh();
    drain();
    EXPECT_EQ(darkPart(onScreen(window)), gear);
}

}  // namespace
