#include "QkUtil/Metrics.h"

#include "QkUtil/Handles.h"

namespace QkDlg {

namespace {

int screenCapability(int index) {
    const WholeWindowDc screen(nullptr);
    return screen.get() ? GetDeviceCaps(screen.get(), index) : 0;
}

constexpr int kPadding = 6;

}  // namespace

int screenDpi() {
    return screenCapability(LOGPIXELSX);
}

int screenDpiY() {
    return screenCapability(LOGPIXELSY);
}

int scaled(int length) {
    return MulDiv(length, screenDpi(), USER_DEFAULT_SCREEN_DPI);
}

int captionPadding() {
    return scaled(kPadding);
}

}  // namespace QkDlg
