#pragma once

#include <memory>
#include <span>

#include "QkDlg/QkCustomControl.h"

namespace QkDlgBench {

/// A control class of the library and the standard control that it is made of.
struct Kind {
    const char* name;
    const wchar_t* windowClass;
    DWORD style;    ///< besides WS_CHILD
    DWORD exStyle;  ///< as dialog templates give it
    SIZE size;      ///< at 96 DPI
    const wchar_t* text;
    void (*fill)(HWND window);  ///< gives the control something to show; null for nothing
    std::unique_ptr<QkDlg::QkCustomControl> (*makeFlat)(UINT id);
};

[[nodiscard]] std::span<const Kind> allKinds();

}  // namespace QkDlgBench
