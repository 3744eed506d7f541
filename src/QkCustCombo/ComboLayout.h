#pragma once

#include <cstddef>
#include <string_view>

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// The arrow button of a drop-down combo box; coordinates of the combo's client area.
struct ArrowButton {
    Rect button;
    int arrowX = 0;
    int arrowY = 0;

    bool operator==(const ArrowButton&) const = default;
};

/// The width of a drop-down list's button: the arrow between two margins.
[[nodiscard]] int arrowButtonWidth(int arrowWidth, int padding);

/// The button at the right end of the client area, its arrow in the middle.
[[nodiscard]] ArrowButton layOutArrowButton(const Size& client, int buttonWidth, const Size& arrow);

/// Where a drop-down list writes its item.
[[nodiscard]] Rect itemTextArea(const Size& client, const Rect& button);

/// How a list stands to its item: `overhang` wider on each side, `gap` below it.
struct ListPlace {
    int overhang = 0;
    int gap = 0;
};

/// The place of a list of that height under its item.
[[nodiscard]] Rect listUnderItem(const Rect& item, int listHeight, const ListPlace& place);

/// Cuts a text written from `x` on at its end, until it keeps clear of `right`; nothing is appended
/// and no character is halved. `widthOf` measures a text.
template <typename Measure>
[[nodiscard]] std::wstring_view cutToFit(std::wstring_view text, int x, int right,
                                         Measure widthOf) {
    const auto fits = [&](std::size_t length) {
        return length == 0 || widthOf(text.substr(0, length)) + x < right - 1;
    };
    if (fits(text.size()))
        return text;
    // A longer text is never narrower, so halving finds the longest that fits.
    std::size_t fitting = 0;
    std::size_t tooLong = text.size();
    while (tooLong - fitting > 1) {
        const std::size_t middle = fitting + (tooLong - fitting) / 2;
        (fits(middle) ? fitting : tooLong) = middle;
    }
    const bool halvesPair =
        fitting > 0 && text[fitting - 1] >= 0xD800 && text[fitting - 1] <= 0xDBFF;
    return text.substr(0, halvesPair ? fitting - 1 : fitting);
}

}  // namespace QkDlg
