#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "QkDlg/Win32.h"

namespace QkDlgTools {

struct PictureDeleter {
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using UniquePicture = std::unique_ptr<std::remove_pointer_t<HBITMAP>, PictureDeleter>;

/// What the screen shows of the window's client area. Null when it is empty or cannot be had.
[[nodiscard]] UniquePicture capturedClient(HWND window);

/// Saves a bitmap as a PNG file.
[[nodiscard]] bool savePng(HBITMAP bitmap, const std::wstring& file);

/// Loads a picture file; null when there is none that can be read.
[[nodiscard]] UniquePicture loadPicture(const std::wstring& file);

/// Width and height; zero for null.
[[nodiscard]] SIZE pictureSize(HBITMAP bitmap);

}  // namespace QkDlgTools
