#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Screen.h"

namespace ScreenTest {

/// Whether a window or one of its children still has something to paint.
[[nodiscard]] bool hasUnpainted(HWND dialog);

/// What stands where in the watched program, asked for from outside.
class Scene {
public:
    struct Control {
        HWND window = nullptr;
        RECT place{};
        bool settled = false;  ///< it has been there, just so and uncovered, for a while
    };

    Scene(DWORD process, const RECT& place) : process_(process), place_(place) {}

    /// Asks for all windows. Remembers what it saw before: a place that a window has just left,
    /// come to or uncovered is not judged until the program has had time to paint it. The display
    /// server shows an uncovered place as it was covered until the program has answered.
    /// True when other windows are there than before.
    bool update();

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

    static BOOL CALLBACK onTopLevel(HWND window, LPARAM windows);
    static BOOL CALLBACK onChild(HWND window, LPARAM self);
    void advanceClock();
    void addTopLevel(HWND window);
    void addChild(HWND window);
    const Known& remember(HWND window, const RECT& place, bool hides);
    void exclude(const RECT& part);
    void fill(const RECT& area, std::uint8_t value);
    void excludeStandardParts(const WINDOWINFO& info, HWND window);

    DWORD process_;
    RECT place_;
    int round_ = 1;  ///< of looking
    ULONGLONG looked_ = 0;
    ULONGLONG now_ = 0;  ///< in milliseconds
    std::map<HWND, Known> known_;
    std::vector<Known> standardParts_;
    std::vector<std::uint8_t> judged_;
    bool isBelow_ = false;  ///< another dialog, the window whose children are asked for
    std::vector<Control> controls_;
    std::vector<HWND> dialogs_;
    std::vector<HWND> children_;
};

[[nodiscard]] std::wstring className(HWND window);

}  // namespace ScreenTest
