#include <array>

#include "Ids.h"
#include "Page.h"

namespace Gallery {

namespace {

constexpr std::array kTexts{
    L"A text that the button changes",
    L"Another one",
    L"And a third, which is a good deal longer than the two before it",
};

void showNextText(HWND page) {
    static std::size_t current = 0;
    current = (current + 1) % kTexts.size();
    SetDlgItemTextW(page, IDC_LABEL_CHANGING, kTexts.at(current));
}

/// A host that colours a label itself answers as it would for a standard one.
INT_PTR ownColour(HDC dc) {
    SetTextColor(dc, RGB(160, 60, 20));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
}

}  // namespace

std::span<const FlatControl> labelControls() {
    static constexpr FlatControl kControls[] = {
        {IDC_LABEL_PLAIN, QK_STATIC_TEXT},     {IDC_LABEL_MNEMONIC, QK_STATIC_TEXT},
        {IDC_LABEL_DISABLED, QK_STATIC_TEXT},  {IDC_LABEL_CENTRE, QK_STATIC_TEXT},
        {IDC_LABEL_RIGHT, QK_STATIC_TEXT},     {IDC_LABEL_HOST_COLOUR, QK_STATIC_TEXT},
        {IDC_LABEL_TWO_LINES, QK_STATIC_TEXT}, {IDC_LABEL_TOO_LONG, QK_STATIC_TEXT},
        {IDC_LABEL_CHANGING, QK_STATIC_TEXT},  {IDC_LABEL_CHANGE, QK_PUSH_BUTTON},
    };
    return kControls;
}

INT_PTR labelHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND && wParam == MAKEWPARAM(IDC_LABEL_CHANGE, BN_CLICKED)) {
        showNextText(page);
        return TRUE;
    }
    const bool isHostColoured =
        message == WM_CTLCOLORSTATIC &&
        GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) == IDC_LABEL_HOST_COLOUR;
    return isHostColoured ? ownColour(reinterpret_cast<HDC>(wParam)) : FALSE;
}

}  // namespace Gallery
