#include "QkDlg/ScrollbarHolder.h"

#include <algorithm>
#include <cstring>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr COLORREF kGround = RGB(180, 230, 180);
constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE;

LONG_PTR styleOf(HWND window) {
    return GetWindowLongPtrW(window, GWL_STYLE);
}

bool isHolder(HWND window) {
    wchar_t name[32]{};
    return GetClassNameW(window, name, 32) > 0 && std::wstring_view(name) == L"SCROLLBARHOLDER";
}

SCROLLINFO infoOf(HWND window, int bar) {
    SCROLLINFO info{sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 0, 0, 0, 0};
    GetScrollInfo(window, bar, &info);
    return info;
}

class ScrollbarHolderTest : public WindowTest {
protected:
    ScrollbarHolderTest() { allowGdiGrowth(12); }

    void add(const wchar_t* name, DWORD style, DWORD exStyle = WS_EX_CLIENTEDGE) {
        target_ = host_.add(name, L"", style, scaledArea(40, 30, 200, 150), 101, exStyle);
        SetWindowLongPtrW(target_, GWL_EXSTYLE, static_cast<LONG_PTR>(exStyle));
        SetWindowPos(target_, nullptr, 0, 0, 0, 0, kStay | SWP_NOZORDER | SWP_FRAMECHANGED);
    }
    /// With a hundred lines.
    void addFilled(std::wstring_view name) {
        const DWORD own = name == WC_EDITW ? ES_MULTILINE : name == WC_LISTVIEWW ? LVS_REPORT : 0UL;
        add(name.data(), WS_VSCROLL | WS_HSCROLL | WS_TABSTOP | own);
        std::wstring text;
        LVITEMW item{};
        for (; item.iItem < 100; ++item.iItem, text += L"a line too long for its window\r\n")
            SendMessageW(target_, name == WC_LISTVIEWW ? LVM_INSERTITEMW : LB_ADDSTRING, 0,
                         reinterpret_cast<LPARAM>(&item));
        SetWindowTextW(target_, text.c_str());
        SendMessageW(target_, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(scaled(999)), 0);
        drain();
    }
    HWND dress() {
        holder_.emplace(GetSystemMetrics(SM_CXVSCROLL), GetSystemMetrics(SM_CYHSCROLL));
        EXPECT_TRUE(holder_->Attach(target_));
        drain();
        return holder_->GetBar(true);
    }
    /// Over the target's own bars, which lie beside its client area, and over the corner between
    /// them stand the holders that are shown, directly above the target; meanwhile, while the
    /// system moves the window, only nothing of the standard bars is to be seen there.
    void expectCovered(const std::string& when, bool meanwhile = false) const {
        RECT in{};
        GetClientRect(target_, &in);
        MapWindowPoints(target_, nullptr, reinterpret_cast<POINT*>(&in), 2);
        const LONG width = GetSystemMetrics(SM_CXVSCROLL);
        const LONG bottom = in.bottom + GetSystemMetrics(SM_CYHSCROLL);
        const LONG x = in.left - windowBox(target_).left < width ? in.right : in.left - width;
        const LONG_PTR style = IsWindowVisible(target_) ? styleOf(target_) : 0;
        std::vector<Box> bars;
        if ((style & WS_VSCROLL) != 0)
            bars.emplace_back(x, in.top, x + width, in.bottom);
        if ((style & WS_HSCROLL) != 0)
            bars.emplace_back(in.left, in.bottom, in.right, bottom);
        if (bars.size() == 2)
            bars.emplace_back(x, in.bottom, x + width, bottom);
        std::vector<Box> holders;
        for (HWND w = GetWindow(target_, GW_HWNDPREV); isHolder(w); w = GetWindow(w, GW_HWNDPREV))
            if (IsWindowVisible(w))
                holders.push_back(windowBox(w));
        EXPECT_TRUE(meanwhile ||
                    std::is_permutation(bars.begin(), bars.end(), holders.begin(), holders.end()))
            << when;
        const Image image = onScreen(host_.window());
        for (Box& bar : bars) {
            OffsetRect(reinterpret_cast<RECT*>(&bar), -windowBox(host_.window()).left,
                       -windowBox(host_.window()).top);
            EXPECT_EQ(image.part(bar).count(standard_), 0) << when;
            EXPECT_TRUE(meanwhile || !image.part(bar).contains(kGround)) << when;
        }
    }
    /// The flat bars say what the target's own say, whose vertical position is returned.
    int expectSame(const char* when) const {
        const SCROLLINFO own = infoOf(target_, SB_VERT),
                         flat = infoOf(holder_->GetBar(true), SB_CTL);
        EXPECT_EQ(std::memcmp(&own, &flat, sizeof own), 0) << when;
        EXPECT_EQ(infoOf(target_, SB_HORZ).nPos, infoOf(holder_->GetBar(false), SB_CTL).nPos)
            << when;
        return own.nPos;
    }
    int dragThumb() const {
        SCROLLBARINFO info{};
        info.cbSize = sizeof info;
        SendMessageW(holder_->GetBar(true), SBM_GETSCROLLBARINFO, 0,
                     reinterpret_cast<LPARAM>(&info));
        const int from = (info.xyThumbTop + info.xyThumbBottom) / 2;
        drag(holder_->GetBar(true), {5, from}, {5, from + scaled(30)});
        return expectSame("dragged");
    }

