#include "QkCustCtrl/ProgressLayout.h"

#include <cstdint>

namespace QkDlg {

namespace {

constexpr int kStepsPerBar = 26;

/// extent x position / span in 32-bit arithmetic that wraps, as fills have always been computed.
/// The span is not 0.
int filledLength(int extent, int position, int span) {
    const auto product = static_cast<std::int32_t>(static_cast<std::uint32_t>(extent) *
                                                   static_cast<std::uint32_t>(position));
    // In 64 bits the quotient of the most negative number by -1 is a number too.
    return static_cast<int>(static_cast<std::int64_t>(product) / span);
}

}  // namespace

Rect progressFill(const Rect& client, bool vertical, const Progress& progress) {
    const auto span = static_cast<int>(static_cast<std::uint32_t>(progress.high) -
                                       static_cast<std::uint32_t>(progress.low));
    if (span == 0)
        return {};
    Rect fill = client;
    if (vertical)
        fill.top = filledLength(client.height(), progress.position, span);
    else
        fill.right = filledLength(client.width(), progress.position, span);
    return fill;
}

Marquee advanced(const Marquee& marquee, int extent) {
    Marquee next;
    next.lead = marquee.lead + extent / kStepsPerBar;
    next.trail = next.lead - extent / 2;
    return next.trail > extent ? Marquee{} : next;
}

Rect marqueeBlock(const Rect& client, bool vertical, const Marquee& marquee) {
    Rect block = client;
    if (vertical) {
        block.top = marquee.lead;
        block.bottom = marquee.trail;
    } else {
        block.left = marquee.trail;
        block.right = marquee.lead;
    }
    return block;
}

}  // namespace QkDlg
