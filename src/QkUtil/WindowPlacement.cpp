#include "QkUtil/WindowPlacement.h"

#include "QkUtil/Centring.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

void centreWindow(HWND hwnd, HWND over) {
    RECT window{};
    RECT reference{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (!GetWindowRect(hwnd, &window) || !GetWindowRect(over, &reference) ||
        !GetMonitorInfoW(MonitorFromRect(&reference, MONITOR_DEFAULTTONEAREST), &monitor))
        return;
    const Rect now = fromWin32(window);
    const Rect to =
        centredIn({now.width(), now.height()}, fromWin32(reference), fromWin32(monitor.rcWork));
    SetWindowPos(hwnd, nullptr, to.left, to.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace QkDlg
