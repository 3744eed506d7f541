#include "QkUtil/ObjectCheck.h"

#include "QkDlg/Win32.h"

namespace QkDlg {

namespace {

constexpr DWORD kWritable =
    PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;

bool isWritable(const MEMORY_BASIC_INFORMATION& pages) {
    return pages.State == MEM_COMMIT && (pages.Protect & kWritable) != 0 &&
           (pages.Protect & PAGE_GUARD) == 0;
}

}  // namespace

bool isReadableAndWritable(const void* object, std::size_t size) {
    const auto* at = static_cast<const BYTE*>(object);
    const BYTE* const end = at + size;
    while (at < end) {
        MEMORY_BASIC_INFORMATION pages{};
        if (VirtualQuery(at, &pages, sizeof pages) == 0 || !isWritable(pages))
            return false;
        at = static_cast<const BYTE*>(pages.BaseAddress) + pages.RegionSize;
    }
    return object != nullptr;
}

}  // namespace QkDlg
