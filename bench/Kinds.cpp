#include "Kinds.h"

#include <array>

#include "QkDlg/QkFlatBlueBtn.h"
#include "QkDlg/QkFlatBtn.h"
#include "QkDlg/QkFlatCheckbox.h"
#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxDropdownList.h"
#include "QkDlg/QkFlatComboBoxSimple.h"
#include "QkDlg/QkFlatDropBtn.h"
#include "QkDlg/QkFlatEdit.h"
#include "QkDlg/QkFlatPassword.h"
#include "QkDlg/QkFlatProgressBar.h"
#include "QkDlg/QkFlatRadio.h"
#include "QkDlg/QkFlatScrollbar.h"
#include "QkDlg/QkFlatSettingsBtn.h"
#include "QkDlg/QkFlatSlider.h"
#include "QkDlg/QkFlatSplitBtn.h"
#include "QkDlg/QkFlatStaticText.h"
#include "QkDlg/QkFlatToggleBtn.h"

namespace QkDlgBench {

namespace {

using FlatPtr = std::unique_ptr<QkDlg::QkCustomControl>;

template <typename Control>
FlatPtr make(UINT id) {
    return std::make_unique<Control>(id);
}

template <typename Bar, bool vertical>
FlatPtr makeBar(UINT id) {
    return std::make_unique<Bar>(id, vertical);
}

void halfWay(HWND window) {
    SendMessageW(window, PBM_SETPOS, 50, 0);
}

void someItems(HWND window) {
    for (const wchar_t* const item : {L"Spring", L"Summer", L"Autumn", L"Winter"})
        SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
    SendMessageW(window, CB_SETCURSEL, 1, 0);
}

void someRange(HWND window) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = 99;
    info.nPage = 25;
    info.nPos = 30;
    SetScrollInfo(window, SB_CTL, &info, FALSE);
}

constexpr SIZE kButtonSize{100, 28};
constexpr SIZE kToggleSize{140, 22};
constexpr SIZE kEditSize{140, 24};
constexpr SIZE kComboSize{140, 120};

constexpr DWORD kComboStyle = WS_VSCROLL | WS_TABSTOP;
constexpr DWORD kEditStyle = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;

using namespace QkDlg;

const std::array kKinds{
    Kind{"push", L"Button", BS_PUSHBUTTON | WS_TABSTOP, 0, kButtonSize, L"Browse...", nullptr,
         &make<QkFlatBtn>},
    Kind{"blue", L"Button", BS_PUSHBUTTON | WS_TABSTOP, 0, kButtonSize, L"Save", nullptr,
         &make<QkFlatBlueBtn>},
    Kind{"check", L"Button", BS_AUTOCHECKBOX | WS_TABSTOP, 0, kToggleSize, L"Keep a copy", nullptr,
         &make<QkFlatCheckbox>},
    Kind{"radio", L"Button", BS_AUTORADIOBUTTON, 0, kToggleSize, L"Every day", nullptr,
         &make<QkFlatRadio>},
    Kind{"switch", L"Button", BS_AUTOCHECKBOX | WS_TABSTOP, 0, kToggleSize, L"Wireless", nullptr,
         &make<QkFlatToggleBtn>},
    Kind{"split", L"Button", BS_SPLITBUTTON | WS_TABSTOP, 0, kButtonSize, L"Save", nullptr,
         &make<QkFlatSplitBtn>},
    Kind{"drop", L"Button", BS_SPLITBUTTON | WS_TABSTOP, 0, kButtonSize, L"More", nullptr,
         &make<QkFlatDropBtn>},
    Kind{"settings", L"Button", BS_PUSHBUTTON | WS_TABSTOP, 0, kButtonSize, L"", nullptr,
         &make<QkFlatSettingsBtn>},
    Kind{"static", L"Static", SS_LEFT, 0, kToggleSize, L"Name of the file:", nullptr,
         &make<QkFlatStaticText>},
    Kind{"progress", PROGRESS_CLASSW, 0, 0, {200, 18}, L"", &halfWay, &make<QkFlatProgressBar>},
    Kind{"edit", L"Edit", kEditStyle, WS_EX_CLIENTEDGE, kEditSize, L"Annual report", nullptr,
         &make<QkFlatEdit>},
    Kind{"password", L"Edit", kEditStyle | ES_PASSWORD, WS_EX_CLIENTEDGE, kEditSize, L"secret",
         nullptr, &make<QkFlatPassword>},
    Kind{"combo list", L"ComboBox", kComboStyle | CBS_DROPDOWNLIST, 0, kComboSize, L"", &someItems,
         &make<QkFlatComboBoxDropdownList>},
    Kind{"combo drop", L"ComboBox", kComboStyle | CBS_DROPDOWN, 0, kComboSize, L"", &someItems,
         &make<QkFlatComboBoxDropdown>},
    Kind{"combo simple", L"ComboBox", kComboStyle | CBS_SIMPLE, 0, kComboSize, L"", &someItems,
         &make<QkFlatComboBoxSimple>},
    Kind{"scroll bar",
         L"ScrollBar",
         SBS_VERT,
         0,
         {17, 120},
         L"",
         &someRange,
         &makeBar<QkFlatScrollbar, true>},
    Kind{"slider",
         L"ScrollBar",
         SBS_HORZ,
         0,
         {160, 20},
         L"",
         &someRange,
         &makeBar<QkFlatSlider, false>},
};

}  // namespace

std::span<const Kind> allKinds() {
    return kKinds;
}

}  // namespace QkDlgBench
