#include "fuzz/Tree.h"

#include <cstdio>
#include <cstdlib>

#include "xml/XmlCharacters.h"

namespace QkDlgTest {

using QkDlg::XmlNode;
using QkDlg::XmlNodeKind;

void Tree::characters(std::string_view text, bool isCData) {
    const char kind = isCData && !joined_ ? 'D' : 'T';
    if (runKind_ != kind)
        endRun();
    // A joined run is a text, of which an empty section is no part.
    runKind_ = joined_ && run_.empty() && text.empty() ? '\0' : kind;
    run_ += text;
}

void Tree::endRun() {
    if (runKind_ == 0)
        return;
    out_ += runKind_ + std::to_string(run_.size()) + ':' + run_ + '\n';
    run_.clear();
    runKind_ = 0;
}

void Tree::add(char kind, std::string_view text) {
    endRun();
    out_ += kind + std::to_string(text.size()) + ':';
    out_ += text;
    out_ += '\n';
}

std::string Tree::result() {
    endRun();
    return out_;
}

void require(bool condition, const char* what) {
    if (condition)
        return;
    std::fprintf(stderr, "NOT SO: %s\n", what);
    std::abort();
}

std::string utf8(std::u16string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t character = QkDlg::XmlCharacters::firstCharacter(text.substr(i));
        require(QkDlg::XmlCharacters::isAllowed(character), "only characters that XML allows");
        i += character > 0xFFFF ? 2 : 1;
        if (character < 0x80) {
            out += static_cast<char>(character);
            continue;
        }
        const int tails = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
        constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
        out += static_cast<char>(kLeads[tails] | character >> (6 * tails));
        for (int shift = 6 * (tails - 1); shift >= 0; shift -= 6)
            out += static_cast<char>(0x80 | (character >> shift & 0x3F));
    }
    return out;
}

namespace {

void addStart(Tree& tree, XmlNode node, std::size_t length) {
    require(node.offset() + node.value().size() <= length, "the node lies in the document");
    switch (node.kind()) {
        case XmlNodeKind::Document: return;
        case XmlNodeKind::Comment: return tree.comment(utf8(node.value()));
        case XmlNodeKind::Text: return tree.characters(utf8(node.value()), false);
        case XmlNodeKind::CData: return tree.characters(utf8(node.value()), true);
        case XmlNodeKind::Element: break;
    }
    require(!node.name().empty(), "an element has a name");
    tree.startElement(utf8(node.name()));
    const std::size_t count = node.attributeCount();
    for (std::size_t i = 0; i < count; ++i) {
        const QkDlg::XmlAttribute each = node.attribute(i);
        require(node.attribute(each.name) == each.value, "an attribute is found by its name");
        tree.attribute(utf8(each.name), utf8(each.value));
    }
    require(node.attribute(count).name.empty(), "nothing stands behind the last attribute");
}

}  // namespace

std::string treeOf(const QkDlg::XmlDocument& document, std::size_t length, bool joined) {
    Tree tree(joined);
    std::size_t seen = 0;
    for (XmlNode node = document.root(); node; ++seen) {
        addStart(tree, node, length);
        if (const XmlNode child = node.firstChild()) {
            require(child.parent() == node, "a child knows its parent");
            node = child;
            continue;
        }
        while (node && !node.nextSibling()) {
            if (node.kind() == XmlNodeKind::Element)
                tree.endElement();
            node = node.parent();
        }
        if (!node)
            break;
        if (node.kind() == XmlNodeKind::Element)
            tree.endElement();
        require(node.nextSibling().parent() == node.parent(), "siblings have one parent");
        node = node.nextSibling();
    }
    require(seen == document.nodeCount(), "every node is reached once");
    return tree.result();
}

}  // namespace QkDlgTest
