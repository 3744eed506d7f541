#include "QkCustCtrl/CaptionLayout.h"

#include <algorithm>

namespace QkDlg {

Rect CaptionBox::placed(const Rect& measured) const {
    Rect text = measured;
    if (!wordBreak)
        text.right = std::min(text.right, given.right - padding);
    const int width = text.width();
    const int height = text.height();
    if (horizontal == Horizontal::Centre)
        text.left = given.left + (given.width() - width) / 2;
    if (horizontal == Horizontal::Right)
        text.left = given.right - width - padding;
    if (vertical == Vertical::Centre)
        text.top = given.top + (given.height() - height) / 2;
    if (vertical == Vertical::Bottom)
        text.top = given.bottom - height - padding;
    text.right = text.left + width;
    text.bottom = text.top + height;
    return text;
}

}  // namespace QkDlg
