#include "QkUtil/Bitmaps.h"

#include <vector>

#include "QkDlg/UiColors.h"
#include "QkUtil/PixelMath.h"
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

/// The pixels of a 32-bit bitmap, bottom row first, to be changed and written back.
class PixelAccess {
public:
    explicit PixelAccess(HBITMAP bitmap) : m_bitmap(bitmap), m_screen(GetDesktopWindow()) {
        if (!bitmap)
            QkLib::reportAssertFailure(kNoPixels);
        const BITMAP header = headerOf(bitmap);
        m_info.bmiHeader.biSize = sizeof m_info.bmiHeader;
        m_info.bmiHeader.biWidth = header.bmWidth;
        m_info.bmiHeader.biHeight = header.bmHeight;
        m_info.bmiHeader.biPlanes = 1;
        m_info.bmiHeader.biBitCount = kAlphaBits;
        m_info.bmiHeader.biCompression = BI_RGB;
        m_pixels.resize(static_cast<std::size_t>(header.bmWidth) *
                        static_cast<std::size_t>(header.bmHeight));
        GetDIBits(m_screen.get(), bitmap, 0, rows(), m_pixels.data(), &m_info, DIB_RGB_COLORS);
    }

    template <typename Change>
    void changeEach(Change change) {
        for (Pixel& pixel : m_pixels)
            pixel = change(pixel);
        SetDIBits(m_screen.get(), m_bitmap, 0, rows(), m_pixels.data(), &m_info, DIB_RGB_COLORS);
    }

private:
    [[nodiscard]] UINT rows() const { return static_cast<UINT>(m_info.bmiHeader.biHeight); }

    HBITMAP m_bitmap;
    WindowDc m_screen;
    BITMAPINFO m_info{};
    std::vector<Pixel> m_pixels;
};

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
    const MemoryDc source(CreateCompatibleDC(hdc));
    if (!source)
        return;
    SetLayout(source.get(), 0);
    const Size size = bitmapSize(bitmap);
    const Selection selected(source.get(), bitmap);
    const UnmirroredPlace place(hdc, x, y, size.width);
    BitBlt(hdc, place.at().x, place.at().y, size.width, size.height, source.get(), 0, 0, SRCCOPY);
}

void premultiplyBitmap(HBITMAP bitmap) {
    PixelAccess(bitmap).changeEach(premultiplied);
}

void putOnWhite(HBITMAP bitmap) {
    PixelAccess(bitmap).changeEach(onWhite);
}

void AlphaBlendBitmap(HDC hdc, HBITMAP bitmap, int x, int y, int width, int height) {
    const MemoryDc source(CreateCompatibleDC(hdc));
    if (!source)
        return;
    SetLayout(source.get(), 0);
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
    PixelAccess(bitmap).changeEach(
        [colour](Pixel pixel) { return highContrastGlyph(pixel, colour); });
}

void greyPicture(HBITMAP bitmap) {
    if (bitmap && headerOf(bitmap).bmBitsPixel == kAlphaBits)
        PixelAccess(bitmap).changeEach(greyed);
}

}  // namespace QkDlg
