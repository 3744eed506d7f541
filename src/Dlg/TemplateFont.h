#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace QkDlg {

// Dialog templates as they lie in a module (Win32 topics DLGTEMPLATE and DLGTEMPLATEEX): a header,
// the menu, window class and caption, the font if DS_SETFONT is set, then the items, each on a
// 4-byte boundary. All places here are counted in 16-bit words from the start. Nothing is read or
// written outside the span that is given, whatever the template says.

/// Template style bit: the template names a font.
constexpr std::uint32_t kDsSetFont = 0x40;

/// A point size in a template that stands for the system's message font; no face follows it.
constexpr std::uint16_t kMessageFontSize = 0x7FFF;

struct TemplateFont {
    std::u16string_view face;
    std::uint16_t pointSize;
};

/// Where things stand in a template.
struct TemplateShape {
    bool extended = false;
    bool hasFont = false;
    std::uint16_t itemCount = 0;
    std::size_t fontAt = 0;   ///< where the font block stands or would stand
    std::size_t fontEnd = 0;  ///< its end; equal to fontAt when there is none
};

/// Nothing when the template is cut off before the end of its font block.
[[nodiscard]] std::optional<TemplateShape> readTemplateShape(std::span<const std::uint16_t> words);

/// Sets style bits. False, and nothing changed, when the template is too short to have a style, or
/// is a classic one that would look like an extended one afterwards.
bool addTemplateStyle(std::span<std::uint16_t> words, std::uint32_t style);

/// How many words the template takes with a font of that face length, when it takes `used` now.
[[nodiscard]] std::size_t wordsWithFont(const TemplateShape& shape, std::size_t used,
                                        std::size_t faceLength);

/// Gives the template in the first `used` words of `words` another font, or its first one, and
/// sets style bits along with DS_SETFONT. Weight, italic and character set of an extended
/// template stay; where it had no face they become 400, upright and default. False, and nothing
/// changed, when the template is cut off, `words` are too few (see wordsWithFont), or the style
/// cannot be set.
///
/// The items move with the end of the font block, except when the low byte of their number is 0:
/// a template of 256 items keeps them where they are.
bool setTemplateFont(std::span<std::uint16_t> words, std::size_t used, const TemplateFont& font,
                     std::uint32_t extraStyle);

}  // namespace QkDlg
