#include "MainWindow.h"

#include <algorithm>

#include "Ids.h"
#include "QkDlg/UiColors.h"

namespace Gallery {
namespace {

constexpr int kTitlePoints = 15;
// In dialog units.
constexpr int kMargin = 8;
constexpr int kMinClientHeight = 236;
constexpr int kEntryHeight = 15;
constexpr int kEntryIndent = 10;
constexpr int kMarkWidth = 2;

int unitsX(HWND dialog, int units) {
    RECT rect{0, 0, units, 0};
    MapDialogRect(dialog, &rect);
    return rect.right;
}

int unitsY(HWND dialog, int units) {
    RECT rect{0, 0, 0, units};
    MapDialogRect(dialog, &rect);
    return rect.bottom;
}

UniqueFont createTitleFont(HWND dialog) {
    LOGFONTW font{};
    GetObjectW(GetWindowFont(dialog), sizeof font, &font);
    HDC dc = GetDC(dialog);
    font.lfHeight = -MulDiv(kTitlePoints, GetDeviceCaps(dc, LOGPIXELSY), 72);
    ReleaseDC(dialog, dc);
    return UniqueFont(CreateFontIndirectW(&font));
}

RECT childRect(HWND parent, HWND child) {
    RECT rect{};
    GetWindowRect(child, &rect);
    MapWindowRect(HWND_DESKTOP, parent, &rect);
    return rect;
}

void fill(HDC dc, const RECT& rect, COLORREF color) {
    const UniqueBrush brush(CreateSolidBrush(color));
    FillRect(dc, &rect, brush.get());
}

void resizeClient(HWND window, int width, int height) {
    RECT rect{0, 0, width, height};
    AdjustWindowRectEx(&rect, GetWindowStyle(window), FALSE, GetWindowExStyle(window));
    SetWindowPos(window, nullptr, 0, 0, rect.right - rect.left, rect.bottom - rect.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

MainWindow::MainWindow(const FlatLibrary* flat, size_t firstPage)
    : flat_(flat), firstPage_(firstPage) {
    CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_MAIN), nullptr, dialogProc,
                       reinterpret_cast<LPARAM>(this));
}

MainWindow::~MainWindow() {
    if (window_)
        DestroyWindow(window_);
}

INT_PTR CALLBACK MainWindow::dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        reinterpret_cast<MainWindow*>(lParam)->window_ = window;
    }
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    return self ? self->handle(message, wParam, lParam) : FALSE;
}

INT_PTR MainWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: initialize(); return TRUE;
        case WM_COMMAND: onCommand(LOWORD(wParam), HIWORD(wParam)); return TRUE;
        case WM_DRAWITEM: drawEntry(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam)); return TRUE;
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORLISTBOX:
            return colour(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        case WM_CLOSE: DestroyWindow(window_); return TRUE;
        case WM_DESTROY:
            page_.reset();
            PostQuitMessage(0);
            return TRUE;
        case WM_NCDESTROY: window_ = nullptr; return FALSE;
        default: return FALSE;
    }
}

void MainWindow::initialize() {
    titleFont_ = createTitleFont(window_);
    SetWindowFont(GetDlgItem(window_, IDC_TITLE), titleFont_.get(), FALSE);
    panelBrush_.reset(CreateSolidBrush(paletteColor(QkDlg::UICLR_FACE, COLOR_BTNFACE)));

    HWND navigation = GetDlgItem(window_, IDC_NAVIGATION);
    ListBox_SetItemHeight(navigation, 0, unitsY(window_, kEntryHeight));
    for (const Page& page : pages())
        ListBox_AddString(navigation, page.title);
    ListBox_SetCurSel(navigation, static_cast<int>(firstPage_));
    showPage(firstPage_);
}

void MainWindow::onCommand(int id, int notification) {
    if (id == IDCANCEL) {
        DestroyWindow(window_);
    } else if (id == IDC_NAVIGATION && notification == LBN_SELCHANGE) {
        const int chosen = ListBox_GetCurSel(GetDlgItem(window_, IDC_NAVIGATION));
        if (chosen != LB_ERR)
            showPage(static_cast<size_t>(chosen));
    }
}

void MainWindow::showPage(size_t index) {
    const Page& page = pages()[index];
    // Before the next one begins: pages of one kind keep their objects in the same place.
    page_.reset();
    page_ = std::make_unique<PageWindow>(window_, page, flat_);
    SetDlgItemTextW(window_, IDC_TITLE, page.title);
    if (page_->window())
        fitAroundPage();
}

// The window takes the size that its page needs.
void MainWindow::fitAroundPage() {
    const RECT place = childRect(window_, GetDlgItem(window_, IDC_PAGE_PLACE));
    HWND page = page_->window();
    RECT size{};
    GetClientRect(page, &size);
    const int width = place.left + size.right + unitsX(window_, kMargin);
    const int height = std::max<int>(place.top + size.bottom + unitsY(window_, kMargin),
                                     unitsY(window_, kMinClientHeight));
    resizeClient(window_, width, height);
    SetWindowPos(page, HWND_BOTTOM, place.left, place.top, size.right, size.bottom,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);

    HWND navigation = GetDlgItem(window_, IDC_NAVIGATION);
    const RECT panel = childRect(window_, navigation);
    SetWindowPos(navigation, nullptr, 0, 0, panel.right - panel.left, height - panel.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindow::drawEntry(const DRAWITEMSTRUCT& item) const {
    if (item.itemID >= pages().size())
        return;
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    RECT rect = item.rcItem;
    FillRect(item.hDC, &rect, selected ? GetSysColorBrush(COLOR_WINDOW) : panelBrush_.get());
    if (selected) {
        RECT mark = rect;
        mark.right = mark.left + unitsX(window_, kMarkWidth);
        fill(item.hDC, mark, paletteColor(QkDlg::UICLR_ACCENT, COLOR_HIGHLIGHT));
    }
    rect.left += unitsX(window_, kEntryIndent);
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(COLOR_WINDOWTEXT));
    DrawTextW(item.hDC, pages()[item.itemID].title, -1, &rect,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

INT_PTR MainWindow::colour(HDC dc, HWND control) const {
    const int id = GetDlgCtrlID(control);
    if (id == IDC_NAVIGATION || id == IDC_PANEL_TOP)
        return reinterpret_cast<INT_PTR>(panelBrush_.get());
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
}

COLORREF MainWindow::paletteColor(int flatIndex, int systemIndex) const {
    return flat_ ? flat_->uiColor(flatIndex) : GetSysColor(systemIndex);
}

}  // namespace Gallery
