#include "QkXFlatDlg/DialogDescription.h"

#include <algorithm>

#include "QkDlg/UiColors.h"
#include "QkXML/DialogDefaults.h"

namespace QkDlg {

namespace {

constexpr int kNoId = -1;
constexpr int kNormalWeight = 400;
constexpr std::wstring_view kAccentWord = L"HOTLIGHT";

std::uint32_t idOf(const QkXMLElement& element) {
    return static_cast<std::uint32_t>(GetAttributeInt(element, L"id", kNoId));
}

std::wstring word(const QkXMLElement& control, const wchar_t* name) {
    const std::wstring text = GetChildText(control, name);
    return std::wstring(trimmed(text));
}

void readFont(const QkXMLElement& control, ControlDescription& record) {
    const QkXMLElement* font = FindChild(control, L"font");
    if (!font) {
        record.faceName = L"Segoe UI";
        return;
    }
    record.faceName = GetAttribute(*font, L"name", dialogDefaults().fontFace);
    record.pointSize =
        static_cast<std::uint32_t>(GetAttributeInt(*font, L"size", dialogDefaults().fontSize));
    record.weight = static_cast<std::uint32_t>(GetAttributeInt(*font, L"weight", kNormalWeight));
}

ControlDescription readControl(const QkXMLElement& control) {
    ControlDescription record;
    record.id = idOf(control);
    record.kind = word(control, L"subclass");
    record.cue = GetChildText(control, L"cue");
    readFont(control, record);
    const std::wstring colour = word(control, L"color");
    record.colour = colour == kAccentWord ? GetUIColor(UICLR_ACCENT) : parseColour(colour);
    return record;
}

}  // namespace

std::optional<DialogDescription> readDialogDescription(const QkXML& descriptions,
                                                       std::uint32_t templateId) {
    QkXMLConstElements dialogs;
    GetChildren(descriptions, dialogs, L"dialog");
    const auto dialog = std::ranges::find_if(
        dialogs, [templateId](const QkXMLElement* each) { return idOf(*each) == templateId; });
    if (dialog == dialogs.end())
        return std::nullopt;

    DialogDescription description;
    description.autogen = GetAttribute(**dialog, L"autogen") == L"yes";
    QkXMLConstElements controls;
    GetChildren(**dialog, controls, L"control");
    for (const QkXMLElement* control : controls)
        description.records.push_back(readControl(*control));
    return description;
}

}  // namespace QkDlg
