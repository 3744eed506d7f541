#include "QkUtil/Module.h"

namespace QkDlg {

namespace {

HMODULE moduleOfThisCode(DWORD flags) {
    HMODULE module = nullptr;
    GetModuleHandleExW(flags | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&ownModule), &module);
    return module;
}

}  // namespace

HMODULE ownModule() {
    static const HMODULE module = moduleOfThisCode(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
    return module;
}

void pinOwnModule() {
    [[maybe_unused]] static const HMODULE pinned = moduleOfThisCode(GET_MODULE_HANDLE_EX_FLAG_PIN);
}

}  // namespace QkDlg
