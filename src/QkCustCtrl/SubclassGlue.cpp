#include "QkCustCtrl/SubclassGlue.h"

#include "QkUtil/Module.h"

namespace QkDlg {

bool installSubclass(HWND hwnd, SUBCLASSPROC procedure, QkCustomControl& control, UINT_PTR id) {
    pinOwnModule();
    return SetWindowSubclass(hwnd, procedure, id, reinterpret_cast<DWORD_PTR>(&control)) != FALSE;
}

LRESULT passOnUnseen(const Message& message) {
    // Switching the drawing of a hidden window on again would show it.
    const bool visible = (GetWindowLongPtrW(message.hwnd, GWL_STYLE) & WS_VISIBLE) != 0;
    if (!visible)
        return message.passOn();
    DefSubclassProc(message.hwnd, WM_SETREDRAW, FALSE, 0);
    const LRESULT result = message.passOn();
    DefSubclassProc(message.hwnd, WM_SETREDRAW, TRUE, 0);
    repaintNow(message.hwnd);
    return result;
}

LRESULT passOnAndRepaint(const Message& message) {
    const LRESULT result = message.passOn();
    repaintNow(message.hwnd);
    return result;
}

void repaintNow(HWND hwnd) {
    RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_NOERASE | RDW_UPDATENOW);
}

}  // namespace QkDlg
