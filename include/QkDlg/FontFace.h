#pragma once

#include <string>
#include <string_view>

namespace QkDlg {

/// The name of a font face. Equal names share one text, which is kept for the life of the process,
/// as the fonts are: a dialog has many controls and few faces. GUI thread only.
class FontFace {
public:
    explicit FontFace(std::wstring_view name);

    [[nodiscard]] const std::wstring& name() const { return *m_name; }

private:
    const std::wstring* m_name;
};

}  // namespace QkDlg
