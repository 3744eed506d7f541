#pragma once

#include <cstdint>

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// What a bar scrolls over. A page of n shows n positions at once, so that the last position that
/// can be reached is n - 1 below the maximum; a page of 0 is no page at all.
struct ScrollRange {
    int min = 0;
    int max = 100;
    int page = 0;
};

/// The part of a bar under a point, with the values that hosts of the classes know.
enum ScrollPart : int {
    kNoPart = 0,
    kArrow1 = 1,
    kTrackBefore = 2,
    kThumb = 3,
    kTrackAfter = 4,
    kArrow2 = 5,
};

/// The parts of a bar in its client area.
struct ScrollParts {
    Rect arrow1;
    Rect arrow2;
    Rect track;
    Rect thumb;  ///< without length where it does not fit

    constexpr bool operator==(const ScrollParts&) const = default;
};

/// A bar's client area in pixels and its direction.
struct ScrollExtent {
    Size client;
    bool vertical = false;
};

/// The largest position that a user can scroll to; never below the minimum.
[[nodiscard]] int lastPosition(const ScrollRange& range);

/// `position` moved to where a user can scroll to.
[[nodiscard]] int clampedPosition(std::int64_t position, const ScrollRange& range);

/// The page's share of the track, or the length of an arrow without a page; at least 10 pixels. A
/// page that leaves nothing to scroll fills the track.
[[nodiscard]] int thumbLength(int trackLength, const ScrollRange& range, int arrowLength);

/// The position of a thumb that begins `offset` pixels into its track and has `room` pixels to
/// move in. Without room, the minimum.
[[nodiscard]] int positionAt(int offset, int room, const ScrollRange& range);

/// Where a thumb at `position` begins, in pixels from its track; positions out of reach are drawn
/// at the end next to them.
[[nodiscard]] int offsetOf(int position, int room, const ScrollRange& range);

/// The parts of a scroll bar. Arrows that do not fit share the length between them.
[[nodiscard]] ScrollParts layOutScrollbar(const ScrollExtent& extent, int arrowLength,
                                          const ScrollRange& range, int position);

/// How a slider is measured, in pixels.
struct SliderMeasures {
    int thumbLength = 0;
    int thumbThickness = 0;
    int trackThickness = 0;
};

/// The parts of a slider: no arrows, a thin track and a thumb in the middle of the client area.
[[nodiscard]] ScrollParts layOutSlider(const ScrollExtent& extent, const SliderMeasures& measures,
                                       const ScrollRange& range, int position);

/// The thumb with its beginning moved to `offset` pixels into the track, or as far as it goes.
[[nodiscard]] Rect thumbMovedTo(const ScrollParts& parts, bool vertical, int offset);

/// The pixels that the thumb can move, and how many of them lie before it.
[[nodiscard]] int thumbRoom(const ScrollParts& parts, bool vertical);
[[nodiscard]] int thumbOffset(const ScrollParts& parts, bool vertical);

/// The part under a client point: the arrows first, then the thumb, then the track on either side.
[[nodiscard]] ScrollPart hitScrollPart(const ScrollParts& parts, bool vertical, int x, int y);

/// The arrow picture to draw, as index from the smallest: the largest that is no larger than half
/// an arrow, or the smallest.
[[nodiscard]] int arrowPicture(int arrowLength);

/// Scroll bar and window that a drag of a flat bar is carried over to.
struct ScrollState {
    int trackPosition = 0;  ///< of the flat bar
    int position = 0;       ///< of the window, as the next three
    int minimum = 0;
    int maximum = 0;
    unsigned page = 0;
};

/// How far to scroll a window of that client extent, in pixels: a page is taken for as long as the
/// client area. 0 for a range without extent.
[[nodiscard]] int scrollDistance(const ScrollState& state, int clientExtent);

}  // namespace QkDlg
