#pragma once

#include <array>
#include <cstddef>
#include <tuple>

#include "QkCustCtrl/ListViewLayout.h"
#include "QkUtil/ClassProcedure.h"

namespace QkDlg {

// What painting and measuring ask a list and its header for, past all who have subclassed them.

/// What is painted: a list in report view, with what the application set for it.
struct PaintedList {
    HWND list = nullptr;
    HWND header = nullptr;
    HIMAGELIST icons = nullptr;  ///< null for none
    bool checkBoxes = false;
    int hotRow = -1;
    bool focusCue = false;  ///< the keyboard is in use, so the focused row is marked
    bool grouped = false;   ///< its items stand in groups, which have headings
};

/// A column's header.
struct HeaderItem {
    std::array<wchar_t, 260> text{};
    int format = 0;

    HeaderItem(HWND header, int index);

    [[nodiscard]] bool isRightAligned() const { return (format & HDF_JUSTIFYMASK) == HDF_RIGHT; }
    [[nodiscard]] bool isSorted() const { return (format & (HDF_SORTUP | HDF_SORTDOWN)) != 0; }
};

/// The font that lists are written in; of the process's cache.
[[nodiscard]] HFONT listFont();

/// In the font that is selected.
[[nodiscard]] Size textSize(HDC dc, const wchar_t* text);

/// Asks the list for what the mask of `item` names and for its text.
template <typename Text>
void readText(HWND list, LVITEMW& item, Text& text) {
    constexpr auto capacity = static_cast<int>(std::tuple_size_v<Text>);
    item.pszText = text.data();
    item.cchTextMax = capacity;
    askClass(list, LVM_GETITEMW, 0, &item);
    // A list may answer with a text of its own instead of filling the buffer.
    if (item.pszText && item.pszText != text.data() && item.pszText != LPSTR_TEXTCALLBACKW)
        lstrcpynW(text.data(), item.pszText, capacity);
}

/// In client coordinates of the list, up and down those of the header.
[[nodiscard]] RECT columnRect(const PaintedList& painted, std::size_t subItem);

/// The index of the column that stands first.
[[nodiscard]] int firstDisplayedOf(HWND header);

/// The row that the mouse is over, or -1. Where another window covers the list, there is none.
[[nodiscard]] int hotRowOf(HWND list);

/// The header item that the mouse is over, or -1.
[[nodiscard]] int hotHeaderItemOf(HWND header);

/// Where the label of a row is written, and so where it is edited; empty for a column too narrow.
[[nodiscard]] RECT labelArea(const PaintedList& painted, int row);

/// The width at which no cell of a column is cut, nor its header if that counts. A list that keeps
/// no items is asked for those that show; the application, for texts that the list does not keep.
[[nodiscard]] int widthToFit(const PaintedList& painted, int column, bool withHeader);

}  // namespace QkDlg
