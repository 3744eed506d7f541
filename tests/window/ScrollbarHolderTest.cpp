#include "QkDlg/ScrollbarHolder.h"

#include <algorithm>
#include <cstring>
#include <map>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr COLORREF kGround = RGB(180, 230, 180);
constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE;

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

    void open(bool mirrored = false) {
        host_.emplace(HostOptions{.background = kGround,
                                  .width = scaled(400),
                                  .height = scaled(300),
                                  .rightToLeft = mirrored});
    }
    void add(const wchar_t* name, DWORD style, DWORD exStyle = WS_EX_CLIENTEDGE) {
        target_ = host_->add(name, L"", style, scaledArea(40, 30, 200, 150), 101, exStyle);
        SetWindowLongPtrW(target_, GWL_EXSTYLE, static_cast<LONG_PTR>(exStyle));
        SetWindowPos(target_, nullptr, 0, 0, 0, 0, kStay | SWP_NOZORDER | SWP_FRAMECHANGED);
    }
    /// With a hundred lines, in an edit or list box too long for it; dressed.
    void addFilled(std::wstring_view name) {
        const DWORD own = name == WC_EDITW ? ES_MULTILINE : name == WC_LISTVIEWW ? LVS_REPORT : 0UL;
        add(name.data(), WS_VSCROLL | WS_HSCROLL | WS_TABSTOP | own);
        std::wstring text;
        LVITEMW item{};
        for (; item.iItem < 100; ++item.iItem) {
            text += L"a line that is much too long for its window, which is to scroll it\r\n";
            SendMessageW(target_, name == WC_LISTVIEWW ? LVM_INSERTITEMW : LB_ADDSTRING, 0,
                         reinterpret_cast<LPARAM>(&item));
        }
        SetWindowTextW(target_, text.c_str());
        SendMessageW(target_, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(scaled(999)), 0);
        drain();
    }
    void dress() {
        holder_.emplace(GetSystemMetrics(SM_CXVSCROLL), GetSystemMetrics(SM_CYHSCROLL));
        ASSERT_TRUE(holder_->Attach(target_));
        drain();
    }
    /// Where the target's own bars are, beside its client area, and the corner between them.
    std::vector<Box> standardBars() const {
        RECT inner{};
        GetClientRect(target_, &inner);
        MapWindowPoints(target_, nullptr, reinterpret_cast<POINT*>(&inner), 2);
        const LONG width = GetSystemMetrics(SM_CXVSCROLL);
        const LONG bottom = inner.bottom + GetSystemMetrics(SM_CYHSCROLL);
        const bool atLeft = inner.left - windowBox(target_).left >= width;
        const LONG x = atLeft ? inner.left - width : inner.right;
        const LONG style = IsWindowVisible(target_) ? GetWindowLongW(target_, GWL_STYLE) : 0;
        std::vector<Box> boxes;
        if ((style & WS_VSCROLL) != 0)
            boxes.emplace_back(x, inner.top, x + width, inner.bottom);
        if ((style & WS_HSCROLL) != 0)
            boxes.emplace_back(inner.left, inner.bottom, inner.right, bottom);
        if (boxes.size() == 2)
            boxes.emplace_back(x, inner.bottom, x + width, bottom);
        return boxes;
    }
    /// There stand the holders that are shown, directly above the target.
    void expectCovered(const std::string& when) const {
        std::vector<Box> boxes;
        for (HWND above = GetWindow(target_, GW_HWNDPREV); above && isHolder(above);
             above = GetWindow(above, GW_HWNDPREV))
            if (IsWindowVisible(above))
                boxes.push_back(windowBox(above));
        EXPECT_THAT(boxes, testing::UnorderedElementsAreArray(standardBars())) << when;
    }
    /// How often each colour stands there on the screen.
    std::map<COLORREF, int> pixelsOfBars() const {
        std::map<COLORREF, int> pixels;
        const Image image = onScreen(host_->window());
        const Box origin = windowBox(host_->window());
        for (const Box& box : standardBars())
            for (LONG y = box.top - origin.top; y < box.bottom - origin.top; ++y)
                for (LONG x = box.left - origin.left; x < box.right - origin.left; ++x)
                    ++pixels[image.at(x, y)];
        return pixels;
    }
    /// The flat bars say what the target's own say, whose vertical position is returned.
    int expectSame(const char* when) const {
        const SCROLLINFO own[] = {infoOf(target_, SB_HORZ), infoOf(target_, SB_VERT)};
        for (const bool vertical : {false, true}) {
            const SCROLLINFO flat = infoOf(holder_->GetBar(vertical), SB_CTL);
            const LONG style = vertical ? WS_VSCROLL : WS_HSCROLL;
            EXPECT_TRUE((GetWindowLongW(target_, GWL_STYLE) & style) == 0 ||
                        !std::memcmp(&own[vertical], &flat, sizeof flat))
                << when << vertical;
        }
        return own[1].nPos;
    }
    void pressArrow() const {
        const HWND bar = holder_->GetBar(true);
        SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, clientBox(bar).bottom - 2));
        SendMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(5, clientBox(bar).bottom - 2));
    }
    int dragThumb(int by) const {
        SCROLLBARINFO info{};
        info.cbSize = sizeof info;
        SendMessageW(holder_->GetBar(true), SBM_GETSCROLLBARINFO, 0,
                     reinterpret_cast<LPARAM>(&info));
        const int at = (info.xyThumbTop + info.xyThumbBottom) / 2;
        drag(holder_->GetBar(true), {5, at}, {5, at + by});
        return expectSame("dragged");
    }

    std::optional<HostDialog> host_;
    HWND target_ = nullptr;
    std::optional<ScrollbarHolder> holder_;
};

