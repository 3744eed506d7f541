#include "FlatLibrary.h"

#include <string>

#include "QkDlg/Win32.h"

namespace Gallery {
namespace {

constexpr const wchar_t* kDllName = sizeof(void*) == 8 ? L"QkDlg64.dll" : L"QkDlg32.dll";

std::wstring pathBesideProgram(const wchar_t* fileName) {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    // The result fills the buffer when it was cut off.
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
           path.size()) {
        path.resize(path.size() * 2);
    }
    path.resize(length);
    path.resize(path.find_last_of(L'\\') + 1);
    return path + fileName;
}

template <typename Function>
bool find(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    return function != nullptr;
}

}  // namespace

std::optional<FlatLibrary> loadFlatLibrary() {
    const std::wstring path = pathBesideProgram(kDllName);
    HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module)
        return std::nullopt;
    FlatLibrary library{};
    const bool complete = find(module, "CreateQkCustomControl", library.createControl) &&
                          find(module, "DeleteQkCustomControl", library.deleteControl) &&
                          find(module, "FlatStyleEnabled", library.flatStyleEnabled) &&
                          find(module, "GetUIColor", library.uiColor);
    return complete ? std::optional(library) : std::nullopt;
}

}  // namespace Gallery
