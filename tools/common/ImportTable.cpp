#include "common/ImportTable.h"

#include <cstring>
#include <utility>

namespace QkDlgTools {
namespace {

template <typename T>
T* at(HMODULE module, ULONG_PTR offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

void** slotIn(const IMAGE_IMPORT_DESCRIPTOR& library, HMODULE module, const char* function) {
    const auto* name = at<const IMAGE_THUNK_DATA>(module, library.OriginalFirstThunk);
    auto* slot = at<void*>(module, library.FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++slot) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
            continue;
        const auto* import =
            at<const IMAGE_IMPORT_BY_NAME>(module, static_cast<ULONG_PTR>(name->u1.AddressOfData));
        if (std::strcmp(import->Name, function) == 0)
            return slot;
    }
    return nullptr;
}

}  // namespace

void** importSlot(HMODULE module, const char* function) {
    const auto* dos = at<const IMAGE_DOS_HEADER>(module, 0);
    const auto* nt = at<const IMAGE_NT_HEADERS>(module, static_cast<ULONG_PTR>(dos->e_lfanew));
    const auto& imports = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (imports.VirtualAddress == 0)
        return nullptr;
    const auto* library = at<const IMAGE_IMPORT_DESCRIPTOR>(module, imports.VirtualAddress);
    for (; library->Name != 0; ++library) {
        if (library->OriginalFirstThunk == 0)
            continue;
        if (void** const slot = slotIn(*library, module, function))
            return slot;
    }
    return nullptr;
}

void* exchangeImport(void** slot, void* address) {
    // The table may lie in read-only memory.
    DWORD before = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &before);
    void* const old = std::exchange(*slot, address);
    VirtualProtect(slot, sizeof *slot, before, &before);
    return old;
}

}  // namespace QkDlgTools
