// What the other tests lean on without noticing whether it works.
#include "support/WindowTest.h"

namespace QkDlgTest {
namespace {

constexpr COLORREF kGround = RGB(10, 200, 30);

using SupportTest = WindowTest;

bool moduleSeesHighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

TEST_F(SupportTest, ScopesChangeTheSystemAndSetItBack) {
    const COLORREF hotlight = GetSysColor(COLOR_HOTLIGHT);
    {
        HighContrast contrast;
        const ScreenDepth depth(16);
        const SystemColours colours({{COLOR_HOTLIGHT, kGround}});
        EXPECT_TRUE(moduleSeesHighContrast());
        contrast.turn(false);
        EXPECT_FALSE(moduleSeesHighContrast());
        const HDC screen = GetDC(nullptr);
        EXPECT_EQ(GetDeviceCaps(screen, BITSPIXEL), 16);
        EXPECT_EQ(GetDeviceCaps(screen, HORZRES), GetSystemMetrics(SM_CXSCREEN));
        ReleaseDC(nullptr, screen);
        EXPECT_EQ(GetSysColor(COLOR_HOTLIGHT), kGround);
    }
    EXPECT_FALSE(moduleSeesHighContrast());
    EXPECT_EQ(GetSysColor(COLOR_HOTLIGHT), hotlight);
}

TEST_F(SupportTest, LeaksAreCounted) {
    std::vector<HBRUSH> brushes;
    brushes.reserve(10);
    const int before = gdiObjects();
    for (int i = 0; i < 10; ++i)
        brushes.push_back(CreateSolidBrush(kGround));
    EXPECT_EQ(gdiObjects(), before + 10);
    for (const HBRUSH brush : brushes)
        DeleteObject(brush);
    EXPECT_EQ(gdiObjects(), before);

    EXPECT_TRUE(doesNotLeak(1000, [] { DeleteObject(CreateSolidBrush(kGround)); }));
    std::vector<HGDIOBJ> leaked;
    EXPECT_FALSE(doesNotLeak(1, [&] { leaked.push_back(CreateRectRgn(0, 0, 1, 1)); }));
    for (const HGDIOBJ region : leaked)
        DeleteObject(region);

    const int windows = windowCount();
    const HostDialog host;
    EXPECT_EQ(windowCount(), windows + 1);
}

}  // namespace
}  // namespace QkDlgTest
