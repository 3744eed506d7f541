#pragma once

#include <utility>
#include <vector>

#include "QkDlg/Win32.h"

// The system as this program sees it, changed for the length of a scope.
namespace QkDlgTest {

/// Lets a module call `replacement` instead of a function that it imports, as long as this object
/// lives. The module is this program unless another one is named. Scopes on the same function end
/// in reverse order. A function that the module does not import fails the test.
class ImportPatch {
public:
    template <typename Function>
    ImportPatch(const char* function, Function* replacement, HMODULE module = nullptr)
        : ImportPatch(function, reinterpret_cast<void*>(replacement), module) {}
    ImportPatch(const char* function, void* replacement, HMODULE module);
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

private:
    void** slot_;
    void* original_ = nullptr;
};

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
