#include <array>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "Ids.h"
#include "Page.h"
#include "QkDlg/QkFlatListView.h"

namespace Gallery {

namespace {

constexpr int kManyColumns = 30;
constexpr int kManyRows = 100'000;

int scaledToDpi(HWND window, int length) {
    HDC dc = GetDC(window);
    const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
    ReleaseDC(window, dc);
    return MulDiv(length, dpi, USER_DEFAULT_SCREEN_DPI);
}

template <typename Record>
LRESULT send(HWND window, UINT message, int index, Record& record) {
    return SendMessageW(window, message, static_cast<WPARAM>(index),
                        reinterpret_cast<LPARAM>(&record));
}

struct ColumnSpec {
    const wchar_t* title = nullptr;
    int width = 0;  ///< at 96 DPI
    int format = LVCFMT_LEFT;
};

void addColumn(HWND list, int index, const ColumnSpec& spec) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = const_cast<wchar_t*>(spec.title);
    column.cx = scaledToDpi(list, spec.width);
    column.fmt = spec.format;
    send(list, LVM_INSERTCOLUMNW, index, column);
}

void addRow(HWND list, int index, std::initializer_list<const wchar_t*> texts, int image = 0) {
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = index;
    item.iImage = image;
    item.pszText = const_cast<wchar_t*>(*texts.begin());
    send(list, LVM_INSERTITEMW, 0, item);
    item.mask = LVIF_TEXT;
    for (auto text = std::next(texts.begin()); text != texts.end(); ++text) {
        ++item.iSubItem;
        item.pszText = const_cast<wchar_t*>(*text);
        send(list, LVM_SETITEMW, 0, item);
    }
}

void setExtendedStyle(HWND list, LPARAM style) {
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, style);
}

void setState(HWND list, int row, UINT state, UINT mask) {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    send(list, LVM_SETITEMSTATE, row, item);
}

void setIcons(HWND list, WPARAM kind, HIMAGELIST icons) {
    SendMessageW(list, LVM_SETIMAGELIST, kind, reinterpret_cast<LPARAM>(icons));
}

/// Application, information, warning, error.
HIMAGELIST systemIcons(HWND page, int edge) {
    const int size = scaledToDpi(page, edge);
    HIMAGELIST icons = ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 4, 0);
    for (const wchar_t* name : {MAKEINTRESOURCEW(32512), MAKEINTRESOURCEW(32516),
                                MAKEINTRESOURCEW(32515), MAKEINTRESOURCEW(32513)}) {
        const auto icon = static_cast<HICON>(
            LoadImageW(nullptr, name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR | LR_SHARED));
        ImageList_ReplaceIcon(icons, -1, icon);
    }
    return icons;
}

void sortBy(HWND list, int index, int arrow) {
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    send(header, HDM_GETITEMW, index, item);
    item.fmt = (item.fmt & ~(HDF_SORTUP | HDF_SORTDOWN)) | arrow;
    send(header, HDM_SETITEMW, index, item);
}

void fillFiles(HWND list) {
    addColumn(list, 0, {L"Name", 160});
    addColumn(list, 1, {L"Size", 80, LVCFMT_RIGHT});
    addColumn(list, 2, {L"State", 110});
    addRow(list, 0, {L"Annual report.pdf", L"2.4 MB", L"complete"}, 0);
    addRow(list, 1, {L"Budget & plan.xlsx", L"310 KB", L"complete"}, 1);
    addRow(list, 2, {L"Holiday pictures.zip", L"1,204 MB", L"checksum differs"}, 2);
    addRow(list, 3, {L"Letter.txt", L"4 KB", L"not found"}, 3);
    addRow(list, 4, {L"Minutes of the meeting.docx", L"58 KB", L"waiting"}, 0);
    addRow(list, 5, {L"Notes.txt", L"1 KB", L"waiting"}, 0);
    addRow(list, 6, {L"Offer.pdf", L"96 KB", L"waiting"}, 1);
    addRow(list, 7, {L"Zebra.jpg", L"3.1 MB", L"waiting"}, 1);
}

