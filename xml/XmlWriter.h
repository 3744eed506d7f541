#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "xml/XmlDocument.h"

namespace QkDlg {

/// Writes a document as UTF-8, piece by piece in document order, escaped so that reading what was
/// written gives back the same names, attribute values and text: line ends and tabs in attributes
/// and carriage returns in text become references. Nothing is added, no indentation either.
///
/// What XML cannot hold fails: control characters, zero, lone surrogates, names that are none, two
/// attributes of one name, "--" in a comment; so do calls out of order. The call that fails
/// returns false, and from then on every call does, and `finish` gives nothing.
class XmlWriter {
public:
    /// `<?xml version="1.0" encoding="UTF-8"?>`, CR, LF. First of all, or not at all.
    bool declaration();
    bool startElement(std::u16string_view name);
    /// For the element started last, before anything is written into it.
    bool attribute(std::u16string_view name, std::u16string_view value);
    /// Inside an element. Text with "]]>" in it becomes a CDATA section, in which the terminator is
    /// split.
    bool text(std::u16string_view text);
    /// A CDATA section inside an element. "]]>" splits it in two, a carriage return is written as
    /// a reference between two; reading gives the same text.
    bool cdata(std::u16string_view text);
    bool comment(std::u16string_view text);
    bool endElement();
    /// A node with everything inside; the root of a document: its top-level nodes. Not recursive.
    bool node(XmlNode node);

    [[nodiscard]] bool failed() const { return failed_; }
    /// The text, if nothing failed and every element was ended. The writer is as new then.
    [[nodiscard]] std::optional<std::string> finish();

private:
    struct Slice {
        std::size_t begin = 0;
        std::size_t length = 0;
    };

    bool fail();
    bool closeStartTag();
    bool uniqueAttributes();
    bool appendName(std::u16string_view name);
    bool begin(XmlNode node);

    std::string out_;
    std::vector<Slice> open_;            ///< names of the open elements, where they stand in out_
    std::vector<Slice> attributeNames_;  ///< of the start tag that is still open
    bool inStartTag_ = false;
    bool failed_ = false;
};

/// The declaration and the whole document.
[[nodiscard]] std::string writeDocument(const XmlDocument& document);

}  // namespace QkDlg
