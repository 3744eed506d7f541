#pragma once

#include "QkUtil/Geometry.h"
#include "QkUtil/Handles.h"

namespace QkDlg {

/// The off-screen bitmap that a control is painted into and that is copied to the target in one
/// piece when the canvas goes, so that nobody sees a half-painted control. It has the layout of
/// its window, so drawing is mirrored exactly once in a right-to-left window. Where the system
/// gives no bitmap, drawing goes straight to the target.
class Canvas {
public:
    /// `size` is the window's client size; the copy goes to `at` of the target.
    Canvas(HDC target, HWND window, Size size, POINT at = {0, 0});
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    Canvas(Canvas&&) = delete;
    Canvas& operator=(Canvas&&) = delete;

    [[nodiscard]] HDC dc() const { return m_memory ? m_memory.get() : m_target; }

private:
    HDC m_target;
    Size m_size;
    POINT m_at;
    MemoryDc m_memory;
    UniqueBitmap m_bitmap;
    HGDIOBJ m_previous = nullptr;
};

/// Fills a rectangle with one colour.
void fillRect(HDC dc, const RECT& rect, COLORREF colour);

/// Frames a rectangle one pixel wide, `times` times, each frame inside the one before. Returns
/// what is left inside.
RECT frameRect(HDC dc, const RECT& rect, COLORREF colour, int times = 1);

}  // namespace QkDlg
