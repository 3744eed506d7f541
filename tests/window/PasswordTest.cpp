#include "QkDlg/QkFlatPassword.h"

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

class PasswordTest : public WindowTest {
protected:
    HWND attach(DWORD style = ES_PASSWORD, const RECT& rect = area(20, 30, 100, 20)) {
        const HWND edit = host_.add(WC_EDITW, L"Secret", style, rect, 101, WS_EX_CLIENTEDGE);
        password_.emplace(101).Attach(edit);
        return edit;
    }
    [[nodiscard]] HWND eye() const { return password_->GetEyeButton(); }
    [[nodiscard]] Image shown() const {
        drain();
        return onScreen(host_.window());
    }
    static bool isMasked(HWND edit) { return SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0) == L'*'; }
    /// Real Alt+F8.
    static void pressAltF8() {
        keyDown(VK_MENU);
        keyTap(VK_F8);
        keyUp(VK_MENU);
    }
    /// What an edit shows now, without its caret.
    static Image look(HWND edit) {
        HideCaret(edit);
        return onScreen(edit);
    }

    // In the screen's corner: positions on the screen are those in the dialog.
    HostDialog host_{{.x = 0, .y = 0, .width = scaled(400), .height = scaled(200)}};
    HWND other_ = host_.add(WC_BUTTONW, L"OK", WS_TABSTOP, scaledArea(20, 100, 99, 20), 102);
    std::optional<QkFlatPassword> password_;
};

