#pragma once

#include <string>

#include "QkDlg/Win32.h"

namespace QkPreview {

/// Registers the window classes that dialogs commonly use: all common controls, rich edits.
void registerCommonClasses();

/// Makes sure that windows of the class can be created. A class that nobody has registered, since
/// its program does not run, becomes a box with its name in it, or in the case of a dialog's own
/// class an ordinary dialog. True when it is such a stand-in.
bool ensureControlClass(const std::wstring& name);
bool ensureDialogClass(const std::wstring& name);

}  // namespace QkPreview
