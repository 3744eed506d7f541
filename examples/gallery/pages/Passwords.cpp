#include "Ids.h"
#include "Page.h"

namespace Gallery {

namespace {

/// Turns the eye of a flat password box off.
constexpr UINT kEyeOff = WM_USER + 123;

/// Once the boxes are flat: as Alt+F8 does, and the private message.
void showStates(HWND page) {
    SendDlgItemMessageW(page, IDC_PASSWORD_REVEALED, EM_SETPASSWORDCHAR, 0, 0);
    SendDlgItemMessageW(page, IDC_PASSWORD_EYE_OFF, kEyeOff, 0, 0);
}

}  // namespace

std::span<const FlatControl> passwordControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_PASSWORD_MASKED, QK_PASSWORD},
        {IDC_PASSWORD_REVEALED, QK_PASSWORD},
        {IDC_PASSWORD_DISABLED, QK_PASSWORD},
        {IDC_PASSWORD_EYE_OFF, QK_PASSWORD},
    };
    return kControls;
}

INT_PTR passwordHook(HWND page, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        for (const auto& control : passwordControls())
            SetDlgItemTextW(page, control.id, L"open sesame");
        return TRUE;
    }
    if (message == kPageReady && wParam)
        showStates(page);
    return FALSE;
}

}  // namespace Gallery
