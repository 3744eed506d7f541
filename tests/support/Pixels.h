#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "QkDlg/Win32.h"

namespace QkDlgTest {

/// A rectangle that can be compared and printed.
struct Box {
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;

    Box() = default;
    Box(LONG l, LONG t, LONG r, LONG b) : left(l), top(t), right(r), bottom(b) {}
    explicit Box(const RECT& r) : Box(r.left, r.top, r.right, r.bottom) {}
    bool operator==(const Box&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Box& box);

[[nodiscard]] Box clientBox(HWND window);
[[nodiscard]] Box windowBox(HWND window);  ///< in screen coordinates

/// "#RRGGBB"
[[nodiscard]] std::string hex(COLORREF colour);

/// A picture as a value. Positions count from the left top corner as a person sees it, in
/// mirrored windows too.
class Image {
public:
    using Predicate = std::function<bool(COLORREF)>;

    /// `pixels` are 0x00RRGGBB, row by row from the top.
    Image(int width, int height, std::vector<std::uint32_t> pixels);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] COLORREF at(int x, int y) const;
    bool operator==(const Image&) const = default;

    [[nodiscard]] int count(COLORREF colour) const;
    [[nodiscard]] bool contains(COLORREF colour) const { return count(colour) > 0; }
    [[nodiscard]] std::optional<Box> boundingBoxOf(const Predicate& wanted) const;
    [[nodiscard]] std::optional<Box> boundingBoxOf(COLORREF colour) const;
    /// The part of the picture inside the box, which must lie within it.
    [[nodiscard]] Image part(const Box& box) const;
    /// Says where, row by row, two pictures of one size differ first.
    [[nodiscard]] std::string firstDifference(const Image& other) const;

private:
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
};

std::ostream& operator<<(std::ostream& out, const Image& image);

/// What a window's client area shows now, its child windows included. Exact at once.
[[nodiscard]] Image onScreen(HWND window);
/// What the desktop shows in a rectangle of screen coordinates: several windows, their frames.
[[nodiscard]] Image onDesktop(const RECT& rect);
/// What a window draws for WM_PRINTCLIENT on a white ground.
[[nodiscard]] Image printed(HWND window);

/// EXPECT_THAT(image, looksLike(other)): says where the first difference is.
MATCHER_P(looksLike, expected, "is the same picture") {
    *result_listener << arg.firstDifference(expected);
    return arg == expected;
}

MATCHER_P(isFilledWith, colour, "is filled with " + hex(colour)) {
    *result_listener << "which has " << arg.count(colour) << " such pixels of "
                     << arg.width() * arg.height();
    return arg.count(colour) == arg.width() * arg.height();
}

}  // namespace QkDlgTest
