#include "QkUtil/Resources.h"

#include <optional>
#include <string_view>

#include "QkUtil/Module.h"
#include "lib/Text.h"

namespace QkDlg {

namespace {

std::optional<std::string_view> resourceBytes(HMODULE module, const wchar_t* name,
                                              const wchar_t* type) {
    const HRSRC found = FindResourceW(module, name, type);
    if (!found)
        return std::nullopt;
    const HGLOBAL loaded = LoadResource(module, found);
    const void* bytes = loaded ? LockResource(loaded) : nullptr;
    if (!bytes)
        return std::nullopt;
    return std::string_view(static_cast<const char*>(bytes), SizeofResource(module, found));
}

}  // namespace

UniqueBitmap LoadBitmapResource(UINT id, HMODULE module) {
    if (id == 0)
        return nullptr;
    const HANDLE bitmap = LoadImageW(module ? module : ownModule(), MAKEINTRESOURCEW(id),
                                     IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    return UniqueBitmap(static_cast<HBITMAP>(bitmap));
}

std::wstring LoadStringResource(UINT id) {
    // With a length of 0 the system answers with a pointer to the text inside the resource.
    const wchar_t* text = nullptr;
    const int length = LoadStringW(ownModule(), id, reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

bool LoadResourceText(HMODULE module, const wchar_t* name, TextReceiver& receiver) {
    const auto bytes = resourceBytes(module, name, MAKEINTRESOURCEW(23));  // RT_HTML
    if (!bytes)
        return false;
    const auto text = QkLib::wideFromTextBytes(*bytes);
    return text && receiver.Parse(*text);
}

}  // namespace QkDlg
