#pragma once

#include <functional>

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// What fitText ends with.
struct FittedText {
    int pointSize = 0;
    Size window;  ///< unchanged where the window stays as it is

    constexpr bool operator==(const FittedText&) const = default;
};

/// The size of the text in the font of a point size.
using MeasureText = std::function<Size(int pointSize)>;

/// Makes a one-font text fit into its window: a large font shrinks, down to 9 points, and the
/// window then grows in height where the text needs it; a 9-point text that is a few pixels too
/// wide, as rounding at higher DPIs makes it, widens the window. `measure` is called with the
/// given point size first and then once for each size on the way down.
[[nodiscard]] FittedText fitText(int pointSize, Size window, int dpi, const MeasureText& measure);

}  // namespace QkDlg
