#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// Asks for one WM_MOUSELEAVE of the window that the mouse is over.
inline void trackMouseLeave(HWND hwnd) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof track;
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = hwnd;
    TrackMouseEvent(&track);
}

}  // namespace QkDlg
