#pragma once

#include <string>

#include "QkDlg/Win32.h"

namespace QkDlgTest {

/// "WM_PAINT", or the number where the name is not known here.
[[nodiscard]] std::string messageName(UINT message);

}  // namespace QkDlgTest
