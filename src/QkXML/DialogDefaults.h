#pragma once

#include <string>

#include "QkDlg/QkXML.h"

namespace QkDlg {

/// The font that controls and dialogs use where they name none: the library's "Segoe UI" at 9
/// points, unless the host's dialog description sets another. GUI thread only, as all here.
struct DialogDefaults {
    std::wstring fontFace;  ///< empty until a description sets it
    int fontSize = 9;       ///< points
};

[[nodiscard]] DialogDefaults& dialogDefaults();

/// The default face; never empty.
[[nodiscard]] const std::wstring& defaultFontFace();

/// The default size in points.
[[nodiscard]] int defaultFontSize();

/// Reads the resource DLG_XML of the host's resource module, or else of its instance module, and
/// takes the defaults from it: once per process, whether there is one or not. A default font
/// without a name and a pair of fonts that is not whole raise the assertion report.
void loadDialogDefaults();

/// The dialog descriptions that were read; empty without a resource.
[[nodiscard]] const QkXML& dialogDescriptions();

/// Descriptions to use in place of the resource; their defaults are read by the next
/// loadDialogDefaults. False, and nothing changed, when the text does not parse.
[[nodiscard]] bool setDialogDescriptions(QkXMLStringView text);

}  // namespace QkDlg
