#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "QkDlg/Win32.h"

namespace ScreenTest {

/// A part of the screen as it was at one moment. Pixels are 0x00RRGGBB, row by row.
struct Frame {
    RECT place{};
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] LONG width() const { return place.right - place.left; }
    [[nodiscard]] POINT pointOf(std::size_t pixel) const {
        const auto at = static_cast<LONG>(pixel);
        return {place.left + at % width(), place.top + at / width()};
    }
    /// What one row of the screen shows of a part of the frame.
    [[nodiscard]] std::span<const std::uint32_t> row(const RECT& part, LONG y) const {
        const LONG from = (y - place.top) * width() + part.left - place.left;
        return std::span(pixels).subspan(static_cast<std::size_t>(from),
                                         static_cast<std::size_t>(part.right - part.left));
    }
};

/// Saves the frame as a PNG file with a mark around a place.
void saveMarked(const Frame& frame, const RECT& mark, const std::wstring& file);

/// The screen, for any number of threads, read without a part of the watched program in it.
class Screen {
public:
    /// `file` is where the display server keeps its frame buffer (an XWD file), which costs next to
    /// nothing to read; without one the system is asked for the screen's pixels.
    explicit Screen(const std::wstring& file);
    /// False when the frame is the same as the one handed in.
    bool read(Frame& frame) const;

private:
    struct Unmap {
        void operator()(const std::uint8_t* view) const { UnmapViewOfFile(view); }
    };
    std::unique_ptr<const std::uint8_t[], Unmap> view_;
    const std::uint8_t* buffer_ = nullptr;
    std::size_t stride_ = 0;
};

}  // namespace ScreenTest
