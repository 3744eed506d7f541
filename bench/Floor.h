#pragma once

#include <string>

#include "QkUtil/Handles.h"

namespace QkDlgBench {

/// Paints a window with one off-screen fill, one text and one copy: the least that a control with
/// a text of its own can do. The off-screen bitmap stays from paint to paint.
class FloorPainter {
public:
    explicit FloorPainter(std::wstring text) : m_text(std::move(text)) {}

    /// A child window of the parent that this object paints and must outlive.
    [[nodiscard]] HWND createWindow(HWND parent);

private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void paint(HWND window, HDC target);
    void makeBitmap(HDC target, const RECT& client);

    std::wstring m_text;
    QkDlg::UniqueBitmap m_bitmap;
    QkDlg::MemoryDc m_memory;  ///< goes before the bitmap that is selected into it
    RECT m_size{};
};

}  // namespace QkDlgBench
