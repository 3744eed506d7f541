#pragma once

#include "Options.h"
#include "QkDlg/Win32.h"

namespace Gallery {

/// Moves the mouse into a corner of the screen, where it touches no control.
void parkPointer();

/// Brings a control of the page into the state a picture is to show, by real input: moves the
/// mouse there, presses its button or gives the control the focus. False: no such control.
[[nodiscard]] bool applyPointer(HWND page, const Options& options);

/// Parks the mouse again, and lets its button go where that clicks nothing.
void releasePointer(const Options& options);

}  // namespace Gallery
