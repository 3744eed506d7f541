// Between the tree and XML: the document library parses and writes.

#include <utility>

#include "QkDlg/QkXML.h"
#include "lib/AssertReport.h"
#include "xml/XmlDocument.h"
#include "xml/XmlWriter.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNullText{"src/QkXML", 62};

// The same units under the name that they have here.
QkXMLString own(std::u16string_view text) {
    return {text.begin(), text.end()};
}

QkXMLError own(const XmlError& error) {
    return {.id = static_cast<int>(error.id),
            .tagName = own(error.tagName),
            .offset = error.offset,
            .endOffset = error.offset2,
            .position = error.position};
}

// Writes an element at a time; its buffers serve for all of them.
class TreeWriter {
public:
    bool start(const QkXMLElement& element) {
        writer_.startElement(units(element.Name(), first_));
        for (const auto& [name, value] : element.Attributes())
            writer_.attribute(units(name, first_), units(value, second_));
        if (!element.Text().empty())
            writer_.text(units(element.Text(), first_));
        return !writer_.failed();
    }
    bool end() { return writer_.endElement(); }
    void declaration() { writer_.declaration(); }
    std::optional<std::string> finish() { return writer_.finish(); }

private:
    static std::u16string_view units(const QkXMLString& text, std::u16string& buffer) {
        return buffer.assign(text.begin(), text.end());
    }

    XmlWriter writer_;
    std::u16string first_;
    std::u16string second_;
};

}  // namespace

class QkXMLBuilder {
public:
    // The text is copied first: it may belong to the tree that goes.
    static bool load(QkXML& document, QkXMLStringView text) {
        const std::u16string copy(text.begin(), text.end());
        document.Clear();
        XmlDocument parsed;
        if (const auto error = parsed.parseText(copy)) {
            document.m_error = own(*error);
            return false;
        }
        // If memory ends in the middle, the document stays empty.
        QkXML built;
        appendElements(parsed.root(), built);
        document = std::move(built);
        return true;
    }

private:
    struct Open {
        XmlNode next;       // the child that comes next
        QkXMLParent* into;  // where it goes
    };

    static void appendElements(XmlNode root, QkXMLParent& target) {
        std::vector<Open> open{{root.firstChild(), &target}};
        while (!open.empty()) {
            const XmlNode node = open.back().next;
            if (!node) {
                open.pop_back();
                continue;
            }
            open.back().next = node.nextSibling();
            if (node.kind() == XmlNodeKind::Element) {
                QkXMLElement& element = AppendChild(*open.back().into, elementFrom(node));
                open.push_back({node.firstChild(), &element});
            }
        }
    }

    static std::unique_ptr<QkXMLElement> elementFrom(XmlNode node) {
        auto element = std::make_unique<QkXMLElement>(own(node.name()), own(node.text()));
        const std::size_t count = node.attributeCount();
        element->m_attributes.reserve(count);
        // The parser has seen to it that their names differ.
        for (std::size_t i = 0; i < count; ++i) {
            const XmlAttribute attribute = node.attribute(i);
            element->m_attributes.push_back({own(attribute.name), own(attribute.value)});
        }
        return element;
    }
};

bool LoadFromText(QkXML& document, QkXMLStringView text) {
    return QkXMLBuilder::load(document, text);
}

bool LoadFromText(QkXML& document, const QkXMLChar* text) {
    if (!text)
        QkLib::reportAssertFailure(kNullText);
    return LoadFromText(document, QkXMLStringView(text));
}

std::optional<std::string> Save(const QkXML& document) {
    struct Level {
        const QkXMLParent* parent;
        std::size_t next;  // index of the child to be written next
    };
    TreeWriter writer;
    writer.declaration();
    std::vector<Level> levels{{&document, 0}};
    while (true) {
        Level& level = levels.back();
        if (level.next < level.parent->Children().size()) {
            const QkXMLElement& child = *level.parent->Children()[level.next++];
            if (!writer.start(child))
                return std::nullopt;
            levels.push_back({&child, 0});
            continue;
        }
        levels.pop_back();
        if (levels.empty())
            return writer.finish();
        writer.end();
    }
}

}  // namespace QkDlg
