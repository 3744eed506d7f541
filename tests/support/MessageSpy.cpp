#include "support/MessageSpy.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace QkDlgTest {

TimerWatch* TimerWatch::current_ = nullptr;

std::ostream& operator<<(std::ostream& out, const Spied& spied) {
    return out << "message " << spied.message << "(" << spied.wp << ", " << spied.lp
               << ") = " << spied.result;
}

MessageSpy::MessageSpy(HWND window, std::vector<UINT> kinds)
    : window_(window), kinds_(std::move(kinds)) {
    const auto self = reinterpret_cast<DWORD_PTR>(this);
    SetWindowSubclass(window, &procedure, self, self);
}

MessageSpy::~MessageSpy() {
    RemoveWindowSubclass(window_, &procedure, reinterpret_cast<UINT_PTR>(this));
}

int MessageSpy::count(UINT message) const {
    return static_cast<int>(std::count(seen_.begin(), seen_.end(), Spied{message}));
}

std::optional<Spied> MessageSpy::last(UINT message) const {
    const auto found = std::find(seen_.rbegin(), seen_.rend(), Spied{message});
    return found == seen_.rend() ? std::nullopt : std::optional(*found);
}

LRESULT CALLBACK MessageSpy::procedure(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR id,
                                       DWORD_PTR self) {
    auto& spy = *reinterpret_cast<MessageSpy*>(self);
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &procedure, id);
    const auto& kinds = spy.kinds_;
    const bool wanted =
        kinds.empty() || std::find(kinds.begin(), kinds.end(), message) != kinds.end();
    if (!wanted)
        return DefSubclassProc(window, message, wp, lp);
    // Noted first, so that messages sent meanwhile come after it.
    const std::size_t index = spy.seen_.size();
    spy.seen_.push_back({message, wp, lp, 0});
    const LRESULT result = DefSubclassProc(window, message, wp, lp);
    if (index < spy.seen_.size())
        spy.seen_[index].result = result;
    return result;
}

TimerWatch::TimerWatch()
    : outer_(std::exchange(current_, this)),
      hook_(SetWindowsHookExW(WH_GETMESSAGE, &hook, nullptr, GetCurrentThreadId())) {}

TimerWatch::~TimerWatch() {
    UnhookWindowsHookEx(hook_);
    current_ = outer_;
}

int TimerWatch::count(HWND window) const {
    return static_cast<int>(std::count(windows_.begin(), windows_.end(), window));
}

LRESULT CALLBACK TimerWatch::hook(int code, WPARAM removed, LPARAM message) {
    const auto& taken = *reinterpret_cast<const MSG*>(message);
    if (code == HC_ACTION && removed == PM_REMOVE && taken.message == WM_TIMER && current_)
        current_->windows_.push_back(taken.hwnd);
    return CallNextHookEx(nullptr, code, removed, message);
}

}  // namespace QkDlgTest
