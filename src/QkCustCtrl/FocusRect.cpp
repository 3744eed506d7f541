#include "QkCustCtrl/FocusRect.h"

#include <algorithm>

namespace QkDlg {

Rect focusRectAround(const Rect& content, const Rect& clip, int inset) {
    const Rect grown = content.inflated(inset);
    return {std::max(grown.left, clip.left), std::max(grown.top, clip.top),
            std::min(grown.right, clip.right), std::min(grown.bottom, clip.bottom)};
}

bool hasArea(const Rect& rect) {
    return rect.width() > 0 && rect.height() > 0;
}

}  // namespace QkDlg
