#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "xml/XmlDecoding.h"
#include "xml/XmlDocument.h"

namespace QkDlg {

/// Makes a document's nodes from its characters in one pass, without recursion. References and
/// line ends are replaced where they stand: what is written is never longer than what was read.
class XmlParser {
public:
    /// `document` is an empty one; after an error it is of no use.
    XmlParser(XmlDocument& document, XmlDecoded decoded, const XmlParseOptions& options);

    [[nodiscard]] std::optional<XmlError> run();

private:
    // Each of these consumes its own kind of markup, or reports and returns false.
    bool everything();
    bool declaration();
    bool markup();
    bool startTag();
    bool attribute(const char16_t* tag);
    bool uniqueAttributes(const char16_t* tag);
    bool endTag();
    bool missingEndTag(const char16_t* expected);
    bool wrongEndTag(const char16_t* tag, std::u16string_view name);
    bool bang();
    bool doctype();
    bool comment();
    bool cdata();
    bool instruction();
    bool text();
    bool topLevelText();
    bool atEnd();

    template <unsigned kStop>
    bool attributeValue(const char16_t* tag, std::size_t& length);
    char16_t* reference(char16_t* out);

    void append(XmlNodeKind kind, const char16_t* begin, std::size_t extent);
    void appendCharacters(XmlNodeKind kind, char16_t* begin, const char16_t* end);
    void skipSpace();
    std::size_t skipName();
    [[nodiscard]] std::u16string_view rest() const;
    [[nodiscard]] std::u16string_view characters(std::size_t from) const;
    [[nodiscard]] std::size_t offsetOf(const char16_t* place) const;
    template <typename Record>
    void grow(std::vector<Record>& records) const;

    bool fail(XmlErrorId id, XmlCause cause, const char16_t* reported, const char16_t* place);
    bool fail(XmlErrorId id, const char16_t* reported);
    bool badTag(XmlCause cause, const char16_t* tag);

    XmlDocument& document_;
    XmlParseOptions options_;
    std::optional<XmlCause> fault_;  // what follows the last character
    char16_t* begin_;
    char16_t* at_;
    char16_t* end_;
    std::size_t parent_ = 0;    // the innermost open element
    std::size_t previous_ = 0;  // its last child so far, or 0
    bool sawMarkup_ = false;
    bool sawElement_ = false;
    bool sawDoctype_ = false;
    std::vector<std::u16string_view> attributeNames_;  // of the tag being read
    XmlError error_;
};

}  // namespace QkDlg
