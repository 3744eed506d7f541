#include "preview/Module.h"

#include <algorithm>
#include <array>

namespace QkPreview {
namespace {

BOOL CALLBACK addLanguage(HMODULE, LPCWSTR, LPCWSTR name, WORD language, LONG_PTR list) {
    TemplateName found;
    found.language = language;
    if (IS_INTRESOURCE(name))
        found.id = LOWORD(reinterpret_cast<ULONG_PTR>(name));
    else
        found.name = name;
    reinterpret_cast<std::vector<TemplateName>*>(list)->push_back(found);
    return TRUE;
}

BOOL CALLBACK addTemplate(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR list) {
    EnumResourceLanguagesW(module, type, name, &addLanguage, list);
    return TRUE;
}

struct FindCloser {
    void operator()(HANDLE search) const { FindClose(search); }
};

}  // namespace

std::wstring hexWord(WORD number) {
    constexpr std::wstring_view kDigits = L"0123456789abcdef";
    std::wstring text = L"0x";
    for (const int shift : {12, 8, 4, 0})
        text += kDigits[static_cast<size_t>(number >> shift & 0xF)];
    return text;
}

std::wstring fileNameOf(const std::wstring& path) {
    return path.substr(path.find_last_of(L"\\/:") + 1);
}

std::wstring TemplateName::shown() const {
    return (name.empty() ? std::to_wstring(id) : name) + L" (" + hexWord(language) + L")";
}

std::span<std::uint16_t> TemplateCopy::words() const {
    // The block is fixed memory, so its handle is its address.
    return {static_cast<std::uint16_t*>(block.get()), bytes / sizeof(std::uint16_t)};
}

Module::Module(const std::wstring& file)
    : module_(LoadLibraryExW(file.c_str(), nullptr,
                             LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {}

std::vector<TemplateName> Module::templates() const {
    std::vector<TemplateName> list;
    EnumResourceNamesW(module_.get(), RT_DIALOG, &addTemplate, reinterpret_cast<LONG_PTR>(&list));
    return list;
}

TemplateCopy Module::copyTemplate(const TemplateName& name) const {
    HRSRC found = FindResourceExW(module_.get(), RT_DIALOG, name.resource(), name.language);
    HGLOBAL loaded = found ? LoadResource(module_.get(), found) : nullptr;
    if (!loaded || !LockResource(loaded))
        return {};
    const DWORD bytes = SizeofResource(module_.get(), found);
    return {QkDlg::CopyResourceToGlobal(loaded, bytes), bytes};
}

std::vector<std::wstring> matchingFiles(const std::wstring& pattern) {
    if (pattern.find_first_of(L"*?") == std::wstring::npos)
        return {pattern};
    const std::wstring folder = pattern.substr(0, pattern.size() - fileNameOf(pattern).size());
    std::vector<std::wstring> files;
    WIN32_FIND_DATAW found{};
    HANDLE handle = FindFirstFileW(pattern.c_str(), &found);
    if (handle == INVALID_HANDLE_VALUE)
        return files;
    const std::unique_ptr<void, FindCloser> search(handle);
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            files.push_back(folder + &found.cFileName[0]);
    } while (FindNextFileW(handle, &found));
    std::ranges::sort(files);
    return files;
}

}  // namespace QkPreview
