#include "QkDlg/QkFlatStaticText.h"

#include <memory>
#include <string>

#include "QkDlg/DialogFonts.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kLabel = 101;
constexpr COLORREF kGround = RGB(180, 230, 180);
constexpr wchar_t kLongText[] = L"A text that needs a lot more room than that";

/// The size of a text in the default face.
SIZE sizeOf(const std::wstring& text, int points) {
    const HDC dc = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(dc, GetFont(points, L"Segoe UI", FW_NORMAL, 0));
    RECT rect{};
    DrawTextW(dc, text.c_str(), -1, &rect, DT_CALCRECT);
    SelectObject(dc, before);
    ReleaseDC(nullptr, dc);
    return {rect.right, rect.bottom};
}

Box sizeBox(HWND window) {
    const Box box = windowBox(window);
    return {0, 0, box.right - box.left, box.bottom - box.top};
}

HFONT fontOf(HWND window) {
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

/// A host that knows nothing of colours, but has a ground of its own.
void answerNothing(HostDialog& host) {
    host.onMessage([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_CTLCOLORSTATIC)
            return 0;
        return std::nullopt;
    });
}

class StaticTextTest : public WindowTest {
protected:
    HWND addLabel(const wchar_t* text, const RECT& rect, DWORD style = SS_LEFT) {
        return host_.add(WC_STATICW, text, style, rect, kLabel);
    }

    HostDialog host_{{.background = kGround, .width = scaled(400), .height = scaled(200)}};
};

TEST_F(StaticTextTest, LargeFontShrinksAndNeverGrowsBack) {
    const std::wstring text = L"Shrinks by one point";
    const SIZE atEleven = sizeOf(text, 11);
    const HWND window = addLabel(text.c_str(), area(10, 10, atEleven.cx, atEleven.cy + 2));
    QkFlatStaticText label(kLabel, L"", 12, RGB(0, 0, 0));
    label.Attach(window);
    EXPECT_EQ(label.GetFontSize(), 11);
    EXPECT_EQ(fontOf(window), GetFont(11, L"Segoe UI", FW_NORMAL, 0));
    EXPECT_EQ(sizeBox(window), Box(0, 0, atEleven.cx, atEleven.cy + 2));

    SetWindowTextW(window, kLongText);
    EXPECT_EQ(label.GetFontSize(), 9);
    SetWindowTextW(window, L"x");
    EXPECT_EQ(label.GetFontSize(), 9);
    EXPECT_EQ(fontOf(window), GetFont(9, L"Segoe UI", FW_NORMAL, 0));
}

TEST_F(StaticTextTest, LargeFontGrowsAWindowThatIsTooLow) {
    const HWND window = addLabel(kLongText, area(10, 10, 30, 5));
    QkFlatStaticText label(kLabel, L"", 12, RGB(0, 0, 0));
    label.Attach(window);
    EXPECT_EQ(sizeBox(window), Box(0, 0, 30, sizeOf(kLongText, 9).cy + 2));
}

TEST_F(StaticTextTest, NinePointTextIsWidenedOnlyByWhatRoundingCosts) {
    const SIZE text = sizeOf(kLongText, 9);
    const int most = MulDiv(3, screenDpi(), 96);
    for (const int excess : {most, most + 1}) {
        const HWND window = addLabel(kLongText, area(10, 10, text.cx - excess, 12));
        QkFlatStaticText label(kLabel);
        label.Attach(window);
        const bool widened = excess == most && screenDpi() > 96;
        EXPECT_EQ(sizeBox(window), Box(0, 0, widened ? text.cx : text.cx - excess, 12));
        DestroyWindow(window);
    }
}

TEST_F(StaticTextTest, EmptyTextAndAnsiTextAreFitted) {
    const HWND window = CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE, 10, 10, 100, 10,
                                        host_.window(), nullptr, nullptr, nullptr);
    QkFlatStaticText label(kLabel, L"", 12, RGB(0, 0, 0));
    label.Attach(window);
    EXPECT_EQ(sizeBox(window), Box(0, 0, 100, 10)) << "nothing to make room for";
    SetWindowTextA(window, "x");
    EXPECT_EQ(label.GetFontSize(), 12) << "one letter fits; read as another encoding it might not";
    SetWindowTextA(window, "A text that needs more than a hundred pixels");
    EXPECT_EQ(label.GetFontSize(), 9);
}

TEST_F(StaticTextTest, CtlColorAnswersWithTheStockPen) {
    const HWND window = addLabel(L"Text", scaledArea(10, 10, 100, 20));
    QkFlatStaticText label(kLabel, L"", 9, RGB(10, 20, 30));
    label.Attach(window);
    const HDC dc = CreateCompatibleDC(nullptr);
    EXPECT_EQ(label.OnCtlColor(dc, window), static_cast<HBRUSH>(GetStockObject(NULL_PEN)));
    EXPECT_EQ(GetTextColor(dc), RGB(10, 20, 30));
    EXPECT_EQ(GetBkMode(dc), TRANSPARENT);
    EnableWindow(window, FALSE);
    static_cast<void>(label.OnCtlColor(dc, window));
    EXPECT_EQ(GetTextColor(dc), RGB(128, 128, 128));
    {
        const HighContrast on;
        EXPECT_EQ(label.OnCtlColor(dc, window), nullptr);
        EXPECT_EQ(GetTextColor(dc), GetSysColor(COLOR_GRAYTEXT));
        EnableWindow(window, TRUE);
        EXPECT_EQ(label.OnCtlColor(dc, window), nullptr);
        EXPECT_EQ(GetTextColor(dc), GetSysColor(COLOR_WINDOWTEXT));
    }
    SetWindowLongPtrW(window, GWL_EXSTYLE, 0);
    EXPECT_EQ(label.OnCtlColor(dc, window), nullptr) << "no longer transparent";
    DeleteDC(dc);
}

