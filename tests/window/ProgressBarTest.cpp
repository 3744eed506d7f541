#include "QkDlg/QkFlatProgressBar.h"

#include <memory>

#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr int kBar = 101;
constexpr UINT_PTR kMarqueeTimer = 10551;

constexpr COLORREF kFace = RGB(246, 246, 246);
constexpr COLORREF kLine = RGB(223, 223, 223);
constexpr COLORREF kAccent = RGB(27, 118, 192);
constexpr COLORREF kRed = RGB(218, 38, 38);
constexpr COLORREF kYellow = RGB(218, 203, 38);

class ProgressBarTest : public WindowTest {
protected:
    /// A bar whose client area is exactly that large; what the standard control adds round it
    /// differs.
    HWND addBar(int width, int height, DWORD style = 0) {
        const HWND window = host_.add(PROGRESS_CLASSW, L"", style, area(10, 10, 50, 50), kBar);
        SetWindowLongPtrW(window, GWL_EXSTYLE, 0);
        SetWindowPos(window, nullptr, 0, 0, width, height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED);
        EXPECT_EQ(clientBox(window), Box(0, 0, width, height));
        bar_ = std::make_unique<QkFlatProgressBar>(kBar);
        bar_->Attach(window);
        drain();
        return window;
    }

    static void set(HWND bar, int low, int high, int position) {
        SendMessageW(bar, PBM_SETRANGE32, static_cast<WPARAM>(low), high);
        SendMessageW(bar, PBM_SETPOS, static_cast<WPARAM>(position), 0);
        drain();
    }

    static void tick(HWND bar, int times = 1) {
        for (int i = 0; i < times; ++i)
            SendMessageW(bar, WM_TIMER, kMarqueeTimer, 0);
    }

    static Box filled(HWND bar, COLORREF colour = kAccent) {
        return onScreen(bar).boundingBoxOf(colour).value_or(Box());
    }

    HostDialog host_{{.width = 400, .height = 300}};
    std::unique_ptr<QkFlatProgressBar> bar_;
};

TEST_F(ProgressBarTest, FillFollowsThePositionInsideATwoPixelBorder) {
    const HWND bar = addBar(200, 20);
    set(bar, 0, 100, 50);
    const Image image = onScreen(bar);
    EXPECT_EQ(image.boundingBoxOf(kAccent), Box(2, 2, 100, 18));
    EXPECT_EQ(image.boundingBoxOf(kFace), Box(100, 2, 198, 18));
    EXPECT_EQ(image.count(kLine), 200 * 20 - 196 * 16);
    EXPECT_THAT(printed(bar), looksLike(image));
}

TEST_F(ProgressBarTest, EveryChangeOfThePositionRepaintsTheWholeFill) {
    const HWND bar = addBar(200, 20);
    // The low bound does not count here but does for the standard bar, so what that one
    // invalidates lies elsewhere.
    set(bar, 50, 150, 75);
    EXPECT_EQ(filled(bar), Box(2, 2, 150, 18));
    set(bar, 50, 150, 60);
    EXPECT_EQ(filled(bar), Box(2, 2, 120, 18));
    SendMessageW(bar, PBM_DELTAPOS, 10, 0);
    drain();
    EXPECT_EQ(filled(bar), Box(2, 2, 140, 18));
    SendMessageW(bar, PBM_SETSTEP, 20, 0);
    SendMessageW(bar, PBM_STEPIT, 0, 0);
    drain();
    EXPECT_EQ(filled(bar), Box(2, 2, 180, 18));
    set(bar, 50, 150, 100);
    EXPECT_EQ(filled(bar), Box(2, 2, 198, 18)) << "position 100 of a range of 100";
}

TEST_F(ProgressBarTest, VerticalBarFillsFromItsPositionDownToTheBottom) {
    const HWND bar = addBar(20, 200, PBS_VERTICAL);
    set(bar, 0, 100, 30);
    EXPECT_EQ(filled(bar), Box(2, 60, 18, 198));
    set(bar, 0, 100, 80);
    EXPECT_EQ(filled(bar), Box(2, 160, 18, 198));
}

TEST_F(ProgressBarTest, EmptyRangeFillsNothing) {
    const HWND bar = addBar(200, 20);
    // Standard bars refuse such a range, so it is answered for one.
    const auto answer = [](HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR,
                           DWORD_PTR) -> LRESULT {
        if (message == PBM_GETRANGE) {
            *reinterpret_cast<PBRANGE*>(lp) = {5, 5};
            return 5;
        }
        return DefSubclassProc(window, message, wp, lp);
    };
    SetWindowSubclass(bar, answer, 7, 0);
    bar_->Refresh();
    drain();
    EXPECT_FALSE(onScreen(bar).contains(kAccent));
}

