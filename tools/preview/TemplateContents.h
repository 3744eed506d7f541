#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace QkPreview {

// What stands in a dialog template (Win32 topics DLGTEMPLATE, DLGTEMPLATEEX). Nothing outside the
// words that are given is read, whatever the template says.

struct TemplateControl {
    std::uint32_t id = 0;
    std::uint32_t style = 0;
    std::wstring className;  ///< the predefined classes by their names
};

struct TemplateContents {
    bool extended = false;
    std::uint32_t style = 0;
    std::wstring windowClass;  ///< empty: an ordinary dialog
    std::wstring caption;
    std::uint16_t controlCount = 0;         ///< as the header tells
    std::vector<TemplateControl> controls;  ///< fewer than that when the template is cut off

    [[nodiscard]] bool whole() const { return controls.size() == controlCount; }
};

/// Nothing when the template is cut off before its first control.
[[nodiscard]] std::optional<TemplateContents> readTemplate(std::span<const std::uint16_t> words);

/// Where what readTemplate gave is cut off; nothing when it is whole.
[[nodiscard]] std::optional<std::wstring> templateFault(
    const std::optional<TemplateContents>& contents);

/// Replaces the style of the dialog: the bits of `clear` go, those of `set` come. False when the
/// template is too short to have a style.
bool changeTemplateStyle(std::span<std::uint16_t> words, std::uint32_t clear, std::uint32_t set);

}  // namespace QkPreview
