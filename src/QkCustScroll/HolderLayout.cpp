#include "QkCustScroll/HolderLayout.h"

#include <algorithm>

namespace QkDlg {

HolderLayout holderLayout(const Rect& window, const Rect& client, BarStyles styles, Size bars) {
    const int left = client.left - window.left;
    const int right = window.right - client.right;
    const int frame = std::max(0, std::min(left, right));
    const bool vertical = styles.vertical && left != right;
    const bool horizontal = styles.horizontal && window.bottom - client.bottom > frame;

    const Rect inner{window.left + frame, client.top, window.right - frame, window.bottom - frame};
    if (inner.width() <= 0 || inner.height() <= 0)
        return {};
    // A holder wider than the room covers what there is.
    const int width = vertical ? std::min(bars.width, inner.width()) : 0;
    const int height = horizontal ? std::min(bars.height, inner.height()) : 0;
    const bool atLeft = left > right;
    const int split = atLeft ? inner.left + width : inner.right - width;
    const int outer = atLeft ? inner.left : inner.right;
    const int far = atLeft ? inner.right : inner.left;
    const int base = inner.bottom - height;

    const auto column = [&](int top, int bottom) {
        return Rect{std::min(split, outer), top, std::max(split, outer), bottom};
    };
    HolderLayout layout;
    if (vertical)
        layout.vertical = column(inner.top, base);
    if (horizontal)
        layout.horizontal = {std::min(far, split), base, std::max(far, split), inner.bottom};
    if (vertical && horizontal)
        layout.corner = column(base, inner.bottom);
    return layout;
}

}  // namespace QkDlg
