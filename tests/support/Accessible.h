#pragma once

#include <string>

#include "QkDlg/Win32.h"

namespace QkDlgTest {

/// What a screen reader is told about a window's client area: name, value, role (ROLE_SYSTEM_*) and
/// state (STATE_SYSTEM_*).
[[nodiscard]] std::wstring accessible(HWND window);

}  // namespace QkDlgTest
