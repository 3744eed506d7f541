#include "xml/XmlParser.h"

#include <algorithm>
#include <new>
#include <utility>

#include "xml/XmlCharacters.h"
#include "xml/XmlDoctype.h"

namespace QkDlg {
namespace {

using XmlCharacters::is;

// The next unit of one of the classes. The zero behind the last character is in every class that
// stops, so no end needs to be looked for.
template <unsigned kStop>
char16_t* scan(char16_t* at) {
    while (true) {
        for (std::ptrdiff_t i = 0; i < 4; ++i)
            if (is(at[i], kStop))
                return at + i;
        at += 4;
    }
}

// Moves a run of characters to where the shortened ones before it end.
char16_t* moved(const char16_t* begin, const char16_t* end, char16_t* out) {
    if (begin == out)
        return out + (end - begin);
    return std::copy(begin, end, out);
}

// The text is followed by a zero, which `expected` has none of.
const char16_t* firstDifference(const char16_t* text, std::u16string_view expected) {
    for (auto each = expected.begin(); each != expected.end() && *each == *text; ++each)
        ++text;
    return text;
}

int digitOf(char16_t unit, unsigned base) {
    if (unit >= '0' && unit <= '9')
        return unit - '0';
    const auto small = static_cast<char16_t>(unit | 0x20);
    return base == 16 && small >= 'a' && small <= 'f' && unit < 0x80 ? small - 'a' + 10 : -1;
}

struct Entity {
    std::u16string_view name;
    char16_t character;
};
constexpr Entity kEntities[] = {
    {u"amp;", u'&'}, {u"lt;", u'<'}, {u"gt;", u'>'}, {u"quot;", u'"'}, {u"apos;", u'\''}};

}  // namespace

XmlParser::XmlParser(XmlDocument& document, XmlDecoded decoded, const XmlParseOptions& options)
    : document_(document),
      options_(options),
      fault_(decoded.fault),
      begin_(decoded.characters.get()),
      at_(begin_),
      end_(begin_ + decoded.length) {
    if (decoded.length >= XmlNodeRecord::kMostCharacters)
        throw std::bad_alloc();
    document_.characters_ = std::move(decoded.characters);
    document_.length_ = decoded.length;
    // About as many as documents have; what is not needed is not touched.
    document_.nodes_.reserve(decoded.length / 16 + 8);
    document_.attributes_.reserve(decoded.length / 64 + 8);
    document_.nodes_.emplace_back();
}

std::optional<XmlError> XmlParser::run() {
    const bool good = everything();
    // What ends where the characters do was cut short by the fault that follows them.
    if (fault_ && (good || error_.position >= offsetOf(end_))) {
        error_ = XmlError();
        fail(XmlErrorId::ExpectingMarkupDeclaration, *fault_, end_, end_);
        return error_;
    }
    return good ? std::nullopt : std::optional(error_);
}

bool XmlParser::everything() {
    if (beginsWithXmlDeclaration(rest()) && !declaration())
        return false;
    while (at_ != end_)
        if (*at_ == '<' ? !markup() : !text())
            return false;
    return atEnd();
}

bool XmlParser::declaration() {
    const auto declaration = readXmlDeclaration(rest());
    if (!declaration) {
        const std::size_t mark = rest().find(u"?>");
        const bool cut = mark == std::u16string_view::npos;
        return fail(XmlErrorId::UnterminatedTag, XmlCause::BadDeclaration, at_, cut ? end_ : at_);
    }
    at_ += declaration->length;
    sawMarkup_ = true;
    return true;
}

bool XmlParser::markup() {
    sawMarkup_ = true;
    switch (at_[1]) {
        case '/': return endTag();
        case '!': return bang();
        case '?': return instruction();
        default: return startTag();
    }
}

bool XmlParser::startTag() {
    const char16_t* const tag = at_++;
    const std::size_t length = skipName();
    if (length == 0)
        return fail(XmlErrorId::ExpectingTagName, at_);
    if (parent_ == 0 && sawElement_ && options_.singleRoot)
        return fail(XmlErrorId::RootHasSibling, XmlCause::Syntax, begin_, tag);
    sawElement_ = true;
    append(XmlNodeKind::Element, tag + 1, document_.attributes_.size());
    attributeNames_.clear();
    while (true) {
        const char16_t* const before = at_;
        skipSpace();
        if (*at_ == '>' || *at_ == '/')
            break;
        if (at_ == before)
            return badTag(XmlCause::BadAttribute, tag);
        if (!attribute(tag))
            return false;
    }
    if (!uniqueAttributes(tag))
        return false;
    const bool empty = *at_ == '/';
    at_ += empty ? 1 : 0;
    if (*at_ != '>')
        return badTag(XmlCause::Syntax, tag);
    ++at_;
    if (!empty)
        parent_ = std::exchange(previous_, 0);
    return true;
}

bool XmlParser::attribute(const char16_t* tag) {
    const char16_t* const name = at_;
    if (skipName() == 0)
        return badTag(XmlCause::BadAttribute, tag);
    attributeNames_.emplace_back(name, offsetOf(at_) - offsetOf(name));
    std::size_t valueLength = 0;
    skipSpace();
    if (*at_ != '=')
        return badTag(XmlCause::BadAttribute, tag);
    ++at_;
    skipSpace();
    const bool good = *at_ == '"'    ? attributeValue<kXmlDoubleQuotedStop>(tag, valueLength)
                      : *at_ == '\'' ? attributeValue<kXmlSingleQuotedStop>(tag, valueLength)
                                     : badTag(XmlCause::BadAttribute, tag);
    if (good) {
        if (document_.attributes_.size() == document_.attributes_.capacity())
            grow(document_.attributes_);
        document_.attributes_.emplace_back(offsetOf(name), valueLength);
    }
    return good;
}

// A white space in a value counts as a space, and a line end as one.
template <unsigned kStop>
bool XmlParser::attributeValue(const char16_t* tag, std::size_t& length) {
    const char16_t quote = *at_;
    char16_t* const begin = ++at_;
    char16_t* out = begin;
    while (true) {
        const char16_t* const run = at_;
        at_ = scan<kStop>(at_);
        out = moved(run, at_, out);
        if (*at_ == quote) {
            length = static_cast<std::size_t>(out - begin);
            ++at_;
            return true;
        }
        if (*at_ == '&') {
            out = reference(out);
            if (out == nullptr)
                return false;
        } else if (is(*at_, kXmlSpace)) {
            at_ += at_[0] == '\r' && at_[1] == '\n' ? 2 : 1;
            *out++ = ' ';
        } else {
            return badTag(XmlCause::BadAttribute, tag);
        }
    }
}

bool XmlParser::uniqueAttributes(const char16_t* tag) {
    const auto nameAt = [this](std::size_t index) { return attributeNames_[index]; };
    const auto duplicate = XmlCharacters::firstDuplicate(attributeNames_.size(), nameAt);
    return !duplicate || fail(XmlErrorId::UnterminatedTag, XmlCause::DuplicateAttribute, tag,
                              attributeNames_[*duplicate].data());
}

bool XmlParser::endTag() {
    const char16_t* const tag = at_;
    at_ += 2;
    const std::size_t length = skipName();
    if (length == 0)
        return fail(XmlErrorId::ExpectingTagName, at_);
    const std::u16string_view name(tag + 2, length);
    if (parent_ == 0 ||
        !XmlCharacters::beginsWithName(characters(document_.nodes_[parent_].begin()), name))
        return wrongEndTag(tag, name);
    skipSpace();
    if (*at_ != '>')
        return badTag(XmlCause::Syntax, tag);
    ++at_;
    previous_ = std::exchange(parent_, document_.nodes_[parent_].parent());
    return true;
}

// The end tag of an element further out shows that the innermost one lacks its own.
bool XmlParser::wrongEndTag(const char16_t* tag, std::u16string_view name) {
    std::size_t outer = parent_;
    while (outer != 0 && !document_.isElement(outer, name))
        outer = document_.nodes_[outer].parent();
    if (outer == 0) {
        error_.tagName = name;
        return fail(XmlErrorId::LoneEndTag, XmlCause::Syntax, tag, at_);
    }
    return missingEndTag(tag);
}

bool XmlParser::missingEndTag(const char16_t* expected) {
    const std::size_t open = document_.nodes_[parent_].begin();
    error_.tagName = document_.nameAt(open);
    error_.offset2 = offsetOf(expected);
    return fail(XmlErrorId::MissingEndTag, XmlCause::Syntax, begin_ + open - 1, at_);
}

bool XmlParser::bang() {
    const char16_t* const expected = at_ + 2;
    if (*expected == '-')
        return comment();
    if (*expected == '[')
        return cdata();
    if (rest().starts_with(u"<!DOCTYPE") && !sawDoctype_ && !sawElement_)
        return doctype();
    return fail(XmlErrorId::ExpectingDoctype, XmlCause::Syntax, expected,
                firstDifference(expected, u"DOCTYPE"));
}

bool XmlParser::doctype() {
    const XmlDoctype read = skipXmlDoctype(rest());
    if (!read.good)
        return fail(read.id, XmlCause::Syntax, at_ + read.reported, at_ + read.length);
    at_ += read.length;
    sawDoctype_ = true;
    return true;
}

bool XmlParser::comment() {
    const char16_t* const tag = at_;
    at_ += 3;
    if (*at_ != '-')
        return fail(XmlErrorId::ExpectingComment, at_);
    char16_t* const begin = ++at_;
    char16_t* out = begin;
    while (true) {
        const char16_t* const run = at_;
        at_ = scan<kXmlCommentStop>(at_);
        out = moved(run, at_, out);
        if (at_ == end_)
            return badTag(XmlCause::Syntax, tag);
        if (at_[0] == '-' && at_[1] == '-')
            break;
        const bool lineEnd = *at_ == '\r';
        at_ += lineEnd && at_[1] == '\n' ? 2 : 1;
        *out++ = lineEnd ? u'\n' : u'-';
    }
    at_ += 2;
    if (*at_ != '>')
        return badTag(XmlCause::BadComment, tag);
    ++at_;
    append(XmlNodeKind::Comment, begin, static_cast<std::size_t>(out - begin));
    return true;
}

bool XmlParser::cdata() {
    const char16_t* const tag = at_;
    constexpr std::u16string_view kCData = u"CDATA[";
    at_ += 3;
    if (!rest().starts_with(kCData))
        return fail(XmlErrorId::ExpectingCData, XmlCause::Syntax, at_,
                    firstDifference(at_, kCData));
    if (parent_ == 0)
        return fail(XmlErrorId::ExpectingMarkupDeclaration, XmlCause::BadText, tag, tag);
    at_ += kCData.size();
    char16_t* const begin = at_;
    char16_t* out = begin;
    while (true) {
        const char16_t* const run = at_;
        at_ = scan<kXmlCDataStop>(at_);
        out = moved(run, at_, out);
        if (at_ == end_)
            return badTag(XmlCause::Syntax, tag);
        if (at_[0] == ']' && at_[1] == ']' && at_[2] == '>')
            break;
        const bool lineEnd = *at_ == '\r';
        at_ += lineEnd && at_[1] == '\n' ? 2 : 1;
        *out++ = lineEnd ? u'\n' : u']';
    }
    at_ += 3;
    appendCharacters(XmlNodeKind::CData, begin, out);
    return true;
}

bool XmlParser::instruction() {
    const char16_t* const tag = at_;
    at_ += 2;
    const std::size_t length = skipName();
    if (length == 0)
        return fail(XmlErrorId::ExpectingTagName, at_);
    const bool reserved =
        length == 3 && (tag[2] | 0x20) == 'x' && (tag[3] | 0x20) == 'm' && (tag[4] | 0x20) == 'l';
    if (reserved)
        return badTag(XmlCause::BadDeclaration, tag);
    const std::size_t mark = rest().find(u"?>");
    if (mark > 0 && !is(*at_, kXmlSpace))
        return badTag(XmlCause::BadInstruction, tag);
    at_ = mark == std::u16string_view::npos ? end_ : at_ + mark + 2;
    return mark != std::u16string_view::npos || badTag(XmlCause::Syntax, tag);
}

bool XmlParser::text() {
    if (parent_ == 0)
        return topLevelText();
    char16_t* const begin = at_;
    char16_t* out = begin;
    while (true) {
        const char16_t* const run = at_;
        at_ = scan<kXmlTextStop>(at_);
        out = moved(run, at_, out);
        if (*at_ == '<' || at_ == end_)
            break;
        if (*at_ == '&') {
            out = reference(out);
            if (out == nullptr)
                return false;
        } else if (*at_ == '\r') {
            at_ += at_[1] == '\n' ? 2 : 1;
            *out++ = '\n';
        } else {
            if (at_[1] == ']' && at_[2] == '>')
                return fail(XmlErrorId::ExpectingMarkupDeclaration, XmlCause::BadText, at_, at_);
            *out++ = *at_++;
        }
    }
    appendCharacters(XmlNodeKind::Text, begin, out);
    return true;
}

// Only white space may stand there. What has no markup at all is no document with a misplaced text.
bool XmlParser::topLevelText() {
    skipSpace();
    if (at_ == end_ || *at_ == '<')
        return true;
    const bool noMarkupFollows = rest().find(u'<') == std::u16string_view::npos;
    if (!sawElement_ && noMarkupFollows)
        return fail(XmlErrorId::NoRootElement, XmlCause::BadText, begin_, at_);
    return fail(XmlErrorId::ExpectingMarkupDeclaration, XmlCause::BadText, at_, at_);
}

bool XmlParser::atEnd() {
    if (parent_ != 0) {
        return missingEndTag(end_);
    }
    if (sawElement_)
        return true;
    return fail(sawMarkup_ ? XmlErrorId::NoRootElement : XmlErrorId::EmptyDocument,
                XmlCause::Syntax, begin_, end_);
}

// Writes the character that the reference at `at_` stands for; null when there is none.
char16_t* XmlParser::reference(char16_t* out) {
    const char16_t* const reference = at_++;
    const auto bad = [this, reference]() -> char16_t* {
        fail(XmlErrorId::ExpectingMarkupDeclaration, XmlCause::BadReference, reference, at_);
        return nullptr;
    };
    if (*at_ != '#') {
        for (const Entity& entity : kEntities) {
            if (!rest().starts_with(entity.name))
                continue;
            at_ += entity.name.size();
            *out++ = entity.character;
            return out;
        }
        skipName();
        return bad();
    }
    ++at_;
    const unsigned base = *at_ == 'x' ? 16 : 10;
    at_ += base == 16 ? 1 : 0;
    const char16_t* const digits = at_;
    char32_t character = 0;
    for (int digit = 0; (digit = digitOf(*at_, base)) >= 0; ++at_)
        character = std::min<char32_t>(character * base + static_cast<unsigned>(digit), 0x110000);
    if (at_ == digits || *at_ != ';' || !XmlCharacters::isAllowed(character))
        return bad();
    ++at_;
    return out + XmlCharacters::put(out, character);
}

// Foresees from what was read how many there will be, so that few are moved and little memory is
// touched that is not needed. Not too far: a document need not go on as it began.
template <typename Record>
void XmlParser::grow(std::vector<Record>& records) const {
    constexpr std::size_t kMostGrowth = 16;
    const std::size_t size = records.size();
    const double part =
        static_cast<double>(offsetOf(at_) + 1) / static_cast<double>(document_.length_ + 1);
    const auto foreseen = static_cast<std::size_t>(1.05 * static_cast<double>(size) / part);
    records.reserve(std::clamp(foreseen, size + size / 2, size * kMostGrowth));
}

void XmlParser::append(XmlNodeKind kind, const char16_t* begin, std::size_t extent) {
    std::vector<XmlNodeRecord>& nodes = document_.nodes_;
    const std::size_t index = nodes.size();
    if (index == nodes.capacity())
        grow(nodes);
    nodes.emplace_back(kind, offsetOf(begin), extent, parent_);
    if (previous_ != 0)
        nodes[previous_].setNext(index);
    previous_ = index;
}

// What something that is not kept has parted becomes one node again.
void XmlParser::appendCharacters(XmlNodeKind kind, char16_t* begin, const char16_t* end) {
    const auto count = static_cast<std::size_t>(end - begin);
    if (previous_ == 0 || document_.nodes_[previous_].kind() != kind) {
        append(kind, begin, count);
        return;
    }
    XmlNodeRecord& earlier = document_.nodes_[previous_];
    std::copy(static_cast<const char16_t*>(begin), end,
              begin_ + earlier.begin() + earlier.extent());
    earlier.setExtent(earlier.extent() + count);
}

void XmlParser::skipSpace() {
    while (is(*at_, kXmlSpace))
        ++at_;
}

std::size_t XmlParser::skipName() {
    const char16_t* const begin = at_;
    at_ = XmlCharacters::nameEnd(at_, end_);
    return static_cast<std::size_t>(at_ - begin);
}

std::u16string_view XmlParser::rest() const {
    return {at_, static_cast<std::size_t>(end_ - at_)};
}

std::u16string_view XmlParser::characters(std::size_t from) const {
    return {begin_ + from, document_.length_ - from};
}

std::size_t XmlParser::offsetOf(const char16_t* place) const {
    return static_cast<std::size_t>(place - begin_);
}

bool XmlParser::fail(XmlErrorId id, XmlCause cause, const char16_t* reported,
                     const char16_t* place) {
    error_.id = id;
    error_.cause = cause;
    error_.offset = offsetOf(reported);
    error_.position = offsetOf(place);
    return false;
}

bool XmlParser::fail(XmlErrorId id, const char16_t* reported) {
    return fail(id, XmlCause::Syntax, reported, reported);
}

// The tag cannot be read up to its end. Where the characters end, that is the cause.
bool XmlParser::badTag(XmlCause cause, const char16_t* tag) {
    return fail(XmlErrorId::UnterminatedTag, at_ == end_ ? XmlCause::Syntax : cause, tag, at_);
}

}  // namespace QkDlg
