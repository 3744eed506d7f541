#include "Ids.h"
#include "Page.h"

namespace Gallery {

// pages/*.cpp
std::span<const FlatControl> pushControls();
std::span<const FlatControl> toggleControls();
INT_PTR toggleHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> switchControls();
INT_PTR switchHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> compoundControls();
INT_PTR compoundHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> labelControls();
INT_PTR labelHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> progressControls();
INT_PTR progressHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> editControls();
INT_PTR editHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> passwordControls();
INT_PTR passwordHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> comboControls();
INT_PTR comboHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> scrollbarControls();
INT_PTR scrollbarHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> holderControls();
INT_PTR holderHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

std::span<const FlatControl> listControls();
INT_PTR listHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
std::span<const FlatControl> noControls();
INT_PTR columnsHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR rowsHook(HWND page, UINT message, WPARAM wParam, LPARAM lParam);

std::span<const Page> pages() {
    static constexpr Page kPages[] = {
        {L"push", L"Push buttons", IDD_PAGE_PUSH, pushControls},
        {L"toggles", L"Check and radio", IDD_PAGE_TOGGLES, toggleControls, toggleHook},
        {L"switches", L"Switches", IDD_PAGE_SWITCHES, switchControls, switchHook},
        {L"compound", L"Compound buttons", IDD_PAGE_COMPOUND, compoundControls, compoundHook},
        {L"labels", L"Labels", IDD_PAGE_LABELS, labelControls, labelHook},
        {L"progress", L"Progress bars", IDD_PAGE_PROGRESS, progressControls, progressHook},
        {L"edits", L"Edit boxes", IDD_PAGE_EDITS, editControls, editHook},
        {L"passwords", L"Password boxes", IDD_PAGE_PASSWORDS, passwordControls, passwordHook},
        {L"combos", L"Combo boxes", IDD_PAGE_COMBOS, comboControls, comboHook},
        {L"list", L"List view", IDD_PAGE_LIST, listControls, listHook},
        {L"columns", L"Columns of a list", IDD_PAGE_COLUMNS, noControls, columnsHook},
        {L"rows", L"Rows of a list", IDD_PAGE_ROWS, noControls, rowsHook},
        {L"scrollbars", L"Scroll bars and sliders", IDD_PAGE_SCROLLBARS, scrollbarControls,
         scrollbarHook},
        {L"holders", L"Scrolling windows", IDD_PAGE_HOLDERS, holderControls, holderHook},
    };
    return kPages;
}

}  // namespace Gallery
