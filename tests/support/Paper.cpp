#include "support/Paper.h"

#include "support/HostDialog.h"

namespace QkDlgTest {

namespace {

// The program of the run with version 6 of the common controls has a manifest.
bool hasNewCommonControls() {
    return FindResourceW(nullptr, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)) != nullptr;
}

}  // namespace

Paper::Paper(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const HDC screen = GetDC(nullptr);
    dc_ = CreateCompatibleDC(screen);
    bitmap_ = CreateCompatibleBitmap(screen, client.right, client.bottom);
    previous_ = SelectObject(dc_, bitmap_);
    ReleaseDC(nullptr, screen);
}

Paper::~Paper() {
    SelectObject(dc_, previous_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
}

int paintRounds() {
    constexpr int kForChecking = 10'000;
    constexpr int kForDeveloping = 1'000;
    constexpr int kForComparing = 100;
    if (screenDpi() != USER_DEFAULT_SCREEN_DPI || !hasNewCommonControls())
        return kForComparing;
    return GetEnvironmentVariableW(L"CI", nullptr, 0) > 0 ? kForChecking : kForDeveloping;
}

}  // namespace QkDlgTest
