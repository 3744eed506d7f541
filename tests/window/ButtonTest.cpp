#include "QkDlg/QkFlatBtn.h"

#include <array>
#include <functional>

#include "QkDlg/QkFlatBlueBtn.h"
#include "QkDlg/QkFlatDropBtn.h"
#include "QkDlg/QkFlatSettingsBtn.h"
#include "QkDlg/QkFlatSplitBtn.h"
#include "QkUtil/Rects.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kFirst = 101;
constexpr int kSecond = 102;

constexpr COLORREF kPressed = RGB(212, 232, 252);
constexpr COLORREF kBorder = RGB(192, 192, 192);
constexpr COLORREF kHotBorder = RGB(126, 180, 234);

class ButtonTest : public WindowTest {
protected:
    HWND addButton(DWORD style = BS_PUSHBUTTON, const wchar_t* text = L"&Save", int id = kFirst) {
        const int row = id - kFirst;
        return host_.add(L"button", text, style | WS_TABSTOP,
                         scaledArea(30, 30 + 50 * row, 100, 30), id);
    }

    /// The face between border and focus rectangle, and the border, as they are on the screen.
    static COLORREF faceOf(HWND button) { return onScreen(button).at(1, 1); }
    static COLORREF borderOf(HWND button) { return onScreen(button).at(0, 5); }
    static Box darkPart(const Image& image) {
        return image.boundingBoxOf([](COLORREF colour) { return GetRValue(colour) < 0xA0; })
            .value_or(Box());
    }

    HostDialog host_{{.width = scaled(300), .height = scaled(200)}};
};

TEST_F(ButtonTest, MouseShowsEveryStepOnTheScreen) {
    const HWND button = addButton();
    const auto control = flatten<QkFlatBtn>(button);
    EXPECT_EQ(faceOf(button), kFace);
    EXPECT_EQ(borderOf(button), kBorder);

    moveTo(button);
    EXPECT_EQ(borderOf(button), kHotBorder);
    EXPECT_TRUE(pumpUntil([&] { return faceOf(button) == kHover; })) << "the fade ends on hover";

    press();
    EXPECT_EQ(faceOf(button), kPressed);
    EXPECT_EQ(host_.timesHeard(command(kFirst, BN_CLICKED)), 0);
    release();
    EXPECT_EQ(faceOf(button), kHover) << "the fade's end colour stays until the mouse leaves";
    EXPECT_EQ(host_.timesHeard(command(kFirst, BN_CLICKED)), 1);

    moveAway();
    EXPECT_EQ(faceOf(button), kFace);
    EXPECT_EQ(borderOf(button), kBorder);
    pump(50);
    Sleep(100);
    MSG timer{};
    EXPECT_FALSE(PeekMessageW(&timer, button, WM_TIMER, WM_TIMER, PM_REMOVE)) << "left by the fade";
}

TEST_F(ButtonTest, PressedLookEndsWithTheCaptureAndWhenDisabled) {
    const HWND button = addButton();
    const auto control = flatten<QkFlatBtn>(button);
    moveTo(button);
    press();
    ASSERT_EQ(faceOf(button), kPressed);
    SetCapture(host_.window());
    EXPECT_NE(faceOf(button), kPressed);
    ReleaseCapture();
    release();
    EXPECT_EQ(host_.timesHeard(command(kFirst, BN_CLICKED)), 0);
    press();
    EnableWindow(button, FALSE);
    EXPECT_EQ(faceOf(button), kFace);
    EXPECT_EQ(borderOf(button), kBorder);
}

