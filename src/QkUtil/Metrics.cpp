#include "QkUtil/Metrics.h"

namespace QkDlg {

namespace {

class ScreenDc {
public:
    ScreenDc() : m_dc(GetWindowDC(nullptr)) {}
    ~ScreenDc() {
        if (m_dc)
            ReleaseDC(nullptr, m_dc);
    }
    ScreenDc(const ScreenDc&) = delete;
    ScreenDc& operator=(const ScreenDc&) = delete;
    ScreenDc(ScreenDc&&) = delete;
    ScreenDc& operator=(ScreenDc&&) = delete;

    [[nodiscard]] int capability(int index) const { return m_dc ? GetDeviceCaps(m_dc, index) : 0; }

private:
    HDC m_dc;
};

constexpr int kPadding = 6;

}  // namespace

int screenDpi() {
    return ScreenDc().capability(LOGPIXELSX);
}

int screenDpiY() {
    return ScreenDc().capability(LOGPIXELSY);
}

int scaled(int length) {
    return MulDiv(length, screenDpi(), USER_DEFAULT_SCREEN_DPI);
}

int captionPadding() {
    return scaled(kPadding);
}

}  // namespace QkDlg
