// The test support itself, tried on plain standard controls.
#include "support/WindowTest.h"

namespace QkDlgTest {
namespace {

constexpr int kId = 7;
constexpr COLORREF kGround = RGB(10, 200, 30);
constexpr COLORREF kBlack = RGB(0, 0, 0);

using SupportTest = WindowTest;

// An empty label that the host paints black.
HWND addBlackBar(HostDialog& host) {
    host.onMessage([&host](UINT message, WPARAM, LPARAM control) -> std::optional<LRESULT> {
        if (message != WM_CTLCOLORSTATIC || reinterpret_cast<HWND>(control) != host.control(kId))
            return std::nullopt;
        return reinterpret_cast<LRESULT>(GetStockObject(BLACK_BRUSH));
    });
    return host.add(WC_STATICW, L"", 0, area(10, 20, 30, 5), kId);
}

bool moduleSeesHighContrast() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

TEST_F(SupportTest, RealClicksReachAControlOnce) {
    HostDialog host;
    const HWND button = host.add(WC_BUTTONW, L"Go", BS_PUSHBUTTON, scaledArea(20, 20, 90, 24), kId);

    click(button);
    EXPECT_EQ(host.heard(), HeardList{command(kId, BN_CLICKED)});

    host.forget();
    click(button);
    click(button);
    EXPECT_EQ(host.heard(), (HeardList{command(kId, BN_CLICKED), command(kId, BN_CLICKED)}));

    host.forget();
    moveTo(button);
    press();
    EXPECT_TRUE(host.heard().empty());
    EXPECT_EQ(SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED, BST_PUSHED);
    moveAway();
    release();
    EXPECT_TRUE(host.heard().empty());
}

TEST_F(SupportTest, PicturesShowWhatIsThere) {
    HostDialog host({.background = kGround, .width = 120, .height = 80});
    EXPECT_THAT(onScreen(host.window()), isFilledWith(kGround));

    const HWND bar = addBlackBar(host);
    const Image image = onScreen(host.window());
    EXPECT_EQ(image.boundingBoxOf(kBlack), Box(10, 20, 40, 25));
    EXPECT_EQ(image.count(kBlack), 150);
    EXPECT_THAT(image.part(Box(10, 20, 40, 25)), looksLike(onScreen(bar)));
    const Box desktop = windowBox(host.window());
    EXPECT_THAT(onDesktop({desktop.left, desktop.top, desktop.right, desktop.bottom}),
                looksLike(image));

    const HWND label = host.add(WC_STATICW, L"Text", 0, area(10, 40, 60, 30), kId + 1);
    EXPECT_THAT(printed(label), hasColour(kGround));
    ShowWindow(bar, SW_HIDE);
    drain();
    EXPECT_THAT(onScreen(host.window()), testing::Not(looksLike(image)));
}

TEST_F(SupportTest, MirroredHostIsReadAsSeen) {
    HostDialog host({.width = 120, .height = 80, .rightToLeft = true});
    addBlackBar(host);
    const Image image = onScreen(host.window());
    EXPECT_EQ(image.boundingBoxOf(kBlack), Box(80, 20, 110, 25));
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
