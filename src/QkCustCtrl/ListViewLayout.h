#pragma once

#include <cstdint>

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// The lengths that a flat list is drawn with, in pixels of the screen.
struct ListLengths {
    explicit ListLengths(int dpi);

    int overlap;    ///< by which a cell's text may reach into the next cell
    int inset;      ///< beside a header's text, and above check box and icon
    int underText;  ///< between a text and the bottom of its row
    int padding;    ///< beside the text of a cell
    int picture;    ///< edge of check box and icon
    int boxRoom;    ///< what the check box takes off its cell
    int row;        ///< height of a row, and what an icon takes off its cell
    int arrow;      ///< height of a sort arrow, which is twice as wide less one pixel
};

/// Whether a point so far below the list's top is below its header.
[[nodiscard]] bool isBelowHeader(int y, const ListLengths& lengths);

/// The check box of the row with these bounds, as the mouse finds it.
[[nodiscard]] Rect checkBoxOf(const Rect& row, const ListLengths& lengths);

/// The parts of a cell. Pictures that the cell has not are empty.
struct CellParts {
    Rect checkBox;
    Rect icon;
    Rect text;

    bool operator==(const CellParts&) const = default;
};

/// Check box and icon stand in the first displayed column only, whatever the flags say elsewhere.
struct CellKind {
    bool firstDisplayed = false;
    bool hasCheckBox = false;
    bool hasIcon = false;
};

[[nodiscard]] CellParts layOutCell(const Rect& cell, const CellKind& kind,
                                   const ListLengths& lengths);

/// Where a header's text and the arrow after it stand. Where the arrow finds no room it is empty.
struct HeaderParts {
    Rect text;
    Rect arrow;

    bool operator==(const HeaderParts&) const = default;
};

/// What a sort arrow and the gap before it take off a header's text.
[[nodiscard]] int sortArrowRoom(const ListLengths& lengths);

[[nodiscard]] Rect headerTextArea(const Rect& item, const ListLengths& lengths);
[[nodiscard]] HeaderParts layOutSortedHeader(const Rect& textArea, const Size& text,
                                             bool rightAligned, const ListLengths& lengths);

/// One line of pixels of a sort arrow, counted from the arrow's top.
[[nodiscard]] Rect sortArrowLine(const Rect& arrow, int line, bool up);

/// The extended style after a host's request to change it. A bit of the mask that is not in
/// `style` is turned over, not cleared: hosts give what they read, and then the two are the same.
[[nodiscard]] std::uint32_t requestedExStyle(std::uint32_t saved, std::uint32_t mask,
                                             std::uint32_t style);

}  // namespace QkDlg
