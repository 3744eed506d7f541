#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

enum class Horizontal { Left, Centre, Right };
enum class Vertical { Top, Centre, Bottom };

/// What a caption is laid out by; lengths in pixels.
struct CaptionBox {
    Rect given;  ///< the room for the caption, margins included
    int padding = 0;
    Horizontal horizontal = Horizontal::Centre;
    Vertical vertical = Vertical::Centre;
    bool wordBreak = false;

    /// Where the text is measured: the given rectangle without its margins.
    [[nodiscard]] Rect working() const { return given.inflated(-padding); }

    /// Where the text is drawn, from the rectangle that measuring in `working()` gave. A single
    /// line never reaches past the right margin.
    [[nodiscard]] Rect placed(const Rect& measured) const;
};

}  // namespace QkDlg