TEST_F(ButtonTest, BlueButtonShowsARingOnTheParentWhileHotOrPressedThatGoesWithTheButton) {
    constexpr COLORREF ground = RGB(120, 200, 120);
    HostDialog green({.background = ground, .width = scaled(300), .height = scaled(200)});
    const HWND button = green.add(L"button", L"OK", 0, scaledArea(30, 30, 100, 30), kFirst);
    const auto control = flatten<QkFlatBlueBtn>(button);
    RECT around{};
    GetWindowRect(button, &around);
    InflateRect(&around, 2, 2);
    const auto ring = [&] { return onDesktop(around).at(0, 10); };
    EXPECT_EQ(faceOf(button), kAccent);
    EXPECT_EQ(ring(), ground);
    moveTo(button);
    EXPECT_EQ(ring(), kAccent);
    press();
    EXPECT_EQ(ring(), kAccent);
    EXPECT_EQ(faceOf(button), kAccent);
    release();
    EXPECT_EQ(ring(), kAccent) << "the mouse is still there";
    moveAway();
    EXPECT_EQ(ring(), ground) << "no ring of the wrong colour stays";

    const std::function<void()> ends[] = {
        [&] { MoveWindow(button, scaled(150), scaled(120), scaled(100), scaled(30), TRUE); },
        [&] { ShowWindow(button, SW_HIDE); },
        [&] { DestroyWindow(button); },
    };
    for (const auto& end : ends) {
        MoveWindow(button, scaled(30), scaled(30), scaled(100), scaled(30), TRUE);
        ShowWindow(button, SW_SHOW);
        moveAway();
        moveTo(button);
        ASSERT_EQ(ring(), kAccent);
        end();
        drain();
        EXPECT_FALSE(onDesktop(around).boundingBoxOf(kAccent)) << &end - ends;
    }
}

TEST_F(ButtonTest, HighContrastShowsAtTheNextPaintInSystemColoursAndLeavesNoneBehind) {
    const SystemColours scheme({{COLOR_BTNFACE, RGB(0, 0, 64)},
                                {COLOR_BTNTEXT, RGB(255, 255, 0)},
                                {COLOR_GRAYTEXT, RGB(0, 255, 0)},
                                {COLOR_HOTLIGHT, RGB(255, 0, 255)},
                                {COLOR_GRADIENTACTIVECAPTION, RGB(0, 0, 0)}});
    const HWND blue = addButton(BS_PUSHBUTTON, L"Save");
    const HWND plain = addButton(BS_PUSHBUTTON, L"Plain", kSecond);
    HighContrast contrast;
    // Made meanwhile: what they take from the scheme must not stay.
    const auto blueControl = flatten<QkFlatBlueBtn>(blue);
    const auto plainControl = flatten<QkFlatBtn>(plain);
    EXPECT_EQ(blueControl->GetConfiguredBkColor(), RGB(255, 0, 255));
    EXPECT_EQ(GetUIColor(UICLR_PRESSED_BORDER), GetSysColor(COLOR_ACTIVECAPTION));
    EXPECT_EQ(faceOf(blue), RGB(0, 0, 64));
    EXPECT_TRUE(onScreen(blue).contains(RGB(255, 255, 0)));
    moveTo(blue);
    press();
    EXPECT_EQ(faceOf(blue), RGB(0, 0, 64));
    release();
    moveAway();
    EnableWindow(blue, FALSE);
    EXPECT_TRUE(onScreen(blue).contains(RGB(0, 255, 0)));
    EnableWindow(blue, TRUE);
    contrast.turn(false);
    InvalidateRect(blue, nullptr, FALSE);
    drain();
    EXPECT_EQ(faceOf(blue), kAccent);
    EXPECT_FALSE(onScreen(blue).contains(RGB(255, 255, 0)));
    moveTo(plain);
    EXPECT_TRUE(pumpUntil([&] { return faceOf(plain) == kHover; }));
}

TEST_F(ButtonTest, CaptionStandsWhereTheStyleSays) {
    const auto inkOf = [&](DWORD style) {
        const HWND button =
            host_.add(L"button", L"Text", style, scaledArea(30, 30, 100, 60), kFirst);
        const auto control = flatten<QkFlatBtn>(button);
        const Box ink = darkPart(onScreen(button));
        DestroyWindow(button);
        return ink;
    };
    const int width = scaled(100);
    const Box centred = inkOf(BS_PUSHBUTTON);
    EXPECT_NEAR(centred.left + centred.right, width, scaled(6));
    EXPECT_LE(inkOf(BS_LEFT).left, scaled(6) + scaled(3));
    EXPECT_GE(inkOf(BS_RIGHT).right, width - scaled(6) - scaled(3));
    EXPECT_LT(inkOf(BS_TOP).top, centred.top);
    EXPECT_GT(inkOf(BS_BOTTOM).bottom, centred.bottom);
}

