#include "Dlg/TemplateFont.h"

#include <algorithm>

namespace QkDlg {

namespace {

using Words = std::span<const std::uint16_t>;

constexpr std::uint16_t kExtendedMark = 0xFFFF;  ///< second word of an extended template
constexpr std::uint16_t kOrdinalMark = 0xFFFF;   ///< before a menu or class given by number
constexpr std::uint16_t kNormalWeight = 400;
constexpr std::uint16_t kUprightDefaultCharset = 0x0100;  ///< italic flag below, charset above
constexpr std::size_t kItemAlignment = 2;                 ///< words

/// Where the fixed header of a kind of template has what.
struct Header {
    std::size_t style;
    std::size_t itemCount;
    std::size_t size;
    std::size_t fontFields;  ///< words of the font block before the face
};
constexpr Header kClassic{0, 4, 9, 1};
constexpr Header kExtended{6, 8, 13, 3};

bool isExtended(Words words) {
    return words.size() > 1 && words[1] == kExtendedMark;
}

const Header& headerOf(bool extended) {
    return extended ? kExtended : kClassic;
}

/// Steps over the parts of a template that vary in length.
class Walker {
public:
    Walker(Words words, std::size_t at) : m_words(words), m_at(at) {}

    [[nodiscard]] std::size_t at() const { return m_at; }

    /// `count` words that must be there.
    [[nodiscard]] bool skip(std::size_t count) {
        if (m_at > m_words.size() || m_words.size() - m_at < count)
            return false;
        m_at += count;
        return true;
    }

    [[nodiscard]] bool skipString() {
        if (m_at > m_words.size())
            return false;
        const auto rest = m_words.subspan(m_at);
        const auto end = std::ranges::find(rest, std::uint16_t{0});
        return end != rest.end() && skip(static_cast<std::size_t>(end - rest.begin()) + 1);
    }

    [[nodiscard]] bool skipStringOrOrdinal() {
        const bool ordinal = m_at < m_words.size() && m_words[m_at] == kOrdinalMark;
        return ordinal ? skip(2) : skipString();
    }

private:
    Words m_words;
    std::size_t m_at;
};

std::uint32_t styleOf(Words words, std::size_t at) {
    return words[at] | std::uint32_t{words[at + 1]} << 16;
}

/// A classic template whose style gets all its upper bits would read as an extended one.
bool canTakeStyle(Words words, std::uint32_t style) {
    const bool extended = isExtended(words);
    const std::size_t at = headerOf(extended).style;
    return words.size() >= at + 2 && (extended || (words[at + 1] | style >> 16) != kExtendedMark);
}

std::size_t aligned(std::size_t at) {
    return (at + kItemAlignment - 1) / kItemAlignment * kItemAlignment;
}

std::size_t newFontEnd(const TemplateShape& shape, std::size_t faceLength) {
    return shape.fontAt + headerOf(shape.extended).fontFields + faceLength + 1;
}

/// Moves what stands from `from` up to `used` so that it begins at `to`. What a smaller font block
/// leaves behind at the end is cleared.
void moveItems(std::span<std::uint16_t> words, std::size_t from, std::size_t used, std::size_t to) {
    if (from >= used || from == to)
        return;
    const auto items = words.subspan(from, used - from);
    if (to > from) {
        std::ranges::copy_backward(items,
                                   words.begin() + static_cast<std::ptrdiff_t>(to + items.size()));
        return;
    }
    const auto moved = words.subspan(to);
    std::ranges::copy(items, moved.begin());
    std::ranges::fill(words.subspan(to + items.size(), from - to), std::uint16_t{0});
}

}  // namespace

std::optional<TemplateShape> readTemplateShape(Words words) {
    TemplateShape shape;
    shape.extended = isExtended(words);
    const Header& header = headerOf(shape.extended);
    Walker walker(words, 0);
    if (!walker.skip(header.size))
        return std::nullopt;
    shape.hasFont = (styleOf(words, header.style) & kDsSetFont) != 0;
    shape.itemCount = words[header.itemCount];

    const bool named =
        walker.skipStringOrOrdinal() && walker.skipStringOrOrdinal() && walker.skipString();
    if (!named)
        return std::nullopt;
    shape.fontAt = walker.at();
    if (shape.hasFont) {
        const bool faceless = walker.at() < words.size() && words[walker.at()] == kMessageFontSize;
        const bool whole =
            faceless ? walker.skip(1) : walker.skip(header.fontFields) && walker.skipString();
        if (!whole)
            return std::nullopt;
    }
    shape.fontEnd = walker.at();
    return shape;
}

bool addTemplateStyle(std::span<std::uint16_t> words, std::uint32_t style) {
    if (!canTakeStyle(words, style))
        return false;
    const std::size_t at = headerOf(isExtended(words)).style;
    words[at] = static_cast<std::uint16_t>(words[at] | (style & 0xFFFF));
    words[at + 1] = static_cast<std::uint16_t>(words[at + 1] | style >> 16);
    return true;
}

std::size_t wordsWithFont(const TemplateShape& shape, std::size_t used, std::size_t faceLength) {
    const std::size_t itemsFrom = aligned(shape.fontEnd);
    const std::size_t items = used > itemsFrom ? used - itemsFrom : 0;
    const std::size_t end = newFontEnd(shape, faceLength);
    return std::max(items == 0 ? end : aligned(end) + items, used);
}

bool setTemplateFont(std::span<std::uint16_t> words, std::size_t used, const TemplateFont& font,
                     std::uint32_t extraStyle) {
    if (used > words.size())
        return false;
    const auto shape = readTemplateShape(words.first(used));
    if (!shape || !canTakeStyle(words, extraStyle | kDsSetFont) ||
        wordsWithFont(*shape, used, font.face.size()) > words.size())
        return false;

    const std::size_t end = newFontEnd(*shape, font.face.size());
    if (end != shape->fontEnd && (shape->itemCount & 0xFF) != 0)
        moveItems(words, aligned(shape->fontEnd), used, aligned(end));

    const std::size_t fields = headerOf(shape->extended).fontFields;
    const bool hadFace = shape->fontEnd > shape->fontAt + fields;
    const auto block = words.subspan(shape->fontAt, end - shape->fontAt);
    block[0] = font.pointSize;
    if (shape->extended && !hadFace) {
        block[1] = kNormalWeight;
        block[2] = kUprightDefaultCharset;
    }
    std::ranges::copy(font.face, block.subspan(fields).begin());
    block.back() = 0;
    return addTemplateStyle(words, extraStyle | kDsSetFont);
}

}  // namespace QkDlg
