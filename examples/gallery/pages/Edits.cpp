#include "Ids.h"
#include "Page.h"

namespace Gallery {

std::span<const FlatControl> editControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_EDIT_PLAIN, QK_EDIT},    {IDC_EDIT_NUMBER, QK_EDIT}, {IDC_EDIT_READ_ONLY, QK_EDIT},
        {IDC_EDIT_DISABLED, QK_EDIT}, {IDC_EDIT_CUE, QK_EDIT},    {IDC_EDIT_MULTILINE, QK_EDIT},
        {IDC_EDIT_BORDER, QK_EDIT},
    };
    return kControls;
}

INT_PTR editHook(HWND page, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG)
        return FALSE;
    SetDlgItemTextW(page, IDC_EDIT_PLAIN, L"Ada Lovelace");
    SetDlgItemTextW(page, IDC_EDIT_NUMBER, L"1842");
    SetDlgItemTextW(page, IDC_EDIT_READ_ONLY, L"Can be selected and copied");
    SetDlgItemTextW(page, IDC_EDIT_DISABLED, L"Cannot be reached");
    SetDlgItemTextW(page, IDC_EDIT_BORDER, L"WS_BORDER only");
    SetDlgItemTextW(page, IDC_EDIT_MULTILINE,
                    L"First line\r\nSecond line\r\nThird line, which is long enough to be wrapped "
                    L"at the right edge\r\n\r\nFifth line\r\nSixth line\r\nSeventh line\r\n"
                    L"Eighth line\r\nNinth line\r\nTenth line\r\nLast line");
    SendDlgItemMessageW(page, IDC_EDIT_CUE, EM_SETCUEBANNER, TRUE,
                        reinterpret_cast<LPARAM>(L"What are you looking for?"));
    return TRUE;
}

}  // namespace Gallery
