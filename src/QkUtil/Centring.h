#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// A rectangle of that size in the middle of `over`, pushed into `area`. Where it does not fit,
/// its top left corner stays inside.
[[nodiscard]] constexpr Rect centredIn(Size size, const Rect& over, const Rect& area) {
    const auto pushed = [](int at, int length, int from, int to) {
        at = at + length > to ? to - length : at;
        return at < from ? from : at;
    };
    const int left = over.left + (over.width() - size.width) / 2;
    const int top = over.top + (over.height() - size.height) / 2;
    const int x = pushed(left, size.width, area.left, area.right);
    const int y = pushed(top, size.height, area.top, area.bottom);
    return {x, y, x + size.width, y + size.height};
}

}  // namespace QkDlg
