#include "support/GdiCount.h"

#include <winternl.h>

#include <cstddef>

namespace QkDlgTest {

namespace {

constexpr int kWarmUps = 20;

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

void countGdi(Holdings& holdings) {
    holdings.gdiObjects = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    if (holdings.gdiObjects != 0)
        return;
    const GdiEntry* const table = gdiTable();
    for (std::size_t i = 0; i < kTableEntries; ++i) {
        holdings.gdiObjects += table[i].type != 0 ? 1 : 0;
        holdings.fonts += (table[i].type & 0x1F) == kFontType ? 1 : 0;
    }
}

BOOL CALLBACK collect(HWND window, LPARAM list) {
    wchar_t name[8]{};
    GetClassNameW(window, name, 8);
    if (lstrcmpiW(name, L"IME") != 0)
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Holdings& holdings) {
    return out << holdings.gdiObjects << " GDI objects (" << holdings.fonts << " fonts), "
               << holdings.windows << " windows";
}

int gdiObjects() {
    return holdings().gdiObjects;
}

std::vector<HWND> topLevelWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), &collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

int windowCount() {
    std::vector<HWND> windows = topLevelWindows();
    for (const HWND window : topLevelWindows())
        EnumChildWindows(window, &collect, reinterpret_cast<LPARAM>(&windows));
    return static_cast<int>(windows.size());
}

Holdings holdings() {
    Holdings result;
    countGdi(result);
    result.windows = windowCount();
    return result;
}

testing::AssertionResult doesNotLeak(int times, const std::function<void()>& body) {
    for (int i = 0; i < kWarmUps; ++i)
        body();
    const Holdings before = holdings();
    for (int i = 0; i < times; ++i)
        body();
    const Holdings after = holdings();
    if (after == before)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << before << " became " << after << " in " << times << " rounds";
}

}  // namespace QkDlgTest
