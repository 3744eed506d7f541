#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// What the window's own scroll bar says (SIF_ALL); nothing but the size when it has none.
[[nodiscard]] SCROLLINFO scrollInfoOf(HWND target, bool vertical);

/// Whether the user could scroll with this standard bar: it is not switched off and there is
/// something to scroll over.
[[nodiscard]] bool canScroll(HWND target, bool vertical, const SCROLLINFO& info);

/// The ESB_ code of the arrows that are switched off in the window's own scroll bar.
[[nodiscard]] UINT arrowsOff(HWND target, bool vertical);

/// Where the thumb of a scroll-bar window is dragged to.
[[nodiscard]] int trackPositionOf(HWND bar);

/// Scrolls a list view to a position of its bar, or close to it.
void scrollListTo(HWND list, bool vertical, int position);

/// Hands a request of a flat bar (WM_VSCROLL or WM_HSCROLL with its wParam) to the window that the
/// bar scrolls, which hears it as from a scroll bar of its own. The thumb's positions arrive as
/// SB_THUMBPOSITION, which every window scrolls by. A list view hears them as they are, and with
/// the bar, as it asks for the position itself. Windows that ask the system for a position, which
/// only a standard bar could give, or whose range takes more than 16 bits, are taken there by pages
/// and lines.
void forwardScroll(HWND target, HWND bar, UINT message, WPARAM wParam);

}  // namespace QkDlg
