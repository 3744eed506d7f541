#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// The focus rectangle around drawn content: the content grown by `inset` on every side, cut to
/// `clip`.
[[nodiscard]] Rect focusRectAround(const Rect& content, const Rect& clip, int inset);

/// True when there is something to draw. DrawFocusRect takes an inverted rectangle as well, which
/// a window smaller than the insets gives.
[[nodiscard]] bool hasArea(const Rect& rect);

}  // namespace QkDlg
