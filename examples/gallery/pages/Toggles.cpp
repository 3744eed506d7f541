#include "Ids.h"
#include "Page.h"

namespace Gallery {

namespace {

void toggleByHost(HWND page, int id) {
    const bool checked = IsDlgButtonChecked(page, id) == BST_CHECKED;
    CheckDlgButton(page, id, checked ? BST_UNCHECKED : BST_CHECKED);
}

}  // namespace

std::span<const FlatControl> toggleControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_CHECK_PLAIN, QK_CHECK_BOX},        {IDC_CHECK_CHECKED, QK_CHECK_BOX},
        {IDC_CHECK_THREE_STATE, QK_CHECK_BOX},  {IDC_CHECK_DISABLED, QK_CHECK_BOX},
        {IDC_CHECK_MANUAL, QK_CHECK_BOX},       {IDC_CHECK_DISABLED_CHECKED, QK_CHECK_BOX},
        {IDC_CHECK_MULTILINE, QK_CHECK_BOX},    {IDC_CHECK_LEFT_TEXT, QK_CHECK_BOX},
        {IDC_CHECK_EMPTY, QK_CHECK_BOX},        {IDC_RADIO_ONE, QK_RADIO_BUTTON},
        {IDC_RADIO_TWO, QK_RADIO_BUTTON},       {IDC_RADIO_THREE, QK_RADIO_BUTTON},
        {IDC_RADIO_DISABLED, QK_RADIO_BUTTON},  {IDC_RADIO_DISABLED_CHECKED, QK_RADIO_BUTTON},
        {IDC_RADIO_MULTILINE, QK_RADIO_BUTTON}, {IDC_RADIO_MULTILINE_TWO, QK_RADIO_BUTTON},
    };
    return kControls;
}

INT_PTR toggleHook(HWND page, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        for (const int id : {IDC_CHECK_CHECKED, IDC_CHECK_DISABLED_CHECKED, IDC_CHECK_EMPTY,
                             IDC_RADIO_TWO, IDC_RADIO_DISABLED_CHECKED, IDC_RADIO_MULTILINE})
            CheckDlgButton(page, id, BST_CHECKED);
        CheckDlgButton(page, IDC_CHECK_THREE_STATE, BST_INDETERMINATE);
        return TRUE;
    }
    if (message == WM_COMMAND && wParam == MAKEWPARAM(IDC_CHECK_MANUAL, BN_CLICKED)) {
        toggleByHost(page, IDC_CHECK_MANUAL);
        return TRUE;
    }
    return FALSE;
}

}  // namespace Gallery
