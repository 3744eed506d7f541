#include "QkUtil/Canvas.h"

namespace QkDlg {

namespace {

DWORD layoutOf(HWND window) {
    const bool mirrored = (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    return mirrored ? LAYOUT_RTL : 0;
}

}  // namespace

Canvas::Canvas(HDC target, HWND window, Size size, POINT at)
    : m_target(target), m_size(size), m_at(at) {
    // Both are made before either is selected: a half-made canvas paints directly.
    MemoryDc memory(CreateCompatibleDC(target));
    m_bitmap.reset(CreateCompatibleBitmap(target, size.width, size.height));
    if (!memory || !m_bitmap)
        return;
    m_previous = SelectObject(memory.get(), m_bitmap.get());
    if (!m_previous)
        return;
    SetLayout(memory.get(), layoutOf(window));
    m_memory = std::move(memory);
}

Canvas::~Canvas() {
    if (!m_memory)
        return;
    // Between two DCs of the same layout the pixels are copied as they stand.
    SetLayout(m_memory.get(), GetLayout(m_target));
    BitBlt(m_target, m_at.x, m_at.y, m_size.width, m_size.height, m_memory.get(), 0, 0, SRCCOPY);
    SelectObject(m_memory.get(), m_previous);
}

void fillRect(HDC dc, const RECT& rect, COLORREF colour) {
    const UniqueBrush brush = solidBrush(colour);
    FillRect(dc, &rect, brush.get());
}

RECT frameRect(HDC dc, const RECT& rect, COLORREF colour, int times) {
    const UniqueBrush brush = solidBrush(colour);
    RECT inside = rect;
    for (int i = 0; i < times; ++i) {
        FrameRect(dc, &inside, brush.get());
        InflateRect(&inside, -1, -1);
    }
    return inside;
}

}  // namespace QkDlg
