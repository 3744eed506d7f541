#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Screen.h"

namespace ScreenTest {

/// The windows that are shown on the desktop, the topmost first.
[[nodiscard]] std::vector<HWND> topWindows();
/// A window and all windows inside it, outer ones first.
[[nodiscard]] std::vector<HWND> withChildren(HWND window);
/// Whether one of these still has something to paint.
[[nodiscard]] bool hasUnpainted(HWND window);
[[nodiscard]] std::wstring className(HWND window);
[[nodiscard]] DWORD processOf(HWND window);

/// What stands where in the watched program, asked for from outside.
class Scene {
public:
    struct Control {
        HWND window = nullptr;
        RECT place{};
        bool settled = false;  ///< it has been there, just so and uncovered, for a while
    };

    /// Watches a window and its surroundings.
    explicit Scene(HWND main);

    /// Asks for all windows. Remembers what it saw before: a place that a window has just left,
    /// come to or uncovered is not judged until the program has had time to paint it. The display
    /// server shows an uncovered place as it was covered until the program has answered.
    /// True when other windows are there than before.
    bool update();
    /// A place that is not judged until the next update.
    void leaveOut(const RECT& place) { fill(place, false); }

    [[nodiscard]] const RECT& place() const { return place_; }
    /// Whether the pixel of a frame, counted row by row, belongs to what the library paints.
    [[nodiscard]] bool isJudged(std::size_t pixel) const { return judged_[pixel] != 0; }
    /// What the library paints; the standard controls of the gallery are left out.
    [[nodiscard]] const std::vector<Control>& controls() const { return controls_; }
    /// The dialogs of the program that are shown, the topmost first.
    [[nodiscard]] const std::vector<HWND>& dialogs() const { return dialogs_; }
    /// The class and id of the innermost control at a place.
    [[nodiscard]] std::wstring nameAt(POINT point) const;

private:
    struct Known {
        RECT place{};
        ULONGLONG since = 0;
        ULONGLONG last = 0;
        int round = 0;
        bool hides = false;  ///< what lies under it
    };

    void advanceClock();
    void addDialog(HWND dialog, bool isCovered);
    void addControl(HWND window, bool isCovered);
    const Known& remember(HWND window, const RECT& place, bool hides);
    void exclude(const RECT& part);
    void excludeStandardParts(HWND window, const WINDOWINFO& info);
    void excludeScrollBar(HWND window, const RECT& bar);
    void fill(const RECT& area, bool judged);

    DWORD process_;
    RECT place_{};
    int round_ = 1;  ///< of looking
    ULONGLONG looked_ = 0;
    ULONGLONG now_ = 0;  ///< in milliseconds
    std::map<HWND, Known> known_;
    std::vector<Known> standardParts_;
    std::vector<std::uint8_t> judged_;
    std::vector<Control> controls_;
    std::vector<HWND> dialogs_;
    std::vector<HWND> children_;
};

}  // namespace ScreenTest
