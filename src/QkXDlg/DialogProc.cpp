#include "QkDlg/QkXDlg.h"

// Behind the Windows header, which they need.
#include <commdlg.h>
#include <prsht.h>

namespace QkDlg {

namespace {

/// Sets a flag for as long as this lives.
class FlagScope {
public:
    explicit FlagScope(bool& flag) : m_flag(flag), m_previous(flag) { flag = true; }
    ~FlagScope() { m_flag = m_previous; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;
    FlagScope(FlagScope&&) = delete;
    FlagScope& operator=(FlagScope&&) = delete;

private:
    bool& m_flag;
    bool m_previous;
};

constexpr UINT kPropertySheetHelp = PSN_HELP;
constexpr UINT kCommonDialogHelp = CDN_HELP;

UINT low32(WPARAM value) {
    return static_cast<UINT>(value & 0xFFFFFFFF);
}

}  // namespace

DLGPROC QkXDlg::GetDialogProc() {
    return &QkXDlg::DialogProc;
}

INT_PTR CALLBACK QkXDlg::DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG)
        SetWindowLongPtrW(hwnd, DWLP_USER, lParam);
    auto* dialog = reinterpret_cast<QkXDlg*>(GetWindowLongPtrW(hwnd, DWLP_USER));
    if (dialog && message == WM_NCDESTROY)
        return dialog->RouteLast(hwnd, wParam, lParam);
    return dialog ? dialog->Route(hwnd, message, wParam, lParam) : 0;
}

INT_PTR QkXDlg::Route(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: return RouteInitDialog(hwnd);
        case WM_DESTROY: return OnDestroy();
        case WM_MOVE: OnMove(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)); return 0;
        case WM_SIZE: return OnSize(low32(wParam), LOWORD(lParam), HIWORD(lParam));
        case WM_PAINT: return OnPaint();
        case WM_CLOSE: return OnClose();
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED: return OnColorsChanged();
        case WM_GETMINMAXINFO: return OnGetMinMaxInfo(lParam);
        case WM_DRAWITEM: return OnDrawItem(low32(wParam), lParam);
        case WM_MEASUREITEM: return OnMeasureItem(low32(wParam), lParam);
        case WM_NOTIFY: return RouteNotify(hwnd, wParam, lParam);
        case WM_HELP: return OnHelp();
        case WM_CONTEXTMENU: return OnContextMenu(wParam, lParam);
        case WM_COMMAND: return RouteCommandMessage(wParam, lParam);
        case WM_SYSCOMMAND: return OnSysCommand(wParam, lParam);
        case WM_TIMER: return OnTimer(LOWORD(wParam));
        case WM_UPDATEUISTATE: OnUpdateUIState(HIWORD(wParam), LOWORD(wParam)); return 0;
        case WM_CTLCOLORDLG: return OnCtlColorDlg();
        case WM_CTLCOLORBTN:
            return OnCtlColorBtn(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
        case WM_CTLCOLORSTATIC:
            return OnCtlColorStatic(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
        case WM_SIZING: return OnSizing(low32(wParam), lParam);
        case WM_MOVING: OnMoving(wParam, lParam); return 0;
        default: return OnMessage(message, wParam, lParam);
    }
}

bool QkXDlg::RouteInitDialog(HWND hwnd) {
    m_hWnd = hwnd;
    m_boundWindow = hwnd;
    const FlagScope initialising(m_bInitialising);
    return OnInitDialog();
}

// A host that made the dialog itself may destroy it without EndDialog: no handle is left behind.
INT_PTR QkXDlg::RouteLast(HWND hwnd, WPARAM wParam, LPARAM lParam) {
    SetWindowLongPtrW(hwnd, DWLP_USER, 0);
    m_boundWindow = nullptr;
    if (m_hWnd == hwnd)
        m_hWnd = nullptr;
    return OnMessage(WM_NCDESTROY, wParam, lParam);
}

// The whole wParam counts: a notification of another kind from the OK button (a double click, say)
// is a command like any other.
bool QkXDlg::RouteCommandMessage(WPARAM wParam, LPARAM lParam) {
    switch (wParam) {
        case IDOK: return OnOK();
        case IDCANCEL: return OnCancel();
        case IDHELP: return OnHelp();
        default: return OnCommand(wParam, lParam);
    }
}

// What the sender of a notification gets stands in the window, not in what the procedure returns.
INT_PTR QkXDlg::RouteNotify(HWND hwnd, WPARAM wParam, LPARAM lParam) {
    const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
    if (code == kPropertySheetHelp || code == kCommonDialogHelp)
        return OnHelp();
    LRESULT result = 0;
    if (!OnNotify(low32(wParam), lParam, &result))
        return 0;
    SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
    return result;
}

}  // namespace QkDlg
