#include "QkCustCtrl/EyeTooltip.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "QkCustCtrl/ParentColours.h"
#include "QkUtil/Resources.h"

namespace QkDlg {

namespace {

constexpr UINT kTooltipText = 62264;
constexpr int kTooltipDelay = 500;

struct SharedTooltip {
    HWND parent;
    HWND window;
    int users;
};

/// One for each dialog with password boxes.
std::vector<SharedTooltip>& sharedTooltips() {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new std::vector<SharedTooltip>;
    return all;
}

HWND createTooltip(HWND parent) {
    return CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                           WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr, nullptr, nullptr);
}

TOOLINFOW toolOf(HWND eye, UINT size) {
    TOOLINFOW tool{};
    tool.cbSize = size;
    tool.hwnd = GetParent(eye);
    tool.uId = reinterpret_cast<UINT_PTR>(eye);
    return tool;
}

// Tooltips of the common controls before version 6 take the record without its last field only.
constexpr std::array<UINT, 2> kToolSizes{sizeof(TOOLINFOW), offsetof(TOOLINFOW, lpReserved)};

bool hasTool(HWND tooltip, HWND eye) {
    for (const UINT size : kToolSizes) {
        TOOLINFOW tool = toolOf(eye, size);
        SendMessageW(tooltip, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool));
        if (tool.uFlags != 0)
            return true;
    }
    return false;
}

void addTool(HWND tooltip, HWND eye, std::wstring text) {
    for (const UINT size : kToolSizes) {
        TOOLINFOW tool = toolOf(eye, size);
        tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        tool.lpszText = text.data();
        if (SendMessageW(tooltip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool)))
            return;
    }
}

void removeTool(HWND tooltip, HWND eye) {
    for (const UINT size : kToolSizes) {
        TOOLINFOW tool = toolOf(eye, size);
        SendMessageW(tooltip, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

}  // namespace

HWND joinEyeTooltip(HWND parent) {
    const auto found = std::ranges::find_if(sharedTooltips(), [parent](const SharedTooltip& each) {
        return each.parent == parent && IsWindow(each.window);
    });
    if (found != sharedTooltips().end()) {
        ++found->users;
        return found->window;
    }
    const HWND tooltip = createTooltip(parent);
    if (tooltip)
        sharedTooltips().push_back({parent, tooltip, 1});
    return tooltip;
}

void leaveEyeTooltip(HWND tooltip, HWND eye) {
    const auto found = std::ranges::find(sharedTooltips(), tooltip, &SharedTooltip::window);
    if (found == sharedTooltips().end())
        return;
    const bool last = --found->users == 0;
    if (last)
        sharedTooltips().erase(found);
    // An owner that is being destroyed takes its tooltip along, at the latest after this.
    if (!IsWindow(tooltip) || isParentGoing(::GetWindow(tooltip, GW_OWNER)))
        return;
    if (last)
        DestroyWindow(tooltip);
    else
        removeTool(tooltip, eye);
}

void giveEyeTooltip(HWND tooltip, HWND eye) {
    if (hasTool(tooltip, eye))
        return;
    addTool(tooltip, eye, LoadStringResource(kTooltipText));
    SendMessageW(tooltip, TTM_SETDELAYTIME, TTDT_AUTOMATIC, kTooltipDelay);
    SendMessageW(tooltip, TTM_ACTIVATE, TRUE, 0);
}

}  // namespace QkDlg
