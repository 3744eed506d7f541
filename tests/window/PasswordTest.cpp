#include "QkDlg/QkFlatPassword.h"

#include <memory>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kEdit = 101;
constexpr int kOther = 102;
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr wchar_t kSecret[] = L"Secret";

Box boxIn(HWND window, HWND parent) {
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return Box(rect);
}

class PasswordTest : public WindowTest {
protected:
    PasswordTest() {
        other_ = host_.add(WC_BUTTONW, L"OK", WS_TABSTOP, scaledArea(20, 100, 100, 20), kOther);
    }

    HWND addEdit(DWORD style = ES_PASSWORD, const RECT& rect = area(20, 30, 100, 20)) {
        return host_.add(WC_EDITW, kSecret, style | ES_AUTOHSCROLL | WS_TABSTOP, rect, kEdit,
                         WS_EX_CLIENTEDGE);
    }
    HWND attach(HWND edit) {
        password_ = std::make_unique<QkFlatPassword>(kEdit);
        password_->Attach(edit);
        return edit;
    }
    HWND attached() {
        const HWND edit = attach(addEdit());
        drain();
        return edit;
    }

    [[nodiscard]] HWND eye() const { return password_->GetEyeButton(); }
    [[nodiscard]] HWND frame() const { return password_->GetFrameWindow(); }
    [[nodiscard]] Box boxOf(HWND window) const { return boxIn(window, host_.window()); }

    /// What a text looks like when it is masked, or not.
    static Image look(const wchar_t* text, bool masked) {
        HostDialog host({.width = scaled(400), .height = scaled(200)});
        const HWND edit = host.add(WC_EDITW, text, ES_AUTOHSCROLL, scaledArea(20, 30, 100, 24),
                                   kEdit, WS_EX_CLIENTEDGE);
        QkFlatPassword password(kEdit);
        password.Attach(edit);
        if (!masked)
            password.ToggleReveal();
        SetFocus(nullptr);
        drain();
        return onScreen(edit);
    }

    /// Real Alt+F8.
    static void pressAltF8() {
        keyDown(VK_MENU);
        keyTap(VK_F8);
        keyUp(VK_MENU);
    }

    static std::pair<DWORD, DWORD> selection(HWND edit) {
        std::pair<DWORD, DWORD> range;
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&range.first),
                     reinterpret_cast<LPARAM>(&range.second));
        return range;
    }

    HostDialog host_{{.width = scaled(400), .height = scaled(200), .style = WS_POPUP}};
    HWND other_ = nullptr;
    std::unique_ptr<QkFlatPassword> password_;
};

TEST_F(PasswordTest, FrameHoldsTheEditAndASquareEye) {
    const HWND edit = attached();
    EXPECT_EQ(boxOf(edit), Box(20, 30, 120, 50));
    EXPECT_EQ(boxOf(frame()), Box(18, 28, 142, 52));
    EXPECT_EQ(boxOf(eye()), Box(120, 30, 140, 50));
    EXPECT_EQ(GetPropW(frame(), L"QK_EDIT_FRAME"), reinterpret_cast<HANDLE>(1));
    EXPECT_EQ(GetPropW(eye(), L"QK_EDIT_IMGBTN"), reinterpret_cast<HANDLE>(1));
    EXPECT_TRUE(IsWindowVisible(eye()) && IsWindowEnabled(eye()));
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), L'*');
    EXPECT_THAT(onScreen(eye()), testing::Not(isFilledWith(kWhite)));
    EXPECT_THAT(printed(eye()), looksLike(onScreen(eye())));
}

