#include "common/GdiObjects.h"

#include "QkDlg/Win32.h"
// Needs windows.h first.
#include <winternl.h>

#include <cstddef>

namespace QkDlgTools {
namespace {

// The process's table of GDI handles, for systems whose GetGuiResources always says 0.
constexpr std::size_t kTableInPeb = sizeof(void*) == 8 ? 0xF8 : 0x94;
constexpr std::size_t kTableEntries = 65536;
constexpr BYTE kFontType = 0x0A;

struct GdiEntry {
    BYTE object[8];
    BYTE owner[4];
    BYTE unique[2];
    BYTE type;  ///< 0 when the entry is free
    BYTE flags;
    BYTE user[8];
};
static_assert(sizeof(GdiEntry) == 24);

const GdiEntry* gdiTable() {
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                              sizeof process, nullptr);
    const auto* const peb = reinterpret_cast<const BYTE*>(process.PebBaseAddress);
    return *reinterpret_cast<const GdiEntry* const*>(peb + kTableInPeb);
}

}  // namespace

GdiObjects countGdiObjects() {
    GdiObjects objects;
    objects.all = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    if (objects.all != 0)
        return objects;
    const GdiEntry* const table = gdiTable();
    for (std::size_t i = 0; i < kTableEntries; ++i) {
        objects.all += table[i].type != 0 ? 1 : 0;
        objects.fonts += (table[i].type & 0x1F) == kFontType ? 1 : 0;
    }
    return objects;
}

}  // namespace QkDlgTools
