#include "xml/XmlDecoding.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "xml/XmlCharacters.h"

namespace QkDlg {
namespace {

enum class Encoding { Utf8, Utf16Little, Utf16Big, Ascii, Latin1, Windows1252, Unknown };

struct EncodingName {
    std::string_view name;  // in capitals
    Encoding encoding;
};

// UTF-16 stands here without its byte order, which the first bytes tell.
constexpr EncodingName kEncodingNames[] = {
    {"UTF-8", Encoding::Utf8},           {"UTF-16", Encoding::Utf16Little},
    {"UTF-16LE", Encoding::Utf16Little}, {"UTF-16BE", Encoding::Utf16Big},
    {"US-ASCII", Encoding::Ascii},       {"ASCII", Encoding::Ascii},
    {"ISO-8859-1", Encoding::Latin1},    {"WINDOWS-1252", Encoding::Windows1252},
};

// From U+0080 on. Windows gives the five bytes that the code page leaves free to the controls.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isUtf16(Encoding encoding) {
    return encoding == Encoding::Utf16Little || encoding == Encoding::Utf16Big;
}

char16_t upper(char16_t unit) {
    return unit >= 'a' && unit <= 'z' ? static_cast<char16_t>(unit - 'a' + 'A') : unit;
}

Encoding encodingOf(std::u16string_view name) {
    for (const EncodingName& known : kEncodingNames) {
        const bool same = std::equal(name.begin(), name.end(), known.name.begin(), known.name.end(),
                                     [](char16_t left, char right) {
                                         return upper(left) == static_cast<unsigned char>(right);
                                     });
        if (same)
            return known.encoding;
    }
    return Encoding::Unknown;
}

XmlDecoded reserved(std::size_t most) {
    XmlDecoded decoded;
    decoded.characters = std::make_unique_for_overwrite<char16_t[]>(most + 1);
    return decoded;
}

XmlDecoded ended(XmlDecoded decoded, std::size_t length, std::optional<XmlCause> fault) {
    decoded.length = length;
    decoded.fault = fault;
    decoded.characters[length] = 0;
    return decoded;
}

constexpr std::size_t kBlock = 32;

// Without a branch for each byte, so that compilers can look at many at once.
bool isPlainBlock(const unsigned char* bytes) {
    unsigned char odd = 0;
    for (std::size_t i = 0; i < kBlock; ++i) {
        const unsigned char byte = bytes[i];
        const bool beyond = byte >= 0x80;
        const bool control = (byte < 0x20) & (byte != '\t') & (byte != '\n') & (byte != '\r');
        odd = static_cast<unsigned char>(odd | (beyond | control));
    }
    return odd == 0;
}

struct Sequence {
    char32_t character = 0;
    std::size_t length = 0;  // in bytes; 0 for a malformed one
};

// One UTF-8 sequence: the shortest form only, no surrogates, nothing beyond U+10FFFF.
Sequence readSequence(const unsigned char* bytes, std::size_t count) {
    const unsigned lead = bytes[0];
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || count < length)
        return {};
    char32_t character = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((bytes[i] & 0xC0U) != 0x80)
            return {};
        character = character << 6 | (bytes[i] & 0x3FU);
    }
    constexpr std::array<char32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < kLeast[length] || character > 0x10FFFF || surrogate)
        return {};
    return {character, length};
}

XmlDecoded decodeUtf8(std::string_view bytes) {
    XmlDecoded decoded = reserved(bytes.size());
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = in + bytes.size();
    char16_t* const begin = decoded.characters.get();
    char16_t* out = begin;
    const auto lengthSoFar = [&] { return static_cast<std::size_t>(out - begin); };
    while (in < end) {
        if (static_cast<std::size_t>(end - in) >= kBlock && isPlainBlock(in)) {
            std::copy(in, in + kBlock, out);
            in += kBlock;
            out += kBlock;
            continue;
        }
        // One by one, past the odd place and on to the end of the block.
        for (const auto* const blockEnd = in + std::min<std::ptrdiff_t>(kBlock, end - in);
             in < blockEnd;) {
            const Sequence next = readSequence(in, static_cast<std::size_t>(end - in));
            if (next.length == 0 || !XmlCharacters::isAllowed(next.character)) {
                const XmlCause fault =
                    next.length == 0 ? XmlCause::BadEncoding : XmlCause::BadCharacter;
                return ended(std::move(decoded), lengthSoFar(), fault);
            }
            in += next.length;
            out += XmlCharacters::put(out, next.character);
        }
    }
    return ended(std::move(decoded), lengthSoFar(), std::nullopt);
}

