#include "QkDlg/QkFlatEdit.h"

#include <memory>

#include "QkDlg/QkFlatStaticText.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kEdit = 101;
constexpr int kOther = 102;
constexpr COLORREF kGround = RGB(180, 230, 180);
constexpr COLORREF kLine = RGB(223, 223, 223);
constexpr COLORREF kWhite = RGB(255, 255, 255);

Box boxIn(HWND window, HWND parent) {
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return Box(rect);
}

bool has(HWND window, int index, LONG_PTR bits) {
    return (GetWindowLongPtrW(window, index) & bits) == bits;
}

class EditTest : public WindowTest {
protected:
    EditTest() {
        // The host has a ground, and leaves its controls to the system.
        host_.onMessage([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_CTLCOLORSTATIC)
                return 0;
            return std::nullopt;
        });
    }

    HWND addEdit(DWORD style = 0, DWORD exStyle = WS_EX_CLIENTEDGE, const wchar_t* text = L"") {
        return host_.add(WC_EDITW, text, style | WS_TABSTOP, area(20, 30, 100, 20), kEdit, exStyle);
    }
    /// One that is large enough for text.
    HWND addTextEdit(const wchar_t* text = L"") {
        return host_.add(WC_EDITW, text, WS_TABSTOP, scaledArea(20, 30, 100, 24), kEdit,
                         WS_EX_CLIENTEDGE);
    }
    HWND attach(HWND window) {
        edit_ = std::make_unique<QkFlatEdit>(kEdit);
        edit_->Attach(window);
        drain();
        return window;
    }
    [[nodiscard]] HWND frame() const { return edit_->GetFrameWindow(); }
    [[nodiscard]] Box frameBox() const { return boxIn(frame(), host_.window()); }
    /// What the dialog shows of the frame and all within.
    [[nodiscard]] Image framed() const { return onScreen(host_.window()).part(frameBox()); }

    HostDialog host_{
        {.background = kGround, .width = scaled(400), .height = scaled(200), .style = WS_POPUP}};
    std::unique_ptr<QkFlatEdit> edit_;
};

TEST_F(EditTest, FrameStandsTwoPixelsRoundAnEditWithoutBorder) {
    const HWND edit = attach(addEdit(WS_BORDER));
    EXPECT_FALSE(has(edit, GWL_EXSTYLE, WS_EX_CLIENTEDGE));
    EXPECT_FALSE(has(edit, GWL_STYLE, WS_BORDER));
    EXPECT_EQ(boxIn(edit, host_.window()), Box(20, 30, 120, 50));
    EXPECT_EQ(frameBox(), Box(18, 28, 122, 52));
    EXPECT_TRUE(has(frame(), GWL_STYLE, WS_VISIBLE | WS_DISABLED));
    EXPECT_EQ(GetPropW(frame(), L"QK_EDIT_FRAME"), reinterpret_cast<HANDLE>(1));
    EXPECT_EQ(GetWindow(edit, GW_HWNDLAST), frame()) << "behind all others";
    const Image image = framed();
    EXPECT_EQ(image.count(kLine), 104 * 24 - 100 * 20);
    EXPECT_THAT(image.part({2, 2, 102, 22}), isFilledWith(kWhite));
}

TEST_F(EditTest, NoBorderOfAnyKindIsLeftInside) {
    struct Case {
        DWORD style;
        DWORD exStyle;
    };
    for (const auto& [style, exStyle] :
         {Case{WS_BORDER, 0}, Case{0, WS_EX_CLIENTEDGE}, Case{WS_BORDER, WS_EX_CLIENTEDGE},
          Case{WS_BORDER | ES_MULTILINE, 0}, Case{ES_MULTILINE, WS_EX_CLIENTEDGE}, Case{0, 0}}) {
        const HWND edit = attach(addEdit(style, exStyle));
        EXPECT_THAT(framed().part({2, 2, 102, 22}), isFilledWith(kWhite))
            << style << " " << exStyle;
        SetWindowTextW(edit, L"text");
        SetWindowTextW(edit, L"");
        InvalidateRect(edit, nullptr, TRUE);
        UpdateWindow(edit);
        EXPECT_THAT(framed().part({2, 2, 102, 22}), isFilledWith(kWhite))
            << style << " " << exStyle;
        edit_.reset();
        DestroyWindow(edit);
    }
}

