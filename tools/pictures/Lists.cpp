#include <array>

#include "QkDlg/QkFlatListView.h"
#include "QkUtil/Metrics.h"
#include "pictures/ControlType.h"

namespace QkPictures {
namespace {

template <typename Record>
void send(HWND list, UINT message, int index, Record& record) {
    SendMessageW(list, message, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&record));
}

void addColumn(HWND list, int index, const wchar_t* title, int width, int format) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = const_cast<wchar_t*>(title);
    column.cx = QkDlg::scaled(width);
    column.fmt = format;
    send(list, LVM_INSERTCOLUMNW, index, column);
}

void addColumns(HWND list) {
    addColumn(list, 0, L"Name", 125, LVCFMT_LEFT);
    addColumn(list, 1, L"Size", 60, LVCFMT_RIGHT);
}

void addRow(HWND list, int index, const wchar_t* name, const wchar_t* size) {
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = index;
    item.iImage = index;
    item.pszText = const_cast<wchar_t*>(name);
    send(list, LVM_INSERTITEMW, 0, item);
    item.mask = LVIF_TEXT;
    item.iSubItem = 1;
    item.pszText = const_cast<wchar_t*>(size);
    send(list, LVM_SETITEMW, 0, item);
}

void setRowState(HWND list, int row, UINT state, UINT mask) {
    LVITEMW item{};
    item.state = state;
    item.stateMask = mask;
    send(list, LVM_SETITEMSTATE, row, item);
}

void select(HWND list, int row) {
    setRowState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void check(HWND list, int row) {
    setRowState(list, row, INDEXTOSTATEIMAGEMASK(2), LVIS_STATEIMAGEMASK);
}

void sortByName(HWND list) {
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    send(header, HDM_GETITEMW, 0, item);
    item.fmt |= HDF_SORTUP;
    send(header, HDM_SETITEMW, 0, item);
}

void fillPlain(HWND list) {
    addColumns(list);
    addRow(list, 0, L"Budget & plan.xlsx", L"310 KB");
    addRow(list, 1, L"Letter.txt", L"4 KB");
    addRow(list, 2, L"Holiday pictures of last year.zip", L"1,204 MB");
    select(list, 1);
    sortByName(list);
}

/// Information, warning, error. The list destroys them.
void addIcons(HWND list) {
    const int edge = QkDlg::scaled(16);
    HIMAGELIST icons = ImageList_Create(edge, edge, ILC_COLOR32 | ILC_MASK, 3, 0);
    for (const WORD name : std::array<WORD, 3>{32516, 32515, 32513}) {
        const auto icon = static_cast<HICON>(LoadImageW(nullptr, MAKEINTRESOURCEW(name), IMAGE_ICON,
                                                        edge, edge, LR_DEFAULTCOLOR | LR_SHARED));
        ImageList_ReplaceIcon(icons, -1, icon);
    }
    SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons));
}

void fillChecked(HWND list) {
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_CHECKBOXES);
    addIcons(list);
    fillPlain(list);
    check(list, 0);
    check(list, 1);
}

void fillMany(HWND list) {
    addColumn(list, 0, L"Name", 160, LVCFMT_LEFT);
    addColumn(list, 1, L"Size", 100, LVCFMT_RIGHT);
    for (int i = 0; i < 20; ++i)
        addRow(list, i, L"Letter.txt", L"4 KB");
}

void useKeyboard(HWND list) {
    SendMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
    SendMessageW(list, WM_KEYUP, VK_DOWN, 0);
}

constexpr Column kColumns[] = {
    {L"Normal"},
    {L"Row hot", State::Hot, {30, 30}},
    {L"Header hot", State::Hot, {30, 8}},
    {.label = L"Focused", .state = State::Focused, .end = useKeyboard},
    {L"Disabled", State::Disabled},
};

constexpr Specimen kLists[] = {
    {.label = L"Rows", .fill = fillPlain},
    {.label = L"Check boxes, icons", .fill = fillChecked},
    {.label = L"Scrolling", .fill = fillMany},
    {.label = L"Empty", .fill = addColumns},
    {.label = L"Mirrored", .fill = fillChecked, .mirrored = true},
};

constexpr ControlType kTypes[] = {
    {.name = L"list",
     .className = WC_LISTVIEWW,
     .style = LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SINGLESEL | WS_BORDER | WS_TABSTOP,
     .size = {200, 120},
     .make = make<QkDlg::QkFlatListView>,
     .columns = kColumns,
     .specimens = kLists},
};

}  // namespace

std::span<const ControlType> listTypes() {
    return kTypes;
}

}  // namespace QkPictures
