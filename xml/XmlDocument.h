#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "xml/XmlError.h"
#include "xml/XmlRecords.h"

namespace QkDlg {

class XmlDocument;
struct XmlDecoded;

struct XmlAttribute {
    std::u16string_view name;
    std::u16string_view value;
};

/// A place in a document: small, copied freely, valid as long as the document is neither parsed
/// anew, moved nor destroyed. A null node may be asked anything; it answers with nothing: null
/// nodes, empty strings, no attributes.
class XmlNode {
public:
    class Children;

    constexpr XmlNode() = default;

    [[nodiscard]] explicit operator bool() const { return document_ != nullptr; }
    bool operator==(const XmlNode&) const = default;

    /// `Document` for a null node.
    [[nodiscard]] XmlNodeKind kind() const;
    /// An element's name as written, with any prefix; "#text", "#cdata-section", "#comment" for
    /// the other kinds, nothing for the document itself.
    [[nodiscard]] std::u16string_view name() const;
    /// The characters of a text, CDATA or comment node, references replaced; nothing for others.
    [[nodiscard]] std::u16string_view value() const;
    /// All text and CDATA directly inside, joined, nothing trimmed. Takes time in the number of
    /// children.
    [[nodiscard]] std::u16string text() const;

    [[nodiscard]] XmlNode parent() const;
    [[nodiscard]] XmlNode firstChild() const;
    [[nodiscard]] XmlNode nextSibling() const;
    /// The node that begins next in the document: the first child, a sibling, or one further out.
    [[nodiscard]] XmlNode following() const;
    /// All children, of every kind, in document order: `for (XmlNode child : node.children())`.
    [[nodiscard]] Children children() const;
    /// The first child element of that name, or null.
    [[nodiscard]] XmlNode child(std::u16string_view name) const;
    /// The next sibling element of that name, or null.
    [[nodiscard]] XmlNode next(std::u16string_view name) const;

    /// Takes time in their number.
    [[nodiscard]] std::size_t attributeCount() const;
    /// In document order; an empty pair at and past the end. Takes the same time for each index.
    [[nodiscard]] XmlAttribute attribute(std::size_t index) const;
    /// The value, or nothing when there is no such attribute.
    [[nodiscard]] std::optional<std::u16string_view> attribute(std::u16string_view name) const;

    /// Where the node begins in the document (see XmlError): the "<" of a tag or the first
    /// character of a text or of the inside of a comment or CDATA section.
    [[nodiscard]] std::size_t offset() const;

private:
    friend class XmlDocument;
    struct XmlDecoded;

    [[nodiscard]] bool hasAttribute(std::size_t index) const;

    XmlNode(const XmlDocument* document, std::size_t index) : document_(document), index_(index) {}

    const XmlDocument* document_ = nullptr;
    std::size_t index_ = 0;
};

/// How a document is read.
struct XmlParseOptions {
    /// Strict mode: a second top-level element is an error (62001).
    bool singleRoot = false;
};

/// A parsed document: its characters in one buffer of UTF-16, its nodes in one array in document
/// order, linked by number. Reading, searching and freeing never recurse, and nothing is
/// allocated for a single node. Documents share nothing; many threads may read the same one.
///
/// Adjacent text is one node, and so are adjacent CDATA sections; processing instructions,
/// declarations and white space outside the top-level elements are not kept.
class XmlDocument {
public:
    /// Replaces the content by that of `bytes`: UTF-8 with or without byte order mark, UTF-16 of
    /// either byte order with or without it, or what the declaration names (US-ASCII, ISO-8859-1,
    /// windows-1252). Gives what is wrong, and leaves the document empty then; nothing when all is
    /// well. Throws std::bad_alloc only.
    [[nodiscard]] std::optional<XmlError> parseBytes(std::string_view bytes,
                                                     const XmlParseOptions& options = {});
    /// The same for text that is UTF-16 already. One leading byte order mark is skipped; an
    /// encoding declaration is checked for its form, and what it names does not matter.
    [[nodiscard]] std::optional<XmlError> parseText(std::u16string_view text,
                                                    const XmlParseOptions& options = {});

    /// The parent of all top-level nodes. It is there in an empty document, too.
    [[nodiscard]] XmlNode root() const { return {this, 0}; }
    /// The first element of that name in document order behind `after` (which may be the root),
    /// at any depth; null when there is none.
    [[nodiscard]] XmlNode find(std::u16string_view name, XmlNode after) const;
    [[nodiscard]] XmlNode find(std::u16string_view name) const { return find(name, root()); }
    /// All nodes but the root.
    [[nodiscard]] std::size_t nodeCount() const { return nodes_.empty() ? 0 : nodes_.size() - 1; }

private:
    friend class XmlNode;
    friend class XmlParser;

    [[nodiscard]] std::u16string_view nameAt(std::size_t begin) const;
    [[nodiscard]] bool isElement(std::size_t index, std::u16string_view name) const;
    [[nodiscard]] bool hasAttribute(std::size_t element, std::size_t index) const;
    std::optional<XmlError> parse(XmlDecoded decoded, const XmlParseOptions& options);

    std::unique_ptr<char16_t[]> characters_;
    std::size_t length_ = 0;
    std::vector<XmlNodeRecord> nodes_;  ///< the first one is the root; none in an empty document
    std::vector<XmlAttributeRecord> attributes_;
};

/// The children of a node as a range.
class XmlNode::Children {
public:
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = XmlNode;
        using difference_type = std::ptrdiff_t;
        using pointer = const XmlNode*;
        using reference = XmlNode;

        Iterator() = default;
        explicit Iterator(XmlNode node) : node_(node) {}
        XmlNode operator*() const { return node_; }
        Iterator& operator++() {
            node_ = node_.nextSibling();
            return *this;
        }
        Iterator operator++(int) {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator&) const = default;

    private:
        XmlNode node_;
    };

    explicit Children(XmlNode first) : first_(first) {}
    [[nodiscard]] Iterator begin() const { return Iterator(first_); }
    [[nodiscard]] static Iterator end() { return {}; }

private:
    XmlNode first_;
};

inline XmlNode::Children XmlNode::children() const {
    return Children(firstChild());
}

}  // namespace QkDlg