TEST_F(ButtonTest, ArrowIsNotLeftPressedByItsMenu) {
    if (!FindResourceW(nullptr, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)))
        GTEST_SKIP() << "split buttons need version 6 of the common controls";
    const HWND button = addButton(BS_SPLITBUTTON);
    const auto control = flatten<QkFlatDropBtn>(button);
    const std::unique_ptr<HMENU__, decltype(&DestroyMenu)> menu(CreatePopupMenu(), &DestroyMenu);
    AppendMenuW(menu.get(), MF_STRING, 1, L"Item");
    int opened = 0;
    host_.onMessage([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || reinterpret_cast<const NMHDR*>(lParam)->code != BCN_DROPDOWN)
            return std::nullopt;
        ++opened;
        // The menu takes the mouse; the release that follows goes to it.
        PostMessageW(host_.window(), WM_CANCELMODE, 0, 0);
        TrackPopupMenu(menu.get(), 0, 0, 0, 0, host_.window(), nullptr);
        return 0;
    });
    click(button, scaled(100) - scaled(7), scaled(15));
    moveAway();
    EXPECT_EQ(faceOf(button), kFace);
    EXPECT_GE(opened, 1);
}

TEST_F(ButtonTest, ArrowStandsAtTheRightOfTheCaptionAndIsPalerWhenDisabled) {
    const HWND button = addButton(BS_SPLITBUTTON, L"");
    const auto control = flatten<QkFlatSplitBtn>(button);
    SetWindowTextW(button, L"i");
    drain();
    const Image shown = onScreen(button);
    constexpr std::array<int, 8> edges{10, 13, 15, 20, 25, 30, 40, 50};
    const int edge = edges.at(dpiBucket(QkDlgTest::screenDpi()));
    const int arrowLeft = shown.width() - edge - scaled(6);
    const Box arrow = darkPart(shown.part({arrowLeft, 2, shown.width() - 2, shown.height() - 2}));
    EXPECT_LE(arrow.right, edge) << "the padding stays free";
    EXPECT_GT(arrow.right, edge / 2);
    EXPECT_EQ(shown.part({arrowLeft - scaled(6), 2, arrowLeft, 20}).count(kFace), scaled(6) * 18);
    EnableWindow(button, FALSE);
    SetWindowTextW(button, L"");
    drain();
    EXPECT_EQ(darkPart(onScreen(button)), Box());
}

TEST_F(ButtonTest, SettingsButtonIsAsLargeAsItsGearAndHasABorderOnlyUnderTheMouse) {
    const HWND button = addButton(BS_PUSHBUTTON, L"");
    const auto control = flatten<QkFlatSettingsBtn>(button);
    constexpr std::array<int, 8> edges{16, 20, 24, 32, 40, 48, 64, 80};
    const int edge = edges.at(dpiBucket(QkDlgTest::screenDpi())) + scaled(4);
    EXPECT_EQ(clientBox(button), Box(0, 0, edge, edge));
    const RECT place = windowRectIn(button, host_.window());
    EXPECT_NEAR(place.left + place.right, 2 * scaled(30) + scaled(100), 2);
    EXPECT_NEAR(place.top + place.bottom, 2 * scaled(30) + scaled(30), 2);
    const Box gear = darkPart(onScreen(button));
    EXPECT_NEAR(gear.left + gear.right, edge, 2);
    EXPECT_EQ(borderOf(button), kFace);
    moveTo(button);
    EXPECT_EQ(borderOf(button), kHotBorder);
    moveAway();
    EXPECT_EQ(borderOf(button), kFace);
    const SystemColours scheme({{COLOR_WINDOW, RGB(0, 0, 0)}, {COLOR_BTNFACE, RGB(0, 0, 0)}});
    HighContrast contrast;
    control->Refresh();
    drain();
    EXPECT_TRUE(onScreen(button).contains(kWhite));
    contrast.turn(false);
    control->Refresh();
    drain();
    EXPECT_EQ(darkPart(onScreen(button)), gear);
}

}  // namespace
