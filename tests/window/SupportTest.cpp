// The test support itself, tried on plain standard controls.
#include <cstdio>

#include "support/ChildProcess.h"
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

TEST_F(SupportTest, DoubleClicksOnlyWhenAskedFor) {
    HostDialog host;
    const HWND label = host.add(WC_STATICW, L"", SS_NOTIFY, area(20, 20, 90, 24), kId);
    const MessageSpy spy(label, {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK});

    click(label);
    click(label);
    EXPECT_EQ(spy.seen(), (std::vector<Spied>{{WM_LBUTTONDOWN}, {WM_LBUTTONDOWN}}));

    doubleClick(label);
    EXPECT_EQ(spy.count(WM_LBUTTONDBLCLK), 1);
}

TEST_F(SupportTest, KeyboardNavigatesTypesAndPresses) {
    HostDialog host;
    const HWND edit = host.add(WC_EDITW, L"", WS_TABSTOP, area(20, 20, 200, 24), kId);
    const HWND check =
        host.add(WC_BUTTONW, L"c", BS_AUTOCHECKBOX | WS_TABSTOP, area(20, 60, 200, 24), kId + 1);
    focus(edit);

    typeText(L"a\u00e4Z");
    EXPECT_EQ(textOf(edit), L"a\u00e4Z");

    keyDown(VK_SHIFT);
    keyTap(VK_HOME);
    keyUp(VK_SHIFT);
    EXPECT_EQ(SendMessageW(edit, EM_GETSEL, 0, 0), MAKELRESULT(0, 3));

    keyTap(VK_TAB);
    EXPECT_EQ(GetFocus(), check);
    keyTap(VK_SPACE);
    EXPECT_EQ(SendMessageW(check, BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(host.timesHeard(command(kId + 1, BN_CLICKED)), 1);
}

TEST_F(SupportTest, HeardListHasScrollingColoursAndTheHandlersAnswer) {
    HostDialog host({.recordsPainting = true});
    const HWND track = host.add(TRACKBAR_CLASSW, L"", WS_TABSTOP, area(20, 20, 200, 30), kId);
    focus(track);
    host.forget();
    keyTap(VK_RIGHT);
    EXPECT_EQ(host.timesHeard(scrolled(WM_HSCROLL, kId, TB_LINEDOWN)), 1);

    host.onMessage([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return message == WM_APP ? std::optional<LRESULT>(42) : std::nullopt;
    });
    EXPECT_EQ(SendMessageW(host.window(), WM_APP, 0, 0), 42);

    host.add(WC_STATICW, L"text", 0, area(20, 80, 90, 24), kId + 1);
    EXPECT_GE(host.timesHeard(colourAsked(WM_CTLCOLORSTATIC, kId + 1)), 1);
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
    EXPECT_EQ(image.mirrored().boundingBoxOf(kBlack), Box(10, 20, 40, 25));
}

TEST_F(SupportTest, ScopesChangeTheSystemAndSetItBack) {
    const COLORREF hotlight = GetSysColor(COLOR_HOTLIGHT);
    const int dpi = screenDpi();
    {
        HighContrast contrast;
        const ScreenDepth depth(16);
        const ScreenDpi dots(2 * dpi);
        const SystemColours colours({{COLOR_HOTLIGHT, kGround}});
        EXPECT_TRUE(moduleSeesHighContrast());
        contrast.turn(false);
        EXPECT_FALSE(moduleSeesHighContrast());
        const HDC screen = GetDC(nullptr);
        EXPECT_EQ(GetDeviceCaps(screen, BITSPIXEL), 16);
        EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSY), 2 * dpi);
        EXPECT_EQ(GetDeviceCaps(screen, HORZRES), GetSystemMetrics(SM_CXSCREEN));
        ReleaseDC(nullptr, screen);
        EXPECT_EQ(GetSysColor(COLOR_HOTLIGHT), kGround);
    }
    EXPECT_FALSE(moduleSeesHighContrast());
    EXPECT_EQ(screenDpi(), dpi);
    EXPECT_EQ(GetSysColor(COLOR_HOTLIGHT), hotlight);
}

TEST_F(SupportTest, LeaksAreCounted) {
    std::vector<HBRUSH> brushes;
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

TEST_F(SupportTest, TimersAndLeavingAreNoticed) {
    HostDialog host;
    const HWND label = host.add(WC_STATICW, L"", SS_NOTIFY, area(20, 20, 90, 24), kId);
    const MessageSpy spy(label, {WM_MOUSELEAVE});
    moveTo(label);
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, label, 0};
    TrackMouseEvent(&track);
    moveAway();
    EXPECT_EQ(spy.count(WM_MOUSELEAVE), 1);

    TimerWatch timers;
    SetTimer(label, 1, 10, nullptr);
    pump(100);
    EXPECT_GE(timers.count(label), 3);
    KillTimer(label, 1);
    timers.forget();
    pump(50);
    EXPECT_EQ(timers.count(), 0);
}

TEST_F(SupportTest, ScreenReadersSeeNameRoleStateAndValue) {
    HostDialog host;
    const HWND check = host.add(WC_BUTTONW, L"&Check", BS_AUTOCHECKBOX, area(20, 20, 90, 24), kId);
    const Accessible before = accessible(check);
    EXPECT_EQ(before.name, L"Check");
    EnableWindow(check, FALSE);
    EXPECT_EQ(accessible(check).state & STATE_SYSTEM_UNAVAILABLE, STATE_SYSTEM_UNAVAILABLE);
    EXPECT_NE(accessible(check), before);

    const HWND edit = host.add(WC_EDITW, L"text", 0, area(20, 60, 90, 24), kId + 1);
    EXPECT_EQ(accessible(edit).role, ROLE_SYSTEM_TEXT);
    EXPECT_EQ(accessible(edit).value, L"text");
}

CHILD_PROCESS(Reports) {
    std::fputws(L"\nFATAL ERROR: assert failure in Module: src/Some Line number: 12\n", stdout);
    std::fflush(stdout);
    ExitProcess(999);
}

CHILD_PROCESS(Hangs) {
    Sleep(INFINITE);
}

CHILD_PROCESS(Returns) {
    std::puts("done");
}

TEST_F(SupportTest, ChildProcessesReportAsAParentSeesIt) {
    expectAssertReport("Reports", "src/Some", 12);
    EXPECT_EQ(runChild("Returns").output, "done\r\n");
    EXPECT_EQ(runChild("Returns").exitStatus, 0U);
    EXPECT_FALSE(runChild("Hangs", 300).exitStatus.has_value());
}

}  // namespace
}  // namespace QkDlgTest
