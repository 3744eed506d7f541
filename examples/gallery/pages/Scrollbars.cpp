#include <memory>
#include <string>
#include <vector>

#include "Ids.h"
#include "Page.h"
#include "QkDlg/QkFlatSlider.h"

namespace Gallery {

namespace {

constexpr int kLast = 99;
constexpr UINT kPage = 25;
constexpr int kTinyBars = 5;

using Classes = std::vector<std::unique_ptr<QkDlg::QkCustomControl>>;

/// Scroll bars and sliders have no type number: a host that links the classes makes them.
Classes& classes() {
    static Classes controls;
    return controls;
}

template <typename Control>
void makeFlat(HWND page, int id, bool vertical) {
    classes().push_back(std::make_unique<Control>(static_cast<UINT>(id), vertical));
    classes().back()->Attach(GetDlgItem(page, id));
}

void setBar(HWND page, int id, int position, UINT pageSize = kPage) {
    const SCROLLINFO info{
        sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, kLast, pageSize, position, 0};
    SetScrollInfo(GetDlgItem(page, id), SB_CTL, &info, TRUE);
}

/// Before the bars are flat, which take it over.
void setUp(HWND page) {
    for (const int id :
         {IDC_SCROLL_PLAIN, IDC_SCROLL_TOP_OFF, IDC_SCROLL_DISABLED, IDC_SCROLL_ACROSS,
          IDC_SCROLL_ACROSS_RIGHT_OFF, IDC_SCROLL_ACROSS_DISABLED})
        setBar(page, id, 30);
    for (int i = 0; i < kTinyBars; ++i)
        setBar(page, IDC_SCROLL_TINY + i, 30);
    setBar(page, IDC_SCROLL_NO_PAGE, 30, 0);
    setBar(page, IDC_SCROLL_FULL, 0, kLast + 1);
}

void makeAllFlat(HWND page) {
    for (const int id : {IDC_SCROLL_PLAIN, IDC_SCROLL_STATIC, IDC_SCROLL_NO_PAGE,
                         IDC_SCROLL_TOP_OFF, IDC_SCROLL_FULL, IDC_SCROLL_DISABLED})
        makeFlat<QkDlg::QkFlatScrollbar>(page, id, true);
    for (int i = 0; i < kTinyBars; ++i)
        makeFlat<QkDlg::QkFlatScrollbar>(page, IDC_SCROLL_TINY + i, true);
    for (const int id :
         {IDC_SCROLL_ACROSS, IDC_SCROLL_ACROSS_RIGHT_OFF, IDC_SCROLL_ACROSS_DISABLED})
        makeFlat<QkDlg::QkFlatScrollbar>(page, id, false);
    setBar(page, IDC_SCROLL_STATIC, 30);
    SendDlgItemMessageW(page, IDC_SCROLL_TOP_OFF, SBM_ENABLE_ARROWS, ESB_DISABLE_LTUP, 0);
    SendDlgItemMessageW(page, IDC_SCROLL_FULL, SBM_ENABLE_ARROWS, ESB_DISABLE_BOTH, 0);
    SendDlgItemMessageW(page, IDC_SCROLL_ACROSS_RIGHT_OFF, SBM_ENABLE_ARROWS, ESB_DISABLE_RTDN, 0);

    for (const int id : {IDC_SLIDER_PLAIN, IDC_SLIDER_STATIC, IDC_SLIDER_DISABLED})
        makeFlat<QkDlg::QkFlatSlider>(page, id, false);
    makeFlat<QkDlg::QkFlatSlider>(page, IDC_SLIDER_UPRIGHT, true);
    for (const int id :
         {IDC_SLIDER_PLAIN, IDC_SLIDER_STATIC, IDC_SLIDER_DISABLED, IDC_SLIDER_UPRIGHT})
        SendDlgItemMessageW(page, id, TBM_SETPOS, TRUE, 40);
}

const wchar_t* requestName(int request) {
    static constexpr const wchar_t* kNames[] = {
        L"line up",     L"line down", L"page up", L"page down",       L"thumb position",
        L"thumb track", L"top",       L"bottom",  L"end of scrolling"};
    return kNames[request];
}

/// What a window that scrolls by a bar does: sliders have moved by themselves.
void scroll(HWND bar, int request) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(bar, SB_CTL, &info);
    switch (request) {
        case SB_LINEUP: --info.nPos; break;
        case SB_LINEDOWN: ++info.nPos; break;
        case SB_PAGEUP: info.nPos -= static_cast<int>(info.nPage); break;
        case SB_PAGEDOWN: info.nPos += static_cast<int>(info.nPage); break;
        case SB_TOP: info.nPos = info.nMin; break;
        case SB_BOTTOM: info.nPos = info.nMax; break;
        default: return;
    }
    info.fMask = SIF_POS;
    SetScrollInfo(bar, SB_CTL, &info, TRUE);
}

void onScroll(HWND page, int request, HWND bar) {
    const int id = GetDlgCtrlID(bar);
    if (id < IDC_SLIDER_PLAIN)
        scroll(bar, request);
    if (request == SB_ENDSCROLL)
        return;
    const std::wstring text = std::wstring(requestName(request)) + L", position " +
                              std::to_wstring(GetScrollPos(bar, SB_CTL));
    SetDlgItemTextW(page, IDC_SCROLL_REQUEST, text.c_str());
}

}  // namespace

std::span<const FlatControl> scrollbarControls() {
    return {};
}

INT_PTR scrollbarHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: setUp(page); return TRUE;
        case kPageReady:
            if (wParam)
                makeAllFlat(page);
            return TRUE;
        case WM_HSCROLL:
        case WM_VSCROLL:
            onScroll(page, LOWORD(wParam), reinterpret_cast<HWND>(lParam));
            return TRUE;
        case WM_NCDESTROY: classes().clear(); return FALSE;
        default: return FALSE;
    }
}

}  // namespace Gallery
