#include "QkDlg/QkFlatBlueBtn.h"
#include "QkDlg/QkFlatCheckbox.h"
#include "QkDlg/QkFlatDropBtn.h"
#include "QkDlg/QkFlatRadio.h"
#include "QkDlg/QkFlatSettingsBtn.h"
#include "QkDlg/QkFlatSplitBtn.h"
#include "QkDlg/QkFlatToggleBtn.h"
#include "pictures/ControlType.h"

namespace QkPictures {
namespace {

// A gear in eight sizes, from the library's own resources.
constexpr UINT32 kGear[] = {
    62088, 62089, 62090, 62091, 62092, 62093, 62094, 62095, QkDlg::kImageIdEnd};

std::unique_ptr<QkDlg::QkCustomControl> imageButton() {
    return std::make_unique<QkDlg::QkFlatBtn>(kControlId, kGear);
}

std::unique_ptr<QkDlg::QkCustomControl> imageAboveButton() {
    auto button = std::make_unique<QkDlg::QkFlatBtn>(kControlId, kGear);
    button->SetImageAbove(true);
    return button;
}

void check(HWND control) {
    SendMessageW(control, BM_SETCHECK, BST_CHECKED, 0);
}

void makeIndeterminate(HWND control) {
    SendMessageW(control, BM_SETSTYLE, BS_AUTO3STATE, FALSE);
    SendMessageW(control, BM_SETCHECK, BST_INDETERMINATE, 0);
}

constexpr Column kPushColumns[] = {
    {L"Normal"},
    {L"Hot", State::Hot},
    {L"Pressed", State::Pressed},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
};

constexpr QkDlg::Size kTall{100, 44};

constexpr Specimen kPush[] = {
    {.label = L"Text", .text = L"Save"},
    {.label = L"Access key", .text = L"&Save"},
    {.label = L"Default button", .text = L"Save", .style = BS_DEFPUSHBUTTON},
    {.label = L"Left", .text = L"Save", .style = BS_LEFT},
    {.label = L"Right", .text = L"Save", .style = BS_RIGHT},
    {.label = L"Top", .text = L"Save", .style = BS_TOP, .size = kTall},
    {.label = L"Several lines",
     .text = L"Restore all\nfactory settings",
     .style = BS_MULTILINE,
     .size = kTall},
    {.label = L"Image", .text = L"Options", .make = imageButton},
    {.label = L"Image above", .text = L"Options", .size = {100, 54}, .make = imageAboveButton},
    {.label = L"Image alone", .make = imageButton},
    {.label = L"Long text", .text = L"A caption too long for its button"},
    {.label = L"No text"},
    {.label = L"Mirrored", .text = L"Options", .mirrored = true, .make = imageButton},
};

constexpr Specimen kBlue[] = {
    {.label = L"Text", .text = L"Open"},
    {.label = L"Access key", .text = L"&Open"},
    {.label = L"Default button", .text = L"Open", .style = BS_DEFPUSHBUTTON},
    {.label = L"Left", .text = L"Open", .style = BS_LEFT},
    {.label = L"Several lines",
     .text = L"Download\nand install",
     .style = BS_MULTILINE,
     .size = kTall},
    {.label = L"Long text", .text = L"A caption too long for its button"},
    {.label = L"No text"},
    {.label = L"Mirrored", .text = L"&Open", .mirrored = true},
};

constexpr Specimen kSplit[] = {
    {.label = L"Text", .text = L"Save"},
    {.label = L"Access key", .text = L"&Save"},
    {.label = L"Long text", .text = L"A caption too long for its button"},
    {.label = L"No text"},
    {.label = L"Mirrored", .text = L"&Save", .mirrored = true},
};

constexpr Specimen kSettings[] = {
    {.label = L"Gear"},
    {.label = L"Mirrored", .mirrored = true},
};

constexpr Column kToggleColumns[] = {
    {L"Normal"},
    {L"Hot", State::Hot, {10, 50}},
    {L"Pressed", State::Pressed, {10, 50}},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
};

constexpr Specimen kCheck[] = {
    {.label = L"Unchecked", .text = L"Send me &news"},
    {.label = L"Checked", .text = L"Send me &news", .fill = check},
    {.label = L"Third state", .text = L"Send me &news", .fill = makeIndeterminate},
    {.label = L"Text on the left", .text = L"Send me &news", .style = BS_LEFTTEXT, .fill = check},
    {.label = L"Several lines",
     .text = L"Send me\nthe news",
     .style = BS_MULTILINE,
     .size = {120, 40},
     .fill = check},
    {.label = L"Several lines, top",
     .text = L"Send me\nthe news",
     .style = BS_MULTILINE | BS_TOP,
     .size = {120, 40},
     .fill = check},
    {.label = L"Long text", .text = L"A caption too long for its check box"},
    {.label = L"No text", .fill = check},
    {.label = L"Mirrored", .text = L"Send me &news", .fill = check, .mirrored = true},
};

constexpr Specimen kRadio[] = {
    {.label = L"Unchecked", .text = L"&Weekly"},
    {.label = L"Checked", .text = L"&Weekly", .fill = check},
    {.label = L"Text on the left", .text = L"&Weekly", .style = BS_LEFTTEXT, .fill = check},
    {.label = L"Several lines",
     .text = L"Once a week,\non Monday",
     .style = BS_MULTILINE,
     .size = {120, 40},
     .fill = check},
    {.label = L"Several lines, top",
     .text = L"Once a week,\non Monday",
     .style = BS_MULTILINE | BS_TOP,
     .size = {120, 40},
     .fill = check},
    {.label = L"Long text", .text = L"A caption too long for its radio button"},
    {.label = L"No text", .fill = check},
    {.label = L"Mirrored", .text = L"&Weekly", .fill = check, .mirrored = true},
};

constexpr Column kSwitchColumns[] = {
    {L"Normal"},
    {L"Hot", State::Hot, {80, 50}},
    {L"Pressed", State::Pressed, {80, 50}},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
};

constexpr Specimen kSwitch[] = {
    {.label = L"Off"},
    {.label = L"On", .fill = check},
    {.label = L"Mirrored, off", .mirrored = true},
    {.label = L"Mirrored, on", .fill = check, .mirrored = true},
};

constexpr ControlType kTypes[] = {
    {.name = L"push",
     .className = WC_BUTTONW,
     .style = BS_PUSHBUTTON | WS_TABSTOP,
     .size = {100, 28},
     .make = make<QkDlg::QkFlatBtn>,
     .columns = kPushColumns,
     .specimens = kPush},
    {.name = L"blue",
     .className = WC_BUTTONW,
     .style = BS_PUSHBUTTON | WS_TABSTOP,
     .size = {100, 28},
     .make = make<QkDlg::QkFlatBlueBtn>,
     .columns = kPushColumns,
     .specimens = kBlue},
    {.name = L"check",
     .className = WC_BUTTONW,
     .style = BS_AUTOCHECKBOX | WS_TABSTOP,
     .size = {120, 20},
     .make = make<QkDlg::QkFlatCheckbox>,
     .columns = kToggleColumns,
     .specimens = kCheck},
    {.name = L"radio",
     .className = WC_BUTTONW,
     .style = BS_RADIOBUTTON | WS_TABSTOP,
     .size = {120, 20},
     .make = make<QkDlg::QkFlatRadio>,
     .columns = kToggleColumns,
     .specimens = kRadio},
    {.name = L"switch",
     .className = WC_BUTTONW,
     .style = BS_AUTOCHECKBOX | WS_TABSTOP,
     .size = {100, 28},
     .make = make<QkDlg::QkFlatToggleBtn>,
     .columns = kSwitchColumns,
     .specimens = kSwitch},
    {.name = L"split",
     .className = WC_BUTTONW,
     .style = BS_SPLITBUTTON | WS_TABSTOP,
     .size = {100, 28},
     .make = make<QkDlg::QkFlatSplitBtn>,
     .columns = kPushColumns,
     .specimens = kSplit},
    {.name = L"drop",
     .className = WC_BUTTONW,
     .style = BS_SPLITBUTTON | WS_TABSTOP,
     .size = {100, 28},
     .make = make<QkDlg::QkFlatDropBtn>,
     .columns = kPushColumns,
     .specimens = kSplit},
    {.name = L"settings",
     .className = WC_BUTTONW,
     .style = BS_SPLITBUTTON | WS_TABSTOP,
     .size = {60, 28},
     .make = make<QkDlg::QkFlatSettingsBtn>,
     .columns = kPushColumns,
     .specimens = kSettings},
};

}  // namespace

std::span<const ControlType> buttonTypes() {
    return kTypes;
}

}  // namespace QkPictures
