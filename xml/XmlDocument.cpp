#include "xml/XmlDocument.h"

#include <utility>

#include "xml/XmlCharacters.h"
#include "xml/XmlDecoding.h"
#include "xml/XmlParser.h"

namespace QkDlg {

XmlNodeKind XmlNode::kind() const {
    return index_ == 0 ? XmlNodeKind::Document : document_->nodes_[index_].kind();
}

std::u16string_view XmlNode::name() const {
    switch (kind()) {
        case XmlNodeKind::Document: return {};
        case XmlNodeKind::Element: return document_->nameAt(document_->nodes_[index_].begin());
        case XmlNodeKind::Text: return u"#text";
        case XmlNodeKind::CData: return u"#cdata-section";
        case XmlNodeKind::Comment: return u"#comment";
    }
    return {};
}

std::u16string_view XmlNode::value() const {
    const XmlNodeKind own = kind();
    if (own == XmlNodeKind::Document || own == XmlNodeKind::Element)
        return {};
    const XmlNodeRecord& node = document_->nodes_[index_];
    return {document_->characters_.get() + node.begin(), node.extent()};
}

std::u16string XmlNode::text() const {
    std::u16string joined;
    for (const XmlNode each : children())
        if (each.kind() == XmlNodeKind::Text || each.kind() == XmlNodeKind::CData)
            joined += each.value();
    return joined;
}

XmlNode XmlNode::parent() const {
    return index_ == 0 ? XmlNode() : XmlNode(document_, document_->nodes_[index_].parent());
}

XmlNode XmlNode::firstChild() const {
    const std::size_t behind = index_ + 1;
    const bool own = document_ != nullptr && behind < document_->nodes_.size() &&
                     document_->nodes_[behind].parent() == index_;
    return own ? XmlNode(document_, behind) : XmlNode();
}

XmlNode XmlNode::nextSibling() const {
    const std::size_t next = index_ == 0 ? 0 : document_->nodes_[index_].next();
    return next == 0 ? XmlNode() : XmlNode(document_, next);
}

XmlNode XmlNode::following() const {
    const bool last = document_ == nullptr || index_ + 1 >= document_->nodes_.size();
    return last ? XmlNode() : XmlNode(document_, index_ + 1);
}

XmlNode XmlNode::child(std::u16string_view name) const {
    const XmlNode first = firstChild();
    return !first || document_->isElement(first.index_, name) ? first : first.next(name);
}

XmlNode XmlNode::next(std::u16string_view name) const {
    XmlNode node = nextSibling();
    while (node && !document_->isElement(node.index_, name))
        node = node.nextSibling();
    return node;
}

std::size_t XmlNode::attributeCount() const {
    std::size_t count = 0;
    while (hasAttribute(count))
        ++count;
    return count;
}

bool XmlNode::hasAttribute(std::size_t index) const {
    return kind() == XmlNodeKind::Element && document_->hasAttribute(index_, index);
}

XmlAttribute XmlNode::attribute(std::size_t index) const {
    if (!hasAttribute(index))
        return {};
    const auto& found = document_->attributes_[document_->nodes_[index_].extent() + index];
    const std::u16string_view name = document_->nameAt(found.name());
    const char16_t* value = name.data() + name.size();
    while (*value != '"' && *value != '\'')
        ++value;
    return {name, {value + 1, found.valueLength()}};
}

std::optional<std::u16string_view> XmlNode::attribute(std::u16string_view name) const {
    for (std::size_t i = 0; hasAttribute(i); ++i)
        if (const XmlAttribute each = attribute(i); XmlCharacters::equal(each.name, name))
            return each.value;
    return std::nullopt;
}

std::size_t XmlNode::offset() const {
    if (index_ == 0)
        return 0;
    const std::size_t begin = document_->nodes_[index_].begin();
    return kind() == XmlNodeKind::Element ? begin - 1 : begin;
}

std::u16string_view XmlDocument::nameAt(std::size_t begin) const {
    const char16_t* const first = characters_.get() + begin;
    const char16_t* const end = XmlCharacters::nameEnd(first, characters_.get() + length_);
    return {first, static_cast<std::size_t>(end - first)};
}

bool XmlDocument::isElement(std::size_t index, std::u16string_view name) const {
    const XmlNodeRecord& node = nodes_[index];
    const std::u16string_view text(characters_.get() + node.begin(), length_ - node.begin());
    return node.kind() == XmlNodeKind::Element && !name.empty() &&
           XmlCharacters::beginsWithName(text, name);
}

// Attributes stand before the next node.
bool XmlDocument::hasAttribute(std::size_t element, std::size_t index) const {
    const std::size_t first = nodes_[element].extent();
    if (index >= attributes_.size() - first)
        return false;
    return element + 1 == nodes_.size() ||
           attributes_[first + index].name() < nodes_[element + 1].begin();
}

std::optional<XmlError> XmlDocument::parseBytes(std::string_view bytes,
                                                const XmlParseOptions& options) {
    return parse(decodeXmlBytes(bytes), options);
}

std::optional<XmlError> XmlDocument::parseText(std::u16string_view text,
                                               const XmlParseOptions& options) {
    return parse(decodeXmlText(text), options);
}

std::optional<XmlError> XmlDocument::parse(XmlDecoded decoded, const XmlParseOptions& options) {
    XmlDocument fresh;
    std::optional<XmlError> error = XmlParser(fresh, std::move(decoded), options).run();
    *this = error ? XmlDocument() : std::move(fresh);
    return error;
}

XmlNode XmlDocument::find(std::u16string_view name, XmlNode after) const {
    if (after.document_ != this)
        return {};
    for (std::size_t index = after.index_ + 1; index < nodes_.size(); ++index)
        if (isElement(index, name))
            return {this, index};
    return {};
}

}  // namespace QkDlg
