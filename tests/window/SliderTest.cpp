#include "QkDlg/QkFlatSlider.h"

#include <array>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

using SliderTest = WindowTest;

// The thumb moves 300 pixels, over positions from -100 to 100.
TEST_F(SliderTest, MovesWithinItsRangeBeforeItTellsTheParent) {
    HostDialog host({.width = 800, .height = 700});
    const int end = 300 + scaled(10);
    const HWND bar = host.add(L"STATIC", L"", WS_TABSTOP, area(20, 20, end, scaled(20)), 101);
    // Codes with their positions, and the slider's own position by then.
    std::vector<std::array<int, 3>> told;
    host.onMessage([&](UINT message, WPARAM wp, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_HSCROLL)
            told.push_back({LOWORD(wp), HIWORD(wp), GetScrollPos(bar, SB_CTL)});
        return std::nullopt;
    });
    QkFlatSlider slider(101, false);
    slider.Attach(bar);
    SendMessageW(bar, TBM_SETRANGE, TRUE, MAKELPARAM(-100, 100));
    SendMessageW(bar, TBM_SETPOS, TRUE, -20);
    click(bar, end - 1, 1);
    EXPECT_EQ(told.front(), (std::array{TB_PAGEDOWN, 0, 0})) << "beside the thin track";
    SetFocus(nullptr);
    moveAway();
    const Image image = onScreen(bar);
    EXPECT_EQ(image.boundingBoxOf(RGB(230, 230, 230)),
              Box(151, 1, 149 + scaled(10), scaled(20) - 1));
    EXPECT_EQ(image.part(Box(0, 0, 150, scaled(20))).count(RGB(204, 204, 204)), 150 * scaled(4));

    drag(bar, {152, 5}, {1200, 5});
    EXPECT_EQ(*(told.end() - 2), (std::array{TB_THUMBPOSITION, 100, 100})) << "all of the range";
    const std::array<int, 3> keys[] = {{VK_DOWN, TB_LINEDOWN, 100}, {VK_LEFT, TB_LINEUP, 99},
                                       {VK_PRIOR, TB_PAGEUP, 79},   {VK_HOME, TB_TOP, -100},
                                       {VK_PRIOR, TB_PAGEUP, -100}, {VK_END, TB_BOTTOM, 100}};
    for (const auto& [key, request, expected] : keys) {
        keyTap(key);
        EXPECT_EQ(*(told.end() - 2), (std::array{request, 0, expected}));
    }
    SendMessageW(bar, TBM_SETRANGE, TRUE, MAKELPARAM(0, 3));
    slider.Attach(bar);
    SendMessageW(bar, TBM_SETPOS, TRUE, 3);
    click(bar, 1, 1);
    EXPECT_EQ(slider.GetPosition(), 2) << "no fifth of so few, but one step";
}

}  // namespace