TEST_F(EditTest, TextStaysWhereTheBorderHadPutIt) {
    const HWND edit = addTextEdit(L"Text");
    const auto text = [&] {
        drain();
        const Image image =
            onScreen(host_.window())
                .part({scaled(20) + 4, scaled(30) + 4, scaled(120) - 4, scaled(54) - 4});
        return image.boundingBoxOf([](COLORREF pixel) { return pixel == RGB(0, 0, 0); });
    };
    const auto before = text();
    attach(edit);
    EXPECT_EQ(text(), before);
}

TEST_F(EditTest, FrameFollowsMovesSizesAndShowing) {
    const HWND edit = attach(addEdit());
    SetWindowPos(edit, nullptr, 50, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    drain();
    EXPECT_EQ(frameBox(), Box(48, 58, 152, 82));
    MoveWindow(edit, 10, 20, 200, 40, TRUE);
    drain();
    EXPECT_EQ(frameBox(), Box(8, 18, 212, 62));
    const Image image = onScreen(host_.window());
    EXPECT_EQ(image.boundingBoxOf(kLine), Box(8, 18, 212, 62));
    EXPECT_EQ(image.count(kLine), 204 * 44 - 200 * 40) << "nothing left of the old places";

    ShowWindow(edit, SW_HIDE);
    drain();
    EXPECT_THAT(onScreen(host_.window()), isFilledWith(kGround));
    ShowWindow(edit, SW_SHOW);
    EXPECT_TRUE(IsWindowVisible(frame()));
    constexpr UINT stay = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;
    SetWindowPos(edit, nullptr, 0, 0, 0, 0, stay | SWP_HIDEWINDOW);
    EXPECT_FALSE(IsWindowVisible(frame()));
    SetWindowPos(edit, nullptr, 0, 0, 0, 0, stay | SWP_SHOWWINDOW);
    drain();
    EXPECT_THAT(onScreen(host_.window()), looksLike(image));
}

TEST_F(EditTest, FrameStartsHiddenWhenAskedOrWithAHiddenEdit) {
    const HWND first = addEdit();
    QkFlatEdit asked(kEdit);
    asked.SetStartHidden(true);
    asked.SetFrameWidth(1);
    asked.Attach(first);
    EXPECT_FALSE(has(asked.GetFrameWindow(), GWL_STYLE, WS_VISIBLE));
    EXPECT_EQ(boxIn(asked.GetFrameWindow(), host_.window()), Box(19, 29, 121, 51));

    const HWND second = addEdit();
    ShowWindow(second, SW_HIDE);
    attach(second);
    EXPECT_FALSE(has(frame(), GWL_STYLE, WS_VISIBLE));
    ShowWindow(second, SW_SHOW);
    EXPECT_TRUE(has(frame(), GWL_STYLE, WS_VISIBLE));
}

TEST_F(EditTest, ReadOnlyAndDisabledEditsKeepTheFlatGround) {
    const HWND edit = attach(addEdit());
    SendMessageW(edit, EM_SETREADONLY, TRUE, 0);
    drain();
    EXPECT_THAT(framed(), isFilledWith(kWhite)) << "the frame has the parent's colour";
    SendMessageW(edit, EM_SETREADONLY, FALSE, 0);
    EnableWindow(edit, FALSE);
    drain();
    EXPECT_EQ(framed().at(0, 0), kLine);
    EXPECT_THAT(framed().part({2, 2, 102, 22}), isFilledWith(kWhite));
}

TEST_F(EditTest, CtlColorFollowsTheBackgroundColour) {
    const HWND edit = attach(addEdit());
    edit_->SetBkColor(RGB(250, 240, 230));
    const HDC dc = CreateCompatibleDC(nullptr);
    LOGBRUSH brush{};
    GetObjectW(edit_->OnCtlColor(dc, edit), sizeof brush, &brush);
    EXPECT_EQ(brush.lbColor, RGB(250, 240, 230));
    EXPECT_EQ(GetBkColor(dc), RGB(250, 240, 230)) << "behind the text as well";
    EXPECT_EQ(edit_->OnCtlColor(dc, edit), edit_->OnCtlColor(dc, edit));
    {
        const HighContrast on;
        EXPECT_EQ(edit_->OnCtlColor(dc, edit), nullptr);
    }
    DeleteDC(dc);
    InvalidateRect(edit, nullptr, TRUE);
    drain();
    EXPECT_EQ(framed().at(52, 12), RGB(250, 240, 230));
}

TEST_F(EditTest, CueTextIsTheStandardEdits) {
    const HWND edit = addEdit();
    QkFlatEdit flat(kEdit, L"Name");
    flat.Attach(edit);
    wchar_t cue[10]{};
    if (!SendMessageW(edit, EM_GETCUEBANNER, reinterpret_cast<WPARAM>(cue), 10))
        GTEST_SKIP() << "cue texts need version 6 of the common controls";
    EXPECT_STREQ(cue, L"Name");
}

TEST_F(EditTest, TypingTellsTheHostWhatAStandardEditTells) {
    const HWND other =
        host_.add(WC_BUTTONW, L"OK", WS_TABSTOP, scaledArea(20, 100, 100, 20), kOther);
    const HWND edit = addTextEdit();
    const auto type = [&] {
        SetWindowTextW(edit, L"");
        focus(other);
        host_.forget();
        click(edit);
        typeText(L"Abc");
        keyTap(VK_BACK);
        keyTap(VK_TAB);
        return host_.heard();
    };
    const HeardList standard = type();
    attach(edit);
    EXPECT_EQ(type(), standard);
    EXPECT_EQ(textOf(edit), L"Ab");
    EXPECT_GT(host_.timesHeard(command(kEdit, EN_CHANGE)), 0);
}

TEST_F(EditTest, DeletedEarlyTheObjectLeavesAStandardEdit) {
    const HWND edit = addTextEdit(L"Text");
    drain();
    const Image before = onScreen(host_.window());
    attach(edit);
    const HWND oldFrame = frame();
    edit_.reset();
    drain();
    EXPECT_FALSE(IsWindow(oldFrame));
    EXPECT_TRUE(has(edit, GWL_EXSTYLE, WS_EX_CLIENTEDGE));
    EXPECT_THAT(onScreen(host_.window()), looksLike(before));
    click(edit);
    typeText(L"x");
    EXPECT_NE(textOf(edit), L"Text") << "still usable";
}

TEST_F(EditTest, FrameGoesWithTheEditAndMayGoBefore) {
    const HWND edit = attach(addEdit());
    SendMessageW(frame(), WM_CLOSE, 0, 0);
    EXPECT_EQ(frame(), nullptr);
    MoveWindow(edit, 0, 0, 50, 20, TRUE);
    EnableWindow(edit, FALSE);
    ShowWindow(edit, SW_HIDE);
    DestroyWindow(edit);

    const HWND second = attach(addEdit());
    const HWND secondFrame = frame();
    DestroyWindow(second);
    EXPECT_FALSE(IsWindow(secondFrame));
    EXPECT_EQ(edit_->GetWindow(), nullptr);

    attach(addEdit());
    DestroyWindow(host_.window());
    EXPECT_EQ(frame(), nullptr);
}

// Kept as it has always been, though nobody makes a label of an edit.
TEST_F(EditTest, LastMessageTakesAwayALabelsProcedureInsteadOfItsOwn) {
    const HWND edit = addEdit();
    QkFlatStaticText label(kEdit);
    label.Attach(edit);
    attach(edit);
    DestroyWindow(edit);
    EXPECT_NE(label.GetWindow(), nullptr) << "the label's procedure did not see the end";
    EXPECT_EQ(edit_->GetWindow(), nullptr) << "nothing can reach the edit's object any more";
}

TEST_F(EditTest, AttachingPaintingAndEndingLeaksNothing) {
    EXPECT_TRUE(doesNotLeak(100, [&] {
        const HWND edit = attach(addEdit());
        SendMessageW(edit, EM_SETREADONLY, TRUE, 0);
        drain();
        DestroyWindow(edit);
    }));
}

}  // namespace
