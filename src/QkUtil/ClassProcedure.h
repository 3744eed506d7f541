#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// Sends a message straight to the procedure of the window's class, past every procedure that
/// subclasses the window. For what a painter asks a standard control many times over: one that
/// paints itself asks nobody else, either, and each procedure on the way has its price.
inline LRESULT askClass(HWND hwnd, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    const auto procedure = reinterpret_cast<WNDPROC>(GetClassLongPtrW(hwnd, GCLP_WNDPROC));
    return procedure ? CallWindowProcW(procedure, hwnd, message, wParam, lParam) : 0;
}

/// The same with a structure that the message reads or fills.
template <typename Structure>
LRESULT askClass(HWND hwnd, UINT message, WPARAM wParam, Structure* structure) {
    return askClass(hwnd, message, wParam, reinterpret_cast<LPARAM>(structure));
}

}  // namespace QkDlg
