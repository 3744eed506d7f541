#include "Ids.h"
#include "Page.h"

namespace Gallery {

namespace {

void say(HWND page, const wchar_t* text) {
    SetDlgItemTextW(page, IDC_COMPOUND_CHOICE, text);
}

void openMenu(HWND page, HWND button) {
    HMENU menu = LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDM_COMPOUND));
    RECT place{};
    GetWindowRect(button, &place);
    TPMPARAMS beside{sizeof beside, place};
    TrackPopupMenuEx(GetSubMenu(menu, 0), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL, place.left,
                     place.bottom, page, &beside);
    DestroyMenu(menu);
}

INT_PTR command(HWND page, int id, HWND button) {
    switch (id) {
        // The face of a drop-down button opens the same menu as its arrow.
        case IDC_DROP: openMenu(page, button); return TRUE;
        case IDC_SPLIT:
        case IDC_SPLIT_MNEMONIC: say(page, L"The face was clicked."); return TRUE;
        case IDC_SETTINGS: say(page, L"The settings were asked for."); return TRUE;
        case IDM_SAVE: say(page, L"Save was chosen."); return TRUE;
        case IDM_SAVE_AS: say(page, L"Save as was chosen."); return TRUE;
        case IDM_SAVE_COPY: say(page, L"Save a copy was chosen."); return TRUE;
        default: return FALSE;
    }
}

}  // namespace

std::span<const FlatControl> compoundControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_SPLIT, QK_SPLIT_BUTTON},
        {IDC_SPLIT_MNEMONIC, QK_SPLIT_BUTTON},
        {IDC_SPLIT_DISABLED, QK_SPLIT_BUTTON},
        {IDC_DROP, QK_DROP_BUTTON},
        {IDC_DROP_DISABLED, QK_DROP_BUTTON},
        {IDC_SETTINGS, QK_SETTINGS_BUTTON},
        {IDC_SETTINGS_DISABLED, QK_SETTINGS_BUTTON},
    };
    return kControls;
}

INT_PTR compoundHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND)
        return command(page, LOWORD(wParam), reinterpret_cast<HWND>(lParam));
    if (message != WM_NOTIFY)
        return FALSE;
    const auto* notification = reinterpret_cast<const NMHDR*>(lParam);
    if (notification->code != BCN_DROPDOWN)
        return FALSE;
    openMenu(page, notification->hwndFrom);
    return TRUE;
}

}  // namespace Gallery
