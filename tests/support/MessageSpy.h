#pragma once

#include <optional>
#include <string>
#include <vector>

#include "QkDlg/Win32.h"

namespace QkDlgTest {

/// A message that a window got, with the result it gave. Equal when of the same kind: parameters
/// are handles and pointers too often.
struct Spied {
    UINT message = 0;
    WPARAM wp = 0;
    LPARAM lp = 0;
    LRESULT result = 0;

    bool operator==(const Spied& other) const { return message == other.message; }
};

std::ostream& operator<<(std::ostream& out, const Spied& spied);

/// Writes down the messages of the given kinds (of all kinds if none is given) that a window
/// gets, in the order of arrival. Attach it after the control's own subclass to see them first.
class MessageSpy {
public:
    explicit MessageSpy(HWND window, std::vector<UINT> kinds = {});
    ~MessageSpy();
    MessageSpy(const MessageSpy&) = delete;
    MessageSpy& operator=(const MessageSpy&) = delete;

    [[nodiscard]] const std::vector<Spied>& seen() const { return seen_; }
    [[nodiscard]] int count(UINT message) const;
    [[nodiscard]] std::optional<Spied> last(UINT message) const;
    void forget() { seen_.clear(); }

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR id,
                                      DWORD_PTR self);

    HWND window_;
    std::vector<UINT> kinds_;
    std::vector<Spied> seen_;
};

/// Counts the timer messages that this thread takes from its queue.
class TimerWatch {
public:
    TimerWatch();
    ~TimerWatch();
    TimerWatch(const TimerWatch&) = delete;
    TimerWatch& operator=(const TimerWatch&) = delete;

    [[nodiscard]] int count() const { return static_cast<int>(windows_.size()); }
    [[nodiscard]] int count(HWND window) const;
    void forget() { windows_.clear(); }

private:
    static LRESULT CALLBACK hook(int code, WPARAM removed, LPARAM message);

    static TimerWatch* current_;
    TimerWatch* outer_;
    HHOOK hook_;
    std::vector<HWND> windows_;
};

}  // namespace QkDlgTest
