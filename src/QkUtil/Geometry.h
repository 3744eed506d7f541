#pragma once

namespace QkDlg {

/// Rectangle and size without Win32, for the arithmetic that is tested on any machine. As in
/// Win32, right and bottom are one past the last pixel.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] constexpr int width() const { return right - left; }
    [[nodiscard]] constexpr int height() const { return bottom - top; }
    [[nodiscard]] constexpr Rect inflated(int by) const {
        return {left - by, top - by, right + by, bottom + by};
    }
    constexpr bool operator==(const Rect&) const = default;
};

struct Size {
    int width = 0;
    int height = 0;

    constexpr bool operator==(const Size&) const = default;
};

}  // namespace QkDlg
