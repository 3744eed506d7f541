#include "QkDlg/QkFlatBtn.h"

#include <functional>
#include <memory>

#include "QkDlg/QkFlatBlueBtn.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kFirst = 101;
constexpr int kSecond = 102;

constexpr COLORREF kFace = RGB(246, 246, 246);
constexpr COLORREF kHover = RGB(229, 243, 251);
constexpr COLORREF kPressed = RGB(212, 232, 252);
constexpr COLORREF kBorder = RGB(192, 192, 192);
constexpr COLORREF kHotBorder = RGB(126, 180, 234);
constexpr COLORREF kAccent = RGB(27, 118, 192);

class ButtonTest : public WindowTest {
protected:
    HWND addButton(DWORD style = BS_PUSHBUTTON, const wchar_t* text = L"&Save", int id = kFirst) {
        const int row = id - kFirst;
        return host_.add(L"button", text, style | WS_TABSTOP,
                         scaledArea(30, 30 + 50 * row, 100, 30), id);
    }

    template <typename Control>
    std::unique_ptr<Control> flat(HWND window) {
        auto control = std::make_unique<Control>(static_cast<UINT>(GetDlgCtrlID(window)));
        control->Attach(window);
        drain();
        return control;
    }

    /// The face between border and focus rectangle, and the border, as they are on the screen.
    static COLORREF faceOf(HWND button) { return onScreen(button).at(1, 1); }
    static COLORREF borderOf(HWND button) { return onScreen(button).at(0, 5); }

    HostDialog host_{{.width = scaled(300), .height = scaled(200)}};
};

TEST_F(ButtonTest, MouseShowsEveryStepOnTheScreen) {
    const HWND button = addButton();
    const auto control = flat<QkFlatBtn>(button);
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
    const auto control = flat<QkFlatBtn>(button);
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
    const auto control = flat<QkFlatBlueBtn>(button);
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
    const auto shows = [](HWND button, int red, int green) {
        return onScreen(button)
            .boundingBoxOf([=](COLORREF colour) {
                return GetRValue(colour) / 0x81 == red && GetGValue(colour) / 0x81 == green &&
                       GetBValue(colour) < 0x40;
            })
            .has_value();
    };
    const HWND blue = addButton(BS_PUSHBUTTON, L"Save");
    const HWND plain = addButton(BS_PUSHBUTTON, L"Plain", kSecond);
    HighContrast contrast;
    // Made meanwhile: what they take from the scheme must not stay.
    const auto blueControl = flat<QkFlatBlueBtn>(blue);
    const auto plainControl = flat<QkFlatBtn>(plain);
    EXPECT_EQ(blueControl->GetConfiguredBkColor(), RGB(255, 0, 255));
    EXPECT_EQ(GetUIColor(UICLR_PRESSED_BORDER), GetSysColor(COLOR_ACTIVECAPTION));
    EXPECT_EQ(faceOf(blue), RGB(0, 0, 64));
    EXPECT_TRUE(shows(blue, 1, 1));
    moveTo(blue);
    press();
    EXPECT_EQ(faceOf(blue), RGB(0, 0, 64));
    release();
    moveAway();
    EnableWindow(blue, FALSE);
    EXPECT_TRUE(shows(blue, 0, 1));
    EnableWindow(blue, TRUE);
    contrast.turn(false);
    InvalidateRect(blue, nullptr, FALSE);
    drain();
    EXPECT_EQ(faceOf(blue), kAccent);
    EXPECT_FALSE(shows(blue, 1, 1));
    moveTo(plain);
    EXPECT_TRUE(pumpUntil([&] { return faceOf(plain) == kHover; }));
}

TEST_F(ButtonTest, CaptionStandsWhereTheStyleSays) {
    const auto inkOf = [&](DWORD style) {
        const HWND button =
            host_.add(L"button", L"Text", style, scaledArea(30, 30, 100, 60), kFirst);
        const auto control = flat<QkFlatBtn>(button);
        const auto ink = onScreen(button).boundingBoxOf(
            [](COLORREF colour) { return GetRValue(colour) < 0x60; });
        DestroyWindow(button);
        return ink.value_or(Box());
    };
    const int width = scaled(100);
    const Box centred = inkOf(BS_PUSHBUTTON);
    EXPECT_NEAR(centred.left + centred.right, width, scaled(6));
    EXPECT_LE(inkOf(BS_LEFT).left, scaled(6) + scaled(3));
    EXPECT_GE(inkOf(BS_RIGHT).right, width - scaled(6) - scaled(3));
    EXPECT_LT(inkOf(BS_TOP).top, centred.top);
    EXPECT_GT(inkOf(BS_BOTTOM).bottom, centred.bottom);
}

}  // namespace
