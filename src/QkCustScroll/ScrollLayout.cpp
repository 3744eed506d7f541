#include "QkCustScroll/ScrollLayout.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

namespace QkDlg {

namespace {

constexpr int kSmallestThumb = 10;
constexpr std::array kArrowPictures{10, 13, 15, 20, 25, 30, 40, 50};

using Wide = std::int64_t;

/// a x b / c, rounded to the nearest; none of them negative. Ranges of the whole 32 bits times the
/// length of a window stay well inside 64.
Wide mulDiv(Wide a, Wide b, Wide c) {
    return (a * b + c / 2) / c;
}

/// How many positions there are; none in a range upside down.
Wide positions(const ScrollRange& range) {
    return std::max<Wide>(Wide{range.max} - range.min + 1, 0);
}

/// What the room of the thumb is divided into.
Wide divisions(const ScrollRange& range) {
    return std::max<Wide>(positions(range) - range.page, 0);
}

struct Span {
    int start = 0;
    int end = 0;
};

int lengthOf(const ScrollExtent& extent) {
    return extent.vertical ? extent.client.height : extent.client.width;
}

int thicknessOf(const ScrollExtent& extent) {
    return extent.vertical ? extent.client.width : extent.client.height;
}

Rect rectOf(bool vertical, const Span& along, const Span& across) {
    return vertical ? Rect{across.start, along.start, across.end, along.end}
                    : Rect{along.start, across.start, along.end, across.end};
}

Span along(const Rect& rect, bool vertical) {
    return vertical ? Span{rect.top, rect.bottom} : Span{rect.left, rect.right};
}

int lengthAlong(const Rect& rect, bool vertical) {
    return vertical ? rect.height() : rect.width();
}

/// The middle `thickness` pixels of `whole`, or all of them.
Span middle(int whole, int thickness) {
    const int used = std::min(whole, thickness);
    const int start = (whole - used) / 2;
    return {start, start + used};
}

/// The thumb's place in its track; where it does not fit, a line that parts the track in the
/// middle.
Span thumbSpan(const Span& track, int length, const ScrollRange& range, int position) {
    const int room = track.end - track.start - length;
    if (room < 0) {
        const int centre = track.start + (track.end - track.start) / 2;
        return {centre, centre};
    }
    const int start = track.start + offsetOf(position, room, range);
    return {start, start + length};
}

bool contains(const Rect& rect, int x, int y) {
    return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

}  // namespace

int lastPosition(const ScrollRange& range) {
    const Wide last = Wide{range.max} - std::max(range.page - 1, 0);
    return static_cast<int>(std::max<Wide>(last, range.min));
}

int clampedPosition(std::int64_t position, const ScrollRange& range) {
    return static_cast<int>(std::clamp<Wide>(position, range.min, lastPosition(range)));
}

int thumbLength(int trackLength, const ScrollRange& range, int arrowLength) {
    int length = arrowLength;
    if (range.page > 0) {
        const Wide page = std::min<Wide>(range.page, positions(range));
        const bool fills = page == positions(range);
        length =
            fills ? trackLength : static_cast<int>(mulDiv(trackLength, page, positions(range)));
    }
    return std::max(length, kSmallestThumb);
}

int positionAt(int offset, int room, const ScrollRange& range) {
    if (room <= 0)
        return range.min;
    const Wide moved = mulDiv(std::clamp(offset, 0, room), divisions(range), room);
    return static_cast<int>(std::min<Wide>(moved + range.min, lastPosition(range)));
}

int offsetOf(int position, int room, const ScrollRange& range) {
    const int last = lastPosition(range);
    if (position <= range.min || last <= range.min || room <= 0)
        return 0;
    // Without a page the last position comes one division early; it stands at the end all the same.
    if (position >= last)
        return room;
    return static_cast<int>(mulDiv(Wide{position} - range.min, room, divisions(range)));
}

ScrollParts layOutScrollbar(const ScrollExtent& extent, int arrowLength, const ScrollRange& range,
                            int position) {
    const int length = lengthOf(extent);
    const Span across{0, thicknessOf(extent)};
    const Span first{0, std::min(arrowLength, length / 2)};
    const Span second{length - std::min(arrowLength, length - length / 2), length};
    const Span track{first.end, second.start};
    const int thumb = thumbLength(track.end - track.start, range, arrowLength);
    const auto part = [&](const Span& span) { return rectOf(extent.vertical, span, across); };
    return {part(first), part(second), part(track), part(thumbSpan(track, thumb, range, position))};
}

ScrollParts layOutSlider(const ScrollExtent& extent, const SliderMeasures& measures,
                         const ScrollRange& range, int position) {
    const Span track{0, lengthOf(extent)};
    const int thickness = thicknessOf(extent);
    const Span thumb = thumbSpan(track, measures.thumbLength, range, position);
    return {{},
            {},
            rectOf(extent.vertical, track, middle(thickness, measures.trackThickness)),
            rectOf(extent.vertical, thumb, middle(thickness, measures.thumbThickness))};
}

Rect thumbMovedTo(const ScrollParts& parts, bool vertical, int offset) {
    const int at = std::clamp(offset, 0, std::max(thumbRoom(parts, vertical), 0));
    const int start = along(parts.track, vertical).start + at;
    const Span moved{start, start + lengthAlong(parts.thumb, vertical)};
    return rectOf(vertical, moved, along(parts.thumb, !vertical));
}

int thumbRoom(const ScrollParts& parts, bool vertical) {
    return lengthAlong(parts.track, vertical) - lengthAlong(parts.thumb, vertical);
}

int thumbOffset(const ScrollParts& parts, bool vertical) {
    return along(parts.thumb, vertical).start - along(parts.track, vertical).start;
}

ScrollPart hitScrollPart(const ScrollParts& parts, bool vertical, int x, int y) {
    if (contains(parts.arrow1, x, y))
        return kArrow1;
    if (contains(parts.arrow2, x, y))
        return kArrow2;
    if (contains(parts.thumb, x, y))
        return kThumb;
    if (!contains(parts.track, x, y))
        return kNoPart;
    const int point = vertical ? y : x;
    return point < along(parts.thumb, vertical).start ? kTrackBefore : kTrackAfter;
}

int arrowPicture(int arrowLength) {
    int index = static_cast<int>(kArrowPictures.size()) - 1;
    while (index > 0 && kArrowPictures.at(static_cast<std::size_t>(index)) > arrowLength / 2)
        --index;
    return index;
}

int scrollDistance(const ScrollState& state, int clientExtent) {
    const std::int64_t range = std::int64_t{state.maximum} - state.minimum + 1;
    const std::int64_t divisor = state.page != 0 ? std::int64_t{state.page} : range;
    if (divisor == 0)
        return 0;
    // The difference has 33 bits and a client area fewer than 30, so the product fits.
    const std::int64_t way = std::int64_t{state.trackPosition} - state.position;
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp<std::int64_t>(way * clientExtent / divisor, Limits::min(), Limits::max()));
}

}  // namespace QkDlg
