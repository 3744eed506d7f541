#include <memory>
#include <string>
#include <vector>

#include "Ids.h"
#include "Page.h"
#include "QkDlg/QkFlatComboBoxDropdown.h"
#include "QkDlg/QkFlatComboBoxSimple.h"

namespace Gallery {

namespace {

constexpr int kMany = 500;

void addItem(HWND page, int id, const wchar_t* text) {
    SendDlgItemMessageW(page, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
}

void fill(HWND page) {
    for (const int id : {IDC_COMBO_FEW, IDC_COMBO_DISABLED, IDC_COMBO_EMPTY, IDC_COMBO_EDIT,
                         IDC_COMBO_EDIT_DISABLED, IDC_COMBO_SIMPLE}) {
        for (const wchar_t* season : {L"Spring", L"Summer", L"Autumn", L"Winter"})
            addItem(page, id, season);
    }
    for (int i = 1; i <= kMany; ++i)
        addItem(page, IDC_COMBO_MANY, (L"Item " + std::to_wstring(i)).c_str());
    addItem(page, IDC_COMBO_LONG, L"A text that does not fit into the field and loses its end");
    addItem(page, IDC_COMBO_LONG, L"Short");
    SendDlgItemMessageW(page, IDC_COMBO_FEW, CB_SETCURSEL, 1, 0);
    SendDlgItemMessageW(page, IDC_COMBO_DISABLED, CB_SETCURSEL, 2, 0);
    SendDlgItemMessageW(page, IDC_COMBO_EDIT, CB_SETCURSEL, 0, 0);
    SendDlgItemMessageW(page, IDC_COMBO_EDIT_DISABLED, CB_SETCURSEL, 3, 0);
    SendDlgItemMessageW(page, IDC_COMBO_SIMPLE, CB_SETCURSEL, 1, 0);
    SendDlgItemMessageW(page, IDC_COMBO_MANY, CB_SETCURSEL, 122, 0);
    SendDlgItemMessageW(page, IDC_COMBO_LONG, CB_SETCURSEL, 0, 0);
}

using Classes = std::vector<std::unique_ptr<QkDlg::QkCustomControl>>;

/// Combo boxes with an edit field have no type number: a host that links the classes makes them.
Classes& classes() {
    static Classes controls;
    return controls;
}

template <typename Control>
void makeFlat(HWND page, int id) {
    classes().push_back(std::make_unique<Control>(static_cast<UINT>(id)));
    classes().back()->Attach(GetDlgItem(page, id));
}

/// The first item that begins with what was typed, the rest of it selected.
void complete(HWND combo) {
    std::wstring typed(static_cast<std::size_t>(GetWindowTextLengthW(combo)) + 1, L'\0');
    typed.resize(static_cast<std::size_t>(
        GetWindowTextW(combo, typed.data(), static_cast<int>(typed.size()))));
    // Nothing is added to a text that has just been made shorter.
    static std::size_t lengthBefore = 0;
    const bool grown = typed.size() > lengthBefore;
    lengthBefore = typed.size();
    const auto item = SendMessageW(combo, CB_FINDSTRING, static_cast<WPARAM>(-1),
                                   reinterpret_cast<LPARAM>(typed.c_str()));
    if (!grown || item == CB_ERR)
        return;
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(combo, CB_SETEDITSEL, 0, MAKELPARAM(typed.size(), -1));
}

}  // namespace

std::span<const FlatControl> comboControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_COMBO_FEW, QK_COMBO_DROPDOWN_LIST},   {IDC_COMBO_MANY, QK_COMBO_DROPDOWN_LIST},
        {IDC_COMBO_LONG, QK_COMBO_DROPDOWN_LIST},  {IDC_COMBO_DISABLED, QK_COMBO_DROPDOWN_LIST},
        {IDC_COMBO_EMPTY, QK_COMBO_DROPDOWN_LIST},
    };
    return kControls;
}

INT_PTR comboHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: fill(page); return TRUE;
        case kPageReady:
            if (wParam) {
                makeFlat<QkDlg::QkFlatComboBoxDropdown>(page, IDC_COMBO_EDIT);
                makeFlat<QkDlg::QkFlatComboBoxDropdown>(page, IDC_COMBO_EDIT_DISABLED);
                makeFlat<QkDlg::QkFlatComboBoxSimple>(page, IDC_COMBO_SIMPLE);
            }
            return TRUE;
        case WM_COMMAND:
            if (wParam == MAKEWPARAM(IDC_COMBO_EDIT, CBN_EDITCHANGE))
                complete(reinterpret_cast<HWND>(lParam));
            return FALSE;
        case WM_NCDESTROY: classes().clear(); return FALSE;
        default: return FALSE;
    }
}

}  // namespace Gallery
