#pragma once

#include <ostream>
#include <string>

#include "QkDlg/Win32.h"
// The constants of roles and states; needs windows.h first.
#include <oleacc.h>

namespace QkDlgTest {

/// What a screen reader is told about a window's client area: name, role (ROLE_SYSTEM_*), state
/// (STATE_SYSTEM_*) and value.
struct Accessible {
    std::wstring name;
    long role = 0;
    long state = 0;
    std::wstring value;

    bool operator==(const Accessible&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Accessible& accessible);

[[nodiscard]] Accessible accessible(HWND window);

}  // namespace QkDlgTest
