#pragma once

#include "QkDlg/Win32.h"

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

}  // namespace QkDlgTest
