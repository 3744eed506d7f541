#include "QkCustBtn/SwitchLayout.h"

#include <algorithm>

namespace QkDlg {

namespace {

constexpr int kCaptionShare = 3;
constexpr int kThumbShare = 4;

int centre(const Rect& rect) {
    return (rect.left + rect.right) / 2;
}

}  // namespace

SwitchLayout SwitchLayout::of(const Rect& client, int inset) {
    const Rect inner = client.inflated(-inset);
    SwitchLayout layout{inner, inner};
    layout.caption.right = inner.left + inner.width() / kCaptionShare;
    layout.track.left = layout.caption.right + 1;
    return layout;
}

Rect SwitchLayout::thumbAtRest(bool checked) const {
    Rect thumb = track;
    const int width = track.width() / kThumbShare;
    if (checked)
        thumb.left = track.right - width;
    else
        thumb.right = track.left + width;
    return thumb;
}

Rect SwitchLayout::thumbDragged(const Rect& thumb, int dx) const {
    const int width = thumb.width();
    const int rightmost = std::max(track.left, track.right - width);
    const int left = std::clamp(thumb.left + dx, track.left, rightmost);
    return {left, thumb.top, left + width, thumb.bottom};
}

bool SwitchLayout::checkedAt(const Rect& thumb) const {
    return centre(thumb) > centre(track);
}

}  // namespace QkDlg
