#pragma once

#include <memory>
#include <type_traits>

#include "QkDlg/Win32.h"

namespace Gallery {

struct GdiDeleter {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDeleter>;
using UniqueBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiDeleter>;

struct KernelDeleter {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueKernelHandle = std::unique_ptr<void, KernelDeleter>;

}  // namespace Gallery
