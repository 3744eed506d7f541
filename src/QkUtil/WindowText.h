#pragma once

#include <array>
#include <string>

#include "QkDlg/Win32.h"

namespace QkDlg {

/// The whole text of a window.
[[nodiscard]] inline std::wstring windowText(HWND hwnd) {
    // Most texts are short and cost one message instead of two.
    std::array<wchar_t, 128> brief{};
    const int taken = GetWindowTextW(hwnd, brief.data(), static_cast<int>(brief.size()));
    if (taken < static_cast<int>(brief.size()) - 1)
        return {brief.data(), static_cast<std::size_t>(taken)};
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(hwnd)) + 1, L'\0');
    const int length = GetWindowTextW(hwnd, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace QkDlg