// One label changes its text and state in every way; another was that way from the start.
TEST_F(StaticTextTest, NoChangeLeavesATraceInAHostWithoutColourCode) {
    for (const DWORD style : {DWORD{WS_POPUP}, DWORD{WS_POPUP | WS_CLIPCHILDREN}}) {
        HostDialog host(
            {.background = kGround, .width = scaled(300), .height = scaled(200), .style = style});
        answerNothing(host);
        const RECT rect = scaledArea(10, 10, 200, 60);
        const HWND reference = host.add(WC_STATICW, L"New", SS_LEFT, rect, kLabel);
        QkFlatStaticText first(kLabel, L"", 9, RGB(200, 0, 0));
        first.Attach(reference);
        drain();
        const Image expected = onScreen(reference);
        EXPECT_TRUE(expected.contains(RGB(200, 0, 0))) << "the object's text colour";
        EXPECT_EQ(expected.at(scaled(200) - 1, scaled(60) - 1), kGround)
            << "the dialog's ground behind the label";
        DestroyWindow(reference);
        drain();

        const HWND window = host.add(WC_STATICW, L"An old and longer text", SS_LEFT, rect, kLabel);
        QkFlatStaticText second(kLabel, L"", 9, RGB(200, 0, 0));
        second.Attach(window);
        drain();
        SetWindowTextW(window, L"New");
        EXPECT_THAT(onScreen(window), looksLike(expected)) << "at once";
        EnableWindow(window, FALSE);
        EnableWindow(window, TRUE);
        EXPECT_THAT(onScreen(window), looksLike(expected));
        ShowWindow(window, SW_HIDE);
        SetWindowTextW(window, L"Hidden");
        drain();
        EXPECT_FALSE(IsWindowVisible(window));
        EXPECT_THAT(onScreen(host.window()), isFilledWith(kGround));
        SetWindowTextW(window, L"New");
        ShowWindow(window, SW_SHOW);
        drain();
        EXPECT_THAT(onScreen(window), looksLike(expected));
    }
}

TEST_F(StaticTextTest, AnswerOfTheHostStands) {
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    host_.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_CTLCOLORSTATIC)
            return std::nullopt;
        SetTextColor(reinterpret_cast<HDC>(wp), RGB(250, 0, 250));
        SetBkMode(reinterpret_cast<HDC>(wp), TRANSPARENT);
        return reinterpret_cast<LRESULT>(brush);
    });
    const HWND window = addLabel(L"MMMM", scaledArea(10, 10, 100, 20));
    QkFlatStaticText label(kLabel);
    label.Attach(window);
    drain();
    const Image image = onScreen(window);
    EXPECT_TRUE(image.contains(RGB(1, 2, 3)));
    EXPECT_TRUE(image.contains(RGB(250, 0, 250)));
    DeleteObject(brush);
}

// The enabled text is the standard control's, the disabled one is ours.
TEST_F(StaticTextTest, DisabledTextIsGreyAndStandsWhereTheEnabledStood) {
    for (const DWORD style : {SS_LEFT, SS_CENTER, SS_RIGHT, SS_SIMPLE, SS_LEFTNOWORDWRAP,
                              SS_LEFT | SS_NOPREFIX, SS_CENTER | SS_CENTERIMAGE}) {
        const HWND window =
            addLabel(L"&MMM and\tsome more words that are cut", scaledArea(10, 10, 120, 50), style);
        QkFlatStaticText label(kLabel);
        label.Attach(window);
        drain();
        const auto text = [](COLORREF pixel) { return pixel != kGround; };
        const auto enabled = onScreen(window).boundingBoxOf(text);
        EnableWindow(window, FALSE);
        const Image image = onScreen(window);
        ASSERT_TRUE(enabled.has_value());
        EXPECT_EQ(image.boundingBoxOf(text), enabled) << "style " << style;
        EXPECT_TRUE(image.contains(RGB(128, 128, 128)));
        EXPECT_FALSE(image.contains(RGB(0, 0, 0)));
        DestroyWindow(window);
    }
}

TEST_F(StaticTextTest, ObjectMayGoBeforeItsWindow) {
    const HWND window = addLabel(L"Text", scaledArea(10, 10, 100, 20));
    auto label = std::make_unique<QkFlatStaticText>(kLabel);
    label->Attach(window);
    label.reset();
    SetWindowTextW(window, kLongText);
    EnableWindow(window, FALSE);
    drain();
    EXPECT_EQ(textOf(window), kLongText);
}

TEST_F(StaticTextTest, ChangingTextsLeaksNothing) {
    const HWND window = addLabel(L"Text", scaledArea(10, 10, 100, 20));
    QkFlatStaticText label(kLabel);
    label.Attach(window);
    EXPECT_TRUE(doesNotLeak(200, [&] {
        SetWindowTextW(window, L"One");
        EnableWindow(window, FALSE);
        SetWindowTextW(window, L"Two");
        EnableWindow(window, TRUE);
    }));
}

}  // namespace
