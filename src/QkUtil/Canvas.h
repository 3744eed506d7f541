#pragma once

#include <memory>

#include "QkUtil/Geometry.h"
#include "QkUtil/Handles.h"

namespace QkDlg {

/// The off-screen bitmap that a control is painted into and that is copied to the target in one
/// piece when the canvas goes, so that nobody sees a half-painted control. It has the layout of
/// its window, so drawing is mirrored exactly once in a right-to-left window. Where the system
/// gives no bitmap, drawing goes straight to the target.
///
/// Making the bitmap and its DC is a good part of the cost of painting, so one canvas uses those
/// of the last. The bitmap therefore shows anything at first: paint all of it. A canvas within
/// the life of another one has its own. GUI thread only.
class Canvas {
public:
    /// `size` is the window's client size; the copy goes to `at` of the target.
    Canvas(HDC target, HWND window, Size size, POINT at = {0, 0});
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    Canvas(Canvas&&) = delete;
    Canvas& operator=(Canvas&&) = delete;

    /// As a new DC is: whatever is changed about it ends with the canvas.
    [[nodiscard]] HDC dc() const;

    /// Frees what is kept for the next canvas.
    static void freeKept();

private:
    class Surface;

    static std::unique_ptr<Surface>& kept();
    [[nodiscard]] static std::unique_ptr<Surface> takeKept(HDC target, Size needed);

    HDC m_target;
    Size m_size;
    POINT m_at;
    std::unique_ptr<Surface> m_surface;  ///< null: straight to the target
    bool m_isForAll = false;             ///< the surface serves the next canvas as well
    int m_savedState = 0;
};

/// Fills a rectangle with one colour.
void fillRect(HDC dc, const RECT& rect, COLORREF colour);

/// Frames a rectangle one pixel wide, `times` times, each frame inside the one before. Returns
/// what is left inside.
RECT frameRect(HDC dc, const RECT& rect, COLORREF colour, int times = 1);

}  // namespace QkDlg