// Cuts the text before the first unit that no document may hold.
XmlDecoded checked(XmlDecoded decoded, std::size_t length, bool halfUnitFollows) {
    const std::size_t allowed = XmlCharacters::allowedLength({decoded.characters.get(), length});
    if (allowed < length)
        return ended(std::move(decoded), allowed, XmlCause::BadCharacter);
    return ended(std::move(decoded), length,
                 halfUnitFollows ? std::optional(XmlCause::BadEncoding) : std::nullopt);
}

XmlDecoded decodeUtf16(std::string_view bytes, bool bigEndian) {
    const std::size_t length = bytes.size() / 2;
    XmlDecoded decoded = reserved(length);
    for (std::size_t i = 0; i < length; ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        decoded.characters[i] =
            static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
    }
    return checked(std::move(decoded), length, bytes.size() % 2 != 0);
}

char16_t characterOf(unsigned char byte, Encoding encoding) {
    if (encoding == Encoding::Windows1252 && byte >= 0x80 && byte < 0xA0)
        return kWindows1252[byte - 0x80U];
    return byte;
}

XmlDecoded decodeSingleBytes(std::string_view bytes, Encoding encoding) {
    XmlDecoded decoded = reserved(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (encoding == Encoding::Ascii && byte >= 0x80)
            return ended(std::move(decoded), i, XmlCause::BadEncoding);
        if (!XmlCharacters::isAllowed(byte))
            return ended(std::move(decoded), i, XmlCause::BadCharacter);
        decoded.characters[i] = characterOf(byte, encoding);
    }
    return ended(std::move(decoded), bytes.size(), std::nullopt);
}

struct Detected {
    Encoding encoding = Encoding::Utf8;
    std::size_t markLength = 0;
};

Detected detect(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xEF\xBB\xBF"sv))
        return {Encoding::Utf8, 3};
    if (bytes.starts_with("\xFF\xFE"sv))
        return {Encoding::Utf16Little, 2};
    if (bytes.starts_with("\xFE\xFF"sv))
        return {Encoding::Utf16Big, 2};
    // A document begins with "<" or a white space, so a zero beside it tells the byte order.
    if (bytes.size() >= 2 && (bytes[0] == 0) != (bytes[1] == 0))
        return {bytes[0] == 0 ? Encoding::Utf16Big : Encoding::Utf16Little, 0};
    return {};
}

std::optional<XmlDeclaration> declarationOf(std::u16string_view text) {
    auto declaration =
        beginsWithXmlDeclaration(text) ? readXmlDeclaration(text) : std::optional<XmlDeclaration>();
    return declaration && declaration->encodingLength > 0 ? declaration : std::nullopt;
}

// Whether a document whose first bytes are `detected` may call itself that.
bool agree(const Detected& detected, Encoding declared) {
    if (isUtf16(detected.encoding))
        return isUtf16(declared);
    if (detected.markLength > 0)
        return declared == Encoding::Utf8;
    return declared != Encoding::Unknown && !isUtf16(declared);
}

// The declaration of a document in single bytes or UTF-8. It is ASCII, or malformed.
std::u16string declarationBytes(std::string_view bytes) {
    const std::string_view mark = "?>";
    const std::size_t end = bytes.starts_with("<?xml") ? bytes.find(mark) : std::string_view::npos;
    std::u16string text;
    if (end != std::string_view::npos)
        for (const char each : bytes.substr(0, end + mark.size()))
            text += static_cast<unsigned char>(each);
    return text;
}

XmlDecoded decodeAs(std::string_view bytes, Encoding encoding) {
    if (encoding == Encoding::Utf8 || encoding == Encoding::Unknown)
        return decodeUtf8(bytes);
    if (isUtf16(encoding))
        return decodeUtf16(bytes, encoding == Encoding::Utf16Big);
    return decodeSingleBytes(bytes, encoding);
}

}  // namespace

