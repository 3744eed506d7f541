#pragma once

#include <array>
#include <memory>

#include "QkUtil/Handles.h"

namespace QkDlg {

/// The pictures of a scroll bar's two arrows, each on and off, ready to be blended. All bars that
/// look the same share one object.
class ScrollArrows {
public:
    /// What decides which pictures are shown.
    struct Look {
        bool vertical = false;
        bool mirrored = false;  ///< the first arrow of a horizontal bar stands on the right
        int arrowSize = 0;      ///< in pixels, along and across

        constexpr bool operator==(const Look&) const = default;
    };

    /// The pictures of that look in the colours of now. They last as long as somebody holds them.
    [[nodiscard]] static std::shared_ptr<const ScrollArrows> of(const Look& look);

    /// Draws the first or second arrow into the middle of its box; nothing where it has no room.
    void draw(HDC dc, const RECT& box, bool second, bool enabled) const;

private:
    struct Key {
        Look look;
        bool highContrast = false;
        COLORREF ground = 0;

        constexpr bool operator==(const Key&) const = default;
    };

    explicit ScrollArrows(const Key& key);

    Key m_key;
    std::array<UniqueBitmap, 4> m_bitmaps;  ///< first and second when on, then when off
};

}  // namespace QkDlg
