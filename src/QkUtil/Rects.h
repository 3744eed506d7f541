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

}  // namespace QkDlg