TEST_F(PasswordTest, MovedSizedAndHiddenTogether) {
    const HWND edit = attached();
    SetWindowPos(edit, nullptr, 60, 70, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(boxOf(frame()), Box(58, 68, 182, 92));
    EXPECT_EQ(boxOf(eye()), Box(160, 70, 180, 90));
    MoveWindow(edit, 10, 20, 150, 30, TRUE);
    EXPECT_EQ(boxOf(frame()), Box(8, 18, 192, 52));
    EXPECT_EQ(boxOf(eye()), Box(160, 20, 190, 50));
    ShowWindow(edit, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(frame()) || IsWindowVisible(eye()));
    ShowWindow(edit, SW_SHOW);
    EXPECT_TRUE(IsWindowVisible(frame()) && IsWindowVisible(eye()));
    SendMessageW(edit, WM_SHOWWINDOW, 2, 0);
    EXPECT_FALSE(IsWindowVisible(frame()) || IsWindowVisible(eye())) << "shown for exactly 1 only";
}

TEST_F(PasswordTest, ClickOnTheEyeShowsAndMasksTheText) {
    const HWND edit = attached();
    const Image masked = onScreen(eye());
    focus(other_);
    click(eye());
    drain();
    EXPECT_TRUE(password_->IsRevealed());
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), 0);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(selection(edit), std::pair(DWORD{6}, DWORD{6}));
    EXPECT_NE(onScreen(eye()), masked);
    HideCaret(edit);
    typeText(L"!");
    EXPECT_EQ(textOf(edit), L"Secret!");

    click(eye());
    drain();
    EXPECT_FALSE(password_->IsRevealed());
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), L'*');
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_THAT(onScreen(eye()), looksLike(masked));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(PasswordTest, DoubleClickTogglesOnce) {
    const HWND edit = attached();
    click(eye());
    drain();
    ASSERT_TRUE(password_->IsRevealed());
    focus(other_);
    SendMessageW(eye(), WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
    SendMessageW(eye(), WM_LBUTTONUP, 0, 0);
    drain();
    EXPECT_TRUE(password_->IsRevealed());
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(PasswordTest, AltF8ShowsAndMasksTheText) {
    const HWND edit = attached();
    focus(edit);
    const Image masked = onScreen(eye());
    pressAltF8();
    EXPECT_TRUE(password_->IsRevealed());
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(selection(edit), std::pair(DWORD{6}, DWORD{6}));
    EXPECT_NE(onScreen(eye()), masked);
    keyTap(VK_F8);
    EXPECT_TRUE(password_->IsRevealed()) << "F8 alone does nothing";
    pressAltF8();
    EXPECT_FALSE(password_->IsRevealed());
    EXPECT_THAT(onScreen(eye()), looksLike(masked));
}

TEST_F(PasswordTest, MaskedTextIsNeverOnTheScreen) {
    const Image masked = look(kSecret, true);
    const Image plain = look(kSecret, false);
    ASSERT_NE(masked, plain);

    // Every look is taken before any message is dispatched.
    const HWND edit = addEdit(0, scaledArea(20, 30, 100, 24));
    attach(edit);
    EXPECT_THAT(onScreen(edit), looksLike(masked)) << "masked as soon as it is attached";
    password_->ToggleReveal();
    drain();
    EXPECT_THAT(onScreen(edit), looksLike(plain));
    password_->ToggleReveal();
    EXPECT_THAT(onScreen(edit), looksLike(masked));
    SetWindowPos(edit, nullptr, 20, 31, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    UpdateWindow(edit);
    EXPECT_THAT(onScreen(edit), looksLike(masked));
    password_->ToggleReveal();
    drain();
    password_.reset();
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), L'*');
    EXPECT_NE(onScreen(edit), plain) << "nobody could mask it later";
}

TEST_F(PasswordTest, PaintingFollowsACharacterThatSomebodyElseSet) {
    const HWND edit = attached();
    focus(other_);
    SendMessageW(edit, EM_SETPASSWORDCHAR, 0, 0);
    drain();
    EXPECT_TRUE(password_->IsRevealed());
    EXPECT_EQ(GetFocus(), other_) << "the user's focus stays where it was";
    SendMessageW(edit, EM_SETPASSWORDCHAR, L'#', 0);
    drain();
    EXPECT_FALSE(password_->IsRevealed());
}

TEST_F(PasswordTest, DisabledEditHasNoEye) {
    const HWND edit = attached();
    const Image before = onScreen(host_.window());
    EnableWindow(edit, FALSE);
    drain();
    EXPECT_FALSE(IsWindowVisible(eye()));
    EXPECT_FALSE(IsWindowEnabled(eye()));
    EXPECT_THAT(onScreen(host_.window()).part({120, 30, 140, 50}), isFilledWith(kWhite));
    EnableWindow(edit, TRUE);
    drain();
    EXPECT_TRUE(IsWindowVisible(eye()) && IsWindowEnabled(eye()));
    EXPECT_THAT(onScreen(host_.window()), looksLike(before));
}

TEST_F(PasswordTest, EyeOffShowsTheTextForGood) {
    const HWND edit = attached();
    focus(edit);
    SendMessageW(edit, WM_USER + 123, 0, 0);
    drain();
    EXPECT_FALSE(IsWindowVisible(eye()));
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), 0);
    SendMessageW(edit, EM_SETSEL, 0, 0);
    pressAltF8();
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), 0);
    EXPECT_EQ(selection(edit), std::pair(DWORD{6}, DWORD{6})) << "the caret still goes to the end";
    ShowWindow(edit, SW_HIDE);
    ShowWindow(edit, SW_SHOW);
    EnableWindow(edit, FALSE);
    EnableWindow(edit, TRUE);
    drain();
    EXPECT_FALSE(IsWindowVisible(eye()));
    EXPECT_THAT(onScreen(host_.window()).part({120, 30, 140, 50}), isFilledWith(kWhite));
    password_.reset();
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), 0);
}

