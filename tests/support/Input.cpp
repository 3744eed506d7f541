#include "support/Input.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "support/MessageLoop.h"

namespace QkDlgTest {

namespace {

constexpr UINT kHoverTime = 10;
constexpr UINT kDoubleClickTime = 40;
constexpr int kSettle = 5;
constexpr int kLeaveTime = 40;
constexpr int kArrivalTimeout = 1000;
constexpr int kDragSteps = 4;

INPUT mouseEvent(DWORD flags, LONG dx = 0, LONG dy = 0, int data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.dx = dx;
    input.mi.dy = dy;
    input.mi.mouseData = static_cast<DWORD>(data);
    return input;
}

bool isExtended(int key) {
    return (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_INSERT || key == VK_DELETE;
}

INPUT keyEvent(int key, bool down) {
    if (key == VK_LBUTTON)
        return mouseEvent(down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP);
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(key);
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC));
    input.ki.dwFlags =
        (down ? 0UL : KEYEVENTF_KEYUP) | (isExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0UL);
    return input;
}

INPUT characterEvent(wchar_t character, bool down) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = static_cast<WORD>(character);
    input.ki.dwFlags = KEYEVENTF_UNICODE | (down ? 0UL : KEYEVENTF_KEYUP);
    return input;
}

DWORD lastPress = 0;

void send(std::vector<INPUT> inputs) {
    const auto count = static_cast<UINT>(inputs.size());
    EXPECT_EQ(SendInput(count, inputs.data(), sizeof(INPUT)), count) << "input was refused";
    if (inputs.front().type == INPUT_MOUSE && inputs.front().mi.dwFlags == MOUSEEVENTF_LEFTDOWN)
        lastPress = GetTickCount();
}

// A press soon after another would be the second half of a double click.
void awaitEndOfDoubleClick() {
    const DWORD waited = GetTickCount() - lastPress;
    if (waited <= GetDoubleClickTime())
        pump(static_cast<int>(GetDoubleClickTime() - waited) + 1);
}

// Notices when this thread takes a key or the button from its queue, in whatever loop.
class Arrival {
public:
    Arrival(int key, bool down)
        : keyboard_(SetWindowsHookExW(WH_KEYBOARD, &onKey, nullptr, GetCurrentThreadId())),
          mouse_(SetWindowsHookExW(WH_MOUSE, &onMouse, nullptr, GetCurrentThreadId())) {
        key_ = key;
        down_ = down;
        arrived_ = false;
    }
    ~Arrival() {
        UnhookWindowsHookEx(mouse_);
        UnhookWindowsHookEx(keyboard_);
    }
    Arrival(const Arrival&) = delete;
    Arrival& operator=(const Arrival&) = delete;

    void await() const {
        EXPECT_TRUE(pumpUntil([] { return arrived_; }, kArrivalTimeout))
            << "no window of this thread got " << (key_ == VK_LBUTTON ? "button" : "key") << " "
            << key_ << (down_ ? " down" : " up");
        drain();
    }

private:
    static LRESULT CALLBACK onKey(int code, WPARAM key, LPARAM flags) {
        const bool down = (HIWORD(flags) & KF_UP) == 0;
        if (code == HC_ACTION && static_cast<int>(key) == key_ && down == down_)
            arrived_ = true;
        return CallNextHookEx(nullptr, code, key, flags);
    }
    static LRESULT CALLBACK onMouse(int code, WPARAM message, LPARAM data) {
        const bool wanted = down_ ? message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK
                                  : message == WM_LBUTTONUP;
        if (code == HC_ACTION && wanted && key_ == VK_LBUTTON)
            arrived_ = true;
        return CallNextHookEx(nullptr, code, message, data);
    }

    inline static int key_ = 0;
    inline static bool down_ = false;
    inline static bool arrived_ = false;
    HHOOK keyboard_;
    HHOOK mouse_;
};

void sendKey(int key, bool down) {
    const Arrival arrival(key, down);
    send({keyEvent(key, down)});
    arrival.await();
}

