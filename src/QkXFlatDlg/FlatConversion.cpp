#include "QkXFlatDlg/FlatConversion.h"

#include <algorithm>
#include <array>
#include <typeinfo>
#include <utility>

#include "QkDlg/QkFlatBtn.h"
#include "QkDlg/QkFlatCheckbox.h"
#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxDropdownList.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "QkDlg/QkFlatDropBtn.h"
#include "QkDlg/QkFlatEdit.h"
#include "QkDlg/QkFlatListView.h"
#include "QkDlg/QkFlatPassword.h"
#include "QkDlg/QkFlatProgressBar.h"
#include "QkDlg/QkFlatRadio.h"
#include "QkDlg/QkFlatScrollbar.h"
#include "QkDlg/QkFlatSettingsBtn.h"
#include "QkDlg/QkFlatSlider.h"
#include "QkDlg/QkFlatSplitBtn.h"
#include "QkDlg/QkFlatStaticText.h"
#include "QkDlg/QkFlatToggleBtn.h"
#include "QkUtil/WindowClass.h"
#include "QkXFlatDlg/DialogDescription.h"
#include "QkXML/DialogDefaults.h"

namespace QkDlg {

namespace {

using ControlPtr = std::unique_ptr<QkCustomControl>;
using Description = const ControlDescription*;

// Making

template <typename Control>
ControlPtr make(UINT32 id, Description) {
    return std::make_unique<Control>(id);
}

template <typename Bar, bool vertical>
ControlPtr makeBar(UINT32 id, Description) {
    return std::make_unique<Bar>(id, vertical);
}

template <typename Control>
ControlPtr makeWithCue(UINT32 id, Description description) {
    return std::make_unique<Control>(id, description ? description->cue : std::wstring());
}

ControlPtr makeAccentButton(UINT32 id, Description) {
    auto button = std::make_unique<QkFlatBtn>(id);
    button->UseAccentColours();
    return button;
}

ControlPtr makeText(UINT32 id, Description) {
    return std::make_unique<QkFlatStaticText>(id, std::wstring_view(), 0, 0);
}

ControlPtr makeDescribedText(UINT32 id, Description description) {
    const auto size = static_cast<int>(description->pointSize);
    auto text =
        std::make_unique<QkFlatStaticText>(id, description->faceName, size, description->colour);
    text->SetFont(description->faceName, size, static_cast<int>(description->weight));
    text->SetBkColor(GetUIColor(UICLR_WHITE));
    return text;
}

struct KindRow {
    FlatKind kind;
    ControlPtr (*make)(UINT32 id, Description description);
};
constexpr std::array kKinds{
    KindRow{FlatKind::PushButton, &make<QkFlatBtn>},
    KindRow{FlatKind::AccentButton, &makeAccentButton},
    KindRow{FlatKind::SettingsButton, &make<QkFlatSettingsBtn>},
    KindRow{FlatKind::SplitButton, &make<QkFlatSplitBtn>},
    KindRow{FlatKind::DropButton, &make<QkFlatDropBtn>},
    KindRow{FlatKind::Radio, &make<QkFlatRadio>},
    KindRow{FlatKind::Checkbox, &make<QkFlatCheckbox>},
    KindRow{FlatKind::Toggle, &make<QkFlatToggleBtn>},
    KindRow{FlatKind::Edit, &makeWithCue<QkFlatEdit>},
    KindRow{FlatKind::Password, &makeWithCue<QkFlatPassword>},
    KindRow{FlatKind::Text, &makeText},
    KindRow{FlatKind::DescribedText, &makeDescribedText},
    KindRow{FlatKind::HorizontalScrollbar, &makeBar<QkFlatScrollbar, false>},
    KindRow{FlatKind::VerticalScrollbar, &makeBar<QkFlatScrollbar, true>},
    KindRow{FlatKind::HorizontalSlider, &makeBar<QkFlatSlider, false>},
    KindRow{FlatKind::VerticalSlider, &makeBar<QkFlatSlider, true>},
    KindRow{FlatKind::ProgressBar, &make<QkFlatProgressBar>},
    KindRow{FlatKind::ListView, &make<QkFlatListView>},
    KindRow{FlatKind::ComboSimple, &make<QkFlatComboBoxSimple>},
    KindRow{FlatKind::ComboDropdown, &make<QkFlatComboBoxDropdown>},
    KindRow{FlatKind::ComboDropdownList, &make<QkFlatComboBoxDropdownList>},
};

/// Null for a kind without a control, and when memory is short: the child stays standard.
ControlPtr makeControl(FlatKind kind, UINT32 id, Description description) try {
    const auto row = std::ranges::find(kKinds, kind, &KindRow::kind);
    return row != kKinds.end() ? row->make(id, description) : nullptr;
} catch (const std::bad_alloc&) {
    return nullptr;
}

// Children

Description descriptionOf(const std::vector<ControlDescription>& records, UINT32 id) {
    const auto found = std::ranges::find(records, id, &ControlDescription::id);
    return found == records.end() ? nullptr : &*found;
}

/// A control of an earlier run of the dialog gets the window again that is now in the place of its
/// old one, though other children may have the same id.
void rebind(QkCustomControl& control, HWND child, const FlatChoice& choice,
            Description description) {
    if (control.GetWindow())
        return;
    const ControlPtr made = makeControl(choice.kind, control.GetId(), description);
    const QkCustomControl* like = made.get();
    if (like && typeid(*like) == typeid(control))
        control.SetWindow(child);
}

FlatChoice convertChild(HWND child, const std::vector<ControlDescription>& records,
                        ControlMap& controls) {
    const auto id = static_cast<UINT32>(GetDlgCtrlID(child));
    if (id == 0)
        return {FlatKind::None, StandardReason::NoId};
    const Description description = descriptionOf(records, id);
    const auto style = static_cast<std::uint32_t>(GetWindowLongPtrW(child, GWL_STYLE));
    const FlatChoice choice = chooseFlatControl(windowClass(child), style, description);
    if (const auto taken = controls.find(id); taken != controls.end()) {
        rebind(*taken->second, child, choice, description);
        const bool ours = taken->second->GetWindow() == child;
        return ours ? choice : FlatChoice{FlatKind::None, StandardReason::IdTaken};
    }
    ControlPtr control = makeControl(choice.kind, id, description);
    if (!control)
        return choice;
    control->SetWindow(child);
    registerControl(controls, std::move(control));
    return choice;
}

// Default button

/// The host's own controls have no window before they are attached.
HWND windowOf(HWND dialog, const QkCustomControl& control) {
    return control.GetWindow() ? control.GetWindow()
                               : GetDlgItem(dialog, static_cast<int>(control.GetId()));
}

bool hasButtonType(HWND window, LONG_PTR type) {
    return window && (GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK) == type;
}

void makeDefault(HWND dialog, const QkFlatBtn& button) {
    HWND window = windowOf(dialog, button);
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    SetWindowLongPtrW(window, GWL_STYLE, (style & ~LONG_PTR{BS_TYPEMASK}) | BS_DEFPUSHBUTTON);
    // Enter follows the look.
    SendMessageW(dialog, DM_SETDEFID, button.GetId(), 0);
}

/// The default button is the one in the accent colour, and the other way round, as far as one of
/// the two is settled.
void settleDefaultButton(HWND dialog, const ControlMap& controls) {
    QkFlatBtn* standard = nullptr;
    QkFlatBtn* accented = nullptr;
    for (const auto& [id, control] : controls) {
        auto* const button = dynamic_cast<QkFlatBtn*>(control.get());
        if (!button)
            continue;
        HWND window = windowOf(dialog, *button);
        const bool isDefault = hasButtonType(window, BS_DEFPUSHBUTTON);
        if (isDefault)
            standard = button;
        if ((isDefault || hasButtonType(window, BS_PUSHBUTTON)) &&
            button->GetConfiguredBkColor() == GetUIColor(UICLR_ACCENT))
            accented = button;
    }
    if (standard && !accented) {
        standard->UseAccentColours();
        standard->Refresh();
    } else if (accented && !standard) {
        makeDefault(dialog, *accented);
    }
}

}  // namespace

void registerControl(ControlMap& controls, ControlPtr control) {
    ControlPtr& place = controls[control->GetId()];
    // Whoever else holds the control that was there may still use it.
    static_cast<void>(place.release());
    place = std::move(control);
}

std::vector<ConvertedChild> convertToFlat(HWND dialog, UINT32 templateId, ControlMap& controls) {
    const DialogDescription description =
        readDialogDescription(dialogDescriptions(), templateId).value_or(DialogDescription{});
    std::vector<ConvertedChild> children;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.push_back({child, static_cast<UINT32>(GetDlgCtrlID(child)),
                            convertChild(child, description.records, controls)});
    settleDefaultButton(dialog, controls);
    return children;
}

}  // namespace QkDlg
