// Any bytes, and any UTF-16, are a sound document or an error inside the text.
#include <cstdint>
#include <cstring>

#include "fuzz/Tree.h"

namespace {

using namespace QkDlg;
using QkDlgTest::require;

void check(const XmlDocument& document, const std::optional<XmlError>& error, std::size_t length) {
    if (!error) {
        require(document.nodeCount() > 0, "what parses has an element");
        require(!QkDlgTest::treeOf(document, length, false).empty(), "and a tree");
        return;
    }
    require(document.nodeCount() == 0, "a document that does not parse is empty");
    require(error->offset <= length && error->offset2 <= length && error->position <= length,
            "the offsets lie in the document");
    const bool named =
        error->id == XmlErrorId::LoneEndTag || error->id == XmlErrorId::MissingEndTag;
    require(named != error->tagName.empty(), "the errors that name a tag have a name");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    XmlDocument several;
    const auto error = several.parseBytes(bytes);
    check(several, error, size);
    XmlDocument strict;
    const auto strictError = strict.parseBytes(bytes, {.singleRoot = true});
    check(strict, strictError, size);
    require(!error || strictError, "what is wrong is wrong in strict mode, too");
    if (!strictError)
        require(several.nodeCount() == strict.nodeCount(), "one root is read the same way");

    std::u16string text(size / 2, u'\0');
    if (!text.empty())
        std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
    XmlDocument wide;
    const auto wideError = wide.parseText(text);
    check(wide, wideError, text.size());
    return 0;
}
