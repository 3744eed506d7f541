#pragma once

#include <array>
#include <string>

#include "QkDlg/Win32.h"

namespace QkDlg {

/// The name of a window's class, cut after 59 characters; empty when there is no such window.
[[nodiscard]] inline std::wstring windowClass(HWND hwnd) {
    std::array<wchar_t, 60> name{};
    const int length = GetClassNameW(hwnd, name.data(), static_cast<int>(name.size()));
    return {name.data(), static_cast<std::size_t>(length > 0 ? length : 0)};
}

/// Whether the window is of that class; case does not matter.
[[nodiscard]] inline bool windowClassIs(HWND hwnd, const wchar_t* name) {
    return lstrcmpiW(windowClass(hwnd).c_str(), name) == 0;
}

}  // namespace QkDlg
