#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "xml/XmlError.h"

namespace QkDlg {

/// A document's characters, as far as they are characters, without byte order mark. A zero that
/// does not count stands behind the last one.
struct XmlDecoded {
    std::unique_ptr<char16_t[]> characters;
    std::size_t length = 0;
    std::optional<XmlCause> fault;  ///< why the document cannot be read beyond `length`

    [[nodiscard]] std::u16string_view view() const { return {characters.get(), length}; }
};

[[nodiscard]] XmlDecoded decodeXmlBytes(std::string_view bytes);
[[nodiscard]] XmlDecoded decodeXmlText(std::u16string_view text);

/// The `<?xml ...?>` at the beginning of a document.
struct XmlDeclaration {
    std::size_t length = 0;         ///< of all of it
    std::size_t encodingBegin = 0;  ///< the name inside the quotes
    std::size_t encodingLength = 0;
};

/// Whether the text begins with a declaration, well-formed or not.
[[nodiscard]] bool beginsWithXmlDeclaration(std::u16string_view text);
/// Nothing when it is malformed.
[[nodiscard]] std::optional<XmlDeclaration> readXmlDeclaration(std::u16string_view text);

}  // namespace QkDlg