    HostDialog host_{{.background = kGround, .width = scaled(300), .height = scaled(200)}};
    HWND target_ = nullptr;
    COLORREF standard_ = kGround;  ///< the ground of standard bars
    std::optional<ScrollbarHolder> holder_;
};

TEST_F(ScrollbarHolderTest, CoversExactlyTheStandardBarsWhateverTheFrameAndDirection) {
    for (const LONG_PTR hostStyle : {LONG_PTR{0}, LONG_PTR{WS_EX_LAYOUTRTL}})
        for (const LONG style : {WS_VSCROLL, WS_HSCROLL, WS_VSCROLL | WS_HSCROLL | WS_THICKFRAME})
            for (const LONG exStyle :
                 {0L, WS_EX_CLIENTEDGE, WS_EX_LEFTSCROLLBAR, WS_EX_LAYOUTRTL | WS_EX_STATICEDGE}) {
                SetWindowLongPtrW(host_.window(), GWL_EXSTYLE, hostStyle);
                add(WC_LISTBOXW, static_cast<DWORD>(style | LBS_DISABLENOSCROLL),
                    static_cast<DWORD>(exStyle));
                dress();
                expectCovered(testing::PrintToString(std::tuple(hostStyle, style, exStyle)));
                DestroyWindow(target_);
            }
}

