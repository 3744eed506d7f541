#include "DlgFont/FontKey.h"

#include <algorithm>

namespace QkDlg {

namespace {

constexpr int kAnySize = -1;

wchar_t asciiLower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
}

bool sameFace(const std::wstring& a, const std::wstring& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return asciiLower(x) == asciiLower(y); });
}

}  // namespace

std::wstring FontDescription::key() const {
    return face + L'/' + std::to_wstring(size) + L'/' + std::to_wstring(weight) + L'/' +
           std::to_wstring(style);
}

void FontSubstitutions::add(const std::wstring& face, const std::wstring& substFace) {
    add(face, kAnySize, substFace, kAnySize);
}

void FontSubstitutions::add(const std::wstring& face, int size, const std::wstring& substFace,
                            int substSize) {
    const FontDescription source{face, size, 400, 0};
    m_entries.insert_or_assign(source.key(), Entry{face, size, substFace, substSize});
}

FontDescription FontSubstitutions::apply(FontDescription wanted) const {
    const Entry* entry = find(wanted);
    if (!entry)
        return wanted;
    wanted.face = entry->substFace;
    if (entry->size != kAnySize)
        wanted.size = entry->substSize;
    return wanted;
}

const FontSubstitutions::Entry* FontSubstitutions::find(const FontDescription& wanted) const {
    const FontDescription source{wanted.face, wanted.size, 400, 0};
    if (const auto exact = m_entries.find(source.key()); exact != m_entries.end())
        return &exact->second;
    const Entry* anySize = nullptr;
    for (const auto& [key, entry] : m_entries) {
        if (!sameFace(entry.face, wanted.face))
            continue;
        if (entry.size == wanted.size)
            return &entry;
        if (entry.size == kAnySize)
            anySize = &entry;
    }
    return anySize;
}

}  // namespace QkDlg
