#include "Scene.h"

#include <algorithm>
#include <array>
#include <utility>

#include "gallery/Ids.h"

namespace ScreenTest {

namespace {

BOOL CALLBACK noteUnpainted(HWND window, LPARAM found) {
    *reinterpret_cast<bool*>(found) |= GetUpdateRect(window, nullptr, FALSE) != FALSE;
    return TRUE;
}

constexpr const wchar_t* kDialogClass = L"#32770";
constexpr ULONGLONG kSettleTime = 500;
// A look that comes late has not seen what happened in between.
constexpr ULONGLONG kLongestStep = 150;

WINDOWINFO infoOf(HWND window) {
    WINDOWINFO info{};
    info.cbSize = sizeof info;
    GetWindowInfo(window, &info);
    return info;
}

bool meets(const RECT& one, const RECT& other) {
    RECT common{};
    return IntersectRect(&common, &one, &other) != FALSE;
}

}  // namespace

std::wstring className(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool Scene::update() {
    const std::vector<HWND> before = std::exchange(children_, {});
    advanceClock();
    controls_.clear();
    dialogs_.clear();
    isBelow_ = false;
    judged_.assign(static_cast<std::size_t>(place_.right - place_.left) *
                       static_cast<std::size_t>(place_.bottom - place_.top),
                   0);
    // From the top down: the lower ones are painted first below.
    std::vector<HWND> windows;
    EnumWindows(&onTopLevel, reinterpret_cast<LPARAM>(&windows));
    const std::vector<HWND> upwards(windows.rbegin(), windows.rend());
    for (HWND window : upwards) {
        const WINDOWINFO info = infoOf(window);
        fill(info.rcWindow, 0);
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        const bool isDialog = className(window) == kDialogClass;
        if (process == process_ && (isDialog || className(window) == L"ComboLBox"))
            fill(info.rcClient, 1);
        if (process == process_ && isDialog)
            dialogs_.insert(dialogs_.begin(), window);
    }
    for (HWND window : windows)
        addTopLevel(window);
    for (const auto& [window, known] : known_) {
        const bool cameOrWent = known.round != round_ || now_ - known.since < kSettleTime;
        if (known.hides && cameOrWent)
            fill(known.place, 0);
    }
    std::erase_if(known_,
                  [this](const auto& entry) { return now_ - entry.second.last > kSettleTime; });
    std::erase_if(standardParts_,
                  [this](const Known& known) { return now_ - known.last > kSettleTime; });
    for (const Known& known : standardParts_)
        fill(known.place, 0);
    for (Control& control : controls_) {
        const auto hidden = [&control](const auto& entry) {
            return entry.second.hides && meets(entry.second.place, control.place);
        };
        control.settled = control.settled && std::ranges::none_of(known_, hidden);
    }
    return children_ != before;
}

bool hasUnpainted(HWND dialog) {
    bool found = false;
    noteUnpainted(dialog, reinterpret_cast<LPARAM>(&found));
    EnumChildWindows(dialog, noteUnpainted, reinterpret_cast<LPARAM>(&found));
    return found;
}

// Stands still while the program has something left to paint.
void Scene::advanceClock() {
    ++round_;
    const ULONGLONG elapsed = GetTickCount64() - std::exchange(looked_, GetTickCount64());
    if (std::ranges::none_of(dialogs_, hasUnpainted))
        now_ += std::min(elapsed, kLongestStep);
}

BOOL CALLBACK Scene::onTopLevel(HWND window, LPARAM windows) {
    if (IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

void Scene::addTopLevel(HWND window) {
    const WINDOWINFO info = infoOf(window);
    const bool isLowest = !dialogs_.empty() && window == dialogs_.back();
    remember(window, info.rcWindow, !isLowest);
    if (std::ranges::find(dialogs_, window) != dialogs_.end())
        EnumChildWindows(window, &onChild, reinterpret_cast<LPARAM>(this));
    isBelow_ = isBelow_ || className(window) == kDialogClass;
}

BOOL CALLBACK Scene::onChild(HWND window, LPARAM self) {
    static constexpr std::array kStandard{IDC_PANEL_TOP,     IDC_TITLE,           IDC_GROUP_CAPTION,
                                          IDC_NAVIGATION,    IDC_COMPOUND_CHOICE, IDC_REMARK,
                                          IDC_SCROLL_REQUEST};
    if (!IsWindowVisible(window) || className(window) == kDialogClass)
        return TRUE;
    auto& scene = *reinterpret_cast<Scene*>(self);
    scene.children_.push_back(window);
    const int id = GetDlgCtrlID(window);
    const bool isPlainLabel = id == IDC_STATIC && className(window) == WC_STATICW;
    if (!isPlainLabel && std::ranges::find(kStandard, id) == kStandard.end())
        scene.addChild(window);
    else
        scene.exclude(infoOf(window).rcWindow);
    return TRUE;
}

void Scene::addChild(HWND window) {
    const WINDOWINFO info = infoOf(window);
    RECT inside{};
    if (!IntersectRect(&inside, &info.rcWindow, &place_))
        return;
    excludeStandardParts(info, window);
    // A dialog below another one is hidden in part.
    if (isBelow_)
        return;
    const Known& known = remember(window, inside, false);
    controls_.push_back({window, inside, now_ - known.since >= kSettleTime});
}

const Scene::Known& Scene::remember(HWND window, const RECT& place, bool hides) {
    Known& known = known_[window];
    // One that was away in between has come anew.
    if (known.round + 1 < round_ || !EqualRect(&known.place, &place) || known.hides != hides)
        known = {place, now_, now_, round_, hides};
    known.last = now_;
    known.round = round_;
    return known;
}

// The border of a list or of a window that scrolls is the system's, and so are its scroll bars
// unless flat ones lie upon them.
void Scene::excludeStandardParts(const WINDOWINFO& info, HWND window) {
    const int width = GetSystemMetrics(SM_CXVSCROLL);
    const int height = GetSystemMetrics(SM_CYHSCROLL);
    const RECT& all = info.rcWindow;
    const RECT& inner = info.rcClient;
    const LONG line = std::max(0L, inner.top - all.top);
    exclude({all.left, all.top, all.right, all.top + line});
    exclude({all.left, all.bottom - line, all.right, all.bottom});
    exclude({all.left, all.top, all.left + line, all.bottom});
    exclude({all.right - line, all.top, all.right, all.bottom});
    const std::wstring name = className(window);
    if ((name == WC_HEADERW && GetDlgCtrlID(GetParent(window)) == IDC_HOLDER_VIEW) ||
        (name == WC_LISTVIEWW && !IsWindowVisible(GetWindow(window, GW_CHILD))))
        exclude(all);
    std::vector<RECT> bars;
    if (info.dwStyle & WS_VSCROLL) {
        bars.push_back({inner.right, inner.top, inner.right + width, all.bottom});
        bars.push_back({inner.left - width, inner.top, inner.left, all.bottom});
    }
    if (info.dwStyle & WS_HSCROLL)
        bars.push_back({all.left, inner.bottom, all.right, inner.bottom + height});
    for (RECT& bar : bars) {
        RECT clipped{};
        if (!IntersectRect(&clipped, &bar, &all))
            continue;
        POINT middle{(clipped.left + clipped.right) / 2, (clipped.top + clipped.bottom) / 2};
        HWND parent = GetParent(window);
        ScreenToClient(parent, &middle);
        if (ChildWindowFromPointEx(parent, middle, CWP_SKIPINVISIBLE) == window)
            exclude(clipped);
    }
}

void Scene::exclude(const RECT& part) {
    const auto same = [&part](const auto& known) { return EqualRect(&known.place, &part); };
    const auto found = std::ranges::find_if(standardParts_, same);
    if (found == standardParts_.end())
        standardParts_.push_back({part, now_, now_, round_, true});
    else
        found->last = now_;
}

void Scene::fill(const RECT& area, std::uint8_t value) {
    RECT inside{};
    if (!IntersectRect(&inside, &area, &place_))
        return;
    const auto width = static_cast<std::size_t>(place_.right - place_.left);
    for (LONG y = inside.top; y < inside.bottom; ++y) {
        const auto row = judged_.begin() + (y - place_.top) * static_cast<std::ptrdiff_t>(width);
        std::fill(row + (inside.left - place_.left), row + (inside.right - place_.left), value);
    }
}

std::wstring Scene::nameAt(POINT point) const {
    const Control* smallest = nullptr;
    const auto area = [](const RECT& r) { return (r.right - r.left) * (r.bottom - r.top); };
    for (const Control& control : controls_) {
        if (PtInRect(&control.place, point) &&
            (!smallest || area(control.place) < area(smallest->place)))
            smallest = &control;
    }
    if (!smallest)
        return L"no control";
    return className(smallest->window) + L" " +
           std::to_wstring(static_cast<short>(GetDlgCtrlID(smallest->window)));
}

}  // namespace ScreenTest
