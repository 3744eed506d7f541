// The messages and paints that a mouse passing over a control causes, and what goes on after that.
#include <array>
#include <string>

#include "Sections.h"
#include "Stage.h"

namespace QkDlgBench {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr std::array kHoveredLooks{Look::Standard, Look::Bare, Look::Flat};
constexpr auto kQuiet = 300ms;  ///< longer than a step of any animation
constexpr auto kAtMost = 3000ms;
constexpr auto kIdle = 2000ms;
constexpr SIZE kHostSize{720, 720};
constexpr SIZE kCell{170, 130};
constexpr int kColumns = 4;
constexpr UINT_PTR kPaintCounter = 2;

/// What the message loop has seen.
struct Seen {
    int timers = 0;
    int messages = 0;
    int paints = 0;
    int wakeUps = 0;
};

/// Takes what is in the queue; false when there was nothing.
bool takeMessages(Seen& seen) {
    MSG message{};
    bool any = false;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        any = true;
        ++seen.messages;
        seen.timers += message.message == WM_TIMER ? 1 : 0;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return any;
}

void waitUntil(Clock::time_point end, Seen& seen) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    if (left <= 0ms)
        return;
    const auto timeout = static_cast<DWORD>(left.count());
    if (MsgWaitForMultipleObjects(0, nullptr, FALSE, timeout, QS_ALLINPUT) != WAIT_TIMEOUT)
        ++seen.wakeUps;
}

void pumpUntilQuiet(Seen& seen) {
    const auto latest = Clock::now() + kAtMost;
    auto quietAt = Clock::now() + kQuiet;
    while (Clock::now() < quietAt && Clock::now() < latest) {
        if (takeMessages(seen))
            quietAt = Clock::now() + kQuiet;
        waitUntil(quietAt, seen);
    }
}

Seen pumpIdly() {
    Seen seen;
    const auto end = Clock::now() + kIdle;
    while (Clock::now() < end) {
        takeMessages(seen);
        waitUntil(end, seen);
    }
    return seen;
}

LRESULT CALLBACK countPaints(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                             DWORD_PTR count) {
    if (message == WM_PAINT)
        ++*reinterpret_cast<int*>(count);
    return DefSubclassProc(window, message, wParam, lParam);
}

/// A real move of the mouse, as a person makes it.
void moveMouse(POINT to) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    input.mi.dx = (to.x * 65536 + 32768) / GetSystemMetrics(SM_CXSCREEN);
    input.mi.dy = (to.y * 65536 + 32768) / GetSystemMetrics(SM_CYSCREEN);
    SendInput(1, &input, sizeof input);
}

POINT middleOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

void moveMouseAway() {
    moveMouse({GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1});
}

/// The mouse comes, stays until nothing moves any more, and leaves.
Seen hover(HWND window) {
    Seen seen;
    SetWindowSubclass(window, &countPaints, kPaintCounter,
                      reinterpret_cast<DWORD_PTR>(&seen.paints));
    moveMouse(middleOf(window));
    pumpUntilQuiet(seen);
    moveMouseAway();
    pumpUntilQuiet(seen);
    RemoveWindowSubclass(window, &countPaints, kPaintCounter);
    return seen;
}

void placeInGrid(const Subject& subject, int index) {
    SetWindowPos(subject.window(), nullptr, scaled(10 + index % kColumns * kCell.cx),
                 scaled(10 + index / kColumns * kCell.cy), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void runLook(Look look, const Options& options, Results& results) {
    const UniqueWindow host = makeHost(true);
    SetWindowPos(host.get(), nullptr, 0, 0, scaled(kHostSize.cx), scaled(kHostSize.cy),
                 SWP_NOMOVE | SWP_NOZORDER);
    std::vector<std::unique_ptr<Subject>> subjects;
    const auto kinds = options.wantedKinds();
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        subjects.push_back(std::make_unique<Subject>(host.get(), *kinds[i], look));
        placeInGrid(*subjects.back(), static_cast<int>(i));
    }
    Seen before;
    pumpUntilQuiet(before);
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const Seen seen = hover(subjects[i]->window());
        results.add("hover, timer messages", kinds[i]->name, nameOf(look), seen.timers);
        results.add("hover, paints", kinds[i]->name, nameOf(look), seen.paints);
    }
    const Seen idle = pumpIdly();
    results.add("hover, then idle", "timer messages", nameOf(look), idle.timers);
    results.add("hover, then idle", "messages", nameOf(look), idle.messages);
    results.add("hover, then idle", "wake-ups", nameOf(look), idle.wakeUps);
}

}  // namespace

void runHover(const Options& options, Results& results) {
    for (const Look look : kHoveredLooks)
        runLook(look, options, results);
}

}  // namespace QkDlgBench
