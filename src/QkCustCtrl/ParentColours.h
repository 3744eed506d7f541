#pragma once

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// Hears what the parent has answered in the end: the brush for the window of the control, which
/// paints with it in `hdc`.
using GroundListener = void (*)(QkCustomControl& control, HDC hdc, HBRUSH brush);

/// Standard statics and edits ask their parent what to paint with (WM_CTLCOLOR...). From this call
/// on, wherever the parent leaves that question about the control's window to the system, the
/// control's OnCtlColor answers it, so that the control looks right in a dialog without any code
/// for it. A parent's own answer stands.
void answerColoursForParent(QkCustomControl& control, GroundListener listener = nullptr);

/// The control or its binding to its window ends; nothing where it never answered.
void stopAnsweringColours(const QkCustomControl& control);

/// Whether a parent of such windows is being destroyed, and with it all its children.
[[nodiscard]] bool isParentGoing(HWND parent);

}  // namespace QkDlg
