#pragma once

#include <array>

#include "QkUtil/Handles.h"

namespace QkDlg {

/// The pictures of a scroll bar's two arrows, each on and off, ready to be blended. They are loaded
/// when first drawn, and anew when they would look different.
class ScrollArrows {
public:
    /// What decides which pictures are shown.
    struct Look {
        bool vertical = false;
        bool mirrored = false;  ///< the first arrow of a horizontal bar stands on the right
        int arrowSize = 0;      ///< in pixels, along and across

        constexpr bool operator==(const Look&) const = default;
    };

    /// Draws the first or second arrow into the middle of its box; nothing where it has no room.
    void draw(HDC dc, const RECT& box, const Look& look, bool second, bool enabled);

private:
    struct Key {
        Look look;
        bool highContrast = false;
        COLORREF ground = 0;

        constexpr bool operator==(const Key&) const = default;
    };

    void load(const Key& key);

    Key m_key;
    std::array<UniqueBitmap, 4> m_bitmaps;  ///< first and second when on, then when off
};

}  // namespace QkDlg
