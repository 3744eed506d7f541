#include "PageWindow.h"

#include "Ids.h"

namespace Gallery {

PageWindow::PageWindow(HWND parent, const Page& page, const FlatLibrary* flat)
    : page_(page), flat_(flat) {
    if (page.makeDialog) {
        dialog_ = page.makeDialog(flat != nullptr);
        window_ = create(parent, QkDlg::QkXDlg::GetDialogProc(), dialog_.get());
    } else {
        create(parent, dialogProc, this);
    }
}

HWND PageWindow::create(HWND parent, DLGPROC procedure, void* object) const {
    return CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(page_.dialogId), parent,
                              procedure, reinterpret_cast<LPARAM>(object));
}

PageWindow::~PageWindow() {
    if (window_)
        DestroyWindow(window_);
}

INT_PTR CALLBACK PageWindow::dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<PageWindow*>(lParam)->window_ = window;
    }
    auto* self = reinterpret_cast<PageWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    return self ? self->handle(message, wParam, lParam) : FALSE;
}

INT_PTR PageWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    const INT_PTR hooked = page_.hook ? page_.hook(window_, message, wParam, lParam) : FALSE;
    if (message == WM_INITDIALOG) {
        emphasizeCaptions();
        if (flat_)
            makeFlat();
        if (page_.hook)
            page_.hook(window_, kPageReady, flat_ ? TRUE : FALSE, 0);
        // The focus stays in the navigation.
        return FALSE;
    }
    if (hooked)
        return hooked;
    switch (message) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return colour(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        case WM_NCDESTROY: window_ = nullptr; return FALSE;
        default: return FALSE;
    }
}

void PageWindow::emphasizeCaptions() {
    LOGFONTW font{};
    GetObjectW(GetWindowFont(window_), sizeof font, &font);
    font.lfWeight = FW_SEMIBOLD;
    captionFont_.reset(CreateFontIndirectW(&font));
    for (HWND child = GetWindow(window_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (GetDlgCtrlID(child) == IDC_GROUP_CAPTION)
            SetWindowFont(child, captionFont_.get(), FALSE);
    }
}

void PageWindow::makeFlat() {
    for (const FlatControl& control : page_.flatControls()) {
        HWND window = GetDlgItem(window_, control.id);
        objects_.emplace_back(flat_->createControl(window, control.type), flat_->deleteControl);
    }
}

// Flat dialogs are white; in high contrast the window colour follows the user's scheme.
INT_PTR PageWindow::colour(HDC dc, HWND control) const {
    const bool isRemark = GetDlgCtrlID(control) == IDC_REMARK;
    SetTextColor(dc, GetSysColor(isRemark ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
}

}  // namespace Gallery