void setUpList(HWND page) {
    HWND files = GetDlgItem(page, IDC_LIST_FILES);
    setExtendedStyle(files, LVS_EX_CHECKBOXES | LVS_EX_HEADERDRAGDROP);
    setIcons(files, LVSIL_SMALL, systemIcons(page, 16));
    setIcons(files, LVSIL_NORMAL, systemIcons(page, 32));
    fillFiles(files);
    for (const int row : {0, 2, 4})
        setState(files, row, INDEXTOSTATEIMAGEMASK(2), LVIS_STATEIMAGEMASK);
    setState(files, 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    sortBy(files, 0, HDF_SORTUP);

    HWND empty = GetDlgItem(page, IDC_LIST_EMPTY);
    addColumn(empty, 0, {L"Name", 90});
    addColumn(empty, 1, {L"Size", 60, LVCFMT_RIGHT});

    HWND disabled = GetDlgItem(page, IDC_LIST_DISABLED);
    addColumn(disabled, 0, {L"Name", 110});
    addColumn(disabled, 1, {L"Size", 60, LVCFMT_RIGHT});
    addRow(disabled, 0, {L"Annual report.pdf", L"2.4 MB"});
    addRow(disabled, 1, {L"Letter.txt", L"4 KB"});
    sortBy(disabled, 1, HDF_SORTDOWN);
}

void setUpColumns(HWND page) {
    HWND many = GetDlgItem(page, IDC_LIST_MANY_COLUMNS);
    setExtendedStyle(many, LVS_EX_HEADERDRAGDROP);
    for (int i = 0; i < kManyColumns; ++i) {
        const std::wstring title = L"Column " + std::to_wstring(i + 1);
        addColumn(many, i, {title.c_str(), 78, i % 3 == 2 ? LVCFMT_RIGHT : LVCFMT_LEFT});
    }
    for (int row = 0; row < 12; ++row) {
        addRow(many, row, {(L"Row " + std::to_wstring(row + 1)).c_str()});
        for (int column = 1; column < kManyColumns; ++column) {
            std::wstring text = std::to_wstring((row + 1) * (column + 1));
            LVITEMW item{};
            item.iSubItem = column;
            item.pszText = text.data();
            send(many, LVM_SETITEMTEXTW, row, item);
        }
    }

    HWND texts = GetDlgItem(page, IDC_LIST_LONG_TEXTS);
    addColumn(texts, 0, {L"A title that is longer than its column", 150});
    addColumn(texts, 1, {L"Right-aligned and too long as well", 130, LVCFMT_RIGHT});
    addColumn(texts, 2, {L"Centred", 110, LVCFMT_CENTER});
    addRow(texts, 0,
           {L"The quick brown fox jumps over the lazy dog", L"and runs away over the hills",
            L"before it rains again"});
    addRow(texts, 1, {L"Short", L"Short", L"Short"});
    sortBy(texts, 0, HDF_SORTDOWN);
    sortBy(texts, 1, HDF_SORTUP);
}

void setUpRows(HWND page) {
    HWND rows = GetDlgItem(page, IDC_LIST_MANY_ROWS);
    addColumn(rows, 0, {L"Number", 90});
    addColumn(rows, 1, {L"Its square", 140, LVCFMT_RIGHT});
    addColumn(rows, 2, {L"Remainder by seven", 140});
    SendMessageW(rows, LVM_SETITEMCOUNT, kManyRows, 0);
}

void answer(NMLVDISPINFOW& info) {
    if ((info.item.mask & LVIF_TEXT) == 0)
        return;
    const long long number = info.item.iItem + 1LL;
    const std::array<long long, 3> values{number, number * number, number % 7};
    const auto column = static_cast<std::size_t>(info.item.iSubItem);
    lstrcpynW(info.item.pszText, std::to_wstring(values.at(column)).c_str(), info.item.cchTextMax);
}

void showView(HWND page, DWORD view) {
    SendDlgItemMessageW(page, IDC_LIST_FILES, LVM_SETVIEW, view, 0);
}

void command(HWND page, int id) {
    switch (id) {
        case IDC_LIST_DETAILS: showView(page, LV_VIEW_DETAILS); break;
        case IDC_LIST_ICONS: showView(page, LV_VIEW_ICON); break;
        case IDC_LIST_SMALL: showView(page, LV_VIEW_SMALLICON); break;
        case IDC_LIST_LIST: showView(page, LV_VIEW_LIST); break;
        case IDC_LIST_TILES: showView(page, LV_VIEW_TILE); break;
        default: break;
    }
}

using Lists = std::vector<std::unique_ptr<QkDlg::QkFlatListView>>;

/// Lists have no type number: a host that links the classes makes them.
Lists& lists() {
    static Lists all;
    return all;
}

void makeFlat(HWND page, std::initializer_list<int> ids) {
    for (const int id : ids) {
        lists().push_back(std::make_unique<QkDlg::QkFlatListView>(static_cast<UINT>(id)));
        lists().back()->Attach(GetDlgItem(page, id));
    }
}

}  // namespace

std::span<const FlatControl> listControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_LIST_DETAILS, QK_PUSH_BUTTON}, {IDC_LIST_ICONS, QK_PUSH_BUTTON},
        {IDC_LIST_SMALL, QK_PUSH_BUTTON},   {IDC_LIST_LIST, QK_PUSH_BUTTON},
        {IDC_LIST_TILES, QK_PUSH_BUTTON},
    };
    return kControls;
}

std::span<const FlatControl> noControls() {
    return {};
}

INT_PTR listHook(HWND page, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: setUpList(page); return TRUE;
        case kPageReady:
            if (wParam)
                makeFlat(page, {IDC_LIST_FILES, IDC_LIST_EMPTY, IDC_LIST_DISABLED});
            return TRUE;
        case WM_COMMAND: command(page, LOWORD(wParam)); return FALSE;
        case WM_NCDESTROY: lists().clear(); return FALSE;
        default: return FALSE;
    }
}

INT_PTR columnsHook(HWND page, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG: setUpColumns(page); return TRUE;
        case kPageReady:
            if (wParam)
                makeFlat(page, {IDC_LIST_MANY_COLUMNS, IDC_LIST_LONG_TEXTS});
            return TRUE;
        case WM_NCDESTROY: lists().clear(); return FALSE;
        default: return FALSE;
    }
}

INT_PTR rowsHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: setUpRows(page); return TRUE;
        case kPageReady:
            if (wParam)
                makeFlat(page, {IDC_LIST_MANY_ROWS});
            return TRUE;
        case WM_NOTIFY:
            if (reinterpret_cast<const NMHDR*>(lParam)->code == LVN_GETDISPINFOW)
                answer(*reinterpret_cast<NMLVDISPINFOW*>(lParam));
            return FALSE;
        case WM_NCDESTROY: lists().clear(); return FALSE;
        default: return FALSE;
    }
}

}  // namespace Gallery
