#pragma once

#include <string>

namespace QkDlg {

/// The font that controls and dialogs use where they name none: the library's "Segoe UI" at 9
/// points, unless the host's dialog description sets another. GUI thread only.
struct DialogDefaults {
    std::wstring fontFace;  ///< empty until a description sets it
    int fontSize = 9;       ///< points
};

[[nodiscard]] DialogDefaults& dialogDefaults();

/// The default face; never empty.
[[nodiscard]] const std::wstring& defaultFontFace();

/// The default size in points.
[[nodiscard]] int defaultFontSize();

}  // namespace QkDlg
