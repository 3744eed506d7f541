#include "QkDlg/QkFlatStaticText.h"

#include <initializer_list>
#include "QkDlg/DialogFonts.h"

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr COLORREF kGround = RGB(180, 230, 180);
constexpr COLORREF kInk = RGB(200, 0, 0);
constexpr COLORREF kOtherInk = RGB(0, 0, 200);
constexpr wchar_t kLongText[] = L"A text that needs a lot more room than that";

LRESULT CALLBACK passOn(HWND window, UINT id, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    return DefSubclassProc(window, id, wParam, lParam);
}

/// The size of a text in the default face.
Box sizeOf(const wchar_t* text, int points) {
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    SelectObject(dc.get(), GetFont(points, L"Segoe UI", FW_NORMAL, 0));
    RECT rect{};
    DrawTextW(dc.get(), text, -1, &rect, DT_CALCRECT);
    return Box(rect);
}

class StaticTextTest : public WindowTest {
protected:
    HWND addLabel(const wchar_t* text, int points = 9, DWORD style = 0,
                  const RECT& rect = scaledArea(10, 10, 120, 50)) {
        DestroyWindow(host_.control(101));
        const HWND window = host_.add(WC_STATICW, text, style, rect, 101);
        label_.emplace(101, L"", points, kInk);
        label_->Attach(window);
        drain();
        return window;
    }

    HostDialog host_{{.background = kGround, .width = scaled(400), .height = scaled(200)}};
    std::optional<QkFlatStaticText> label_;
};

TEST_F(StaticTextTest, TextIsFittedByShrinkingForGoodAndGrowingTheWindow) {
    const Box fits = sizeOf(L"Shrinks by one point", 11);
    const HWND window = addLabel(L"Shrinks by one point", 12, 0, area(0, 0, fits.right, 5));
    EXPECT_EQ(clientBox(window), Box(0, 0, fits.right, fits.bottom + 2));
    SetWindowTextW(window, kLongText);
    SetWindowTextW(window, L"x");
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)),
              GetFont(9, L"Segoe UI", FW_NORMAL, 0));
}

// A label changes in every way; it has to look as one that was that way from the start.
TEST_F(StaticTextTest, NoChangeLeavesATraceAndTheHostsColourCodeStands) {
    EXPECT_FALSE(onScreen(addLabel(L"New")).contains(kInk)) << "the host has colour code";
    host_.onMessage([](UINT message, WPARAM, LPARAM) {
        return message == WM_CTLCOLORSTATIC ? std::optional<LRESULT>(0) : std::nullopt;
    });
    for (const LONG_PTR style : {WS_POPUP | WS_VISIBLE, WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN}) {
        SetWindowLongPtrW(host_.window(), GWL_STYLE, style);
        const HWND window = addLabel(L"New");
        const Image expected = onScreen(window);
        EXPECT_TRUE(expected.contains(kInk));
        EXPECT_EQ(expected.at(0, 0), kGround) << "above the text";
        SetWindowTextW(window, kLongText);
        SetWindowTextW(window, L"New");
        EXPECT_THAT(onScreen(window), looksLike(expected)) << "at once";
        EnableWindow(window, FALSE);
        SetWindowTextW(window, L"New");
        EnableWindow(window, TRUE);
        EXPECT_THAT(onScreen(window), looksLike(expected));
    }
}

TEST_F(StaticTextTest, AnotherWhoSubclassesTheParentAndLeavesTakesNoColoursAway) {
    for (const bool comesFirst : {true, false}) {
        HostDialog host({.background = kGround});
        host.onMessage([](UINT message, WPARAM, LPARAM) {
            return message == WM_CTLCOLORSTATIC ? std::optional<LRESULT>(0) : std::nullopt;
        });
        QkFlatStaticText label(101, L"", 9, kInk);
        if (comesFirst)
            SetWindowSubclass(host.window(), passOn, 1, 0);
        label.Attach(host.add(WC_STATICW, L"New", 0, scaledArea(10, 10, 120, 50), 101));
        if (!comesFirst)
            SetWindowSubclass(host.window(), passOn, 1, 0);
        RemoveWindowSubclass(host.window(), passOn, 1);
        label.SetTextColor(kOtherInk);
        SetWindowTextW(label.GetWindow(), L"Newer");
        const Image seen = onScreen(label.GetWindow());
        EXPECT_TRUE(seen.contains(kOtherInk)) << "comes first: " << comesFirst;
        EXPECT_FALSE(seen.contains(kInk)) << "comes first: " << comesFirst;
    }
}

TEST_F(StaticTextTest, SmallerPictureLeavesNothingOfTheLargerOne) {
    const std::vector<DWORD> red(6400, 0xC80000);
    const std::vector<DWORD> blue(400, 0x0000C8);
    const UniqueBitmap large(CreateBitmap(80, 80, 1, 32, red.data()));
    const UniqueBitmap small(CreateBitmap(20, 20, 1, 32, blue.data()));
    const HWND window = addLabel(L"", 9, SS_BITMAP);
    for (const HBITMAP each : {large.get(), small.get()})
        SendMessageW(window, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(each));
    const Image seen = onScreen(host_.window());
    EXPECT_TRUE(seen.contains(kOtherInk));
    EXPECT_FALSE(seen.contains(kInk));
}

// The enabled text is the standard control's, the disabled one is ours.
TEST_F(StaticTextTest, DisabledTextIsGreyAndStandsWhereTheEnabledStood) {
    for (const DWORD style :
         std::initializer_list<DWORD>{SS_LEFT, SS_CENTER, SS_RIGHT, SS_SIMPLE, SS_LEFTNOWORDWRAP,
                                      SS_LEFT | SS_NOPREFIX, SS_CENTER | SS_CENTERIMAGE}) {
        const HWND window = addLabel(L"&MMM and\tsome more words that are cut", 9, style);
        const auto text = [](COLORREF pixel) { return pixel != kGround; };
        const auto enabled = onScreen(window).boundingBoxOf(text);
        EnableWindow(window, FALSE);
        EXPECT_EQ(onScreen(window).boundingBoxOf(text), enabled) << "style " << style;
        EXPECT_TRUE(onScreen(window).contains(RGB(128, 128, 128)));
    }
}

}  // namespace
