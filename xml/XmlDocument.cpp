#include "xml/XmlDocument.h"

#include <utility>

#include "xml/XmlDecoding.h"
#include "xml/XmlParser.h"

namespace QkDlg {

XmlNodeKind XmlNode::kind() const {
    return index_ == 0 ? XmlNodeKind::Document : document_->nodes_[index_].kind;
}

std::u16string_view XmlNode::name() const {
    switch (kind()) {
        case XmlNodeKind::Document: return {};
        case XmlNodeKind::Element: return document_->view(document_->nodes_[index_].characters);
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
    return document_->view(document_->nodes_[index_].characters);
}

std::u16string XmlNode::text() const {
    std::u16string joined;
    for (const XmlNode each : children())
        if (each.kind() == XmlNodeKind::Text || each.kind() == XmlNodeKind::CData)
            joined += each.value();
    return joined;
}

XmlNode XmlNode::parent() const {
    return index_ == 0 ? XmlNode() : XmlNode(document_, document_->nodes_[index_].parent);
}

XmlNode XmlNode::firstChild() const {
    const std::size_t behind = index_ + 1;
    const bool own = document_ != nullptr && behind < document_->nodes_.size() &&
                     document_->nodes_[behind].parent == index_;
    return own ? XmlNode(document_, behind) : XmlNode();
}

XmlNode XmlNode::nextSibling() const {
    const std::size_t next = index_ == 0 ? 0 : document_->nodes_[index_].next;
    return next == 0 ? XmlNode() : XmlNode(document_, next);
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
    if (kind() != XmlNodeKind::Element)
        return 0;
    const bool last = index_ + 1 == document_->nodes_.size();
    const std::size_t end =
        last ? document_->attributes_.size() : document_->nodes_[index_ + 1].attributes;
    return end - document_->nodes_[index_].attributes;
}

XmlAttribute XmlNode::attribute(std::size_t index) const {
    if (index >= attributeCount())
        return {};
    const auto& found = document_->attributes_[document_->nodes_[index_].attributes + index];
    return {document_->view(found.name), document_->view(found.value)};
}

std::optional<std::u16string_view> XmlNode::attribute(std::u16string_view name) const {
    for (std::size_t i = 0, count = attributeCount(); i < count; ++i)
        if (const XmlAttribute each = attribute(i); each.name == name)
            return each.value;
    return std::nullopt;
}

std::size_t XmlNode::offset() const {
    if (index_ == 0)
        return 0;
    const std::size_t begin = document_->nodes_[index_].characters.begin;
    return kind() == XmlNodeKind::Element ? begin - 1 : begin;
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
