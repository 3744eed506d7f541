#pragma once

#include "QkDlg/Win32.h"
#include "QkUtil/Geometry.h"

namespace QkDlg {

inline Rect fromWin32(const RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}
inline RECT toWin32(const Rect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

/// The window's client rectangle; empty when there is no such window.
inline RECT clientRect(HWND hwnd) {
    RECT rect{};
    GetClientRect(hwnd, &rect);
    return rect;
}

/// The window's rectangle in the client coordinates of `of` (a mirrored `of` included: left stays
/// left of right).
inline RECT windowRectIn(HWND hwnd, HWND of) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    MapWindowPoints(HWND_DESKTOP, of, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

/// Whether nothing of a window lies outside its client area but an even margin. Without one,
/// WM_NCPAINT has nothing to draw.
inline bool isAllClient(HWND hwnd, int margin = 0) {
    RECT window{};
    GetWindowRect(hwnd, &window);
    const RECT client = clientRect(hwnd);
    return client.right + 2 * margin == window.right - window.left &&
           client.bottom + 2 * margin == window.bottom - window.top;
}

}  // namespace QkDlg
