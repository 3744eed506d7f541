#include "QkUtil/Bitmaps.h"

#include <algorithm>
#include <span>
#include <vector>

#include "QkDlg/UiColors.h"
#include "QkUtil/PixelMath.h"
#include "QkUtil/SpareDc.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNullGlyph{"src/QkUtil", 486};
constexpr QkLib::AssertSite kNullDc{"src/QkUtil", 560};
constexpr QkLib::AssertSite kNullBitmap{"src/QkUtil", 561};
constexpr QkLib::AssertSite kTooManyBits{"src/QkUtil", 579};
constexpr QkLib::AssertSite kNoPixels{"src/QkUtil", 644};

constexpr int kAlphaBits = 32;
constexpr COLORREF kColourBits = 0x00FFFFFF;

BITMAP headerOf(HBITMAP bitmap) {
    BITMAP header{};
    GetObjectW(bitmap, sizeof header, &header);
    return header;
}

/// The pixels of a bitmap that has them in memory, as pictures from resources do; else nothing.
std::span<Pixel> pixelsInMemory(HBITMAP bitmap) {
    DIBSECTION section{};
    if (GetObjectW(bitmap, sizeof section, &section) != sizeof section || !section.dsBm.bmBits ||
        section.dsBm.bmBitsPixel != kAlphaBits)
        return {};
    GdiFlush();  // what GDI has yet to draw into it comes first
    return {static_cast<Pixel*>(section.dsBm.bmBits),
            static_cast<std::size_t>(section.dsBm.bmWidth) *
                static_cast<std::size_t>(section.dsBm.bmHeight)};
}

/// Changes the pixels of any bitmap as those of a 32-bit one, bottom row first.
template <typename Change>
void changeCopiedPixels(HBITMAP bitmap, Change change) {
    const BITMAP header = headerOf(bitmap);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = header.bmWidth;
    info.bmiHeader.biHeight = header.bmHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = kAlphaBits;
    info.bmiHeader.biCompression = BI_RGB;
    std::vector<Pixel> pixels(static_cast<std::size_t>(header.bmWidth) *
                              static_cast<std::size_t>(header.bmHeight));
    const WindowDc screen(GetDesktopWindow());
    const auto rows = static_cast<UINT>(header.bmHeight);
    GetDIBits(screen.get(), bitmap, 0, rows, pixels.data(), &info, DIB_RGB_COLORS);
    std::ranges::transform(pixels, pixels.begin(), change);
    SetDIBits(screen.get(), bitmap, 0, rows, pixels.data(), &info, DIB_RGB_COLORS);
}

template <typename Change>
void changePixels(HBITMAP bitmap, Change change) {
    if (!bitmap)
        QkLib::reportAssertFailure(kNoPixels);
    const std::span<Pixel> pixels = pixelsInMemory(bitmap);
    if (pixels.empty())
        changeCopiedPixels(bitmap, change);
    else
        std::ranges::transform(pixels, pixels.begin(), change);
}

/// A mirrored DC made left-to-right for one picture: GDI would flip the picture as well as its
/// place, and an arrow or a check mark reads the same in every language.
class UnmirroredPlace {
public:
    UnmirroredPlace(HDC dc, int x, int y, int width)
        : m_dc(dc), m_layout(GetLayout(dc)), m_at{x, y} {
        if (!mirrored())
            return;
        POINT leftmost{x + width - 1, y};
        LPtoDP(dc, &leftmost, 1);
        SetLayout(dc, 0);
        DPtoLP(dc, &leftmost, 1);
        m_at = leftmost;
    }
    ~UnmirroredPlace() {
        if (mirrored())
            SetLayout(m_dc, m_layout);
    }
    UnmirroredPlace(const UnmirroredPlace&) = delete;
    UnmirroredPlace& operator=(const UnmirroredPlace&) = delete;
    UnmirroredPlace(UnmirroredPlace&&) = delete;
    UnmirroredPlace& operator=(UnmirroredPlace&&) = delete;

    [[nodiscard]] POINT at() const { return m_at; }

private:
    [[nodiscard]] bool mirrored() const {
        return m_layout != GDI_ERROR && (m_layout & LAYOUT_RTL) != 0;
    }

    HDC m_dc;
    DWORD m_layout;
    POINT m_at;
};

}  // namespace

Size bitmapSize(HBITMAP bitmap) {
    const BITMAP header = headerOf(bitmap);
    return {header.bmWidth, header.bmHeight};
}

void DrawBitmap(HDC hdc, HBITMAP bitmap, int x, int y) {
    if (!hdc)
        QkLib::reportAssertFailure(kNullDc);
    if (!bitmap)
        QkLib::reportAssertFailure(kNullBitmap);
    const BITMAP header = headerOf(bitmap);
    if (header.bmBitsPixel < kAlphaBits)
        return copyBitmap(hdc, bitmap, x, y);
    if (header.bmBitsPixel > kAlphaBits)
        QkLib::reportAssertFailure(kTooManyBits);
    premultiplyBitmap(bitmap);
    AlphaBlendBitmap(hdc, bitmap, x, y, header.bmWidth, header.bmHeight);
}

void copyBitmap(HDC hdc, HBITMAP bitmap, int x, int y) {
    const SpareDc source;
    if (!source.get())
        return;
    const Size size = bitmapSize(bitmap);
    const Selection selected(source.get(), bitmap);
    const UnmirroredPlace place(hdc, x, y, size.width);
    BitBlt(hdc, place.at().x, place.at().y, size.width, size.height, source.get(), 0, 0, SRCCOPY);
}

void premultiplyBitmap(HBITMAP bitmap) {
    changePixels(bitmap, premultiplied);
}

void putOnWhite(HBITMAP bitmap) {
    changePixels(bitmap, onWhite);
}

void AlphaBlendBitmap(HDC hdc, HBITMAP bitmap, int x, int y, int width, int height) {
    const SpareDc source;
    if (!source.get())
        return;
    const Selection selected(source.get(), bitmap);
    const UnmirroredPlace place(hdc, x, y, width);
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    AlphaBlend(hdc, place.at().x, place.at().y, width, height, source.get(), 0, 0, width, height,
               blend);
}

void PrepareGlyphForState(HBITMAP bitmap, bool enabled) {
    if (!bitmap)
        QkLib::reportAssertFailure(kNullGlyph);
    if (!IsHighContrast())
        return;
    const COLORREF colour = enabled ? GetSysColor(COLOR_WINDOW) ^ kColourBits : kDisabledText;
    changePixels(bitmap, [colour](Pixel pixel) { return highContrastGlyph(pixel, colour); });
}

void greyPicture(HBITMAP bitmap) {
    if (bitmap && headerOf(bitmap).bmBitsPixel == kAlphaBits)
        changePixels(bitmap, greyed);
}

}  // namespace QkDlg
