#include "QkXFlatDlg/FlatChoice.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace QkDlg {

namespace {

constexpr std::size_t kRichEditPrefix = 8;

// Window styles, from the Win32 topics on button, edit and combo box styles.
constexpr std::uint32_t kEditPassword = 0x20;
constexpr std::uint32_t kButtonType = 0xF;
constexpr std::uint32_t kComboType = 3;

/// The accent colour as a resource writer types it: red first.
constexpr std::uint32_t kAccentNumber = 0x1B76C0;

constexpr FlatChoice flat(FlatKind kind) {
    return {kind, StandardReason::IsFlat};
}

constexpr FlatChoice standard(StandardReason reason) {
    return {FlatKind::None, reason};
}

constexpr wchar_t lowered(wchar_t unit) {
    return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
}

bool sameName(std::wstring_view a, std::wstring_view b) {
    return std::ranges::equal(a, b, {}, lowered, lowered);
}

std::wstring_view kindOf(const ControlDescription* description) {
    return description ? std::wstring_view(description->kind) : std::wstring_view();
}

FlatChoice chooseEdit(std::uint32_t style, const ControlDescription*) {
    return flat((style & kEditPassword) != 0 ? FlatKind::Password : FlatKind::Edit);
}

FlatChoice chooseRichEdit(std::uint32_t, const ControlDescription*) {
    return flat(FlatKind::Edit);
}

FlatChoice chooseStatic(std::uint32_t, const ControlDescription* description) {
    const auto kind = kindOf(description);
    if (kind == L"hscroll")
        return flat(FlatKind::HorizontalScrollbar);
    if (kind == L"vscroll")
        return flat(FlatKind::VerticalScrollbar);
    if (kind == L"hslider")
        return flat(FlatKind::HorizontalSlider);
    if (kind == L"vslider")
        return flat(FlatKind::VerticalSlider);
    return flat(description ? FlatKind::DescribedText : FlatKind::Text);
}

// A trackbar is shown as a progress bar.
FlatChoice chooseTrackbar(std::uint32_t, const ControlDescription*) {
    return flat(FlatKind::ProgressBar);
}

FlatChoice chooseListView(std::uint32_t, const ControlDescription*) {
    return flat(FlatKind::ListView);
}

FlatChoice choosePushButton(const ControlDescription* description) {
    if (!description)
        return flat(FlatKind::PushButton);
    if (description->kind == L"blue" || description->colour == kAccentNumber)
        return flat(FlatKind::AccentButton);
    if (description->kind == L"settings")
        return flat(FlatKind::SettingsButton);
    return description->kind.empty() ? flat(FlatKind::PushButton)
                                     : standard(StandardReason::UnknownKind);
}

FlatChoice chooseButton(std::uint32_t style, const ControlDescription* description) {
    switch (style & kButtonType) {
        case 0x0:  // BS_PUSHBUTTON
        case 0x1:  // BS_DEFPUSHBUTTON
            return choosePushButton(description);
        case 0x2:  // BS_CHECKBOX
        case 0x3:  // BS_AUTOCHECKBOX
            return flat(kindOf(description) == L"toggle" ? FlatKind::Toggle : FlatKind::Checkbox);
        case 0x4:  // BS_RADIOBUTTON
        case 0x9:  // BS_AUTORADIOBUTTON
            return flat(FlatKind::Radio);
        case 0xC:  // BS_SPLITBUTTON
        case 0xD:  // BS_DEFSPLITBUTTON
            return flat(kindOf(description) == L"drop" ? FlatKind::DropButton
                                                       : FlatKind::SplitButton);
        default: return standard(StandardReason::UnknownType);
    }
}

FlatChoice chooseCombo(std::uint32_t style, const ControlDescription*) {
    switch (style & kComboType) {
        case 1: return flat(FlatKind::ComboSimple);
        case 2: return flat(FlatKind::ComboDropdown);
        case 3: return flat(FlatKind::ComboDropdownList);
        default: return standard(StandardReason::UnknownType);
    }
}

struct ClassRow {
    std::wstring_view name;
    bool prefix;
    FlatChoice (*choose)(std::uint32_t style, const ControlDescription* description);
};
constexpr std::array kClasses{
    ClassRow{L"Edit", false, chooseEdit},
    ClassRow{L"richedit", true, chooseRichEdit},
    ClassRow{L"msftedit", true, chooseRichEdit},
    ClassRow{L"static", false, chooseStatic},
    ClassRow{L"msctls_trackbar32", false, chooseTrackbar},
    ClassRow{L"SysListView32", false, chooseListView},
    ClassRow{L"Button", false, chooseButton},
    ClassRow{L"ComboBox", false, chooseCombo},
};

std::optional<std::uint32_t> digitOf(wchar_t unit) {
    const wchar_t low = lowered(unit);
    if (low >= L'0' && low <= L'9')
        return static_cast<std::uint32_t>(low - L'0');
    if (low >= L'a' && low <= L'f')
        return static_cast<std::uint32_t>(low - L'a' + 10);
    return std::nullopt;
}

}  // namespace

FlatChoice chooseFlatControl(std::wstring_view className, std::uint32_t style,
                             const ControlDescription* description) {
    for (const ClassRow& row : kClasses) {
        if (sameName(row.prefix ? className.substr(0, kRichEditPrefix) : className, row.name))
            return row.choose(style, description);
    }
    return standard(StandardReason::UnknownClass);
}

std::wstring_view trimmed(std::wstring_view text) {
    constexpr std::wstring_view kSpace = L" \t\r\n";
    const auto first = text.find_first_not_of(kSpace);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

std::uint32_t parseColour(std::wstring_view text) {
    text = trimmed(text);
    const bool hexadecimal = text.size() > 2 && text[0] == L'0' && lowered(text[1]) == L'x';
    const std::uint32_t base = hexadecimal ? 16 : 10;
    if (hexadecimal)
        text.remove_prefix(2);
    std::uint64_t value = 0;
    for (const wchar_t unit : text) {
        const auto digit = digitOf(unit);
        if (!digit || *digit >= base)
            return 0;
        value = value * base + *digit;
        if (value > UINT32_MAX)
            return 0;
    }
    return static_cast<std::uint32_t>(value);
}

}  // namespace QkDlg