TEST_F(PasswordTest, TooltipIsRegisteredOnceAndItsTextShows) {
    attached();
    const HWND tooltip = password_->GetTooltip();
    EXPECT_EQ(SendMessageW(tooltip, TTM_GETTOOLCOUNT, 0, 0), 0);
    moveTo(eye());
    EXPECT_EQ(SendMessageW(tooltip, TTM_GETTOOLCOUNT, 0, 0), 1);
    EXPECT_EQ(SendMessageW(tooltip, TTM_GETDELAYTIME, TTDT_INITIAL, 0), 500);
    moveTo(eye(), 5, 5);
    EXPECT_EQ(SendMessageW(tooltip, TTM_GETTOOLCOUNT, 0, 0), 1);

    wchar_t text[80]{};
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = host_.window();
    tool.uId = reinterpret_cast<UINT_PTR>(eye());
    tool.lpszText = text;
    SendMessageW(tooltip, TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&tool));
    EXPECT_STREQ(text, L"Click to show or hide the password");
    EXPECT_TRUE(pumpUntil([&] { return IsWindowVisible(tooltip) != FALSE; }));
    EXPECT_EQ(textOf(tooltip), text);
}

TEST_F(PasswordTest, EyeStandsLeftOfTheEditInAMirroredDialogAndIsDrawnAsItIs) {
    attached();
    const Image picture = onScreen(eye());
    HostDialog mirrored({.width = scaled(400), .height = scaled(200), .rightToLeft = true});
    const HWND edit = mirrored.add(WC_EDITW, kSecret, ES_PASSWORD, area(20, 30, 100, 20), kEdit);
    QkFlatPassword password(kEdit);
    password.Attach(edit);
    drain();
    const Box eyeBox = windowBox(password.GetEyeButton());
    EXPECT_EQ(eyeBox.right, windowBox(edit).left);
    EXPECT_EQ(eyeBox.right - eyeBox.left, 20);
    EXPECT_THAT(onScreen(password.GetEyeButton()), looksLike(picture));
    DestroyWindow(mirrored.window());
}

TEST_F(PasswordTest, HelperWindowsEndInAnyOrder) {
    HWND edit = attached();
    SendMessageW(eye(), WM_CLOSE, 0, 0);
    EXPECT_EQ(eye(), nullptr);
    focus(edit);
    pressAltF8();
    MoveWindow(edit, 0, 0, 50, 20, TRUE);
    EnableWindow(edit, FALSE);
    drain();
    DestroyWindow(edit);

    edit = attached();
    SendMessageW(frame(), WM_CLOSE, 0, 0);
    EXPECT_EQ(frame(), nullptr);
    MoveWindow(edit, 0, 0, 50, 20, TRUE);
    click(eye());
    drain();
    DestroyWindow(edit);
    EXPECT_EQ(eye(), nullptr);

    edit = attached();
    password_.reset();
    MoveWindow(edit, 20, 30, 100, 20, TRUE);
    SendMessageW(edit, WM_USER + 123, 0, 0);
    EXPECT_EQ(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0), L'*');
    DestroyWindow(edit);

    attached();
    DestroyWindow(host_.window());
    EXPECT_EQ(password_->GetTooltip(), nullptr);
}

TEST_F(PasswordTest, HostMayEndTheEditWhenTheFocusChanges) {
    const HWND edit = attached();
    focus(edit);
    host_.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_COMMAND && HIWORD(wp) == EN_KILLFOCUS) {
            password_.reset();
            DestroyWindow(edit);
        }
        return std::nullopt;
    });
    pressAltF8();
    EXPECT_FALSE(IsWindow(edit));
}

TEST_F(PasswordTest, RevealingAndEndingLeaksNothing) {
    EXPECT_TRUE(doesNotLeak(50, [&] {
        const HWND edit = attached();
        password_->ToggleReveal();
        drain();
        EnableWindow(edit, FALSE);
        drain();
        DestroyWindow(edit);
    }));
}

}  // namespace
