#include "QkUtil/Canvas.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace QkDlg {

namespace {

constexpr WORD kTrueColourBits = 24;
constexpr WORD kSurfaceBits = 32;
constexpr int kMostKeptPixels = 512 * 512;

DWORD layoutOf(HWND window) {
    const bool mirrored = (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    return mirrored ? LAYOUT_RTL : 0;
}

UniqueBitmap trueColourBitmap(Size size) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = std::max(size.width, 1);
    info.bmiHeader.biHeight = -std::max(size.height, 1);
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = kSurfaceBits;
    void* pixels = nullptr;
    return UniqueBitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
}

/// Whether copying 32-bit pixels shows in `target` what drawing there would. A monochrome bitmap
/// makes two colours of a copy, and printers have ideas of their own.
bool takesTrueColour(HDC target) {
    const DWORD type = GetObjectType(target);
    if (type == OBJ_DC)
        return GetDeviceCaps(target, TECHNOLOGY) == DT_RASDISPLAY;
    BITMAP header{};
    return type == OBJ_MEMDC &&
           GetObjectW(GetCurrentObject(target, OBJ_BITMAP), sizeof header, &header) != 0 &&
           header.bmBitsPixel >= kTrueColourBits;
}

bool isWorthKeeping(Size size) {
    return size.height <= 0 || size.width <= kMostKeptPixels / size.height;
}

/// A brush of one colour. The DC's own spares making one, but metafiles do not record its colour.
class ColourBrush {
public:
    ColourBrush(HDC dc, COLORREF colour) : m_dc(dc) {
        const DWORD type = GetObjectType(dc);
        if (type == OBJ_ENHMETADC || type == OBJ_METADC)
            m_made = solidBrush(colour);
        else
            m_previous = SetDCBrushColor(dc, colour);
    }
    ~ColourBrush() {
        if (!m_made)
            SetDCBrushColor(m_dc, m_previous);
    }
    ColourBrush(const ColourBrush&) = delete;
    ColourBrush& operator=(const ColourBrush&) = delete;
    ColourBrush(ColourBrush&&) = delete;
    ColourBrush& operator=(ColourBrush&&) = delete;

    [[nodiscard]] HBRUSH get() const {
        return m_made ? m_made.get() : static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    }

private:
    HDC m_dc;
    UniqueBrush m_made;
    COLORREF m_previous = 0;
};

}  // namespace

/// A memory DC with a bitmap in it.
class Canvas::Surface {
public:
    Surface(HDC target, UniqueBitmap bitmap, Size size)
        : m_dc(CreateCompatibleDC(target)), m_bitmap(std::move(bitmap)), m_size(size) {
        if (m_dc && m_bitmap)
            m_selected.emplace(m_dc.get(), m_bitmap.get());
    }

    [[nodiscard]] bool isUsable() const { return m_selected && !m_selected->failed(); }
    [[nodiscard]] HDC dc() const { return m_dc.get(); }
    [[nodiscard]] Size size() const { return m_size; }

private:
    MemoryDc m_dc;
    UniqueBitmap m_bitmap;
    Size m_size;
    std::optional<Selection> m_selected;
};

/// The surface that waits for the next canvas, if any.
std::unique_ptr<Canvas::Surface>& Canvas::kept() {
    // Never destroyed: when the process ends, GDI may be gone before this module.
    static auto& surface = *new std::unique_ptr<Surface>;
    return surface;
}

/// The kept surface, or one in its place that is large enough.
std::unique_ptr<Canvas::Surface> Canvas::takeKept(HDC target, Size needed) {
    std::unique_ptr<Surface> surface = std::move(kept());
    Size size = needed;
    if (surface) {
        const Size old = surface->size();
        if (old.width >= needed.width && old.height >= needed.height)
            return surface;
        const Size both{std::max(old.width, needed.width), std::max(old.height, needed.height)};
        if (isWorthKeeping(both))
            size = both;
    }
    return std::make_unique<Surface>(target, trueColourBitmap(size), size);
}

void Canvas::freeKept() {
    kept().reset();
}

Canvas::Canvas(HDC target, HWND window, Size size, POINT at)
    : m_target(target), m_size(size), m_at(at) {
    const DWORD layout = layoutOf(window);
    // A mirrored DC counts from the right edge of its bitmap, which must be the window's then.
    m_isForAll = layout == 0 && GetLayout(target) == 0 && takesTrueColour(target);
    if (m_isForAll)
        m_surface = takeKept(target, size);
    else
        m_surface = std::make_unique<Surface>(
            target, UniqueBitmap(CreateCompatibleBitmap(target, size.width, size.height)), size);
    if (!m_surface->isUsable()) {
        m_surface.reset();
        return;
    }
    m_savedState = SaveDC(dc());
    SetLayout(dc(), layout);
}

Canvas::~Canvas() {
    if (!m_surface)
        return;
    RestoreDC(dc(), m_savedState);
    // Between two DCs of the same layout the pixels are copied as they stand.
    SetLayout(dc(), GetLayout(m_target));
    BitBlt(m_target, m_at.x, m_at.y, m_size.width, m_size.height, dc(), 0, 0, SRCCOPY);
    if (m_isForAll && !kept() && isWorthKeeping(m_surface->size()))
        kept() = std::move(m_surface);
}

HDC Canvas::dc() const {
    return m_surface ? m_surface->dc() : m_target;
}

void fillRect(HDC dc, const RECT& rect, COLORREF colour) {
    const ColourBrush brush(dc, colour);
    FillRect(dc, &rect, brush.get());
}

RECT frameRect(HDC dc, const RECT& rect, COLORREF colour, int times) {
    const ColourBrush brush(dc, colour);
    RECT inside = rect;
    for (int i = 0; i < times; ++i) {
        FrameRect(dc, &inside, brush.get());
        InflateRect(&inside, -1, -1);
    }
    return inside;
}

}  // namespace QkDlg
