#pragma once

#include <cstddef>
#include <string_view>

#include "xml/XmlError.h"

namespace QkDlg {

/// Where a document type declaration ends, or what is wrong with it.
struct XmlDoctype {
    bool good = true;
    std::size_t length = 0;    ///< of all of it; or where the fault lies
    std::size_t reported = 0;  ///< the offset that the error's text names
    XmlErrorId id = XmlErrorId::UnterminatedTag;
};

/// Passes over the declaration that `text` begins with, "<!DOCTYPE" included. Nothing in it has an
/// effect: entities are not declared, defaults are not taken, nothing outside is opened. The
/// declarations inside are recognised and passed over by their quotes, their content is not
/// checked.
[[nodiscard]] XmlDoctype skipXmlDoctype(std::u16string_view text);

}  // namespace QkDlg
