#pragma once

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// Standard statics and edits ask their parent what to paint with (WM_CTLCOLOR...). From this call
/// on, wherever the parent leaves that question about the control's window to the system, the
/// control's OnCtlColor answers it, so that the control looks right in a dialog without any code
/// for it. A parent's own answer stands.
void answerColoursForParent(QkCustomControl& control);

/// The control or its binding to its window ends; nothing where it never answered.
void stopAnsweringColours(const QkCustomControl& control);

}  // namespace QkDlg
