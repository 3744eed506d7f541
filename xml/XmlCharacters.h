#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <numeric>
#include <optional>
#include <string_view>
#include <vector>

namespace QkDlg {

/// What a character below U+0080 is to the parser: bits of XmlCharacters::kClasses.
enum XmlClass : unsigned char {
    kXmlSpace = 1,
    kXmlNameStart = 2,
    kXmlName = 4,
    kXmlTextStop = 8,           ///< ends a run of text that needs no second look
    kXmlDoubleQuotedStop = 16,  ///< the same for an attribute in double quotes,
    kXmlSingleQuotedStop = 32,  ///< in single quotes,
    kXmlCommentStop = 64,       ///< for a comment
    kXmlCDataStop = 128,        ///< and for a CDATA section
};

namespace XmlCharacters {

inline constexpr std::array<unsigned char, 128> kClasses = [] {
    std::array<unsigned char, 128> classes{};
    const auto mark = [&classes](std::string_view characters, unsigned classBits) {
        for (const char each : characters)
            classes[static_cast<unsigned char>(each)] |= static_cast<unsigned char>(classBits);
    };
    mark("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_:", kXmlNameStart | kXmlName);
    mark("0123456789-.", kXmlName);
    mark(" \t\n\r", kXmlSpace);
    mark("<&]\r", kXmlTextStop);
    mark("\"<&\t\n\r", kXmlDoubleQuotedStop);
    mark("'<&\t\n\r", kXmlSingleQuotedStop);
    mark("-\r", kXmlCommentStop);
    mark("]\r", kXmlCDataStop);
    // The zero behind the last character ends every run.
    mark(std::string_view("\0", 1), kXmlTextStop | kXmlDoubleQuotedStop | kXmlSingleQuotedStop |
                                        kXmlCommentStop | kXmlCDataStop);
    return classes;
}();

[[nodiscard]] constexpr bool is(char16_t character, unsigned classBits) {
    return character < kClasses.size() && (kClasses[character] & classBits) != 0;
}

/// Whether a document may hold the character.
[[nodiscard]] constexpr bool isAllowed(char32_t character) {
    if (character < 0x20)
        return character == '\t' || character == '\n' || character == '\r';
    return character < 0xD800 || (character > 0xDFFF && character < 0xFFFE) ||
           (character > 0xFFFF && character <= 0x10FFFF);
}

/// Writes the character, which is one, in UTF-16; returns how many units that took.
inline std::size_t put(char16_t* out, char32_t character) {
    if (character <= 0xFFFF) {
        out[0] = static_cast<char16_t>(character);
        return 1;
    }
    out[0] = static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
    out[1] = static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    return 2;
}

/// The character at the beginning of `text`, which is not empty; half a pair stands for itself.
[[nodiscard]] char32_t firstCharacter(std::u16string_view text);

/// How many units at the beginning of `text` belong to a name, or go on one begun before it.
[[nodiscard]] std::size_t nameLength(std::u16string_view text, bool begun = false);

/// Where the name that begins at `begin` ends, `begin` itself when there is none; `end` is where
/// the characters do, and a zero stands there.
template <typename Unit>
[[nodiscard]] Unit* nameEnd(Unit* begin, const char16_t* end) {
    Unit* at = begin;
    if (is(*at, kXmlNameStart))
        while (is(*at, kXmlName))
            ++at;
    if (*at >= kClasses.size())
        at += nameLength({at, static_cast<std::size_t>(end - at)}, at != begin);
    return at;
}

/// How many units at the beginning of `text` a document may hold.
[[nodiscard]] std::size_t allowedLength(std::u16string_view text);

/// Faster than comparing unit by unit. Most strings that differ do so in length or at the
/// beginning.
template <typename Unit>
[[nodiscard]] bool equal(std::basic_string_view<Unit> left, std::basic_string_view<Unit> right) {
    if (left.size() != right.size())
        return false;
    return left.empty() ||
           (left.front() == right.front() &&
            std::memcmp(left.data(), right.data(), left.size() * sizeof(Unit)) == 0);
}

/// Whether the name that `text` begins with is `name`, which is one.
[[nodiscard]] inline bool beginsWithName(std::u16string_view text, std::u16string_view name) {
    if (text.size() < name.size() || !equal(text.substr(0, name.size()), name))
        return false;
    const std::u16string_view behind = text.substr(name.size());
    if (behind.empty() || behind.front() < kClasses.size())
        return behind.empty() || !is(behind.front(), kXmlName);
    return nameLength(behind, true) == 0;
}

/// The number of the first name that stands before it already, among `count` names that `nameAt`
/// gives. Sorts when there are many, so that a hundred thousand attributes take no longer than
/// their characters do.
template <typename NameAt>
[[nodiscard]] std::optional<std::size_t> firstDuplicate(std::size_t count, NameAt nameAt) {
    constexpr std::size_t kFew = 8;
    if (count < 2)
        return std::nullopt;
    if (count <= kFew) {
        for (std::size_t second = 1; second < count; ++second)
            for (std::size_t first = 0; first < second; ++first)
                if (equal(nameAt(first), nameAt(second)))
                    return second;
        return std::nullopt;
    }
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&nameAt](std::size_t left, std::size_t right) {
        const int compared = nameAt(left).compare(nameAt(right));
        return compared != 0 ? compared < 0 : left < right;
    });
    std::optional<std::size_t> found;
    for (std::size_t i = 1; i < count; ++i)
        if (equal(nameAt(order[i - 1]), nameAt(order[i])))
            found = std::min(found.value_or(count), order[i]);
    return found;
}

}  // namespace XmlCharacters
}  // namespace QkDlg
