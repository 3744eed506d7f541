#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// The tooltip for the eye buttons of a dialog. All of its password boxes share one: a tooltip is a
/// window of its own on the screen, by far the dearest part of such a box. Made for the first box
/// and destroyed with the last. Null when the system gives no window.
[[nodiscard]] HWND joinEyeTooltip(HWND parent);

/// The end of a box: its eye has no tooltip any more.
void leaveEyeTooltip(HWND tooltip, HWND eye);

/// Gives an eye button its text. Does nothing when it has it already.
void giveEyeTooltip(HWND tooltip, HWND eye);

}  // namespace QkDlg
