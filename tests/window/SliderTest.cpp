#include "QkDlg/QkFlatSlider.h"

#include <array>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

/// The code and position that the parent was told, and the slider's position by then.
using Told = std::vector<std::array<int, 3>>;

using SliderTest = WindowTest;

// The thumb moves 3 pixels from each position to the next.
TEST_F(SliderTest, MovesWithinItsRangeBeforeItTellsTheParent) {
    HostDialog host({.width = 800, .height = 700});
    const int end = 300 + scaled(10);
    for (const wchar_t* className : {L"STATIC", L"SCROLLBAR"}) {
        host.forget();
        const HWND bar = host.add(className, L"", WS_TABSTOP, area(20, 20, 99, end), 101);
        Told told;
        host.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
            if (message == WM_VSCROLL)
                told.push_back({LOWORD(wp), HIWORD(wp), GetScrollPos(bar, SB_CTL)});
            return std::nullopt;
        });
        QkFlatSlider slider(101, true);
        slider.Attach(bar);
        SendMessageW(bar, TBM_SETPOS, TRUE, 50);
        click(bar, 1, end - 1);
        EXPECT_EQ(told.front(), (std::array{TB_PAGEDOWN, 0, 70})) << "beside the thin track";
        drag(bar, {50, 212}, {50, 1200});
        EXPECT_EQ(told.back(), (std::array{TB_ENDTRACK, 0, 100}));
        EXPECT_EQ(host.timesHeard(scrolled(WM_VSCROLL, 101, TB_THUMBPOSITION, 100)), 1);
        const std::array<int, 3> keys[] = {{VK_DOWN, TB_LINEDOWN, 100}, {VK_LEFT, TB_LINEUP, 99},
                                           {VK_PRIOR, TB_PAGEUP, 79},   {VK_HOME, TB_TOP, 0},
                                           {VK_PRIOR, TB_PAGEUP, 0},    {VK_END, TB_BOTTOM, 100}};
        for (const auto& [key, request, expected] : keys) {
            told.clear();
            keyTap(key);
            EXPECT_EQ(told, (Told{{request, 0, expected}, {TB_ENDTRACK, 0, expected}}));
        }
        DestroyWindow(bar);
    }
}

TEST_F(SliderTest, AnswersATrackbarsMessagesAndShowsAThinTrackWithAThumbInIt) {
    HostDialog host;
    const HWND bar = host.add(L"STATIC", L"", 0, area(20, 20, 300 + scaled(10), scaled(20)), 101);
    QkFlatSlider slider(101, false);
    slider.Attach(bar);
    SendMessageW(bar, TBM_SETRANGE, TRUE, MAKELPARAM(-100, 300));
    EXPECT_EQ(SendMessageW(bar, TBM_GETRANGEMIN, 0, 0), -100);
    SendMessageW(bar, TBM_SETRANGEMAX, TRUE, 100);
    SendMessageW(bar, TBM_SETPAGESIZE, 0, 50);
    SendMessageW(bar, TBM_SETPOS, TRUE, -50);
    click(bar, 299, 1);
    moveAway();
    const Image image = onScreen(bar);
    EXPECT_EQ(image.boundingBoxOf(RGB(230, 230, 230)),
              Box(151, 1, 149 + scaled(10), scaled(20) - 1));
    EXPECT_EQ(image.part(Box(0, 0, 150, scaled(20))).count(RGB(204, 204, 204)), 150 * scaled(4));
}

}  // namespace