// All in one go: what the press starts may not return before the release is there, and the halves
// of a double click are near each other however busy the machine is.
void sendTap(int key, int times = 1) {
    std::vector<INPUT> events;
    for (int i = 0; i < times; ++i) {
        events.push_back(keyEvent(key, true));
        events.push_back(keyEvent(key, false));
    }
    const Arrival arrival(key, false);
    send(std::move(events));
    arrival.await();
}

bool mouseIsAt(POINT point) {
    POINT now{};
    return GetCursorPos(&now) && now.x == point.x && now.y == point.y;
}

void moveToScreen(POINT to) {
    const auto absolute = [](LONG value, int metric) {
        return (value * 65536 + 32768) / GetSystemMetrics(metric);
    };
    send({mouseEvent(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, absolute(to.x, SM_CXSCREEN),
                     absolute(to.y, SM_CYSCREEN))});
    EXPECT_TRUE(pumpUntil([to] { return mouseIsAt(to); }, kArrivalTimeout))
        << "the mouse did not get to " << to.x << ", " << to.y;
    pump(kSettle);
}

POINT middleOf(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    return {rect.right / 2, rect.bottom / 2};
}

}  // namespace

void moveTo(HWND window, int x, int y) {
    POINT point{x, y};
    ClientToScreen(window, &point);
    moveToScreen(point);
}

void moveTo(HWND window) {
    const POINT middle = middleOf(window);
    moveTo(window, middle.x, middle.y);
}

void moveAway() {
    const POINT corner{GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1};
    if (mouseIsAt(corner))
        return;
    moveToScreen(corner);
    pump(kLeaveTime);
}

void press() {
    awaitEndOfDoubleClick();
    sendKey(VK_LBUTTON, true);
}
void release() {
    sendKey(VK_LBUTTON, false);
}

void click() {
    awaitEndOfDoubleClick();
    sendTap(VK_LBUTTON);
}

void click(HWND window, int x, int y) {
    moveTo(window, x, y);
    click();
}

void click(HWND window) {
    moveTo(window);
    click();
}

void doubleClick(HWND window) {
    moveTo(window);
    awaitEndOfDoubleClick();
    sendTap(VK_LBUTTON, 2);
}

void drag(HWND window, POINT from, POINT to) {
    moveTo(window, from.x, from.y);
    press();
    for (int step = 1; step <= kDragSteps; ++step) {
        moveTo(window, from.x + (to.x - from.x) * step / kDragSteps,
               from.y + (to.y - from.y) * step / kDragSteps);
    }
    release();
}

void wheel(int notches) {
    send({mouseEvent(MOUSEEVENTF_WHEEL, 0, 0, notches * WHEEL_DELTA)});
    pump(kSettle);
}

void keyDown(int virtualKey) {
    sendKey(virtualKey, true);
}
void keyUp(int virtualKey) {
    sendKey(virtualKey, false);
}
void keyTap(int virtualKey) {
    sendTap(virtualKey);
}

void typeText(std::wstring_view text) {
    for (const wchar_t character : text)
        send({characterEvent(character, true), characterEvent(character, false)});
    pump(kSettle);
}

void releaseEverything() {
    for (const int key : {VK_LBUTTON, VK_SHIFT, VK_CONTROL, VK_MENU, VK_F8}) {
        if (GetAsyncKeyState(key) < 0)
            send({keyEvent(key, false)});
    }
    drain();
}

QuickInput::QuickInput() : doubleClickTime_(GetDoubleClickTime()) {
    SystemParametersInfoW(SPI_GETMOUSEHOVERTIME, 0, &hoverTime_, 0);
    SystemParametersInfoW(SPI_SETMOUSEHOVERTIME, kHoverTime, nullptr, 0);
    SetDoubleClickTime(kDoubleClickTime);
}

QuickInput::~QuickInput() {
    SystemParametersInfoW(SPI_SETMOUSEHOVERTIME, hoverTime_, nullptr, 0);
    SetDoubleClickTime(doubleClickTime_);
}

}  // namespace QkDlgTest
