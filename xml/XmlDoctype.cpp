#include "xml/XmlDoctype.h"

#include "xml/XmlCharacters.h"

namespace QkDlg {
namespace {

constexpr std::u16string_view kDoctype = u"<!DOCTYPE";
constexpr std::u16string_view kDeclarations[] = {u"<!ELEMENT", u"<!ATTLIST", u"<!ENTITY",
                                                 u"<!NOTATION"};

class DoctypeReader {
public:
    explicit DoctypeReader(std::u16string_view text) : text_(text) {}

    XmlDoctype read() {
        result_.good = whole();
        result_.length = position_;
        return result_;
    }

private:
    bool whole() {
        take(kDoctype);
        if (!skipSpace() || !skipName())
            return false;
        const bool spaced = skipSpace();
        if (spaced && !externalId())
            return false;
        skipSpace();
        if (take(u"[")) {
            if (!subset())
                return false;
            skipSpace();
        }
        return take(u">");
    }

    bool externalId() {
        if (take(u"SYSTEM"))
            return skipSpace() && skipQuoted();
        if (take(u"PUBLIC"))
            return skipSpace() && skipQuoted() && skipSpace() && skipQuoted();
        return true;
    }

    // From behind "[" to behind "]".
    bool subset() {
        while (position_ < text_.size()) {
            skipSpace();
            if (take(u"]"))
                return true;
            if (take(u"%")) {
                if (!skipName() || !take(u";"))
                    return false;
            } else if (!declaration()) {
                return false;
            }
        }
        return false;
    }

    bool declaration() {
        if (take(u"<!--"))
            return skipBehind(u"--") && take(u">");
        if (take(u"<?"))
            return skipName() && skipBehind(u"?>");
        for (const std::u16string_view each : kDeclarations)
            if (take(each))
                return skipSpace() && skipDeclaration();
        return missing();
    }

    // What stands here declares nothing.
    bool missing() {
        if (take(u"<"))
            take(u"!");
        result_.id = XmlErrorId::ExpectingMarkupDeclaration;
        result_.reported = position_;
        return false;
    }

    // To behind ">", past quoted values, which may hold anything.
    bool skipDeclaration() {
        while (position_ < text_.size()) {
            const char16_t unit = text_[position_];
            if (unit == '<')
                return false;
            if (unit == '"' || unit == '\'') {
                if (!skipQuoted())
                    return false;
                continue;
            }
            ++position_;
            if (unit == '>')
                return true;
        }
        return false;
    }

    bool skipQuoted() {
        const char16_t quote = position_ < text_.size() ? text_[position_] : u'\0';
        if (quote != '"' && quote != '\'')
            return false;
        ++position_;
        return skipBehind({&quote, 1});
    }

    bool skipBehind(std::u16string_view mark) {
        const std::size_t found = text_.find(mark, position_);
        const bool there = found != std::u16string_view::npos;
        position_ = there ? found + mark.size() : text_.size();
        return there;
    }

    bool skipName() {
        const std::size_t length = XmlCharacters::nameLength(text_.substr(position_));
        position_ += length;
        return length > 0;
    }

    bool skipSpace() {
        const std::size_t before = position_;
        while (position_ < text_.size() && XmlCharacters::is(text_[position_], kXmlSpace))
            ++position_;
        return position_ > before;
    }

    bool take(std::u16string_view expected) {
        if (!text_.substr(position_).starts_with(expected))
            return false;
        position_ += expected.size();
        return true;
    }

    std::u16string_view text_;
    std::size_t position_ = 0;
    XmlDoctype result_;
};

}  // namespace

XmlDoctype skipXmlDoctype(std::u16string_view text) {
    return DoctypeReader(text).read();
}

}  // namespace QkDlg