XmlDecoded decodeXmlBytes(std::string_view bytes) {
    const Detected detected = detect(bytes);
    bytes.remove_prefix(detected.markLength);
    if (isUtf16(detected.encoding)) {
        XmlDecoded decoded = decodeAs(bytes, detected.encoding);
        const auto declaration = declarationOf(decoded.view());
        if (declaration &&
            !agree(detected, encodingOf(decoded.view().substr(declaration->encodingBegin,
                                                              declaration->encodingLength))))
            return ended(std::move(decoded), declaration->encodingBegin, XmlCause::UnknownEncoding);
        return decoded;
    }
    const std::u16string prolog = declarationBytes(bytes);
    const auto declaration = declarationOf(prolog);
    if (!declaration)
        return decodeAs(bytes, detected.encoding);
    const Encoding declared =
        encodingOf(prolog.substr(declaration->encodingBegin, declaration->encodingLength));
    if (agree(detected, declared))
        return decodeAs(bytes, declared);
    return ended(decodeAs(bytes.substr(0, declaration->encodingBegin), Encoding::Ascii),
                 declaration->encodingBegin, XmlCause::UnknownEncoding);
}

XmlDecoded decodeXmlText(std::u16string_view text) {
    if (!text.empty() && text.front() == 0xFEFF)
        text.remove_prefix(1);
    XmlDecoded decoded = reserved(text.size());
    std::copy(text.begin(), text.end(), decoded.characters.get());
    return checked(std::move(decoded), text.size(), false);
}

namespace {

// The pseudo-attributes of a declaration, one by one.
class DeclarationReader {
public:
    explicit DeclarationReader(std::u16string_view text) : text_(text) {}

    std::size_t position() const { return position_; }

    // Skips white space, then `name = "value"`; nothing, and no step, when that is not there.
    std::optional<std::u16string_view> value(std::u16string_view name) {
        const std::size_t before = position_;
        const bool spaced = skipSpace();
        if (spaced && take(name)) {
            skipSpace();
            if (take(u"=")) {
                skipSpace();
                return quoted();
            }
        }
        position_ = before;
        return std::nullopt;
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

private:
    // An empty value when the quotes are missing, which no pseudo-attribute may have.
    std::u16string_view quoted() {
        const char16_t quote = position_ < text_.size() ? text_[position_] : u'\0';
        if (quote != '"' && quote != '\'')
            return {};
        const std::size_t begin = ++position_;
        const std::size_t end = text_.find(quote, begin);
        if (end == std::u16string_view::npos)
            return {};
        position_ = end + 1;
        return text_.substr(begin, end - begin);
    }

    std::u16string_view text_;
    std::size_t position_ = 0;
};

bool isDigit(char16_t unit) {
    return unit >= '0' && unit <= '9';
}

bool isVersion(std::u16string_view value) {
    return value.size() > 2 && value.starts_with(u"1.") &&
           std::all_of(value.begin() + 2, value.end(), isDigit);
}

bool isEncodingName(std::u16string_view value) {
    const auto isLetter = [](char16_t unit) { return upper(unit) >= 'A' && upper(unit) <= 'Z'; };
    return !value.empty() && isLetter(value.front()) &&
           std::all_of(value.begin(), value.end(), [&](char16_t unit) {
               return isLetter(unit) || isDigit(unit) || unit == '.' || unit == '_' || unit == '-';
           });
}

}  // namespace

bool beginsWithXmlDeclaration(std::u16string_view text) {
    return text.size() > 5 && text.starts_with(u"<?xml") &&
           (XmlCharacters::is(text[5], kXmlSpace) || text[5] == '?');
}

std::optional<XmlDeclaration> readXmlDeclaration(std::u16string_view text) {
    DeclarationReader reader(text);
    reader.take(u"<?xml");
    const auto version = reader.value(u"version");
    const auto encoding = reader.value(u"encoding");
    const auto standalone = reader.value(u"standalone");
    reader.skipSpace();
    const bool good = version && isVersion(*version) && (!encoding || isEncodingName(*encoding)) &&
                      (!standalone || *standalone == u"yes" || *standalone == u"no") &&
                      reader.take(u"?>");
    if (!good)
        return std::nullopt;
    XmlDeclaration declaration;
    declaration.length = reader.position();
    if (encoding) {
        declaration.encodingBegin = static_cast<std::size_t>(encoding->data() - text.data());
        declaration.encodingLength = encoding->size();
    }
    return declaration;
}

}  // namespace QkDlg
