#pragma once

#include "QkUtil/Geometry.h"

namespace QkDlg {

/// Where the parts of an on/off switch stand.
struct SwitchLayout {
    Rect caption;
    Rect track;

    /// The parts of a client rectangle, `inset` pixels from its edges: the caption on the left
    /// third, the track on the rest.
    [[nodiscard]] static SwitchLayout of(const Rect& client, int inset);

    /// The resting thumb: a quarter of the track at its right or left end.
    [[nodiscard]] Rect thumbAtRest(bool checked) const;

    /// A thumb moved by `dx`, stopped at the ends of the track.
    [[nodiscard]] Rect thumbDragged(const Rect& thumb, int dx) const;

    /// The state that letting go of the thumb here sets: checked right of the track's centre.
    [[nodiscard]] bool checkedAt(const Rect& thumb) const;
};

}  // namespace QkDlg
