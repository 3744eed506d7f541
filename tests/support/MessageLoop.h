#pragma once

#include <functional>

namespace QkDlgTest {

/// Dispatches what is in the queue now, 500 messages at most. Dialogs get their keyboard
/// navigation, as in a host's own loop.
void drain();

/// Runs the message loop for so many milliseconds.
void pump(int milliseconds);

/// Runs the message loop until `done` holds; false when the time is over first.
[[nodiscard]] bool pumpUntil(const std::function<bool()>& done, int timeoutMilliseconds = 2000);

}  // namespace QkDlgTest
