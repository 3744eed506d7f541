#include "xml/XmlCharacters.h"

namespace QkDlg::XmlCharacters {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Names beyond ASCII, as the fifth edition of XML 1.0 has them.
constexpr Range kNameStartRanges[] = {
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
constexpr Range kNameOnlyRanges[] = {{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t kCount>
bool isIn(const Range (&ranges)[kCount], char32_t character) {
    return std::any_of(std::begin(ranges), std::end(ranges), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

bool isHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

constexpr std::size_t unitsOf(char32_t character) {
    return character > 0xFFFF ? 2 : 1;
}

// Without a branch for each unit, so that compilers can look at many at once.
bool isPlainBlock(const char16_t* units, std::size_t count) {
    unsigned odd = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned unit = units[i];
        const unsigned control =
            static_cast<unsigned>(unit < 0x20) & static_cast<unsigned>(unit != '\t') &
            static_cast<unsigned>(unit != '\n') & static_cast<unsigned>(unit != '\r');
        odd |= control | static_cast<unsigned>(unit >= 0xD800);
    }
    return odd == 0;
}

}  // namespace

char32_t firstCharacter(std::u16string_view text) {
    if (isHighSurrogate(text[0]) && text.size() > 1 && isLowSurrogate(text[1]))
        return 0x10000U + ((text[0] - 0xD800U) << 10) + (text[1] - 0xDC00U);
    return text[0];
}

std::size_t nameLength(std::u16string_view text, bool begun) {
    std::size_t length = 0;
    while (length < text.size()) {
        const bool inside = begun || length > 0;
        if (inside && is(text[length], kXmlName)) {
            ++length;
            continue;
        }
        const char32_t character = firstCharacter(text.substr(length));
        const bool fits =
            character < kClasses.size()
                ? is(text[length], inside ? kXmlName : kXmlNameStart)
                : isIn(kNameStartRanges, character) || (inside && isIn(kNameOnlyRanges, character));
        if (!fits)
            break;
        length += unitsOf(character);
    }
    return length;
}

std::size_t allowedLength(std::u16string_view text) {
    constexpr std::size_t kBlock = 32;
    std::size_t length = 0;
    while (length < text.size()) {
        if (text.size() - length >= kBlock && isPlainBlock(text.data() + length, kBlock)) {
            length += kBlock;
            continue;
        }
        for (const std::size_t end = length + std::min(kBlock, text.size() - length);
             length < end;) {
            const char32_t character = firstCharacter(text.substr(length));
            if (!isAllowed(character))
                return length;
            length += unitsOf(character);
        }
    }
    return length;
}

}  // namespace QkDlg::XmlCharacters
