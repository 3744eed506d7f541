#include "support/MessageLoop.h"

#include <chrono>

#include "QkDlg/Win32.h"

namespace QkDlgTest {

namespace {

constexpr int kMessagesAtOnce = 500;
constexpr DWORD kSliceMilliseconds = 5;
constexpr DWORD kDialogClass = 0x8002;

void dispatch(MSG& message) {
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    if (GetClassLongW(root, GCW_ATOM) == kDialogClass && IsDialogMessageW(root, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

}  // namespace

void drain() {
    MSG message{};
    for (int i = 0; i < kMessagesAtOnce && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
        dispatch(message);
}

bool pumpUntil(const std::function<bool()>& done, int timeoutMilliseconds) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(timeoutMilliseconds);
    while (true) {
        drain();
        if (done())
            return true;
        if (Clock::now() >= end)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kSliceMilliseconds, QS_ALLINPUT);
    }
}

void pump(int milliseconds) {
    static_cast<void>(pumpUntil([] { return false; }, milliseconds));
}

}  // namespace QkDlgTest
