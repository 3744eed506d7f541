#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// Position and range as the standard progress bar keeps them.
struct Progress {
    int position = 0;
    int low = 0;
    int high = 0;
};

/// The filled part of the bar; empty for an empty range. Two oddities are kept, since hosts set
/// their ranges and positions by them: the position counts from 0, not from the low bound, and a
/// vertical bar is filled from the position's height down to its bottom edge.
[[nodiscard]] Rect progressFill(const Rect& client, bool vertical, const Progress& progress);

/// The moving block of a bar without a range: its trailing and its leading edge in pixels from
/// where it enters.
struct Marquee {
    int trail = 0;
    int lead = 0;

    constexpr bool operator==(const Marquee&) const = default;
};

/// One tick further: a twenty-sixth of the bar, the block half the bar long, from the start again
/// when it has left the bar.
[[nodiscard]] Marquee advanced(const Marquee& marquee, int extent);

/// Where the block stands. In a vertical bar top is below bottom: the edges are handed on as they
/// are and GDI fills what lies between them.
[[nodiscard]] Rect marqueeBlock(const Rect& client, bool vertical, const Marquee& marquee);

}  // namespace QkDlg
