#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// The module that contains the library's code and with it its resources: the DLL, or the program
/// that links the classes.
[[nodiscard]] HMODULE ownModule();

/// Keeps the containing module loaded until the process ends. From the first subclassed window on
/// the system may call into it at any time, so a host that frees the DLL early must not pull the
/// code away under its own windows.
void pinOwnModule();

}  // namespace QkDlg
