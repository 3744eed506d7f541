#include "QkDlg/QkFlatBtn.h"

#include <memory>

#include "QkDlg/QkFlatBlueBtn.h"
#include "support/Paper.h"
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
}

TEST_F(ButtonTest, FadeHasTenStepsAndLeavesNoTimer) {
    const HWND button = addButton();
    const auto control = flat<QkFlatBtn>(button);
    MessageSpy spy(button, {WM_FADECOLOR});
    moveTo(button);
    EXPECT_TRUE(pumpUntil([&] { return spy.count(WM_FADECOLOR) == 10; }));
    EXPECT_EQ(static_cast<COLORREF>(spy.seen().front().lp), RGB(245, 246, 246));
    EXPECT_EQ(static_cast<COLORREF>(spy.seen().back().lp), kHover);
    moveAway();
    pump(50);
    const TimerWatch timers;
    pump(300);
    EXPECT_EQ(timers.count(button), 0);
    EXPECT_EQ(spy.count(WM_FADECOLOR), 10);
}

TEST_F(ButtonTest, CaptureTakenAwayEndsThePressedLook) {
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
}

TEST_F(ButtonTest, BlueButtonShowsARingOnTheParentWhileHotOrPressed) {
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
}

TEST_F(ButtonTest, RingGoesWithTheButton) {
    const HWND button = addButton();
    auto control = flat<QkFlatBlueBtn>(button);
    RECT around{};
    GetWindowRect(button, &around);
    InflateRect(&around, 2, 2);
    const auto expectGone = [&](const char* after) {
        drain();
        EXPECT_FALSE(onDesktop(around).boundingBoxOf(kAccent)) << after;
    };
    moveTo(button);
    MoveWindow(button, scaled(150), scaled(120), scaled(100), scaled(30), TRUE);
    expectGone("moved");
    SetWindowPos(button, nullptr, scaled(30), scaled(30), 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    moveAway();
    moveTo(button);
    ShowWindow(button, SW_HIDE);
    expectGone("hidden");
    ShowWindow(button, SW_SHOW);
    moveAway();
    moveTo(button);
    DestroyWindow(button);
    expectGone("destroyed");
}

TEST_F(ButtonTest, DisablingWhileHotOrPressedEndsTheLook) {
    const HWND button = addButton();
    const auto control = flat<QkFlatBtn>(button);
    moveTo(button);
    press();
    EnableWindow(button, FALSE);
    EXPECT_EQ(faceOf(button), kFace);
    EXPECT_EQ(borderOf(button), kBorder);
    releaseEverything();
}

TEST_F(ButtonTest, ObjectMadeInHighContrastLosesItsColoursWithIt) {
    const SystemColours scheme(
        {{COLOR_HOTLIGHT, RGB(255, 255, 0)}, {COLOR_GRADIENTACTIVECAPTION, RGB(0, 0, 0)}});
    const HWND blue = addButton();
    const HWND plain = addButton(BS_PUSHBUTTON, L"Plain", kSecond);
    std::unique_ptr<QkFlatBtn> blueControl;
    std::unique_ptr<QkFlatBtn> plainControl;
    {
        const HighContrast contrast;
        blueControl = flat<QkFlatBlueBtn>(blue);
        plainControl = flat<QkFlatBtn>(plain);
        EXPECT_EQ(blueControl->GetConfiguredBkColor(), RGB(255, 255, 0));
    }
    InvalidateRect(blue, nullptr, FALSE);
    drain();
    EXPECT_EQ(faceOf(blue), kAccent);
    moveTo(plain);
    EXPECT_TRUE(pumpUntil([&] { return faceOf(plain) == kHover; }));
}

// The standard button never shows through

class ShownThroughTest : public ButtonTest, public testing::WithParamInterface<DWORD> {};

TEST_P(ShownThroughTest, EveryMessageLeavesTheFlatLook) {
    const HWND button = addButton(GetParam());
    addButton(BS_PUSHBUTTON, L"Other", kSecond);
    const auto control = flat<QkFlatBtn>(button);
    const auto expectFlat = [&](const char* after) {
        // What is on the screen is what the flat button prints; nothing waits to be painted.
        EXPECT_FALSE(GetUpdateRect(button, nullptr, FALSE)) << after;
        EXPECT_THAT(onScreen(button), looksLike(printed(button))) << after;
    };
    struct Step {
        const char* name;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };
    const std::vector<Step> steps{
        {"pressed state", BM_SETSTATE, TRUE, 0},
        {"released state", BM_SETSTATE, FALSE, 0},
        {"check", BM_SETCHECK, 1, 0},
        {"default style", BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE},
        {"plain style", BM_SETSTYLE, BS_PUSHBUTTON, TRUE},
        {"text", WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"Another text")},
        {"keyboard cues", WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEACCEL), 0},
        {"theme", WM_THEMECHANGED, 0, 0},
        {"click", BM_CLICK, 0, 0},
    };
    for (const Step& step : steps) {
        SendMessageW(button, step.message, step.wParam, step.lParam);
        expectFlat(step.name);
    }
    SetFocus(button);
    expectFlat("focus");
    SetFocus(host_.control(kSecond));
    expectFlat("focus lost");
    EnableWindow(button, FALSE);
    expectFlat("disabled");
    EnableWindow(button, TRUE);
    expectFlat("enabled");
}

