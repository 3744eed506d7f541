#include "QkDlg/QkFlatProgressBar.h"

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr UINT_PTR kTimer = 10551;

class ProgressBarTest : public WindowTest {
protected:
    /// A bar whose client area is exactly that large: what the standard control adds round it
    /// differs.
    HWND addBar(int width, int height, DWORD style = 0) {
        const HWND bar = host_.add(PROGRESS_CLASSW, L"", style, area(10, 10, 50, 50), 101);
        SetWindowLongPtrW(bar, GWL_EXSTYLE, 0);
        SetWindowPos(bar, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_FRAMECHANGED);
        object_.emplace(101);
        object_->Attach(bar);
        SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
        return bar;
    }
    /// What is filled after so many messages. No timer runs meanwhile.
    static Box filledAfter(HWND bar, UINT message, WPARAM wp = 0, LPARAM lp = 0, int times = 1) {
        for (int i = 0; i < times; ++i)
            SendMessageW(bar, message, wp, lp);
        UpdateWindow(bar);
        return onScreen(bar).boundingBoxOf(kAccent).value_or(Box());
    }

    HostDialog host_{{.width = 400, .height = 300}};
    std::optional<QkFlatProgressBar> object_;
};

// The low bound does not count here but does for the standard bar, so what that one invalidates
// lies elsewhere. Without its style there is no marquee.
TEST_F(ProgressBarTest, EveryChangeRepaintsTheWholeFillWithoutReducingItByTheLowBound) {
    const HWND bar = addBar(200, 20);
    EXPECT_EQ(filledAfter(bar, PBM_SETPOS, 75), Box(2, 2, 150, 18));
    filledAfter(bar, PBM_SETRANGE32, 50, 150);
    EXPECT_EQ(filledAfter(bar, PBM_SETPOS, 60), Box(2, 2, 120, 18));
    EXPECT_EQ(filledAfter(bar, PBM_DELTAPOS, 10), Box(2, 2, 140, 18));
    const Image image = onScreen(bar);
    EXPECT_EQ(image.count(RGB(223, 223, 223)), 200 * 20 - 196 * 16) << "the border";
    EXPECT_EQ(image.count(kFace), 58 * 16);
    EXPECT_THAT(printed(bar), looksLike(image));
}

TEST_F(ProgressBarTest, VerticalBarFillsFromItsPositionDownAndItsMarqueeHasTopBelowBottom) {
    EXPECT_EQ(filledAfter(addBar(20, 260, PBS_VERTICAL), PBM_SETPOS, 30), Box(2, 78, 18, 258));
    const HWND marquee = addBar(20, 260, PBS_MARQUEE | PBS_VERTICAL);
    // GDI decides whether the rows of such a rectangle begin at its edge or one further.
    const Box block = filledAfter(marquee, WM_TIMER, kTimer, 0, 15);
    EXPECT_EQ(block.bottom - block.top, 130);
    EXPECT_NEAR(block.top, 20, 1);
    DestroyWindow(marquee);
}

// Wine's progress bar keeps no state.
LRESULT CALLBACK answerState(HWND bar, UINT message, WPARAM wp, LPARAM lp, UINT_PTR,
                             DWORD_PTR state) {
    return message == PBM_GETSTATE ? static_cast<LRESULT>(state)
                                   : DefSubclassProc(bar, message, wp, lp);
}

TEST_F(ProgressBarTest, StateColoursTheFillUnlessTheApplicationDoes) {
    const HWND bar = addBar(200, 20);
    SendMessageW(bar, PBM_SETPOS, 50, 0);
    DWORD_PTR state = 0;
    for (const COLORREF expected : {kAccent, RGB(218, 38, 38), RGB(218, 203, 38)}) {
        SetWindowSubclass(bar, answerState, 7, ++state);
        filledAfter(bar, PBM_SETSTATE, state);
        EXPECT_EQ(onScreen(bar).at(50, 10), expected) << "normal, error, paused: " << state;
    }
    filledAfter(bar, PBM_SETBARCOLOR, 0, RGB(9, 8, 7));
    EXPECT_EQ(onScreen(bar).at(50, 10), RGB(9, 8, 7));
}

TEST_F(ProgressBarTest, MarqueeMovesHalfABarByItselfAndEndsWithItsTimer) {
    const HWND bar = addBar(260, 20, PBS_MARQUEE);
    EXPECT_EQ(filledAfter(bar, WM_TIMER, kTimer, 0, 15), Box(20, 2, 150, 18));
    EXPECT_EQ(filledAfter(bar, PBM_SETMARQUEE, TRUE), Box(20, 2, 150, 18)) << "no second start";
    EXPECT_EQ(filledAfter(bar, WM_TIMER, kTimer, 0, 26), Box(2, 2, 10, 18)) << "entered again";
    EXPECT_EQ(filledAfter(bar, PBM_SETMARQUEE, FALSE), Box());
    EXPECT_FALSE(KillTimer(bar, kTimer));
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    EXPECT_TRUE(pumpUntil([&] { return filledAfter(bar, WM_NULL).right >= 50; }));
    object_.reset();
    EXPECT_FALSE(KillTimer(bar, kTimer)) << "no timer without its object";
}

}  // namespace
