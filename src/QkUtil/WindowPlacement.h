#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// Moves a top-level window to the middle of another window, within the work area of the monitor
/// that the other one is on.
void centreWindow(HWND hwnd, HWND over);

}  // namespace QkDlg
