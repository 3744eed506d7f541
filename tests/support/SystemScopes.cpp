#include "support/SystemScopes.h"

#include <gtest/gtest.h>

#include "common/ImportTable.h"

namespace QkDlgTest {

namespace {

bool highContrast = false;
int screenDepth = 0;

// Not through the import table, which is what the scopes change.
template <typename Function>
Function* systemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name)));
}

BOOL WINAPI answerParameters(UINT action, UINT number, void* data, UINT flags) {
    static auto* const real =
        systemFunction<decltype(SystemParametersInfoW)>(L"user32", "SystemParametersInfoW");
    const BOOL result = real(action, number, data, flags);
    if (action != SPI_GETHIGHCONTRAST || !data)
        return result;
    auto& answer = *static_cast<HIGHCONTRASTW*>(data);
    answer.dwFlags = highContrast ? answer.dwFlags | HCF_HIGHCONTRASTON
                                  : answer.dwFlags & ~static_cast<DWORD>(HCF_HIGHCONTRASTON);
    return TRUE;
}

int WINAPI answerDeviceCaps(HDC dc, int index) {
    static auto* const real = systemFunction<decltype(GetDeviceCaps)>(L"gdi32", "GetDeviceCaps");
    return index == BITSPIXEL ? screenDepth : real(dc, index);
}

void setColours(const SystemColours::List& colours) {
    for (const auto& [index, colour] : colours)
        SetSysColors(1, &index, &colour);
}

}  // namespace

ImportPatch::ImportPatch(const char* function, void* replacement, HMODULE module)
    : slot_(QkDlgTools::importSlot(module ? module : GetModuleHandleW(nullptr), function)) {
    if (slot_)
        original_ = QkDlgTools::exchangeImport(slot_, replacement);
    else
        ADD_FAILURE() << "the module does not import " << function;
}

ImportPatch::~ImportPatch() {
    if (slot_)
        QkDlgTools::exchangeImport(slot_, original_);
}

HighContrast::HighContrast() : patch_("SystemParametersInfoW", &answerParameters) {
    turn(true);
}

void HighContrast::turn(bool on) {
    highContrast = on;
}

ScreenDepth::ScreenDepth(int bits) : patch_("GetDeviceCaps", &answerDeviceCaps) {
    screenDepth = bits;
}

SystemColours::SystemColours(const List& colours) {
    for (const auto& [index, colour] : colours)
        before_.emplace_back(index, GetSysColor(index));
    setColours(colours);
}

SystemColours::~SystemColours() {
    setColours(before_);
}

}  // namespace QkDlgTest
