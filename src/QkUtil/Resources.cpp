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

/// What a bitmap resource of this module has been decoded to. Drawing changes a bitmap, so controls
/// need theirs afresh at every paint, and decoding is the dear part of that.
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
        UniqueBitmap bitmap = emptyBitmap(bytes);
        if (bitmap)
            std::ranges::copy(m_bytes, static_cast<std::byte*>(bytes));
        return bitmap;
    }

    /// The same bitmap each time, as it was at first.
    [[nodiscard]] HBITMAP refreshed() {
        if (!m_kept)
            m_kept = emptyBitmap(m_keptBytes);
        if (m_kept) {
            GdiFlush();  // GDI may yet have to draw from it
            std::ranges::copy(m_bytes, static_cast<std::byte*>(m_keptBytes));
        }
        return m_kept.get();
    }

    void freeKept() { m_kept.reset(); }

private:
    UniqueBitmap emptyBitmap(void*& bytes) const {
        return UniqueBitmap(CreateDIBSection(nullptr, &m_info, DIB_RGB_COLORS, &bytes, nullptr, 0));
    }

    BITMAPINFO m_info{};
    std::vector<std::byte> m_bytes;
    UniqueBitmap m_kept;
    void* m_keptBytes = nullptr;
};

std::map<UINT, Picture>& pictures() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new std::map<UINT, Picture>;
    return all;
}

/// Null for what there is none of, and for what cannot be kept decoded.
Picture* pictureOf(UINT id) {
    if (const auto known = pictures().find(id); known != pictures().end())
        return &known->second;
    auto picture = Picture::of(loadedBitmap(id, ownModule()).get());
    return picture ? &pictures().emplace(id, std::move(*picture)).first->second : nullptr;
}

}  // namespace

UniqueBitmap LoadBitmapResource(UINT id, HMODULE module) {
    if (id == 0)
        return nullptr;
    if (module && module != ownModule())
        return loadedBitmap(id, module);
    const Picture* const picture = pictureOf(id);
    return picture ? picture->asBitmap() : loadedBitmap(id, ownModule());
}

FreshPicture::FreshPicture(UINT id) {
    if (id == 0)
        return;
    if (Picture* const picture = pictureOf(id)) {
        m_bitmap = picture->refreshed();
        return;
    }
    m_own = loadedBitmap(id, ownModule());
    m_bitmap = m_own.get();
}

void FreshPicture::freeKept() {
    for (auto& [id, picture] : pictures())
        picture.freeKept();
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
    auto text = QkLib::wideFromTextBytes(*bytes);
    if (!text)
        return false;
    // Resource tools fill up with zeros.
    text->resize(text->find_last_not_of(L'\0') + 1);
    return receiver.Parse(*text);
}

}  // namespace QkDlg
