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

std::span<const Page> pages() {
    static constexpr Page kPages[] = {
        {L"push", L"Push buttons", IDD_PAGE_PUSH, pushControls},
        {L"toggles", L"Check and radio", IDD_PAGE_TOGGLES, toggleControls, toggleHook},
        {L"switches", L"Switches", IDD_PAGE_SWITCHES, switchControls, switchHook},
        {L"compound", L"Compound buttons", IDD_PAGE_COMPOUND, compoundControls, compoundHook},
    };
    return kPages;
}

}  // namespace Gallery
