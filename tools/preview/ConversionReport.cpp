#include "preview/ConversionReport.h"

#include <algorithm>
#include <array>

namespace QkPreview {
namespace {

using QkDlg::FlatKind;
using QkDlg::StandardReason;

constexpr std::size_t kIdColumn = 7;
constexpr std::size_t kClassColumn = 20;

struct KindName {
    FlatKind kind;
    const wchar_t* name;
};
constexpr std::array kKindNames{
    KindName{FlatKind::PushButton, L"push button"},
    KindName{FlatKind::AccentButton, L"push button in the accent colour"},
    KindName{FlatKind::SettingsButton, L"settings button"},
    KindName{FlatKind::SplitButton, L"split button"},
    KindName{FlatKind::DropButton, L"drop-down button"},
    KindName{FlatKind::Radio, L"radio button"},
    KindName{FlatKind::Checkbox, L"check box"},
    KindName{FlatKind::Toggle, L"on/off switch"},
    KindName{FlatKind::Edit, L"edit box"},
    KindName{FlatKind::Password, L"password box"},
    KindName{FlatKind::Text, L"label"},
    KindName{FlatKind::DescribedText, L"label as described"},
    KindName{FlatKind::HorizontalScrollbar, L"horizontal scroll bar"},
    KindName{FlatKind::VerticalScrollbar, L"vertical scroll bar"},
    KindName{FlatKind::HorizontalSlider, L"horizontal slider"},
    KindName{FlatKind::VerticalSlider, L"vertical slider"},
    KindName{FlatKind::ProgressBar, L"progress bar"},
    KindName{FlatKind::ListView, L"list view"},
    KindName{FlatKind::ComboSimple, L"combo box with an open list"},
    KindName{FlatKind::ComboDropdown, L"combo box to type in"},
    KindName{FlatKind::ComboDropdownList, L"combo box"},
};

struct ReasonText {
    StandardReason reason;
    const wchar_t* text;
};
constexpr std::array kReasons{
    ReasonText{StandardReason::NoId, L"it has no id"},
    ReasonText{StandardReason::IdTaken, L"another control of that id is flat"},
    ReasonText{StandardReason::UnknownClass, L"its class has no flat form"},
    ReasonText{StandardReason::UnknownType, L"its type has no flat form"},
    ReasonText{StandardReason::UnknownKind, L"its description names a kind that it cannot be"},
};

std::wstring padded(std::wstring text, std::size_t width) {
    text.resize(std::max(text.size() + 1, width), L' ');
    return text;
}

std::wstring classOf(HWND window) {
    wchar_t name[256]{};
    GetClassNameW(window, name, 256);
    return name;
}

std::wstring describeChoice(const QkDlg::FlatChoice& choice) {
    for (const KindName& row : kKindNames) {
        if (row.kind == choice.kind)
            return row.name;
    }
    for (const ReasonText& row : kReasons) {
        if (row.reason == choice.reason)
            return std::wstring(L"standard: ") + row.text;
    }
    return L"standard";
}

std::wstring shownId(std::uint32_t id) {
    return std::to_wstring(static_cast<std::int32_t>(id));
}

std::uint32_t idOf(const QkDlg::QkXMLElement& element) {
    return static_cast<std::uint32_t>(QkDlg::GetAttributeInt(element, L"id", -1));
}

}  // namespace

std::wstring describeChild(const QkDlg::ConvertedChild& child) {
    return padded(shownId(child.id), kIdColumn) + padded(classOf(child.hwnd), kClassColumn) +
           describeChoice(child.choice);
}

std::vector<std::wstring> unmatchedDescriptions(const QkDlg::QkXML& descriptions,
                                                const TemplateIds& templates) {
    std::vector<std::wstring> lines;
    QkDlg::QkXMLConstElements dialogs;
    GetChildren(descriptions, dialogs, L"dialog");
    std::set<std::uint32_t> described;
    for (const QkDlg::QkXMLElement* dialog : dialogs) {
        const std::uint32_t id = idOf(*dialog);
        const auto found = templates.find(id);
        if (!described.insert(id).second) {
            lines.push_back(L"DLG_XML: dialog " + shownId(id) +
                            L" is described again; only the first description counts");
            continue;
        }
        if (found == templates.end()) {
            lines.push_back(L"DLG_XML: dialog " + shownId(id) + L" matches no template");
            continue;
        }
        QkDlg::QkXMLConstElements controls;
        GetChildren(*dialog, controls, L"control");
        for (const QkDlg::QkXMLElement* control : controls) {
            if (!found->second.contains(idOf(*control)))
                lines.push_back(L"DLG_XML: control " + shownId(idOf(*control)) + L" of dialog " +
                                shownId(id) + L" matches no control");
        }
    }
    return lines;
}

}  // namespace QkPreview