INSTANTIATE_TEST_SUITE_P(Styles, ShownThroughTest,
                         testing::Values(BS_PUSHBUTTON, BS_DEFPUSHBUTTON,
                                         BS_PUSHBUTTON | BS_NOTIFY | BS_MULTILINE));

TEST_F(ButtonTest, HiddenButtonStaysHiddenWhateverItGets) {
    const HWND button = addButton();
    const auto control = flat<QkFlatBtn>(button);
    ShowWindow(button, SW_HIDE);
    SetWindowTextW(button, L"Text");
    EnableWindow(button, FALSE);
    EXPECT_FALSE(IsWindowVisible(button));
}

TEST_F(ButtonTest, ParentHearsWhatAPlainButtonTells) {
    const HWND plain = addButton(BS_PUSHBUTTON | BS_NOTIFY);
    const HWND flatButton = addButton(BS_PUSHBUTTON | BS_NOTIFY, L"&Save", kSecond);
    const auto control = flat<QkFlatBtn>(flatButton);
    const auto heardFrom = [&](HWND button) {
        SetFocus(nullptr);
        host_.forget();
        click(button);
        doubleClick(button);
        keyTap(VK_SPACE);
        moveTo(button);
        press();
        moveAway();
        release();
        SendMessageW(button, BM_CLICK, 0, 0);
        moveAway();
        HeardList heard = host_.heard();
        for (Heard& each : heard)
            each.id = 0;
        return heard;
    };
    const HeardList fromPlain = heardFrom(plain);
    EXPECT_EQ(heardFrom(flatButton), fromPlain);
    EXPECT_GE(fromPlain.size(), 4u);
}

// Captions, focus, colours

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

TEST_F(ButtonTest, HighContrastShowsAtTheNextPaintAndOnlyInSystemColours) {
    const SystemColours scheme({{COLOR_BTNFACE, RGB(0, 0, 64)},
                                {COLOR_BTNTEXT, RGB(255, 255, 0)},
                                {COLOR_GRAYTEXT, RGB(0, 255, 0)}});
    const HWND button = addButton(BS_PUSHBUTTON, L"Save");
    const auto control = flat<QkFlatBlueBtn>(button);
    const Image before = onScreen(button);
    HighContrast contrast;
    InvalidateRect(button, nullptr, FALSE);
    drain();
    EXPECT_EQ(faceOf(button), RGB(0, 0, 64));
    EXPECT_TRUE(onScreen(button).boundingBoxOf(
        [](COLORREF colour) { return GetRValue(colour) > 0x80 && GetBValue(colour) < 0x40; }));
    moveTo(button);
    press();
    EXPECT_EQ(faceOf(button), RGB(0, 0, 64));
    release();
    moveAway();
    EnableWindow(button, FALSE);
    EXPECT_TRUE(onScreen(button).boundingBoxOf(
        [](COLORREF colour) { return GetGValue(colour) > 0x80 && GetRValue(colour) < 0x40; }));
    EnableWindow(button, TRUE);
    contrast.turn(false);
    InvalidateRect(button, nullptr, FALSE);
    drain();
    EXPECT_THAT(onScreen(button), looksLike(before));
}

