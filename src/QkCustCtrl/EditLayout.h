#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// The square right of an edit, as high as the edit, where a password box has its eye button.
[[nodiscard]] constexpr Rect eyeRect(const Rect& edit) {
    return {edit.right, edit.top, edit.right + edit.height(), edit.bottom};
}

/// The frame window around an edit, and around its eye where it has one.
[[nodiscard]] constexpr Rect frameRectAround(const Rect& edit, int frameWidth, bool withEye) {
    Rect framed = edit;
    if (withEye)
        framed.right = eyeRect(edit).right;
    return framed.inflated(frameWidth);
}

}  // namespace QkDlg
