#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QkDlg/Win32.h"

namespace ScreenTest {

/// A part of the screen as it was at one moment. Pixels are 0x00RRGGBB, row by row.
struct Frame {
    RECT place{};
    std::vector<std::uint32_t> pixels;
    std::vector<std::uint32_t> spare;  ///< room for the next reading

    [[nodiscard]] int width() const { return place.right - place.left; }
    [[nodiscard]] const std::uint32_t* row(LONG screenY) const {
        return pixels.data() +
               static_cast<std::size_t>(screenY - place.top) * static_cast<std::size_t>(width());
    }
    [[nodiscard]] std::uint32_t at(LONG screenX, LONG screenY) const {
        return row(screenY)[screenX - place.left];
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
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// False when the frame is the same as the one handed in.
    bool read(Frame& frame) const;

private:
    void readBuffer(Frame& frame) const;  ///< into its spare pixels, like the next
    static void readSystem(Frame& frame);

    const std::uint8_t* view_ = nullptr;
    const std::uint8_t* buffer_ = nullptr;
    std::size_t stride_ = 0;
};

}  // namespace ScreenTest
