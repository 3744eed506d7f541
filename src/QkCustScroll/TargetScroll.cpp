#include "QkCustScroll/TargetScroll.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cwchar>

#include "QkCustScroll/ScrollLayout.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

// A walk must not take so long that the thumb lags behind the mouse; the next move continues it.
constexpr int kStepsAtOnce = 100;
// Where the thumb is let go it is to arrive, in a window that moves at all.
constexpr int kStepsAtEnd = 5000;
constexpr int kListSteps = 8;

// Elements of a scroll bar in SCROLLBARINFO::rgstate.
constexpr int kWholeBar = 0;
constexpr int kFirstArrow = 1;
constexpr int kSecondArrow = 5;

bool isListView(HWND hwnd) {
    std::array<wchar_t, 32> name{};
    GetClassNameW(hwnd, name.data(), static_cast<int>(name.size()));
    return std::wcscmp(name.data(), WC_LISTVIEWW) == 0;
}

int positionOf(HWND target, bool vertical) {
    return scrollInfoOf(target, vertical).nPos;
}

/// Whether LVM_SCROLL counts columns, not pixels: in list view.
bool scrollsByColumns(HWND list) {
    // Older common controls know of no views and answer 0, like an icon view.
    const LRESULT view = SendMessageW(list, LVM_GETVIEW, 0, 0);
    return view == LV_VIEW_LIST ||
           (view == 0 && (GetWindowLongPtrW(list, GWL_STYLE) & LVS_TYPEMASK) == LVS_LIST);
}

// SB_PAGEUP and SB_PAGELEFT, SB_LINEUP and SB_LINELEFT are the same numbers.
void walk(HWND target, UINT message, int position, int steps) {
    const bool vertical = message == WM_VSCROLL;
    std::int64_t before = INT64_MAX;
    for (int step = 0; step < steps; ++step) {
        const SCROLLINFO info = scrollInfoOf(target, vertical);
        const std::int64_t rest = std::int64_t{position} - info.nPos;
        if (rest == 0 || std::abs(rest) >= std::abs(before))
            return;
        before = rest;
        const bool page = info.nPage > 1 && std::abs(rest) >= std::int64_t{info.nPage};
        const int up = page ? SB_PAGEUP : SB_LINEUP;
        const int down = page ? SB_PAGEDOWN : SB_LINEDOWN;
        SendMessageW(target, message, static_cast<WPARAM>(rest < 0 ? up : down), 0);
    }
}

}  // namespace

SCROLLINFO scrollInfoOf(HWND target, bool vertical) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(target, vertical ? SB_VERT : SB_HORZ, &info);
    return info;
}

int trackPositionOf(HWND bar) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(bar, SB_CTL, &info);
    return info.nTrackPos;
}

// A page is taken for as long as the client area, which has the header in it, too: with each step
// less is left of what that is wrong by.
void scrollListTo(HWND list, bool vertical, int position) {
    const bool byColumns = !vertical && scrollsByColumns(list);
    const RECT client = clientRect(list);
    for (int step = 0; step < kListSteps; ++step) {
        const SCROLLINFO own = scrollInfoOf(list, vertical);
        const ScrollState state{position, own.nPos, own.nMin, own.nMax, own.nPage};
        const int way = byColumns ? position - own.nPos
                                  : scrollDistance(state, vertical ? client.bottom : client.right);
        if (way == 0)
            return;
        SendMessageW(list, LVM_SCROLL, static_cast<WPARAM>(vertical ? 0 : way), vertical ? way : 0);
    }
}

bool canScroll(HWND target, bool vertical, const SCROLLINFO& info) {
    SCROLLBARINFO bar{};
    bar.cbSize = sizeof bar;
    const bool known =
        GetScrollBarInfo(target, vertical ? OBJID_VSCROLL : OBJID_HSCROLL, &bar) != FALSE;
    if (known && (bar.rgstate[kWholeBar] & STATE_SYSTEM_UNAVAILABLE) != 0)
        return false;
    const std::int64_t last = std::int64_t{info.nMax} - std::max<std::int64_t>(info.nPage, 1) + 1;
    return last > info.nMin;
}

UINT arrowsOff(HWND target, bool vertical) {
    SCROLLBARINFO bar{};
    bar.cbSize = sizeof bar;
    if (!GetScrollBarInfo(target, vertical ? OBJID_VSCROLL : OBJID_HSCROLL, &bar))
        return ESB_ENABLE_BOTH;
    UINT off = ESB_ENABLE_BOTH;
    if ((bar.rgstate[kFirstArrow] & STATE_SYSTEM_UNAVAILABLE) != 0)
        off |= ESB_DISABLE_UP;
    if ((bar.rgstate[kSecondArrow] & STATE_SYSTEM_UNAVAILABLE) != 0)
        off |= ESB_DISABLE_DOWN;
    return off;
}

void forwardScroll(HWND target, HWND bar, UINT message, WPARAM wParam) {
    const UINT code = LOWORD(wParam);
    const bool list = isListView(target);
    const auto sender = list ? reinterpret_cast<LPARAM>(bar) : 0;
    if (code != SB_THUMBTRACK && code != SB_THUMBPOSITION) {
        SendMessageW(target, message, wParam, sender);
        return;
    }
    const bool vertical = message == WM_VSCROLL;
    const int wanted = trackPositionOf(bar);
    const int before = positionOf(target, vertical);
    const auto forwarded = MAKEWPARAM(list ? code : SB_THUMBPOSITION, HIWORD(wParam));
    SendMessageW(target, message, forwarded, sender);
    if (positionOf(target, vertical) != before || wanted == before)
        return;
    // A list of many rows is far too long for pages.
    if (list)
        scrollListTo(target, vertical, wanted);
    walk(target, message, wanted, code == SB_THUMBTRACK ? kStepsAtOnce : kStepsAtEnd);
}

}  // namespace QkDlg
