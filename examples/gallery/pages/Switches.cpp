#include "Ids.h"
#include "Page.h"

namespace Gallery {

std::span<const FlatControl> switchControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_SWITCH_OFF, QK_TOGGLE},
        {IDC_SWITCH_ON, QK_TOGGLE},
        {IDC_SWITCH_DISABLED_OFF, QK_TOGGLE},
        {IDC_SWITCH_DISABLED_ON, QK_TOGGLE},
    };
    return kControls;
}

INT_PTR switchHook(HWND page, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG)
        return FALSE;
    CheckDlgButton(page, IDC_SWITCH_ON, BST_CHECKED);
    CheckDlgButton(page, IDC_SWITCH_DISABLED_ON, BST_CHECKED);
    return TRUE;
}

}  // namespace Gallery