TEST_F(ScrollbarHolderTest, DressesWhatLiesInAGroupBoxOrOnATabControl) {
    for (const LONG_PTR hostStyle : {LONG_PTR{0}, LONG_PTR{WS_EX_LAYOUTRTL}})
        for (const wchar_t* around : {WC_BUTTONW, WC_TABCONTROLW}) {
            SetWindowLongPtrW(host_.window(), GWL_EXSTYLE, hostStyle);
            const DWORD style = std::wstring_view(around) == WC_BUTTONW ? BS_GROUPBOX : 0;
            HWND box = host_.add(around, L"", style, scaledArea(5, 5, 280, 190), 7);
            add(WC_EDITW, WS_VSCROLL | WS_HSCROLL | ES_MULTILINE,
                hostStyle != 0 ? DWORD{WS_EX_LAYOUTRTL} : 0);
            dress();
            RedrawWindow(box, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
            InvalidateRect(target_, nullptr, TRUE);
            drain();
            expectCovered(testing::PrintToString(std::wstring(around)));
            EXPECT_FALSE(onScreen(target_).contains(kGround)) << hostStyle;
            holder_.reset();
            RECT none{};
            EXPECT_EQ(GetWindowRgnBox(target_, &none), ERROR) << "given back whole";
            DestroyWindow(target_);
            DestroyWindow(box);
        }
}

/// Sees what the target shows when it has treated a message, also within one of the system's steps.
LRESULT CALLBACK lookAfter(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR,
                           DWORD_PTR look) {
    const LRESULT result = DefSubclassProc(window, message, wp, lp);
    if (message == WM_NCPAINT || message == WM_WINDOWPOSCHANGED || message == WM_PAINT)
        (*reinterpret_cast<const std::function<void()>*>(look))();
    return result;
}

TEST_F(ScrollbarHolderTest, FollowsItsTargetAndShowsNoStandardBarOnTheWay) {
    addFilled(WC_EDITW);
    const Box edit = windowBox(target_);
    standard_ =
        onDesktop({edit.left, edit.top, edit.right, edit.bottom}).at(scaled(197), scaled(75));
    dress();
    std::string step = "dress";
    const std::function<void()> look = [&] { expectCovered(step, true); };
    SetWindowSubclass(target_, lookAfter, 99, reinterpret_cast<DWORD_PTR>(&look));
    const auto after = [&](const char* name, auto) {
        step = name;
        look();
        drain();
        expectCovered(step);
        EXPECT_EQ(IsWindowEnabled(GetParent(holder_->GetBar(true))), IsWindowEnabled(target_));
    };
    const auto place = [&](HWND above, int x, int y, int width, int height, UINT flags) {
        return SetWindowPos(target_, above, scaled(x), scaled(y), scaled(width), scaled(height),
                            flags);
    };
    after("moving", place(nullptr, 70, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER));
    after("shrinking", place(nullptr, 0, 0, 120, 90, SWP_NOMOVE | SWP_NOZORDER));
    after("growing", place(nullptr, 10, 10, 270, 180, SWP_NOZORDER));
    host_.add(WC_STATICW, L"", 0, scaledArea(0, 0, 5, 5), 7);
    after("lowering", place(HWND_BOTTOM, 0, 0, 0, 0, kStay));
    after("raising", place(HWND_TOP, 0, 0, 0, 0, kStay));
    after("hiding", ShowWindow(target_, SW_HIDE));
    after("a change unseen", place(nullptr, 20, 20, 200, 150, SWP_NOZORDER));
    after("showing", ShowWindow(target_, SW_SHOW));
    ShowWindow(host_.window(), SW_HIDE);
    ShowWindow(target_, SW_HIDE);
    after("hiding in a hidden parent", ShowWindow(host_.window(), SW_SHOW));
    after("showing again", place(nullptr, 0, 0, 0, 0, SWP_SHOWWINDOW | kStay));
    after("one bar", ShowScrollBar(target_, SB_HORZ, FALSE));
    after("two bars", ShowScrollBar(target_, SB_BOTH, TRUE));
    SendMessageW(target_, WM_SETREDRAW, FALSE, 0);
    ShowScrollBar(target_, SB_HORZ, FALSE);
    after("one bar, unseen", SendMessageW(target_, WM_SETREDRAW, TRUE, 0));
    after("its frame", RedrawWindow(target_, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE));
    after("disabling", EnableWindow(target_, FALSE));
    const RECT all = scaledArea(0, 0, 300, 200);
    after("another parent",
          SetParent(target_, host_.add(WC_STATICW, L"", WS_CLIPCHILDREN, all, 8)));
    DestroyWindow(target_);
}

TEST_F(ScrollbarHolderTest, BarsScrollEveryTargetAndFollowItsOwnScrolling) {
    for (const wchar_t* const name : {WC_EDITW, WC_LISTBOXW, WC_LISTVIEWW}) {
        addFilled(name);
        const HWND bar = dress();
        focus(target_);
        SendMessageW(GetParent(bar), WM_VSCROLL, SB_LINEDOWN, reinterpret_cast<LPARAM>(bar));
        EXPECT_EQ(expectSame("arrow"), 1);
        EXPECT_GT(dragThumb(), 20);
        SendMessageW(target_, WM_VSCROLL, SB_PAGEUP, 0);
        const int before = expectSame("by the host");
        SendMessageW(bar, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
        EXPECT_GT(expectSame("wheel over the bar"), before);
        keyTap(VK_END);
        SendMessageW(target_, WM_HSCROLL, SB_LINERIGHT, 0);
        expectSame("key");
        EXPECT_EQ(GetFocus(), target_);
        DestroyWindow(target_);
    }
}

/// Asks the system for the thumb's position, as windows with long ranges do.
LRESULT CALLBACK scrollByInfo(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR,
                              DWORD_PTR) {
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    if (message != WM_VSCROLL || lp != 0 || !GetScrollInfo(window, SB_VERT, &info))
        return DefSubclassProc(window, message, wp, lp);
    const int moves[] = {-2000, 2000, -20'000, 20'000, info.nTrackPos - info.nPos};
    if (LOWORD(wp) <= SB_THUMBPOSITION)
        SetScrollPos(window, SB_VERT, info.nPos + moves[LOWORD(wp)], TRUE);
    return 0;
}

TEST_F(ScrollbarHolderTest, DragReachesTargetsThatAskForA32BitPosition) {
    add(WC_STATICW, WS_VSCROLL);
    const SCROLLINFO info{sizeof info, SIF_ALL, 0, 299'999, 20'000, 0, 0};
    SetScrollInfo(target_, SB_VERT, &info, TRUE);
    SetWindowSubclass(target_, scrollByInfo, 9, 0);
    dress();
    EXPECT_GT(dragThumb(), 66'000);
    DestroyWindow(target_);
}

TEST_F(ScrollbarHolderTest, DialogKeepsItsTabOrderGroupsAndIds) {
    const HWND before = host_.add(WC_BUTTONW, L"a", WS_TABSTOP, scaledArea(0, 20, 9, 9), 5);
    addFilled(WC_LISTBOXW);
    const HWND zero = host_.add(WC_BUTTONW, L"b", WS_TABSTOP, scaledArea(0, 40, 9, 9), 0);
    dress();
    EXPECT_EQ(host_.control(0), zero);
    EXPECT_EQ(GetNextDlgTabItem(host_.window(), before, FALSE), target_);
    EXPECT_EQ(GetNextDlgTabItem(host_.window(), zero, TRUE), target_);
    focus(before);
    keyTap(VK_DOWN);
    EXPECT_EQ(GetFocus(), target_) << "as if nothing stood between";
    SetWindowLongPtrW(target_, GWL_STYLE, styleOf(target_) | WS_GROUP);
    EXPECT_FALSE(isHolder(GetNextDlgGroupItem(host_.window(), before, FALSE)));
}

TEST_F(ScrollbarHolderTest, EveryOrderOfEndsLeavesNothingBehind) {
    addFilled(WC_EDITW);
    SetWindowLongPtrW(target_, GWL_STYLE, styleOf(target_) & ~WS_CLIPSIBLINGS);
    const LONG_PTR style = styleOf(target_);
    const Image plain = onScreen(host_.window());
    dress();
    EXPECT_FALSE(ScrollbarHolder(9, 9).Attach(target_)) << "one holder at a time";
    EXPECT_FALSE(ScrollbarHolder(9, 9).Attach(host_.window())) << "no child";
    holder_.reset();
    drain();
    EXPECT_THAT(onScreen(host_.window()), looksLike(plain)) << "its own bars again";
    EXPECT_EQ(styleOf(target_), style);
    DestroyWindow(GetParent(dress()));
    SendMessageW(target_, WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ(holder_->GetBar(true), nullptr);
    DestroyWindow(target_);
    EXPECT_EQ(holder_->GetBar(false), nullptr);
    // The host ends the target, the holder, or the dialog, while a bar scrolls.
    for (int end = 0; end < 3; ++end) {
        host_.onMessage({});
        addFilled(WC_EDITW);
        const HWND bar = dress();
        host_.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_COMMAND && HIWORD(wp) == EN_VSCROLL)
                end == 1 ? holder_.reset() : void(DestroyWindow(end ? host_.window() : target_));
            return std::nullopt;
        });
        SendMessageW(bar, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
        EXPECT_FALSE(IsWindow(bar));
    }
}

}  // namespace
