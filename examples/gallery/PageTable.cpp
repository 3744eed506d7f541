#include "Ids.h"
#include "Page.h"

namespace Gallery {

// pages/*.cpp
std::span<const FlatControl> pushControls();

std::span<const Page> pages() {
    static constexpr Page kPages[] = {
        {L"push", L"Push buttons", IDD_PAGE_PUSH, pushControls},
    };
    return kPages;
}

}  // namespace Gallery