TEST_F(ProgressBarTest, StateColoursTheFillUnlessTheApplicationDoes) {
    const HWND bar = addBar(200, 20);
    static LRESULT state = PBST_NORMAL;
    const auto answer = [](HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR) {
        return message == PBM_GETSTATE ? state : DefSubclassProc(window, message, wp, lp);
    };
    SetWindowSubclass(bar, answer, 7, 0);
    set(bar, 0, 100, 50);
    const auto colour = [&](LRESULT now) {
        state = now;
        SendMessageW(bar, PBM_SETSTATE, static_cast<WPARAM>(now), 0);
        drain();
        return onScreen(bar).at(50, 10);
    };
    EXPECT_EQ(colour(PBST_ERROR), kRed);
    EXPECT_EQ(colour(PBST_PAUSED), kYellow);
    EXPECT_EQ(colour(PBST_NORMAL), kAccent);
    EXPECT_EQ(colour(99), kAccent);
    SendMessageW(bar, PBM_SETBARCOLOR, 0, RGB(9, 8, 7));
    EXPECT_EQ(colour(PBST_ERROR), RGB(9, 8, 7));
}

TEST_F(ProgressBarTest, MarqueeMovesHalfABarByATwentySixthATick) {
    const HWND bar = addBar(260, 20, PBS_MARQUEE);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 500);
    tick(bar);
    EXPECT_EQ(filled(bar), Box(2, 2, 10, 18));
    tick(bar, 14);
    EXPECT_EQ(filled(bar), Box(20, 2, 150, 18));
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 500);
    SendMessageW(bar, WM_TIMER, kMarqueeTimer + 1, 0);
    EXPECT_EQ(filled(bar), Box(20, 2, 150, 18)) << "neither of the two moves the block";
    tick(bar, 23);
    EXPECT_EQ(filled(bar), Box(250, 2, 258, 18));
    tick(bar, 2);
    EXPECT_EQ(filled(bar), Box()) << "back at the start";
    tick(bar);
    EXPECT_EQ(filled(bar), Box(2, 2, 10, 18));
}

TEST_F(ProgressBarTest, VerticalMarqueeBlockWithTopBelowBottomIsSeenAllTheSame) {
    const HWND bar = addBar(20, 260, PBS_MARQUEE | PBS_VERTICAL);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    tick(bar, 15);
    // GDI decides whether the rows of such a rectangle begin at its edge or one further.
    const Box block = filled(bar);
    EXPECT_EQ(block.bottom - block.top, 130);
    EXPECT_NEAR(block.top, 20, 1);
}

TEST_F(ProgressBarTest, MarqueeRunsByItselfAndEndsWithItsTimer) {
    const HWND bar = addBar(260, 20, PBS_MARQUEE);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    EXPECT_TRUE(pumpUntil([&] { return filled(bar).right >= 50; }));
    SendMessageW(bar, PBM_SETMARQUEE, FALSE, 0);
    drain();
    EXPECT_EQ(filled(bar), Box());
    const TimerWatch timers;
    pump(150);
    EXPECT_EQ(timers.count(bar), 0);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    EXPECT_TRUE(pumpUntil([&] { return timers.count(bar) > 2; }));
    bar_.reset();
    EXPECT_FALSE(KillTimer(bar, kMarqueeTimer)) << "no timer without its object";
}

TEST_F(ProgressBarTest, WithoutTheStyleNoMarqueeStarts) {
    const HWND bar = addBar(260, 20);
    MessageSpy spy(bar, {PBM_SETMARQUEE});
    bar_->SetMarquee(true);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    EXPECT_FALSE(KillTimer(bar, kMarqueeTimer));
    tick(bar, 5);
    EXPECT_FALSE(onScreen(bar).contains(kAccent));
}

TEST_F(ProgressBarTest, HiddenMarqueePaintsNothing) {
    const HWND bar = addBar(260, 20, PBS_MARQUEE);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    ShowWindow(bar, SW_HIDE);
    drain();
    tick(bar, 10);
    EXPECT_FALSE(onScreen(host_.window()).contains(kAccent));
    DestroyWindow(bar);
    EXPECT_EQ(bar_->GetWindow(), nullptr);
}

TEST_F(ProgressBarTest, PaintingLeaksNothing) {
    const HWND bar = addBar(260, 20, PBS_MARQUEE);
    SendMessageW(bar, PBM_SETMARQUEE, TRUE, 0);
    EXPECT_TRUE(doesNotLeak(1000, [&] { tick(bar); }));
}

}  // namespace