TEST_F(ScrollbarHolderTest, CoversExactlyTheStandardBarsWhateverTheFrameAndDirection) {
    for (const bool mirrored : {false, true}) {
        open(mirrored);
        for (const DWORD bars : {WS_VSCROLL, WS_HSCROLL, WS_VSCROLL | WS_HSCROLL})
            for (const DWORD border : std::initializer_list<DWORD>{0, WS_BORDER, WS_THICKFRAME})
                for (const DWORD exStyle : std::initializer_list<DWORD>{
                         0, WS_EX_CLIENTEDGE, WS_EX_STATICEDGE, WS_EX_LEFTSCROLLBAR,
                         WS_EX_LAYOUTRTL | WS_EX_CLIENTEDGE}) {
                    add(WC_LISTBOXW, bars | border | LBS_DISABLENOSCROLL, exStyle);
                    dress();
                    expectCovered(testing::PrintToString(std::tuple(bars, border, exStyle)));
                    DestroyWindow(target_);
                }
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
    open();
    addFilled(WC_EDITW);
    const auto plain = pixelsOfBars();
    const COLORREF standard =
        std::max_element(plain.begin(), plain.end(), [](const auto& a, const auto& b) {
            return a.second < b.second;
        })->first;
    dress();
    std::string step = "dress";
    const std::function<void()> look = [&] { EXPECT_EQ(pixelsOfBars()[standard], 0) << step; };
    SetWindowSubclass(target_, lookAfter, 99, reinterpret_cast<DWORD_PTR>(&look));
    const auto place = [&](HWND after, int x, int y, int width, int height, UINT flags) {
        SetWindowPos(target_, after, scaled(x), scaled(y), scaled(width), scaled(height), flags);
    };
    const std::pair<const char*, std::function<void()>> steps[] = {
        {"move", [&] { place(nullptr, 90, 70, 0, 0, SWP_NOSIZE | SWP_NOZORDER); }},
        {"shrink", [&] { place(nullptr, 0, 0, 120, 90, SWP_NOMOVE | SWP_NOZORDER); }},
        {"grow", [&] { place(nullptr, 10, 10, 330, 250, SWP_NOZORDER); }},
        {"to the bottom", [&] { place(HWND_BOTTOM, 0, 0, 0, 0, kStay); }},
        {"to the top", [&] { place(HWND_TOP, 0, 0, 0, 0, kStay); }},
        {"hide", [&] { ShowWindow(target_, SW_HIDE); }},
        {"resize hidden", [&] { place(nullptr, 20, 20, 200, 150, SWP_NOZORDER); }},
        {"show", [&] { ShowWindow(target_, SW_SHOW); }},
        {"hide parent", [&] { ShowWindow(host_->window(), SW_HIDE); }},
        {"hide in hidden", [&] { ShowWindow(target_, SW_HIDE); }},
        {"show parent", [&] { ShowWindow(host_->window(), SW_SHOW); }},
        {"show again", [&] { place(nullptr, 0, 0, 0, 0, SWP_SHOWWINDOW | kStay); }},
        {"one bar", [&] { ShowScrollBar(target_, SB_HORZ, FALSE); }},
        {"no bar", [&] { ShowScrollBar(target_, SB_VERT, FALSE); }},
        {"two bars", [&] { ShowScrollBar(target_, SB_BOTH, TRUE); }},
        {"bar gone unseen",
         [&] {
             SendMessageW(target_, WM_SETREDRAW, FALSE, 0);
             ShowScrollBar(target_, SB_HORZ, FALSE);
             look();
             SendMessageW(target_, WM_SETREDRAW, TRUE, 0);
         }},
        {"frame", [&] { RedrawWindow(target_, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE); }},
        {"disable", [&] { EnableWindow(target_, FALSE); }},
        {"parent",
         [&] {
             SetParent(target_,
                       host_->add(WC_STATICW, L"", WS_CLIPCHILDREN, scaledArea(0, 0, 250, 200), 0));
         }},
    };
    for (const auto& [name, act] : steps) {
        step = name;
        act();
        look();
        drain();
        look();
        expectCovered(name);
        EXPECT_EQ(pixelsOfBars()[kGround], 0) << name;
        EXPECT_EQ(IsWindowEnabled(GetParent(holder_->GetBar(true))), IsWindowEnabled(target_));
    }
    DestroyWindow(target_);
}

TEST_F(ScrollbarHolderTest, BarsScrollEveryTargetAndFollowItsOwnScrolling) {
    open();
    for (const wchar_t* const name : {WC_EDITW, WC_LISTBOXW, WC_LISTVIEWW}) {
        addFilled(name);
        dress();
        EXPECT_EQ(expectSame("attached"), 0);
        focus(target_);
        pressArrow();
        EXPECT_EQ(expectSame("arrow"), 1);
        EXPECT_GT(dragThumb(scaled(30)), 20);
        EXPECT_EQ(dragThumb(scaled(-90)), 0);
        SendMessageW(holder_->GetBar(true), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
        EXPECT_GT(expectSame("wheel over the bar"), 0);
        for (int i = 0; i < 3; ++i)
            keyTap(VK_NEXT);
        EXPECT_GT(expectSame("key"), 3);
        SendMessageW(target_, WM_VSCROLL, SB_PAGEDOWN, 0);
        EXPECT_GT(expectSame("host"), 8);
        EXPECT_EQ(GetFocus(), target_);
        DestroyWindow(target_);
    }
}

/// Asks the system for the thumb's position, as windows with long ranges do.
LRESULT CALLBACK scrollByInfo(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR,
                              DWORD_PTR) {
    if (message != WM_VSCROLL)
        return DefSubclassProc(window, message, wp, lp);
    EXPECT_EQ(lp, 0) << "as from a bar of its own";
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    GetScrollInfo(window, SB_VERT, &info);
    const int moves[] = {-500, 500, -5000, 5000, info.nTrackPos - info.nPos};
    if (LOWORD(wp) <= SB_THUMBPOSITION)
        SetScrollPos(window, SB_VERT, info.nPos + moves[LOWORD(wp)], TRUE);
    return 0;
}

TEST_F(ScrollbarHolderTest, DragReachesTargetsThatAskForA32BitPosition) {
    open();
    add(WC_STATICW, WS_VSCROLL);
    const SCROLLINFO info{sizeof info, SIF_ALL, 0, 99'999, 5'000, 70'000, 0};
    SetScrollInfo(target_, SB_VERT, &info, TRUE);
    SetWindowSubclass(target_, scrollByInfo, 9, 0);
    dress();
    dragThumb(scaled(15));
    EXPECT_GT(infoOf(target_, SB_VERT).nPos, 80'000);
    DestroyWindow(target_);
}

TEST_F(ScrollbarHolderTest, DialogKeepsItsTabOrderGroupsAndIds) {
    open();
    const HWND before = host_->add(WC_BUTTONW, L"a", WS_TABSTOP, scaledArea(0, 20, 9, 9), 5);
    addFilled(WC_LISTBOXW);
    const HWND zero = host_->add(WC_BUTTONW, L"b", WS_TABSTOP, scaledArea(0, 40, 9, 9), 0);
    dress();
    EXPECT_EQ(host_->control(0), zero);
    EXPECT_EQ(GetNextDlgTabItem(host_->window(), before, FALSE), target_);
    EXPECT_EQ(GetNextDlgTabItem(host_->window(), zero, TRUE), target_);
    focus(before);
    keyTap(VK_DOWN);
    EXPECT_EQ(GetFocus(), target_) << "as if nothing stood between";
    SetWindowLongPtrW(target_, GWL_STYLE, GetWindowLongPtrW(target_, GWL_STYLE) | WS_GROUP);
    EXPECT_FALSE(isHolder(GetNextDlgGroupItem(host_->window(), before, FALSE)));
}

TEST_F(ScrollbarHolderTest, EveryOrderOfEndsLeavesNothingBehind) {
    open();
    addFilled(WC_EDITW);
    SetWindowLongPtrW(target_, GWL_STYLE, GetWindowLongPtrW(target_, GWL_STYLE) & ~WS_CLIPSIBLINGS);
    const LONG_PTR style = GetWindowLongPtrW(target_, GWL_STYLE);
    const Image plain = onScreen(host_->window());
    dress();
    EXPECT_FALSE(ScrollbarHolder(9, 9).Attach(target_)) << "one holder at a time";
    EXPECT_FALSE(ScrollbarHolder(9, 9).Attach(host_->window())) << "no child";
    holder_.reset();
    drain();
    EXPECT_THAT(onScreen(host_->window()), looksLike(plain)) << "its own bars again";
    EXPECT_EQ(GetWindowLongPtrW(target_, GWL_STYLE), style);
    dress();
    DestroyWindow(GetParent(holder_->GetBar(true)));
    SendMessageW(target_, WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_EQ(holder_->GetBar(true), nullptr);
    DestroyWindow(target_);
    EXPECT_EQ(holder_->GetBar(false), nullptr);
    // The host ends the target, the holder, or the dialog, while a bar scrolls.
    const std::function<void()> ends[] = {[&] { DestroyWindow(target_); }, [&] { holder_.reset(); },
                                          [&] { DestroyWindow(host_->window()); }};
    for (const auto& end : ends) {
        host_->onMessage({});
        addFilled(WC_EDITW);
        dress();
        host_->onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_COMMAND && HIWORD(wp) == EN_VSCROLL)
                end();
            return std::nullopt;
        });
        const HWND bar = holder_->GetBar(true);
        pressArrow();
        EXPECT_FALSE(IsWindow(bar));
    }
}

}  // namespace