TEST_F(ButtonTest, MirroredDialogMirrorsPlacesNotLetters) {
    const auto pictureOf = [&](bool rightToLeft, DWORD style) {
        HostDialog host({.width = scaled(300), .height = scaled(200), .rightToLeft = rightToLeft});
        const HWND button =
            host.add(L"button", L"Left", style, scaledArea(30, 30, 100, 30), kFirst);
        QkFlatBtn control(kFirst);
        control.SetFont(L"Segoe UI", 9, FW_NORMAL);
        control.Attach(button);
        drain();
        return onScreen(button);
    };
    const auto ink = [](COLORREF colour) { return GetRValue(colour) < 0x60; };
    const Image plain = pictureOf(false, BS_LEFT);
    const Image mirrored = pictureOf(true, BS_LEFT);
    const auto plainInk = plain.boundingBoxOf(ink);
    const auto mirroredInk = mirrored.boundingBoxOf(ink);
    ASSERT_TRUE(plainInk && mirroredInk);
    EXPECT_NEAR(mirroredInk->right, plain.width() - plainInk->left, scaled(2));
    EXPECT_THAT(mirrored.part(*mirroredInk), looksLike(plain.part(*plainInk)));
}

// Life of an object

TEST_F(ButtonTest, ObjectDeletedEarlyLeavesAWorkingStandardButton) {
    const HWND button = addButton();
    auto control = flat<QkFlatBtn>(button);
    moveTo(button);
    const Image flatLook = onScreen(button);
    control.reset();
    pump(50);
    EXPECT_NE(onScreen(button), flatLook);
    press();
    release();
    moveAway();
    EXPECT_EQ(host_.timesHeard(command(kFirst, BN_CLICKED)), 1);
    EnableWindow(button, FALSE);
    SetWindowTextW(button, L"Still here");
    const auto again = flat<QkFlatBtn>(button);
    EnableWindow(button, TRUE);
    EXPECT_EQ(faceOf(button), kFace) << "and can be made flat again";
}

TEST_F(ButtonTest, ObjectDeletedByItsOwnClickIsNotTouchedAgain) {
    const HWND button = addButton();
    auto control = flat<QkFlatBtn>(button);
    host_.onMessage([&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && LOWORD(wParam) == kFirst) {
            control.reset();
            DestroyWindow(button);
        }
        return std::nullopt;
    });
    click(button);
    EXPECT_FALSE(IsWindow(button));
    EXPECT_EQ(control, nullptr);
}

TEST_F(ButtonTest, PaintingLeaksNothing) {
    const HWND button = addButton();
    const HWND blue = addButton(BS_PUSHBUTTON | BS_MULTILINE, L"Two words", kSecond);
    const auto control = flat<QkFlatBtn>(button);
    const auto blueControl = flat<QkFlatBlueBtn>(blue);
    const Paper paper(button);
    EXPECT_TRUE(doesNotLeak(paintRounds(), [&] {
        control->Paint(paper.dc());
        blueControl->Paint(paper.dc());
    }));
    EXPECT_TRUE(doesNotLeak(paintRounds() / 4, [&] {
        for (const HWND window : {button, blue}) {
            SendMessageW(window, WM_MOUSEMOVE, 0, 0);
            SendMessageW(window, WM_LBUTTONDOWN, 0, 0);
            SendMessageW(window, WM_LBUTTONUP, 0, 0);
            SendMessageW(window, WM_MOUSELEAVE, 0, 0);
        }
    }));
}

TEST_F(ButtonTest, AccessibilityKnowsTheSameButton) {
    const HWND button = addButton();
    const Accessible before = accessible(button);
    const auto control = flat<QkFlatBtn>(button);
    EXPECT_EQ(accessible(button), before);
}

}  // namespace
