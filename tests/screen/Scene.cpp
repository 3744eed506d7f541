#include "Scene.h"

#include <algorithm>
#include <array>
#include <utility>

#include "gallery/Ids.h"

namespace ScreenTest {

namespace {

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

BOOL CALLBACK collect(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

/// The captions and the like around the controls, which stay standard ones.
bool isStandard(HWND control) {
    static constexpr std::array kStandard{IDC_PANEL_TOP,     IDC_TITLE,           IDC_GROUP_CAPTION,
                                          IDC_NAVIGATION,    IDC_COMPOUND_CHOICE, IDC_REMARK,
                                          IDC_SCROLL_REQUEST};
    const int id = GetDlgCtrlID(control);
    return std::ranges::count(kStandard, id) != 0 ||
           (id == IDC_STATIC && className(control) == WC_STATICW);
}

}  // namespace

std::vector<HWND> topWindows() {
    std::vector<HWND> windows;
    EnumWindows(&collect, reinterpret_cast<LPARAM>(&windows));
    std::erase_if(windows, [](HWND window) { return !IsWindowVisible(window); });
    return windows;
}

std::vector<HWND> withChildren(HWND window) {
    std::vector<HWND> windows{window};
    EnumChildWindows(window, &collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

bool hasUnpainted(HWND window) {
    return std::ranges::any_of(withChildren(window), [](HWND each) {
        return GetUpdateRect(each, nullptr, FALSE) != FALSE;
    });
}

std::wstring className(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

DWORD processOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

Scene::Scene(HWND main) : process_(processOf(main)) {
    constexpr int kRoom = 40;
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    GetWindowRect(main, &place_);
    InflateRect(&place_, kRoom, kRoom);
    IntersectRect(&place_, &place_, &screen);
}

bool Scene::update() {
    const std::vector<HWND> before = std::exchange(children_, {});
    advanceClock();
    controls_.clear();
    dialogs_.clear();
    judged_.assign(static_cast<std::size_t>(place_.right - place_.left) *
                       static_cast<std::size_t>(place_.bottom - place_.top),
                   0);
    const std::vector<HWND> windows = topWindows();
    const std::vector<HWND> upwards(windows.rbegin(), windows.rend());
    for (HWND window : upwards) {
        const WINDOWINFO info = infoOf(window);
        const bool isOwn = processOf(window) == process_;
        const bool isDialog = className(window) == kDialogClass;
        fill(info.rcWindow, false);
        if (isOwn && (isDialog || className(window) == L"ComboLBox"))
            fill(info.rcClient, true);
        if (isOwn && isDialog)
            dialogs_.insert(dialogs_.begin(), window);
    }
    for (HWND window : windows)
        remember(window, infoOf(window).rcWindow, dialogs_.empty() || window != dialogs_.back());
    for (HWND dialog : dialogs_)
        addDialog(dialog, dialog != dialogs_.front());
    for (const auto& [window, known] : known_) {
        const bool cameOrWent = known.round != round_ || now_ - known.since < kSettleTime;
        if (known.hides && cameOrWent)
            fill(known.place, false);
    }
    const auto isPast = [this](const Known& known) { return now_ - known.last > kSettleTime; };
    std::erase_if(known_, [&isPast](const auto& entry) { return isPast(entry.second); });
    std::erase_if(standardParts_, isPast);
    for (const Known& part : standardParts_)
        fill(part.place, false);
    for (Control& control : controls_) {
        for (const auto& [window, known] : known_) {
            RECT common{};
            if (known.hides && IntersectRect(&common, &known.place, &control.place))
                control.settled = false;
        }
    }
    return children_ != before;
}

// Stands still while the program has something left to paint.
void Scene::advanceClock() {
    ++round_;
    const ULONGLONG elapsed = GetTickCount64() - std::exchange(looked_, GetTickCount64());
    if (std::ranges::none_of(dialogs_, hasUnpainted))
        now_ += std::min(elapsed, kLongestStep);
}

void Scene::addDialog(HWND dialog, bool isCovered) {
    for (HWND window : withChildren(dialog)) {
        if (!IsWindowVisible(window) || className(window) == kDialogClass)
            continue;
        children_.push_back(window);
        if (isStandard(window))
            exclude(infoOf(window).rcWindow);
        else
            addControl(window, isCovered);
    }
}

void Scene::addControl(HWND window, bool isCovered) {
    const WINDOWINFO info = infoOf(window);
    RECT inside{};
    if (!IntersectRect(&inside, &info.rcWindow, &place_))
        return;
    excludeStandardParts(window, info);
    // A dialog below another one is hidden in part.
    if (isCovered)
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
void Scene::excludeStandardParts(HWND window, const WINDOWINFO& info) {
    const auto& [left, top, right, bottom] = info.rcWindow;
    const RECT& inner = info.rcClient;
    const LONG line = std::max(0L, inner.top - top);
    exclude({left, top, right, top + line});
    exclude({left, bottom - line, right, bottom});
    exclude({left, top, left + line, bottom});
    exclude({right - line, top, right, bottom});
    const std::wstring name = className(window);
    if ((name == WC_HEADERW && GetDlgCtrlID(GetParent(window)) == IDC_HOLDER_VIEW) ||
        (name == WC_LISTVIEWW && !IsWindowVisible(GetWindow(window, GW_CHILD))))
        exclude(info.rcWindow);
    if (info.dwStyle & WS_VSCROLL) {
        excludeScrollBar(window, {inner.right, inner.top, right, bottom});
        excludeScrollBar(window, {left, inner.top, inner.left, bottom});
    }
    if (info.dwStyle & WS_HSCROLL)
        excludeScrollBar(window, {left, inner.bottom, right, bottom});
}

void Scene::excludeScrollBar(HWND window, const RECT& bar) {
    POINT middle{(bar.left + bar.right) / 2, (bar.top + bar.bottom) / 2};
    HWND parent = GetParent(window);
    ScreenToClient(parent, &middle);
    if (ChildWindowFromPointEx(parent, middle, CWP_SKIPINVISIBLE) == window)
        exclude(bar);
}

void Scene::exclude(const RECT& part) {
    standardParts_.push_back({part, now_, now_, round_, true});
}

void Scene::fill(const RECT& area, bool judged) {
    RECT inside{};
    if (!IntersectRect(&inside, &area, &place_))
        return;
    const auto width = static_cast<std::ptrdiff_t>(place_.right - place_.left);
    for (LONG y = inside.top; y < inside.bottom; ++y) {
        const auto row = judged_.begin() + (y - place_.top) * width;
        std::fill(row + (inside.left - place_.left), row + (inside.right - place_.left), judged);
    }
}

std::wstring Scene::nameAt(POINT point) const {
    std::wstring name = L"no control";
    for (const Control& control : controls_) {
        if (PtInRect(&control.place, point))
            name = className(control.window) + L" " +
                   std::to_wstring(static_cast<short>(GetDlgCtrlID(control.window)));
    }
    return name;
}

}  // namespace ScreenTest
