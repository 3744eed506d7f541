#pragma once

#include <cstddef>
#include <string>

namespace QkDlg {

/// What a parser can report. The numbers are those of the string table, whose texts take the
/// arguments named here in this order.
enum class XmlErrorId : int {
    RootHasSibling = 62001,              ///< none; strict mode only
    NoRootElement = 62002,               ///< none
    EmptyDocument = 62003,               ///< none
    LoneEndTag = 62004,                  ///< tagName, offset of the end tag
    MissingEndTag = 62005,               ///< tagName, offset of the start tag, offset2
    UnterminatedTag = 62007,             ///< offset of the tag's "<"
    ExpectingTagName = 62095,            ///< offset where it is missing, as for all that follow
    ExpectingDoctype = 62096,            ///< offset
    ExpectingMarkupDeclaration = 62097,  ///< offset
    ExpectingComment = 62098,            ///< offset
    ExpectingCData = 62099,              ///< offset
};

/// Why a document was refused, where the text of the string table can only come near it.
enum class XmlCause {
    Syntax,              ///< the id says it
    BadAttribute,        ///< no white space before it, no "=", no quotes, "<" in the value
    DuplicateAttribute,  ///< a second attribute of the same name in one tag
    BadReference,        ///< "&" without a name, an unknown entity, a number that is no character
    BadCharacter,        ///< a control character, zero, a lone surrogate, U+FFFE, U+FFFF
    BadEncoding,         ///< bytes that the document's encoding does not know
    UnknownEncoding,  ///< the declaration names an encoding that is not known, or not the one used
    BadDeclaration,   ///< the XML declaration is malformed or not at the very beginning
    BadInstruction,   ///< a processing instruction without a target or a white space after it
    BadComment,       ///< "--" inside a comment
    BadText,          ///< "]]>" in text, or text outside the top-level elements
};

/// The first thing that is wrong with a document. All offsets count UTF-16 units of the decoded
/// document, from 0, without the byte order mark, before line ends are normalised.
struct XmlError {
    XmlErrorId id = XmlErrorId::EmptyDocument;
    XmlCause cause = XmlCause::Syntax;
    std::u16string tagName;  ///< 62004, 62005: the name in the tag
    std::size_t offset = 0;  ///< where the id points to; 0 for ids without an offset
    std::size_t offset2 =
        0;  ///< 62005: where the end tag was expected (another end tag, or the end)
    std::size_t position = 0;  ///< the very character that could not be accepted
};

}  // namespace QkDlg
