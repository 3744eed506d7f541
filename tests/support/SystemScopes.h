#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "support/ImportPatch.h"

// The system as a module sees it, changed for the length of a scope.
namespace QkDlgTest {

/// High contrast is on for the module while the scope lives, unless turned off for a time.
class HighContrast {
public:
    explicit HighContrast(HMODULE module = nullptr);
    ~HighContrast();
    HighContrast(const HighContrast&) = delete;
    HighContrast& operator=(const HighContrast&) = delete;

    void turn(bool on);

private:
    bool before_;
    ImportPatch patch_;
};

/// Device contexts of the screen have so many bits per pixel.
class ScreenDepth {
public:
    explicit ScreenDepth(int bits, HMODULE module = nullptr);
    ~ScreenDepth();
    ScreenDepth(const ScreenDepth&) = delete;
    ScreenDepth& operator=(const ScreenDepth&) = delete;

private:
    std::optional<int> before_;
    ImportPatch patch_;
};

/// System colours, really set and set back.
class SystemColours {
public:
    using List = std::vector<std::pair<int, COLORREF>>;

    explicit SystemColours(const List& colours);
    ~SystemColours();
    SystemColours(const SystemColours&) = delete;
    SystemColours& operator=(const SystemColours&) = delete;

private:
    List before_;
};

}  // namespace QkDlgTest
