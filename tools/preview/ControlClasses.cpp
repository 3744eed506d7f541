#include "preview/ControlClasses.h"

#include <set>

#include "QkUtil/Handles.h"
#include "QkUtil/Rects.h"

namespace QkPreview {
namespace {

constexpr DWORD kAllCommonControls = ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_USEREX_CLASSES |
                                     ICC_COOL_CLASSES | ICC_INTERNET_CLASSES |
                                     ICC_PAGESCROLLER_CLASS | ICC_NATIVEFNTCTL_CLASS |
                                     ICC_STANDARD_CLASSES | ICC_LINK_CLASS;

constexpr COLORREF kBoxColour = RGB(250, 244, 226);
constexpr COLORREF kBoxEdge = RGB(190, 160, 80);

std::set<std::wstring>& standIns() {
    static std::set<std::wstring> names;
    return names;
}

// From the system's folder only: a library of that name beside a previewed program must not run.
void loadSystemLibrary(const wchar_t* fileName) {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetSystemDirectoryW(path.data(), MAX_PATH));
    LoadLibraryW((path + L"\\" + fileName).c_str());
}

void paintBox(HWND window) {
    const QkDlg::PaintDc paint(window);
    RECT box = QkDlg::clientRect(window);
    const QkDlg::UniqueBrush ground = QkDlg::solidBrush(kBoxColour);
    const QkDlg::UniqueBrush edge = QkDlg::solidBrush(kBoxEdge);
    FillRect(paint.get(), &box, ground.get());
    FrameRect(paint.get(), &box, edge.get());
    wchar_t name[256]{};
    GetClassNameW(window, name, 256);
    const QkDlg::Selection font(paint.get(), GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(paint.get(), TRANSPARENT);
    SetTextColor(paint.get(), RGB(110, 90, 30));
    DrawTextW(paint.get(), name, -1, &box,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
}

LRESULT CALLBACK boxProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) {
        paintBox(window);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

/// `extraBytes` for the window, whose messages `procedure` answers.
bool ensureClass(const std::wstring& name, WNDPROC procedure, int extraBytes) {
    if (standIns().contains(name))
        return true;
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    if (GetClassInfoExW(nullptr, name.c_str(), &known) ||
        GetClassInfoExW(GetModuleHandleW(nullptr), name.c_str(), &known))
        return false;
    WNDCLASSEXW missing{};
    missing.cbSize = sizeof missing;
    // Dialogs create their controls in the name of the module that they come from.
    missing.style = CS_GLOBALCLASS | CS_HREDRAW | CS_VREDRAW;
    missing.lpfnWndProc = procedure;
    missing.cbWndExtra = extraBytes;
    missing.hInstance = GetModuleHandleW(nullptr);
    missing.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    missing.lpszClassName = name.c_str();
    if (!RegisterClassExW(&missing))
        return false;
    standIns().insert(name);
    return true;
}

}  // namespace

void registerCommonClasses() {
    const INITCOMMONCONTROLSEX classes{sizeof classes, kAllCommonControls};
    InitCommonControlsEx(&classes);
    for (const wchar_t* library : {L"msftedit.dll", L"riched20.dll", L"riched32.dll"})
        loadSystemLibrary(library);
}

bool ensureControlClass(const std::wstring& name) {
    return ensureClass(name, &boxProc, 0);
}

bool ensureDialogClass(const std::wstring& name) {
    return ensureClass(name, &DefDlgProcW, DLGWINDOWEXTRA);
}

}  // namespace QkPreview
