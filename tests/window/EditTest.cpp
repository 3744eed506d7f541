#include "QkDlg/QkFlatEdit.h"

#include <initializer_list>

#include "QkDlg/QkFlatStaticText.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr COLORREF kGround = RGB(180, 230, 180);
constexpr COLORREF kLine = RGB(223, 223, 223);

class EditTest : public WindowTest {
protected:
    HWND addEdit(DWORD style = 0, DWORD exStyle = WS_EX_CLIENTEDGE) {
        return host_.add(WC_EDITW, L"", style | WS_TABSTOP, area(20, 30, 100, 20), 101, exStyle);
    }
    HWND attach(HWND window, const wchar_t* cue = L"") {
        edit_.emplace(101, cue).Attach(window);
        return window;
    }
    [[nodiscard]] Image shown() const {
        drain();
        return onScreen(host_.window());
    }

    HostDialog host_{
        {.background = kGround, .width = scaled(400), .height = scaled(200), .style = WS_POPUP}};
    std::optional<QkFlatEdit> edit_;
};

TEST_F(EditTest, FrameStandsTwoPixelsRoundAnEditWithoutBorderOfAnyKind) {
    for (const DWORD style :
         std::initializer_list<DWORD>{0, WS_BORDER, ES_MULTILINE, WS_BORDER | ES_MULTILINE})
        for (const DWORD exStyle : std::initializer_list<DWORD>{0, WS_EX_CLIENTEDGE}) {
            const HWND edit = attach(addEdit(style, exStyle));
            EXPECT_EQ(shown().part({18, 28, 122, 52}).count(kLine), 104 * 24 - 100 * 20);
            InvalidateRect(edit, nullptr, TRUE);
            EXPECT_EQ(shown().count(kWhite), 100 * 20) << style << " " << exStyle;
            EXPECT_EQ(GetWindow(edit, GW_HWNDLAST), edit_->GetFrameWindow()) << "behind all others";
            DestroyWindow(edit);
        }
}

TEST_F(EditTest, FrameFollowsMovesSizesAndShowing) {
    const HWND edit = addEdit();
    ShowWindow(edit, SW_HIDE);
    attach(edit);
    EXPECT_THAT(shown(), isFilledWith(kGround));
    ShowWindow(edit, SW_SHOW);
    SetWindowPos(edit, nullptr, 50, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(shown().boundingBoxOf(kLine), Box(48, 58, 152, 82));
    MoveWindow(edit, 10, 20, 200, 40, TRUE);
    EXPECT_EQ(shown().boundingBoxOf(kLine), Box(8, 18, 212, 62));
    SetWindowPos(edit, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_HIDEWINDOW);
    EXPECT_THAT(shown(), isFilledWith(kGround));
}

TEST_F(EditTest, ColoursNeedNoHostCodeAndTheFrameOfAReadOnlyEditIsTheParents) {
    host_.onMessage([](UINT message, WPARAM, LPARAM) {
        return message == WM_CTLCOLORSTATIC ? std::optional<LRESULT>(0) : std::nullopt;
    });
    const HWND edit = attach(addEdit());
    edit_->SetBkColor(kGround);
    EnableWindow(edit, FALSE);
    EXPECT_THAT(shown().part({20, 30, 120, 50}), isFilledWith(kGround)) << "its margin too";
    SendMessageW(edit, EM_SETREADONLY, TRUE, 0);
    EXPECT_EQ(shown().count(kWhite), 104 * 24 - 100 * 20);
}

TEST_F(EditTest, CueIsTheStandardEditsAndTheLookIsGivenBack) {
    const HWND edit = addEdit(ES_AUTOHSCROLL);
    const Image before = shown();
    const LRESULT hasCues = SendMessageW(edit, EM_SETCUEBANNER, 0, reinterpret_cast<LPARAM>(L"x"));
    attach(edit, L"Name");
    wchar_t cue[10]{};
    SendMessageW(edit, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(cue), 10);
    EXPECT_STREQ(cue, hasCues ? L"Name" : L"") << "version 5 has none";
    SendMessageW(edit, EM_SETCUEBANNER, 0, reinterpret_cast<LPARAM>(L""));
    edit_.reset();
    EXPECT_THAT(shown(), looksLike(before));
}

// The label's procedure: kept as it has always been, though nobody makes a label of an edit.
TEST_F(EditTest, EndsInAnyOrderAndTakesALabelsProcedureInsteadOfItsOwn) {
    const HWND edit = addEdit();
    QkFlatStaticText label(101);
    label.Attach(edit);
    attach(edit);
    edit_.reset();
    attach(edit);
    SendMessageW(edit_->GetFrameWindow(), WM_CLOSE, 0, 0);
    MoveWindow(edit, 0, 0, 50, 20, TRUE);
    DestroyWindow(host_.window());
    EXPECT_NE(label.GetWindow(), nullptr);
    EXPECT_EQ(edit_->GetWindow(), nullptr);
}

}  // namespace
