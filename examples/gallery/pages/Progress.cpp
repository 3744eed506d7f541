#include "Ids.h"
#include "Page.h"

namespace Gallery {

namespace {

constexpr UINT_PTR kRunTimer = 1;
constexpr UINT kRunInterval = 100;

void setUp(HWND page) {
    for (const int id : {IDC_BAR_HALF, IDC_BAR_ERROR, IDC_BAR_PAUSED, IDC_BAR_COLOUR,
                         IDC_BAR_VERTICAL, IDC_BAR_RUNNING})
        SendDlgItemMessageW(page, id, PBM_SETPOS, 60, 0);
    SendDlgItemMessageW(page, IDC_BAR_FULL, PBM_SETPOS, 100, 0);
    SendDlgItemMessageW(page, IDC_BAR_ERROR, PBM_SETSTATE, PBST_ERROR, 0);
    SendDlgItemMessageW(page, IDC_BAR_PAUSED, PBM_SETSTATE, PBST_PAUSED, 0);
    SendDlgItemMessageW(page, IDC_BAR_COLOUR, PBM_SETBARCOLOR, 0, RGB(70, 150, 90));
}

/// Once the bars are flat, as a flat bar has a marquee of its own.
void startMarquees(HWND page) {
    SendDlgItemMessageW(page, IDC_BAR_MARQUEE, PBM_SETMARQUEE, TRUE, 0);
    SendDlgItemMessageW(page, IDC_BAR_VERTICAL_MARQUEE, PBM_SETMARQUEE, TRUE, 0);
    SetTimer(page, kRunTimer, kRunInterval, nullptr);
}

void advance(HWND page) {
    const auto position = SendDlgItemMessageW(page, IDC_BAR_RUNNING, PBM_GETPOS, 0, 0);
    SendDlgItemMessageW(page, IDC_BAR_RUNNING, PBM_SETPOS,
                        static_cast<WPARAM>(position >= 100 ? 0 : position + 1), 0);
}

}  // namespace

std::span<const FlatControl> progressControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_BAR_EMPTY, QK_PROGRESS_BAR},   {IDC_BAR_HALF, QK_PROGRESS_BAR},
        {IDC_BAR_FULL, QK_PROGRESS_BAR},    {IDC_BAR_ERROR, QK_PROGRESS_BAR},
        {IDC_BAR_PAUSED, QK_PROGRESS_BAR},  {IDC_BAR_COLOUR, QK_PROGRESS_BAR},
        {IDC_BAR_MARQUEE, QK_PROGRESS_BAR}, {IDC_BAR_VERTICAL, QK_PROGRESS_BAR},
        {IDC_BAR_RUNNING, QK_PROGRESS_BAR}, {IDC_BAR_VERTICAL_MARQUEE, QK_PROGRESS_BAR},
    };
    return kControls;
}

INT_PTR progressHook(HWND page, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: setUp(page); return TRUE;
        case kPageReady: startMarquees(page); return TRUE;
        case WM_TIMER:
            if (wParam == kRunTimer)
                advance(page);
            return FALSE;
        default: return FALSE;
    }
}

}  // namespace Gallery
