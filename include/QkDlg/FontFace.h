#pragma once

#include <string>
#include <string_view>

namespace QkDlg {

/// The name of a font face. Equal names share one text, which is kept for the life of the process,
/// as the fonts are: a dialog has many controls and few faces. GUI thread only.
class FontFace {
public:
    /// Finds the text of that name, or keeps a new one. The name may be empty.
    explicit FontFace(std::wstring_view name);

    /// Lives as long as the process.
    [[nodiscard]] const std::wstring& name() const { return *m_name; }

private:
    const std::wstring* m_name;
};

}  // namespace QkDlg
