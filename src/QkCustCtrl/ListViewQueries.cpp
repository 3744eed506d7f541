#include "QkCustCtrl/ListViewQueries.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "QkUtil/Handles.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

/// The cursor in client coordinates of a window, unless the mouse is over another one.
std::optional<POINT> cursorIn(HWND hwnd) {
    POINT cursor{};
    if (!GetCursorPos(&cursor))
        return std::nullopt;
    POINT inside = cursor;
    ScreenToClient(hwnd, &inside);
    const RECT client = clientRect(hwnd);
    // Mostly the mouse is elsewhere, and what window that is need not be asked.
    if (!PtInRect(&client, inside) || WindowFromPoint(cursor) != hwnd)
        return std::nullopt;
    return inside;
}

/// The rows whose texts say how wide a column has to be: the first, and the one after the last.
std::pair<int, int> rowsToMeasure(HWND list) {
    const auto count = static_cast<int>(askClass(list, LVM_GETITEMCOUNT));
    if ((GetWindowLongPtrW(list, GWL_STYLE) & LVS_OWNERDATA) == 0)
        return {0, count};
    const auto top = static_cast<int>(askClass(list, LVM_GETTOPINDEX));
    const auto page = static_cast<int>(askClass(list, LVM_GETCOUNTPERPAGE));
    return {top, std::min(top + page + 1, count)};
}

int headerWidth(HDC dc, const HeaderItem& item, const ListLengths& lengths) {
    const int arrow = item.isSorted() ? sortArrowRoom(lengths) : 0;
    return textSize(dc, item.text.data()).width + 2 * lengths.inset + arrow;
}

}  // namespace

HeaderItem::HeaderItem(HWND header, int index) {
    HDITEMW item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    askClass(header, HDM_GETITEMW, static_cast<WPARAM>(index), &item);
    format = item.fmt;
    // A header may answer with a text of its own instead of filling the buffer.
    if (item.pszText && item.pszText != text.data())
        lstrcpynW(text.data(), item.pszText, item.cchTextMax);
}

void readText(HWND list, LVITEMW& item, ListText& text) {
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    askClass(list, LVM_GETITEMW, 0, &item);
    // A list may answer with a text of its own instead of filling the buffer.
    if (item.pszText && item.pszText != text.data() && item.pszText != LPSTR_TEXTCALLBACKW)
        lstrcpynW(text.data(), item.pszText, item.cchTextMax);
}

ListText cellText(HWND list, int row, int subItem) {
    ListText text{};
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = subItem;
    readText(list, item, text);
    return text;
}

CellKind kindOfCells(const PaintedList& painted, int column, int firstDisplayed) {
    return {column == firstDisplayed, painted.checkBoxes, painted.icons != nullptr};
}

Size textSize(HDC dc, const wchar_t* text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text, lstrlenW(text), &size);
    return {size.cx, size.cy};
}

RECT columnRect(const PaintedList& painted, std::size_t subItem) {
    RECT rect{};
    askClass(painted.header, HDM_GETITEMRECT, subItem, &rect);
    // The header moves with the list when that one scrolls sideways.
    MapWindowPoints(painted.header, painted.list, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

int firstDisplayedOf(HWND header) {
    return static_cast<int>(askClass(header, HDM_ORDERTOINDEX));
}

int hotRowOf(HWND list) {
    const std::optional<POINT> cursor = cursorIn(list);
    if (!cursor || !isBelowHeader(cursor->y, ListLengths(screenDpi())))
        return -1;
    LVHITTESTINFO hit{};
    hit.pt = *cursor;
    askClass(list, LVM_HITTEST, 0, &hit);
    return (hit.flags & LVHT_ONITEM) != 0 ? hit.iItem : -1;
}

int hotHeaderItemOf(HWND header) {
    const std::optional<POINT> cursor = cursorIn(header);
    if (!cursor)
        return -1;
    HDHITTESTINFO hit{};
    hit.pt = *cursor;
    askClass(header, HDM_HITTEST, 0, &hit);
    return (hit.flags & (HHT_ONHEADER | HHT_ONDIVIDER | HHT_ONDIVOPEN)) != 0 ? hit.iItem : -1;
}

RECT labelArea(const PaintedList& painted, int row) {
    RECT bounds{};
    bounds.left = LVIR_BOUNDS;
    askClass(painted.list, LVM_GETITEMRECT, static_cast<WPARAM>(row), &bounds);
    const ListLengths lengths(screenDpi());
    const RECT column = columnRect(painted, 0);
    const Rect cell{column.left, bounds.top, column.right, bounds.bottom};
    const CellKind kind = kindOfCells(painted, 0, firstDisplayedOf(painted.header));
    const Rect text = layOutCell(cell, kind, lengths).text;
    const RECT area{text.left - lengths.inset, cell.top, cell.right, cell.bottom};
    return area.right - area.left < lengths.row ? RECT{} : area;
}

int widthToFit(const PaintedList& painted, HFONT font, int column, bool withHeader) {
    const ListLengths lengths(screenDpi());
    const MemoryDc dc(CreateCompatibleDC(nullptr));
    const Selection selected(dc.get(), font);
    const CellKind kind = kindOfCells(painted, column, firstDisplayedOf(painted.header));
    const int besideText = -layOutCell({}, kind, lengths).text.width();
    int width = withHeader ? headerWidth(dc.get(), HeaderItem(painted.header, column), lengths) : 0;
    const auto [first, end] = rowsToMeasure(painted.list);
    // The application that is asked for a text may end the list.
    for (int row = first; row < end && IsWindow(painted.list); ++row) {
        const ListText text = cellText(painted.list, row, column);
        width = std::max(width, textSize(dc.get(), text.data()).width + besideText);
    }
    return width;
}

}  // namespace QkDlg