TEST_F(PasswordTest, FrameAndSquareEyeMoveSizeAndHideWithTheEdit) {
    const HWND edit = attach();
    EXPECT_EQ(windowBox(password_->GetFrameWindow()), Box(18, 28, 142, 52));
    EXPECT_EQ(windowBox(eye()), Box(120, 30, 140, 50));
    EXPECT_EQ(GetPropW(eye(), L"QK_EDIT_IMGBTN"), reinterpret_cast<HANDLE>(1));
    EXPECT_THAT(printed(eye()), looksLike(shown().part({120, 30, 140, 50})));
    SetWindowPos(edit, nullptr, 60, 70, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(windowBox(eye()), Box(160, 70, 180, 90));
    MoveWindow(edit, 10, 20, 150, 30, TRUE);
    EXPECT_EQ(windowBox(password_->GetFrameWindow()), Box(8, 18, 192, 52));
    EXPECT_EQ(windowBox(eye()), Box(160, 20, 190, 50));
    ShowWindow(edit, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(password_->GetFrameWindow()) || IsWindowVisible(eye()));
    ShowWindow(edit, SW_SHOW);
    EXPECT_TRUE(IsWindowVisible(eye()));
    SendMessageW(edit, WM_SHOWWINDOW, 2, 0);
    EXPECT_FALSE(IsWindowVisible(eye())) << "shown for exactly 1 only";
}

TEST_F(PasswordTest, EyeClickAndAltF8ShowAndMaskTheTextAndPutTheCaretAtItsEnd) {
    const HWND edit = attach();
    focus(other_);
    const Image closedEye = onScreen(eye());
    for (int step = 0; step < 4; ++step) {
        SendMessageW(edit, EM_SETSEL, 0, 0);
        step < 2 ? click(eye()) : pressAltF8();
        drain();
        const bool masked = step % 2 == 1;
        EXPECT_EQ(isMasked(edit), masked) << step;
        EXPECT_EQ(onScreen(eye()) == closedEye, masked) << step;
        EXPECT_EQ(GetFocus(), edit) << step;
        EXPECT_EQ(SendMessageW(edit, EM_GETSEL, 0, 0), MAKELONG(6, 6)) << step;
    }
    doubleClick(eye());
    EXPECT_TRUE(password_->IsRevealed()) << "a double click toggles once";
    focus(edit);
    keyDown(VK_MENU);
    keyDown(VK_F8);
    SendMessageW(edit, WM_SYSKEYDOWN, VK_F8, 1 | 1 << 30);
    EXPECT_FALSE(password_->IsRevealed()) << "and so does a key that is held";
}

// Every look is taken before any message is dispatched.
TEST_F(PasswordTest, MaskedTextIsNeverOnTheScreen) {
    const HWND edit = attach(0, scaledArea(20, 30, 100, 24));
    const Image masked = look(edit);
    password_->ToggleReveal();
    drain();
    const Image plain = look(edit);
    EXPECT_NE(plain, masked) << "masked as soon as it is attached";
    password_->ToggleReveal();
    EXPECT_THAT(look(edit), looksLike(masked));
    password_->ToggleReveal();
    password_.reset();
    EXPECT_TRUE(isMasked(edit)) << "nobody could mask it later";
}

TEST_F(PasswordTest, TogglingMasksFirstAndTellsTheHostOfTheEditsFocusOnly) {
    const HWND edit = attach();
    focus(other_);
    host_.forget();
    click(eye());
    for (const Heard& heard : host_.heard())
        EXPECT_EQ(heard.id, 101) << heard;
    focus(other_);
    bool maskedBefore = false;
    host_.onMessage([&](UINT message, WPARAM wp, LPARAM) {
        if (message == WM_COMMAND && wp == MAKEWPARAM(101, EN_SETFOCUS))
            maskedBefore = isMasked(edit);
        return std::optional<LRESULT>();
    });
    click(eye());
    EXPECT_TRUE(maskedBefore) << "a message box of the host would leave the text readable";
}

TEST_F(PasswordTest, PaintingFollowsACharacterThatSomebodyElseSet) {
    const HWND edit = attach();
    focus(other_);
    SendMessageW(edit, EM_SETPASSWORDCHAR, 0, 0);
    drain();
    EXPECT_TRUE(password_->IsRevealed());
    EXPECT_EQ(GetFocus(), other_) << "the user's focus stays where it was";
}

TEST_F(PasswordTest, EyeGoesWhileDisabledAndForGoodWhenTurnedOff) {
    const HWND edit = attach();
    const Image before = shown();
    const Box place(120, 30, 140, 50);
    EnableWindow(edit, FALSE);
    EXPECT_THAT(shown().part(place), isFilledWith(kWhite));
    EnableWindow(edit, TRUE);
    EXPECT_THAT(shown(), looksLike(before));
    focus(edit);
    SendMessageW(edit, QkFlatPassword::kTurnEyeOff, 0, 0);
    pressAltF8();
    EXPECT_EQ(SendMessageW(edit, EM_GETSEL, 0, 0), MAKELONG(6, 6)) << "though nothing else happens";
    ShowWindow(edit, SW_HIDE);
    ShowWindow(edit, SW_SHOW);
    EXPECT_THAT(shown().part(place), isFilledWith(kWhite));
    password_.reset();
    EXPECT_FALSE(isMasked(edit));
}

TEST_F(PasswordTest, TooltipIsRegisteredOnceAndItsTextShows) {
    attach();
    const HWND tooltip = password_->GetTooltip();
    moveTo(eye());
    moveTo(eye(), 5, 5);
    EXPECT_EQ(SendMessageW(tooltip, TTM_GETTOOLCOUNT, 0, 0), 1);
    EXPECT_TRUE(pumpUntil([tooltip] { return IsWindowVisible(tooltip) != FALSE; }));
    EXPECT_EQ(textOf(tooltip), L"Click to show or hide the password");
}

TEST_F(PasswordTest, WindowsAndObjectEndInAnyOrderWithoutLeak) {
    HWND edit = attach();
    for (const HWND helper : {eye(), password_->GetFrameWindow()})
        SendMessageW(helper, WM_CLOSE, 0, 0);
    EXPECT_EQ(eye(), nullptr);
    focus(edit);
    pressAltF8();
    MoveWindow(edit, 0, 0, 50, 20, TRUE);
    DestroyWindow(edit);
    edit = attach();
    password_->ToggleReveal();
    focus(other_);
    // The host may do so when the focus changes.
    host_.onMessage([&](UINT message, WPARAM wp, LPARAM) {
        if (message == WM_COMMAND && wp == MAKEWPARAM(101, EN_SETFOCUS)) {
            password_.reset();
            DestroyWindow(edit);
        }
        return std::optional<LRESULT>();
    });
    click(eye());
    EXPECT_FALSE(IsWindow(edit));
}

}  // namespace
