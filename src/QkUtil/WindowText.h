#pragma once

#include <string>

#include "QkDlg/Win32.h"

namespace QkDlg {

/// The whole text of a window.
[[nodiscard]] inline std::wstring windowText(HWND hwnd) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(hwnd)) + 1, L'\0');
    const int length = GetWindowTextW(hwnd, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace QkDlg
