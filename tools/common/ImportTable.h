#pragma once

#include "QkDlg/Win32.h"

namespace QkDlgTools {

/// Where a module keeps the address of a function that it imports; null when it imports none of
/// that name.
[[nodiscard]] void** importSlot(HMODULE module, const char* function);

/// Puts another address there and gives the one before.
void* exchangeImport(void** slot, void* address);

}  // namespace QkDlgTools
