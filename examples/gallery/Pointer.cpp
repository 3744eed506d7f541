#include "Pointer.h"

namespace Gallery {
namespace {

void sendButton(DWORD flag) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flag;
    SendInput(1, &input, sizeof input);
}

void moveOver(HWND control) {
    RECT rect{};
    GetWindowRect(control, &rect);
    SetCursorPos((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
}

}  // namespace

bool applyPointer(HWND page, const Options& options) {
    if (options.pointer == Pointer::None)
        return true;
    HWND control = GetDlgItem(page, options.pointerId);
    if (!control)
        return false;
    if (options.pointer == Pointer::Focus) {
        SendMessageW(page, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
        return true;
    }
    moveOver(control);
    if (options.pointer == Pointer::Press)
        sendButton(MOUSEEVENTF_LEFTDOWN);
    return true;
}

void parkPointer() {
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
}

void releasePointer(const Options& options) {
    parkPointer();
    if (options.pointer == Pointer::Press)
        sendButton(MOUSEEVENTF_LEFTUP);
}

}  // namespace Gallery
