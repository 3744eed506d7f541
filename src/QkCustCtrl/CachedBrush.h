#pragma once

#include "QkUtil/Handles.h"

namespace QkDlg {

/// A solid brush to answer WM_CTLCOLOR messages with, kept until another colour is asked for.
class CachedBrush {
public:
    [[nodiscard]] HBRUSH of(COLORREF colour) {
        if (!m_brush || m_colour != colour) {
            m_brush = solidBrush(colour);
            m_colour = colour;
        }
        return m_brush.get();
    }

private:
    UniqueBrush m_brush;
    COLORREF m_colour = 0;
};

}  // namespace QkDlg
