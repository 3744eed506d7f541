#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// The subclass procedure of flat labels.
LRESULT CALLBACK staticTextProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                UINT_PTR subclassId, DWORD_PTR referenceData);

}  // namespace QkDlg
