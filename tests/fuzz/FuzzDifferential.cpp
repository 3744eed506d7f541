// The same bytes to another parser. What both accept must be the same tree; what one of them alone
// accepts must be one of the cases that docs/xml.md lists.
#include <expat.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <type_traits>

#include "fuzz/Tree.h"

namespace {

using QkDlg::XmlCause;
using QkDlg::XmlError;
using QkDlgTest::require;
using QkDlgTest::Tree;

struct Reader {
    XML_Parser parser = nullptr;
    Tree tree{false};
    bool inCData = false;
    bool inDoctype = false;
    bool sawDoctype = false;
    bool sawAttributeTypes = false;
};

Reader& reader(void* user) {
    return *static_cast<Reader*>(user);
}

void onStart(void* user, const XML_Char* name, const XML_Char** attributes) {
    Reader& self = reader(user);
    self.tree.startElement(name);
    // Those that stand in the tag come first, then the declared ones.
    const int count = XML_GetSpecifiedAttributeCount(self.parser);
    for (int i = 0; i < count; i += 2)
        self.tree.attribute(attributes[i], attributes[i + 1]);
}

void onEnd(void* user, const XML_Char*) {
    reader(user).tree.endElement();
}

void onText(void* user, const XML_Char* text, int length) {
    reader(user).tree.characters({text, static_cast<std::size_t>(length)}, reader(user).inCData);
}

void onComment(void* user, const XML_Char* text) {
    if (!reader(user).inDoctype)
        reader(user).tree.comment(text);
}

void onCDataStart(void* user) {
    reader(user).inCData = true;
    reader(user).tree.characters({}, true);
}

void onCDataEnd(void* user) {
    reader(user).inCData = false;
}

void onDoctypeStart(void* user, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    reader(user).inDoctype = true;
    reader(user).sawDoctype = true;
}

void onDoctypeEnd(void* user) {
    reader(user).inDoctype = false;
}

void onAttributeType(void* user, const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*,
                     int) {
    reader(user).sawAttributeTypes = true;
}

// In single bytes the other parser takes three signs for letters of names that never were.
bool stumbledOverSign(std::string_view bytes, const XmlError& error) {
    return error.position < bytes.size() &&
           std::string_view("\xAA\xB5\xBA").find(bytes[error.position]) != std::string_view::npos;
}

bool mayRefuseAlone(std::string_view bytes, const XmlError& error, const Reader& other) {
    // The other parser reads any version, and lets the declaration overrule the byte order mark.
    return error.cause == XmlCause::BadDeclaration || error.cause == XmlCause::UnknownEncoding ||
           stumbledOverSign(bytes, error) ||
           (other.sawDoctype && error.cause == XmlCause::BadReference);
}

bool mayAcceptAlone(std::string_view bytes, const Reader& other) {
    const XML_Error code = XML_GetErrorCode(other.parser);
    // The other parser's names are those of an earlier edition of XML, which knew fewer letters.
    // Zero bytes tell of UTF-16.
    const bool mayHaveLetters = std::any_of(bytes.begin(), bytes.end(), [](char byte) {
        return byte == 0 || static_cast<unsigned char>(byte) >= 0x80;
    });
    return code == XML_ERROR_UNKNOWN_ENCODING || code == XML_ERROR_PUBLICID || other.inDoctype ||
           (code == XML_ERROR_INVALID_TOKEN && mayHaveLetters);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), &XML_ParserFree);
    Reader other;
    other.parser = parser.get();
    XML_SetUserData(other.parser, &other);
    XML_SetElementHandler(other.parser, onStart, onEnd);
    XML_SetCharacterDataHandler(other.parser, onText);
    XML_SetCommentHandler(other.parser, onComment);
    XML_SetCdataSectionHandler(other.parser, onCDataStart, onCDataEnd);
    XML_SetDoctypeDeclHandler(other.parser, onDoctypeStart, onDoctypeEnd);
    XML_SetAttlistDeclHandler(other.parser, onAttributeType);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const bool accepted =
        XML_Parse(other.parser, bytes.data(), static_cast<int>(size), XML_TRUE) == XML_STATUS_OK;

    QkDlg::XmlDocument document;
    const auto error = document.parseBytes(bytes, {.singleRoot = true});
    if (error && accepted)
        require(mayRefuseAlone(bytes, *error, other),
                "what only the other parser accepts is a known case");
    if (!error && !accepted)
        require(mayAcceptAlone(bytes, other), "what only we accept is a known case");
    // A declared type may take white space from an attribute.
    if (!error && accepted && !other.sawAttributeTypes)
        require(QkDlgTest::treeOf(document, size, false) == other.tree.result(),
                "both parsers read the same tree");
    return 0;
}
