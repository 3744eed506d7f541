#pragma once

#include "QkDlg/QkXML.h"

namespace QkDlg {

/// `pattern` with the tag name in place of "%s" and the offsets, in turn, in place of "%d". What
/// is inserted is not looked at again. Anything else stays as it stands, and so does a "%d" too
/// many.
[[nodiscard]] QkXMLString formatErrorText(QkXMLStringView pattern, const QkXMLError& error);

}  // namespace QkDlg
