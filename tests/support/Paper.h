#pragma once

#include "QkDlg/Win32.h"

namespace QkDlgTest {

/// An off-screen sheet of a window's client size, to paint a control on many times and fast.
class Paper {
public:
    explicit Paper(HWND window);
    ~Paper();
    Paper(const Paper&) = delete;
    Paper& operator=(const Paper&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }

private:
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ previous_;
};

/// How often a leak test paints: 10,000 times where the environment has CI set, 1,000 times at a
/// developer's, and less in the runs that differ by DPI or common controls only.
[[nodiscard]] int paintRounds();

}  // namespace QkDlgTest
