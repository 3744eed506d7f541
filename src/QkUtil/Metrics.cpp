#include "QkUtil/Metrics.h"

#include "QkUtil/Handles.h"

namespace QkDlg {

namespace {

struct ScreenDpi {
    int x = 0;
    int y = 0;
};

/// What the screen's DPI reads as depends on the thread's DPI awareness, which a host may switch
/// from window to window (Windows 10). Null where there is no such thing.
void* dpiAwareness() {
    using Query = void*(WINAPI*)();
    static const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32"), "GetThreadDpiAwarenessContext")));
    return query ? query() : nullptr;
}

/// A screen DC for every length that is scaled would be a good part of the cost of painting, and
/// for one awareness the DPI stays as long as the process.
ScreenDpi dpiNow() {
    static ScreenDpi known;
    static void* knownFor = nullptr;
    void* const awareness = dpiAwareness();
    if (known.x != 0 && knownFor == awareness)
        return known;
    const WholeWindowDc screen(nullptr);
    if (!screen.get())
        return {};
    known = {GetDeviceCaps(screen.get(), LOGPIXELSX), GetDeviceCaps(screen.get(), LOGPIXELSY)};
    knownFor = awareness;
    return known;
}

constexpr int kPadding = 6;

}  // namespace

int screenDpi() {
    return dpiNow().x;
}

int screenDpiY() {
    return dpiNow().y;
}

int scaled(int length) {
    return MulDiv(length, screenDpi(), USER_DEFAULT_SCREEN_DPI);
}

int captionPadding() {
    return scaled(kPadding);
}

}  // namespace QkDlg
