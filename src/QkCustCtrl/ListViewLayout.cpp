#include "QkCustCtrl/ListViewLayout.h"

#include <algorithm>

namespace QkDlg {

namespace {

constexpr int kNormalDpi = 96;

constexpr int atDpi(int length, int dpi) {
    return (length * dpi + kNormalDpi / 2) / kNormalDpi;
}

Rect pictureAt(int left, int top, const ListLengths& lengths) {
    return {left, top, left + lengths.picture, top + lengths.picture};
}

}  // namespace

ListLengths::ListLengths(int dpi)
    : overlap(atDpi(2, dpi)),
      inset(atDpi(4, dpi)),
      underText(atDpi(6, dpi)),
      padding(atDpi(8, dpi)),
      picture(atDpi(16, dpi)),
      boxRoom(atDpi(20, dpi)),
      row(atDpi(24, dpi)),
      arrow(atDpi(4, dpi)) {}

bool isBelowHeader(int y, const ListLengths& lengths) {
    return y >= lengths.row;
}

Rect checkBoxOf(const Rect& row, const ListLengths& lengths) {
    return pictureAt(row.left, row.top + lengths.inset, lengths);
}

CellParts layOutCell(const Rect& cell, const CellKind& kind, const ListLengths& lengths) {
    CellParts parts;
    Rect text = cell;
    text.right += lengths.overlap;
    if (!kind.firstDisplayed)
        text.left += lengths.padding;
    if (kind.firstDisplayed && kind.hasCheckBox) {
        parts.checkBox = pictureAt(text.left, cell.top + lengths.inset, lengths);
        text.left += lengths.boxRoom;
    }
    if (kind.firstDisplayed && kind.hasIcon) {
        parts.icon = pictureAt(text.left, cell.top + lengths.inset, lengths);
        text.left += lengths.row;
    }
    text.right -= lengths.padding;
    text.bottom -= lengths.underText;
    parts.text = text;
    return parts;
}

int sortArrowRoom(const ListLengths& lengths) {
    return lengths.underText + 2 * lengths.arrow - 1;
}

Rect headerTextArea(const Rect& item, const ListLengths& lengths) {
    return {item.left + lengths.inset, item.top, item.right - lengths.inset,
            item.bottom - lengths.underText};
}

HeaderParts layOutSortedHeader(const Rect& textArea, const Size& text, bool rightAligned,
                               const ListLengths& lengths) {
    const int arrowRoom = sortArrowRoom(lengths);
    const int room = textArea.width() - arrowRoom;
    if (room < 0)
        return {textArea, {}};
    HeaderParts parts{textArea, {}};
    const int left =
        rightAligned ? textArea.left + room : textArea.left + std::min(text.width, room);
    // In the middle of the line of text, whose lower end is the area's.
    const int top = textArea.bottom - (text.height + lengths.arrow) / 2;
    parts.text.right = left;
    parts.arrow = {left + lengths.underText, top, left + arrowRoom, top + lengths.arrow};
    return parts;
}

Rect sortArrowLine(const Rect& arrow, int line, bool up) {
    const int indent = up ? arrow.height() - 1 - line : line;
    return {arrow.left + indent, arrow.top + line, arrow.right - indent, arrow.top + line + 1};
}

std::uint32_t requestedExStyle(std::uint32_t saved, std::uint32_t mask, std::uint32_t style) {
    return style | ((~style & mask) ^ saved);
}

}  // namespace QkDlg
