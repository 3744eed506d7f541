#include "preview/PreviewDialog.h"

#include <array>
#include <set>
#include <utility>

#include "QkDlg/DialogFonts.h"
#include "preview/ControlClasses.h"

namespace QkPreview {
namespace {

constexpr const wchar_t* kFrameClass = L"QkPreviewFrame";

// A preview decides by itself when and where a dialog shows.
constexpr DWORD kUnwantedStyles = WS_VISIBLE | WS_DISABLED | WS_MINIMIZE | WS_MAXIMIZE |
                                  DS_SYSMODAL | DS_CENTER | DS_CENTERMOUSE | DS_SETFOREGROUND;

LRESULT CALLBACK frameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CLOSE) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void registerFrameClass() {
    WNDCLASSEXW frame{};
    frame.cbSize = sizeof frame;
    frame.lpfnWndProc = &frameProc;
    frame.hInstance = GetModuleHandleW(nullptr);
    frame.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    frame.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    frame.lpszClassName = kFrameClass;
    RegisterClassExW(&frame);  // from the second time on it exists
}

QkDlg::GlobalBlock withDialogFont(QkDlg::GlobalBlock block) {
    std::array<wchar_t, LF_FACESIZE + 1> face{};
    int size = 0;
    if (!QkDlg::GetDialogFont(face.data(), static_cast<int>(face.size()), size))
        return block;
    return QkDlg::SetTemplateFont(std::move(block), face.data(), static_cast<WORD>(size), 0);
}

void dispatch(HWND dialog, MSG& message) {
    if (IsDialogMessageW(dialog, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

std::size_t childCount(HWND dialog) {
    std::size_t count = 0;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        ++count;
    return count;
}

}  // namespace

PreviewDialog::PreviewDialog(UINT32 templateId, Look look, bool centred)
    : QkXDlg(templateId, nullptr, 0, centred) {
    m_bFlat = look == Look::Flat;
}

bool PreviewDialog::OnInitDialog() {
    if (m_bFlat) {
        LoadDialogDefaults();
        // The conversion that follows finds everything converted.
        children_ = QkDlg::convertToFlat(m_hWnd, m_nTemplateId, m_controls);
    }
    return QkXDlg::OnInitDialog();
}

bool PreviewDialog::OnOK() {
    PostQuitMessage(0);
    return true;
}

bool PreviewDialog::OnCancel() {
    PostQuitMessage(0);
    return true;
}

bool PreviewDialog::OnDestroy() {
    m_hWnd = nullptr;
    return false;
}

OpenPreview::OpenPreview(const Module& module, const TemplateName& name, Look look, bool centred)
    : look_(look), centred_(centred), dialog_(name.id, look, centred) {
    TemplateCopy copy = module.copyTemplate(name);
    const auto contents = copy.block ? readTemplate(copy.words()) : std::nullopt;
    if (auto fault = templateFault(contents)) {
        findings_.fault = std::move(fault);
    } else if (!open(module, std::move(copy), *contents)) {
        findings_.fault = L"the system does not create the dialog (error " +
                          std::to_wstring(GetLastError()) + L")";
    }
}

OpenPreview::~OpenPreview() {
    if (HWND top = topWindow())
        DestroyWindow(top);
}

void OpenPreview::ensureClasses(const TemplateContents& contents) {
    if (!contents.windowClass.empty() && ensureDialogClass(contents.windowClass))
        findings_.remarks.push_back(L"the dialog's window class " + contents.windowClass +
                                    L" is not registered; an ordinary dialog stands in for it");
    std::set<std::wstring> missing;
    for (const TemplateControl& control : contents.controls) {
        if (!control.className.empty() && ensureControlClass(control.className))
            missing.insert(control.className);
    }
    for (const std::wstring& name : missing)
        findings_.remarks.push_back(L"the window class " + name +
                                    L" is not registered; a box stands in for its controls");
}

bool OpenPreview::open(const Module& module, TemplateCopy copy, const TemplateContents& contents) {
    ensureClasses(contents);
    changeTemplateStyle(copy.words(), kUnwantedStyles, DS_NOFAILCREATE);
    if (look_ == Look::Flat) {
        QkDlg::QkXDlg::LoadDialogDefaults();
        copy.block = withDialogFont(std::move(copy.block));
    }
    if ((contents.style & WS_CHILD) != 0)
        createFrame(contents);
    QkDlg::QkXDlg* object = &dialog_;
    HWND window = CreateDialogIndirectParamW(
        module.get(), static_cast<const DLGTEMPLATE*>(copy.block.get()), frame_,
        QkDlg::QkXDlg::GetDialogProc(), reinterpret_cast<LPARAM>(object));
    if (!window)
        return false;
    const std::size_t created = childCount(window);
    if (created < contents.controls.size())
        findings_.remarks.push_back(std::to_wstring(contents.controls.size() - created) +
                                    L" of its controls could not be created");
    if (frame_)
        fitFrame();
    else if (!centred_)
        SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    return true;
}

void OpenPreview::createFrame(const TemplateContents& contents) {
    registerFrameClass();
    frame_ = CreateWindowExW(WS_EX_CONTROLPARENT, kFrameClass, contents.caption.c_str(),
                             WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, 0, 0, 0, 0,
                             nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
}

void OpenPreview::fitFrame() const {
    RECT rect{};
    GetWindowRect(dialog_.window(), &rect);
    OffsetRect(&rect, -rect.left, -rect.top);
    SetWindowPos(dialog_.window(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    AdjustWindowRectEx(&rect, static_cast<DWORD>(GetWindowLongPtrW(frame_, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(frame_, GWL_EXSTYLE)));
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    const int left = centred_ ? (GetSystemMetrics(SM_CXSCREEN) - width) / 2 : 0;
    const int top = centred_ ? (GetSystemMetrics(SM_CYSCREEN) - height) / 2 : 0;
    SetWindowPos(frame_, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(dialog_.window(), SW_SHOWNA);
}

void OpenPreview::showForPicture() const {
    // A window that is disabled as a whole looks the same, but the mouse passes through it.
    EnableWindow(topWindow(), FALSE);
    ShowWindow(topWindow(), SW_SHOWNA);
    RedrawWindow(topWindow(), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void OpenPreview::run() const {
    ShowWindow(topWindow(), SW_SHOWNORMAL);
    SetFocus(GetNextDlgTabItem(dialog_.window(), nullptr, FALSE));
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        dispatch(dialog_.window(), message);
}

}  // namespace QkPreview
