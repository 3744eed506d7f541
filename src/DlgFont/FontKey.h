#pragma once

#include <map>
#include <string>

namespace QkDlg {

/// A font as it is asked for: points, weight as in LOGFONT, style 0 plain, 1 italic, 2 underlined,
/// 3 both.
struct FontDescription {
    std::wstring face;
    int size = 0;
    int weight = 400;
    int style = 0;

    [[nodiscard]] bool italic() const { return style == 1 || style == 3; }
    [[nodiscard]] bool underlined() const { return style == 2 || style == 3; }

    /// "face/size/weight/style", by which fonts are shared and substitutions found.
    [[nodiscard]] std::wstring key() const;
};

/// Which face and size stand in for which.
class FontSubstitutions {
public:
    /// Every size of `face` becomes `substFace` at the same size.
    void add(const std::wstring& face, const std::wstring& substFace);
    /// One size of `face` becomes one size of `substFace`.
    void add(const std::wstring& face, int size, const std::wstring& substFace, int substSize);

    /// The face and size to use for `wanted`; an entry for exactly that size goes before one for
    /// all sizes. Faces are compared as GDI does, without regard to ASCII case.
    [[nodiscard]] FontDescription apply(FontDescription wanted) const;

private:
    struct Entry {
        std::wstring face;
        int size;
        std::wstring substFace;
        int substSize;
    };

    [[nodiscard]] const Entry* find(const FontDescription& wanted) const;

    std::map<std::wstring, Entry> m_entries;
};

}  // namespace QkDlg
