#include <string>

#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxDropdownList.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "QkDlg/QkFlatEdit.h"
#include "QkDlg/QkFlatPassword.h"
#include "QkDlg/QkFlatStaticText.h"
#include "pictures/ControlType.h"

namespace QkPictures {
namespace {

// Labels

std::unique_ptr<QkDlg::QkCustomControl> heading() {
    auto label = std::make_unique<QkDlg::QkFlatStaticText>(kControlId);
    label->SetFont({}, 14, FW_NORMAL);
    return label;
}

constexpr Column kLabelColumns[] = {
    {L"Normal"},
    {L"Disabled", State::Disabled},
};

constexpr Specimen kLabels[] = {
    {.label = L"Text", .text = L"Name"},
    {.label = L"Access key", .text = L"&Name"},
    {.label = L"Centred", .text = L"Name", .style = SS_CENTER},
    {.label = L"Right", .text = L"Name", .style = SS_RIGHT},
    {.label = L"Several lines",
     .text = L"A label whose text takes more than one line",
     .size = {180, 36}},
    {.label = L"In 14 points", .text = L"A heading", .size = {180, 28}, .make = heading},
    {.label = L"In 14 points, too long",
     .text = L"A heading that is made smaller until its text fits",
     .size = {180, 36},
     .make = heading},
    {.label = L"Mirrored", .text = L"&Name", .mirrored = true},
};

// Edits

void setCue(HWND control) {
    SendMessageW(control, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(L"First and last name"));
}

constexpr Column kEditColumns[] = {
    {L"Normal"},
    {L"Hot", State::Hot},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
};

constexpr QkDlg::Size kSeveralLines{130, 60};

constexpr Specimen kEdits[] = {
    {.label = L"Text", .text = L"Ada Lovelace"},
    {.label = L"Empty"},
    {.label = L"Cue text", .fill = setCue},
    {.label = L"Read-only", .text = L"Ada Lovelace", .style = ES_READONLY},
    {.label = L"Right", .text = L"1842", .style = ES_RIGHT},
    {.label = L"Long text", .text = L"A text that is longer than its edit box"},
    {.label = L"Several lines",
     .text = L"First line\r\nSecond line\r\nThird line",
     .style = ES_MULTILINE | ES_WANTRETURN,
     .size = kSeveralLines},
    {.label = L"Read-only, several",
     .text = L"First line\r\nSecond line\r\nThird line",
     .style = ES_MULTILINE | ES_READONLY,
     .size = kSeveralLines},
    {.label = L"Mirrored", .text = L"Ada Lovelace", .mirrored = true},
};

// Password boxes

void reveal(HWND control) {
    SendMessageW(control, EM_SETPASSWORDCHAR, 0, 0);
}

void turnEyeOff(HWND control) {
    SendMessageW(control, QkDlg::QkFlatPassword::kTurnEyeOff, 0, 0);
}

constexpr Spot kEye{110, 50};

constexpr Column kPasswordColumns[] = {
    {L"Normal"},
    {L"Eye hot", State::Hot, kEye},
    {L"Eye pressed", State::Pressed, kEye},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
};

constexpr Specimen kPasswords[] = {
    {.label = L"Masked", .text = L"open sesame"},
    {.label = L"Revealed", .text = L"open sesame", .show = reveal},
    {.label = L"Eye off", .text = L"open sesame", .show = turnEyeOff},
    {.label = L"Empty"},
    {.label = L"Long text", .text = L"a password longer than its box"},
    {.label = L"Mirrored", .text = L"open sesame", .mirrored = true},
};

// Combo boxes

void addSeasons(HWND control) {
    for (const wchar_t* season : {L"Spring", L"Summer", L"Autumn", L"Winter"})
        SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(season));
    SendMessageW(control, CB_SETCURSEL, 1, 0);
}

void addLongText(HWND control) {
    SendMessageW(control, CB_ADDSTRING, 0,
                 reinterpret_cast<LPARAM>(L"A text that is longer than the field"));
    SendMessageW(control, CB_SETCURSEL, 0, 0);
}

void addMany(HWND control) {
    SendMessageW(control, CB_SETMINVISIBLE, 5, 0);
    for (int i = 1; i <= 50; ++i)
        SendMessageW(control, CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>((L"Item " + std::to_wstring(i)).c_str()));
    SendMessageW(control, CB_SETCURSEL, 12, 0);
}

constexpr Column kComboColumns[] = {
    {L"Normal"},
    {L"Hot", State::Hot, {40, 50}},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
    {L"Open", State::Open},
};

constexpr unsigned kClosedColumns = 0b01111;

constexpr Specimen kDropDowns[] = {
    {.label = L"Selected", .fill = addSeasons},
    {.label = L"Empty", .columns = kClosedColumns},
    {.label = L"Long text", .fill = addLongText, .columns = kClosedColumns},
    {.label = L"Long list", .fill = addMany},
    {.label = L"Mirrored", .fill = addSeasons, .mirrored = true},
};

constexpr Specimen kSimple[] = {
    {.label = L"Selected", .fill = addSeasons, .columns = kClosedColumns},
    {.label = L"Empty", .columns = kClosedColumns},
    {.label = L"Long list", .fill = addMany, .columns = kClosedColumns},
    {.label = L"Mirrored", .fill = addSeasons, .mirrored = true, .columns = kClosedColumns},
};

constexpr std::span kSimpleColumns = std::span(kComboColumns).first<4>();

constexpr DWORD kComboStyle = WS_VSCROLL | WS_TABSTOP;

constexpr ControlType kTypes[] = {
    {.name = L"static",
     .className = WC_STATICW,
     .size = {180, 20},
     .make = make<QkDlg::QkFlatStaticText>,
     .columns = kLabelColumns,
     .specimens = kLabels},
    {.name = L"edit",
     .className = WC_EDITW,
     .style = ES_AUTOHSCROLL | WS_TABSTOP,
     .exStyle = WS_EX_CLIENTEDGE,
     .size = {130, 24},
     .make = make<QkDlg::QkFlatEdit>,
     .columns = kEditColumns,
     .specimens = kEdits},
    {.name = L"password",
     .className = WC_EDITW,
     .style = ES_AUTOHSCROLL | ES_PASSWORD | WS_TABSTOP,
     .exStyle = WS_EX_CLIENTEDGE,
     .size = {130, 24},
     .roomBeside = 26,
     .make = make<QkDlg::QkFlatPassword>,
     .columns = kPasswordColumns,
     .specimens = kPasswords},
    {.name = L"combo-list",
     .className = WC_COMBOBOXW,
     .style = CBS_DROPDOWNLIST | kComboStyle,
     .size = {120, 24},
     .listHeight = 100,
     .roomBelow = 95,
     .make = make<QkDlg::QkFlatComboBoxDropdownList>,
     .columns = kComboColumns,
     .specimens = kDropDowns},
    {.name = L"combo-dropdown",
     .className = WC_COMBOBOXW,
     .style = CBS_DROPDOWN | CBS_AUTOHSCROLL | kComboStyle,
     .size = {120, 24},
     .listHeight = 100,
     .roomBelow = 95,
     .make = make<QkDlg::QkFlatComboBoxDropdown>,
     .columns = kComboColumns,
     .specimens = kDropDowns},
    {.name = L"combo-simple",
     .className = WC_COMBOBOXW,
     .style = CBS_SIMPLE | CBS_AUTOHSCROLL | kComboStyle,
     .size = {120, 100},
     .make = make<QkDlg::QkFlatComboBoxSimple>,
     .columns = kSimpleColumns,
     .specimens = kSimple},
};

}  // namespace

std::span<const ControlType> fieldTypes() {
    return kTypes;
}

}  // namespace QkPictures
