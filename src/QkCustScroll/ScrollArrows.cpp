#include "QkCustScroll/ScrollArrows.h"

#include <algorithm>
#include <span>
#include <vector>

#include "QkCustScroll/ScrollLayout.h"
#include "QkDlg/UiColors.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/PixelMath.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"

namespace QkDlg {

namespace {

/// A picture: the first id of a set, one for each size.
struct Picture {
    UINT ids = 0;
    bool flipped = false;
};

struct PicturePair {
    Picture enabled;
    Picture disabled;
};

constexpr PicturePair kUp{{62112}, {62144}};
constexpr PicturePair kDown{{62120}, {62104}};
constexpr PicturePair kLeft{{62128}, {62152}};
// There is no drawing of its own for the last one.
constexpr PicturePair kRight{{62136}, {62152, true}};

// A glyph takes so much of its picture; the rest is empty, and may be cut off.
constexpr int kGlyphLengthTenths = 6;
constexpr int kGlyphWidthTenths = 8;

std::span<Pixel> pixelsOf(const BITMAP& header) {
    return {static_cast<Pixel*>(header.bmBits),
            static_cast<std::size_t>(header.bmWidth) * static_cast<std::size_t>(header.bmHeight)};
}

UniqueBitmap loadPicture(const Picture& picture, int size, bool enabled) {
    UniqueBitmap bitmap = LoadBitmapResource(picture.ids + static_cast<UINT>(size));
    BITMAP header{};
    if (!bitmap || !GetObjectW(bitmap.get(), sizeof header, &header) || !header.bmBits)
        return nullptr;
    PrepareGlyphForState(bitmap.get(), enabled);
    GdiFlush();
    const std::span<Pixel> pixels = pixelsOf(header);
    const auto width = static_cast<std::size_t>(header.bmWidth);
    for (std::size_t row = 0; picture.flipped && row < pixels.size(); row += width) {
        const std::span<Pixel> line = pixels.subspan(row, width);
        std::reverse(line.begin(), line.end());
    }
    std::transform(pixels.begin(), pixels.end(), pixels.begin(), premultiplied);
    return bitmap;
}

}  // namespace

std::shared_ptr<const ScrollArrows> ScrollArrows::of(const Look& look) {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new std::vector<std::weak_ptr<const ScrollArrows>>;
    const Key key{look, IsHighContrast(), GetSysColor(COLOR_WINDOW)};
    for (const auto& each : all) {
        if (auto arrows = each.lock(); arrows && arrows->m_key == key)
            return arrows;
    }
    std::shared_ptr<const ScrollArrows> arrows(new ScrollArrows(key));
    std::erase_if(all, [](const auto& each) { return each.expired(); });
    // Pictures that could not be loaded are tried again.
    if (std::ranges::all_of(arrows->m_bitmaps,
                            [](const auto& bitmap) { return bitmap != nullptr; }))
        all.push_back(arrows);
    return arrows;
}

ScrollArrows::ScrollArrows(const Key& key) : m_key(key) {
    const Look& look = key.look;
    const PicturePair& first = look.vertical ? kUp : look.mirrored ? kRight : kLeft;
    const PicturePair& second = look.vertical ? kDown : look.mirrored ? kLeft : kRight;
    const int size = arrowPicture(look.arrowSize);
    m_bitmaps = {loadPicture(first.enabled, size, true), loadPicture(second.enabled, size, true),
                 loadPicture(first.disabled, size, false),
                 loadPicture(second.disabled, size, false)};
}

void ScrollArrows::draw(HDC dc, const RECT& box, bool second, bool enabled) const {
    const HBITMAP bitmap = m_bitmaps.at((enabled ? 0U : 2U) + (second ? 1U : 0U)).get();
    const Size size = bitmapSize(bitmap);
    const Size room{box.right - box.left, box.bottom - box.top};
    const int length = m_key.look.vertical ? room.height : room.width;
    const int width = m_key.look.vertical ? room.width : room.height;
    if (!bitmap || length * 10 < size.width * kGlyphLengthTenths ||
        width * 10 < size.width * kGlyphWidthTenths)
        return;
    // Half a pixel goes to the same side of the screen in a mirrored bar.
    const int half = m_key.look.mirrored ? 1 : 0;
    AlphaBlendBitmap(dc, bitmap, box.left + (room.width - size.width + half) / 2,
                     box.top + (room.height - size.height) / 2, size.width, size.height);
}

}  // namespace QkDlg
