#pragma once

#include <string>
#include <string_view>

#include "xml/XmlDocument.h"

namespace QkDlgTest {

/// A document tree as text that is equal for equal trees only. Two parsers that read the same
/// document build it in the same order of calls.
class Tree {
public:
    void startElement(std::string_view name) { add('E', name); }
    void attribute(std::string_view name, std::string_view value) {
        add('A', name);
        add('=', value);
    }
    /// Text and CDATA that touch are one run if `joined`, else two texts are and two sections are.
    void characters(std::string_view text, bool isCData);
    void comment(std::string_view text) { add('C', text); }
    void endElement() { add('/', {}); }

    [[nodiscard]] std::string result();

    explicit Tree(bool joined) : joined_(joined) {}

private:
    void add(char kind, std::string_view text);
    void endRun();

    bool joined_;
    std::string out_;
    std::string run_;
    char runKind_ = 0;
};

/// The document's tree. Ends the process when the document contradicts itself: a child that does
/// not know its parent, a name that is none, a slice outside `length` characters.
[[nodiscard]] std::string treeOf(const QkDlg::XmlDocument& document, std::size_t length,
                                 bool joined);

/// UTF-16 that is well-formed as UTF-8.
[[nodiscard]] std::string utf8(std::u16string_view text);

/// Ends the process, so that the fuzzer keeps the input.
void require(bool condition, const char* what);

}  // namespace QkDlgTest
