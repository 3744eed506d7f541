#include "QkCustCtrl/SubclassGlue.h"

#include "QkUtil/Module.h"

namespace QkDlg {

bool isShown(HWND hwnd) {
    return (GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_VISIBLE) != 0;
}

bool installSubclass(HWND hwnd, SUBCLASSPROC procedure, QkCustomControl& control, UINT_PTR id) {
    pinOwnModule();
    return SetWindowSubclass(hwnd, procedure, id, reinterpret_cast<DWORD_PTR>(&control)) != FALSE;
}

// Switching the drawing of a hidden window on again would show it.
DrawingOff::DrawingOff(HWND hwnd) : m_hwnd(isShown(hwnd) ? hwnd : nullptr) {
    if (m_hwnd)
        DefSubclassProc(m_hwnd, WM_SETREDRAW, FALSE, 0);
}

DrawingOff::~DrawingOff() {
    if (m_hwnd)
        DefSubclassProc(m_hwnd, WM_SETREDRAW, TRUE, 0);
}

LRESULT passOnUnseen(const Message& message) {
    LRESULT result = 0;
    {
        const DrawingOff off(message.hwnd);
        result = message.passOn();
    }
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
