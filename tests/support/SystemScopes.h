#pragma once

#include <utility>
#include <vector>

#include "support/ImportPatch.h"

// The system as this program sees it, changed for the length of a scope.
namespace QkDlgTest {

/// High contrast is on while the scope lives, unless turned off for a time.
class HighContrast {
public:
    HighContrast();

    void turn(bool on);

private:
    ImportPatch patch_;
};

/// Device contexts of the screen have so many bits per pixel.
class ScreenDepth {
public:
    explicit ScreenDepth(int bits);

private:
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
