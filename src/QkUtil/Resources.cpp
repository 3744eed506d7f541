#include "QkUtil/Resources.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "QkUtil/Module.h"
#include "lib/Text.h"

namespace QkDlg {

namespace {

constexpr WORD kDirectColourBits = 24;

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

UniqueBitmap loadedBitmap(UINT id, HMODULE module) {
    const HANDLE bitmap =
        LoadImageW(module, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION);
    return UniqueBitmap(static_cast<HBITMAP>(bitmap));
}

/// What a bitmap resource has been decoded to. Controls load theirs at every paint, since drawing
/// changes a bitmap, and decoding is the dear part of that.
class Picture {
public:
    /// Nothing for a null bitmap, and for one with a palette or other colour masks.
    static std::optional<Picture> of(HBITMAP bitmap) {
        DIBSECTION section{};
        if (GetObjectW(bitmap, sizeof section, &section) != sizeof section ||
            section.dsBm.bmBitsPixel < kDirectColourBits || !section.dsBm.bmBits ||
            section.dsBmih.biCompression != BI_RGB)
            return std::nullopt;
        GdiFlush();  // GDI may have drawn it, and not yet
        Picture picture;
        picture.m_info.bmiHeader = section.dsBmih;
        const auto* const bytes = static_cast<const std::byte*>(section.dsBm.bmBits);
        picture.m_bytes.assign(bytes, bytes + static_cast<std::size_t>(section.dsBm.bmWidthBytes) *
                                                  static_cast<std::size_t>(section.dsBm.bmHeight));
        return picture;
    }

    [[nodiscard]] UniqueBitmap asBitmap() const {
        void* bytes = nullptr;
        UniqueBitmap bitmap(CreateDIBSection(nullptr, &m_info, DIB_RGB_COLORS, &bytes, nullptr, 0));
        if (bitmap)
            std::ranges::copy(m_bytes, static_cast<std::byte*>(bytes));
        return bitmap;
    }

private:
    BITMAPINFO m_info{};
    std::vector<std::byte> m_bytes;
};

}  // namespace

UniqueBitmap LoadBitmapResource(UINT id, HMODULE module) {
    if (id == 0)
        return nullptr;
    if (module && module != ownModule())
        return loadedBitmap(id, module);
    // Never destroyed: a host's static object may end after this module's.
    static auto& pictures = *new std::map<UINT, Picture>;
    if (const auto known = pictures.find(id); known != pictures.end())
        return known->second.asBitmap();
    UniqueBitmap bitmap = loadedBitmap(id, ownModule());
    if (auto picture = Picture::of(bitmap.get()))
        pictures.emplace(id, std::move(*picture));
    return bitmap;
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
