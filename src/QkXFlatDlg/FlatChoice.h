#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace QkDlg {

/// What a dialog description says of one control.
struct ControlDescription {
    std::uint32_t id = UINT32_MAX;
    std::wstring kind;  ///< "hscroll", "blue", "drop", ...; empty: none told
    std::wstring faceName;
    std::uint32_t pointSize = 9;
    std::uint32_t weight = 400;
    std::uint32_t colour = 0;  ///< a COLORREF
    std::wstring cue;          ///< what an empty edit shows
};

/// The flat control for a standard one.
enum class FlatKind {
    None,
    PushButton,
    AccentButton,
    SettingsButton,
    SplitButton,
    DropButton,
    Radio,
    Checkbox,
    Toggle,
    Edit,
    Password,
    Text,
    DescribedText,
    HorizontalScrollbar,
    VerticalScrollbar,
    HorizontalSlider,
    VerticalSlider,
    ProgressBar,
    ListView,
    ComboSimple,
    ComboDropdown,
    ComboDropdownList,
};

/// Why a control stays standard.
enum class StandardReason {
    IsFlat,
    NoId,
    IdTaken,  ///< another control has that id and is flat
    UnknownClass,
    UnknownType,  ///< a kind of button or combo box without a flat form (group box, owner-draw)
    UnknownKind,  ///< the description names a kind that push buttons do not have
};

struct FlatChoice {
    FlatKind kind = FlatKind::None;
    StandardReason reason = StandardReason::IsFlat;

    bool operator==(const FlatChoice&) const = default;
};

/// The flat control for a window of that class and style (GWL_STYLE). `description` is the
/// control's, or null when there is none. Class names are compared without case, and of rich edits
/// just the beginning, so that any version is one; kinds are compared exactly.
[[nodiscard]] FlatChoice chooseFlatControl(std::wstring_view className, std::uint32_t style,
                                           const ControlDescription* description);

/// The `color` text of a description as a number: decimal, or hexadecimal after "0x"; 0 for
/// anything else. White space around it does not count.
[[nodiscard]] std::uint32_t parseColour(std::wstring_view text);

/// The text without white space around it.
[[nodiscard]] std::wstring_view trimmed(std::wstring_view text);

}  // namespace QkDlg
