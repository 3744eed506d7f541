#include "xml/XmlWriter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "xml/XmlCharacters.h"

namespace QkDlg {
namespace {

// Which characters are written as references.
enum class Escaping : unsigned char { None, Text, Attribute };

constexpr std::string_view kCDataBegin = "<![CDATA[";
constexpr std::string_view kCDataEnd = "]]>";
constexpr std::string_view kCarriageReturn = "&#13;";

struct Escape {
    char16_t character;
    Escaping least;
    std::string_view written;
};
// ">" always, so that no "]]>" can come about where two texts meet.
constexpr Escape kEscapes[] = {
    {u'&', Escaping::Text, "&amp;"},       {u'<', Escaping::Text, "&lt;"},
    {u'>', Escaping::Text, "&gt;"},        {u'\r', Escaping::Text, kCarriageReturn},
    {u'"', Escaping::Attribute, "&quot;"}, {u'\t', Escaping::Attribute, "&#9;"},
    {u'\n', Escaping::Attribute, "&#10;"}};

constexpr std::size_t kMostBytes = 4;

std::size_t putUtf8(char* out, char32_t character) {
    const auto byte = [](char32_t value) { return static_cast<char>(value); };
    const auto tail = [byte](char32_t value) { return byte(0x80 | (value & 0x3F)); };
    if (character < 0x80) {
        out[0] = byte(character);
        return 1;
    }
    if (character < 0x800) {
        out[0] = byte(0xC0 | character >> 6);
        out[1] = tail(character);
        return 2;
    }
    if (character < 0x10000) {
        out[0] = byte(0xE0 | character >> 12);
        out[1] = tail(character >> 6);
        out[2] = tail(character);
        return 3;
    }
    out[0] = byte(0xF0 | character >> 18);
    out[1] = tail(character >> 12);
    out[2] = tail(character >> 6);
    out[3] = tail(character);
    return 4;
}

// One bit for each Escaping that leaves the character alone.
using PlainTable = std::array<unsigned char, 128>;
constexpr unsigned bitOf(Escaping escaping) {
    return 1U << static_cast<unsigned>(escaping);
}
constexpr PlainTable kPlain = [] {
    PlainTable table{};
    for (std::size_t each = 0; each < table.size(); ++each)
        if (XmlCharacters::isAllowed(static_cast<char32_t>(each)))
            table[each] = 7;
    for (const Escape& escape : kEscapes)
        for (const Escaping each : {Escaping::Text, Escaping::Attribute})
            if (each >= escape.least)
                table[escape.character] &= static_cast<unsigned char>(~bitOf(each));
    return table;
}();

std::string_view referenceFor(char16_t character) {
    for (const Escape& escape : kEscapes)
        if (escape.character == character)
            return escape.written;
    return {};
}

// The first thing that a CDATA section cannot hold. One pass, since there may be many of them.
std::size_t splitPlace(std::u16string_view text) {
    std::size_t place = text.find_first_of(u"\r]");
    while (place != std::u16string_view::npos && text[place] == ']' &&
           !text.substr(place).starts_with(u"]]>"))
        place = text.find_first_of(u"\r]", place + 1);
    return place;
}

// Appends the plain characters at the beginning of `text`, mostly all of them; returns how many.
std::size_t appendPlain(std::string& out, std::u16string_view text, unsigned plain) {
    const std::size_t before = out.size();
    out.resize(before + text.size());
    char* const to = out.data() + before;
    std::size_t count = 0;
    while (count < text.size() && text[count] < kPlain.size() &&
           (kPlain[text[count]] & plain) != 0) {
        to[count] = static_cast<char>(text[count]);
        ++count;
    }
    out.resize(before + count);
    return count;
}

// Appends `text`; false when it has a character that no document may hold.
bool appendEscaped(std::string& out, std::u16string_view text, Escaping escaping) {
    const unsigned plain = bitOf(escaping);
    std::size_t i = appendPlain(out, text, plain);
    if (i == text.size())
        return true;
    std::array<char, 128> buffer{};
    std::size_t used = 0;
    const auto flush = [&] { out.append(buffer.data(), std::exchange(used, 0)); };
    while (i < text.size()) {
        if (used > buffer.size() - kMostBytes)
            flush();
        const char16_t unit = text[i];
        if (unit < kPlain.size() && (kPlain[unit] & plain) != 0) {
            buffer[used++] = static_cast<char>(unit);
            ++i;
            continue;
        }
        const char32_t character = XmlCharacters::firstCharacter(text.substr(i));
        if (!XmlCharacters::isAllowed(character))
            return false;
        if (unit < kPlain.size()) {
            flush();
            out += referenceFor(unit);
        } else {
            used += putUtf8(buffer.data() + used, character);
        }
        i += character > 0xFFFF ? 2 : 1;
    }
    flush();
    return true;
}

}  // namespace

bool XmlWriter::fail() {
    failed_ = true;
    return false;
}

bool XmlWriter::declaration() {
    if (failed_ || !out_.empty())
        return fail();
    out_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n";
    return true;
}

bool XmlWriter::startElement(std::u16string_view name) {
    if (!closeStartTag())
        return false;
    out_ += '<';
    const std::size_t begin = out_.size();
    if (!appendName(name))
        return false;
    open_.push_back({begin, out_.size() - begin});
    inStartTag_ = true;
    return true;
}

bool XmlWriter::attribute(std::u16string_view name, std::u16string_view value) {
    if (failed_ || !inStartTag_)
        return fail();
    out_ += ' ';
    const std::size_t begin = out_.size();
    if (!appendName(name))
        return false;
    attributeNames_.push_back({begin, out_.size() - begin});
    out_ += "=\"";
    if (!appendEscaped(out_, value, Escaping::Attribute))
        return fail();
    out_ += '"';
    return true;
}

bool XmlWriter::text(std::u16string_view text) {
    if (text.find(u"]]>") != std::u16string_view::npos)
        return cdata(text);
    if (failed_ || open_.empty())
        return fail();
    return text.empty() ||
           (closeStartTag() && (appendEscaped(out_, text, Escaping::Text) || fail()));
}

bool XmlWriter::cdata(std::u16string_view text) {
    if (open_.empty() || !closeStartTag())
        return fail();
    out_ += kCDataBegin;
    while (!text.empty()) {
        const std::size_t length = splitPlace(text);
        if (!appendEscaped(out_, text.substr(0, length), Escaping::None))
            return fail();
        if (length == std::u16string_view::npos)
            break;
        const bool terminator = text[length] == ']';
        out_ += terminator ? "]]]]><![CDATA[>" : "]]>&#13;<![CDATA[";
        text.remove_prefix(length + (terminator ? 3 : 1));
    }
    out_ += kCDataEnd;
    return true;
}

bool XmlWriter::comment(std::u16string_view text) {
    const bool writable = text.find(u"--") == std::u16string_view::npos && !text.ends_with(u'-') &&
                          text.find(u'\r') == std::u16string_view::npos;
    if (!writable || !closeStartTag())
        return fail();
    out_ += "<!--";
    if (!appendEscaped(out_, text, Escaping::None))
        return fail();
    out_ += "-->";
    return true;
}

bool XmlWriter::endElement() {
    if (failed_ || open_.empty())
        return fail();
    if (inStartTag_) {
        if (!uniqueAttributes())
            return fail();
        inStartTag_ = false;
        out_ += "/>";
    } else {
        out_ += "</";
        out_.append(out_, open_.back().begin, open_.back().length);
        out_ += '>';
    }
    open_.pop_back();
    return true;
}

bool XmlWriter::closeStartTag() {
    if (failed_)
        return false;
    if (!inStartTag_)
        return true;
    if (!uniqueAttributes())
        return fail();
    inStartTag_ = false;
    out_ += '>';
    return true;
}

bool XmlWriter::uniqueAttributes() {
    const auto nameAt = [this](std::size_t index) {
        return std::string_view(out_).substr(attributeNames_[index].begin,
                                             attributeNames_[index].length);
    };
    const bool unique = !XmlCharacters::firstDuplicate(attributeNames_.size(), nameAt);
    attributeNames_.clear();
    return unique;
}

bool XmlWriter::appendName(std::u16string_view name) {
    const bool isName = !name.empty() && XmlCharacters::nameLength(name) == name.size();
    return (isName && appendEscaped(out_, name, Escaping::None)) || fail();
}

bool XmlWriter::begin(XmlNode node) {
    switch (node.kind()) {
        case XmlNodeKind::Document: return !failed_;
        case XmlNodeKind::Text: return text(node.value());
        case XmlNodeKind::CData: return cdata(node.value());
        case XmlNodeKind::Comment: return comment(node.value());
        case XmlNodeKind::Element: break;
    }
    if (!startElement(node.name()))
        return false;
    for (std::size_t i = 0;; ++i) {
        const XmlAttribute each = node.attribute(i);
        if (each.name.empty())
            return true;
        if (!attribute(each.name, each.value))
            return false;
    }
}

bool XmlWriter::node(XmlNode node) {
    for (XmlNode each = node; begin(each);) {
        if (const XmlNode child = each.firstChild()) {
            each = child;
            continue;
        }
        // Out of every node that ends here.
        while (true) {
            if (each.kind() == XmlNodeKind::Element && !endElement())
                return false;
            if (each == node)
                return true;
            if (const XmlNode next = each.nextSibling()) {
                each = next;
                break;
            }
            each = each.parent();
        }
    }
    return false;
}

std::optional<std::string> XmlWriter::finish() {
    if (failed_ || !open_.empty())
        return std::nullopt;
    return std::exchange(out_, {});
}

std::string writeDocument(const XmlDocument& document) {
    XmlWriter writer;
    writer.declaration();
    writer.node(document.root());
    return writer.finish().value_or(std::string());
}

}  // namespace QkDlg
