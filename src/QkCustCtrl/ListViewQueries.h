#pragma once

#include <array>
#include <cstddef>

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

/// A text of a list, cut where it is longer.
using ListText = std::array<wchar_t, 260>;

/// A column's header.
struct HeaderItem {
    ListText text{};
    int format = 0;

    HeaderItem(HWND header, int index);

    [[nodiscard]] bool isRightAligned() const { return (format & HDF_JUSTIFYMASK) == HDF_RIGHT; }
    [[nodiscard]] bool isSorted() const { return (format & (HDF_SORTUP | HDF_SORTDOWN)) != 0; }
};

/// In the font that is selected.
[[nodiscard]] Size textSize(HDC dc, const wchar_t* text);

/// Asks the list for what the mask of `item` names and for its text.
void readText(HWND list, LVITEMW& item, ListText& text);

[[nodiscard]] ListText cellText(HWND list, int row, int subItem);

/// In client coordinates of the list, up and down those of the header.
[[nodiscard]] RECT columnRect(const PaintedList& painted, std::size_t subItem);

/// The index of the column that stands first.
[[nodiscard]] int firstDisplayedOf(HWND header);

/// What the cells of a column have beside their text. `firstDisplayed`: as above.
[[nodiscard]] CellKind kindOfCells(const PaintedList& painted, int column, int firstDisplayed);

/// The row that the mouse is over, or -1. Where another window covers the list, there is none.
[[nodiscard]] int hotRowOf(HWND list);

/// The header item that the mouse is over, or -1.
[[nodiscard]] int hotHeaderItemOf(HWND header);

/// Where the label of a row is written, and so where it is edited; empty for a column too narrow.
[[nodiscard]] RECT labelArea(const PaintedList& painted, int row);

/// The width at which no cell of a column is cut, nor its header if that counts, written in that
/// font. A list that keeps no items is asked for those that show; the application, for texts that
/// the list does not keep.
[[nodiscard]] int widthToFit(const PaintedList& painted, HFONT font, int column, bool withHeader);

}  // namespace QkDlg
