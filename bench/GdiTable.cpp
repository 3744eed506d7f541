#include "GdiTable.h"

#include "QkDlg/Win32.h"
// Needs windows.h first.
#include <winternl.h>

#include <cstddef>

namespace QkDlgBench {

namespace {

constexpr std::size_t kTableInPeb = sizeof(void*) == 8 ? 0xF8 : 0x94;
constexpr std::size_t kEntries = 65536;
constexpr int kGenerations = 254;  ///< 1 to 254, then 1 again

struct Entry {
    unsigned char object[8];
    unsigned char owner[4];
    unsigned char kind;
    unsigned char generation;
    unsigned char type;
    unsigned char flags;
    unsigned char user[8];
};
static_assert(sizeof(Entry) == 24);

const Entry* table() {
    PROCESS_BASIC_INFORMATION process{};
    NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                              sizeof process, nullptr);
    const auto* const peb = reinterpret_cast<const unsigned char*>(process.PebBaseAddress);
    return *reinterpret_cast<const Entry* const*>(peb + kTableInPeb);
}

}  // namespace

GdiTable::GdiTable() {
    const Entry* const entries = table();
    if (!entries)
        return;
    m_generations.resize(kEntries);
    for (std::size_t i = 0; i < kEntries; ++i)
        m_generations[i] = entries[i].generation;
}

int GdiTable::madeSince(const GdiTable& earlier) const {
    int made = 0;
    for (std::size_t i = 0; i < m_generations.size(); ++i) {
        const int difference = m_generations[i] - earlier.m_generations[i];
        made += difference < 0 ? difference + kGenerations : difference;
    }
    return made;
}

}  // namespace QkDlgBench
