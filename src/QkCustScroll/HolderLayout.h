#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// Which of its two scroll bars a window asks for.
struct BarStyles {
    bool vertical = false;
    bool horizontal = false;
};

/// Where the windows over a target's scroll bars stand; empty where there is nothing to cover.
struct HolderLayout {
    Rect vertical;
    Rect horizontal;
    Rect corner;

    constexpr bool operator==(const HolderLayout&) const = default;
};

/// `window` is the target, `client` its client area, both in the same coordinates; `bars` holds
/// the width of the vertical and the height of the horizontal holder. The frame is what the window
/// leaves between the two, so that every kind of border is left free: equally wide at the left, at
/// the right and at the bottom. What is missing beyond that is the standard bar, at the right or at
/// the left. A bar that the window asks for but has no room for is not covered.
[[nodiscard]] HolderLayout holderLayout(const Rect& window, const Rect& client, BarStyles styles,
                                        Size bars);

}  // namespace QkDlg
