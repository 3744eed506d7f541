#pragma once

#include <string>

#include "QkDlg/Win32.h"

namespace Gallery {

/// Saves what the screen shows of the window's client area as a PNG file.
[[nodiscard]] bool savePicture(HWND window, const std::wstring& file);

}  // namespace Gallery
