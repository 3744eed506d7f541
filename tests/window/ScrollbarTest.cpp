#include "QkDlg/QkFlatScrollbar.h"

#include <memory>

#include "support/ChildProcess.h"
#include "support/Paper.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr UINT_PTR kTimer = 10551;
constexpr int kId = 101;
constexpr COLORREF kTrack = RGB(204, 204, 204);
constexpr COLORREF kThumb = RGB(230, 230, 230);

class ScrollbarTest : public WindowTest {
protected:
    /// A bar with its arrows of that length, 400 pixels of track, and the range 0 to 99 with pages
    /// of 20: a thumb of 80 pixels that moves 4 pixels from each position to the next.
    void addBar(bool vertical = true, const wchar_t* className = L"SCROLLBAR", DWORD style = 0) {
        arrow_ = GetSystemMetrics(vertical ? SM_CYVSCROLL : SM_CXHSCROLL);
        vertical_ = vertical;
        const int length = 400 + 2 * arrow_;
        const DWORD direction = vertical && wcscmp(className, L"SCROLLBAR") == 0 ? SBS_VERT : 0;
        bar_ = host_.add(className, L"", style | direction,
                         vertical ? area(20, 20, 30, length) : area(20, 20, length, 30), kId);
        object_ = std::make_unique<QkFlatScrollbar>(kId, vertical);
        object_->Attach(bar_);
        set(SIF_RANGE | SIF_PAGE | SIF_POS, 40);
        UpdateWindow(bar_);
    }
    LRESULT set(UINT mask, int position, int max = 99, UINT page = 20) {
        const SCROLLINFO info{sizeof info, mask, 0, max, page, position, 0};
        return SetScrollInfo(bar_, SB_CTL, &info, TRUE);
    }
    SCROLLINFO info() const {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        EXPECT_TRUE(GetScrollInfo(bar_, SB_CTL, &info));
        return info;
    }
    /// A point `at` pixels along the bar, counted from where its track begins.
    POINT along(int at) const {
        return vertical_ ? POINT{15, arrow_ + at} : POINT{arrow_ + at, 15};
    }
    void moveMouse(int at) const { moveTo(bar_, along(at).x, along(at).y); }
    COLORREF colourAt(int at) const { return onScreen(bar_).at(along(at).x, along(at).y); }
    std::vector<std::pair<int, int>> requests() {
        std::vector<std::pair<int, int>> result;
        for (const Heard& heard : host_.heard()) {
            EXPECT_EQ(heard.message, static_cast<UINT>(vertical_ ? WM_VSCROLL : WM_HSCROLL));
            EXPECT_EQ(heard.id, kId);
            result.emplace_back(heard.code, heard.position);
        }
        host_.forget();
        return result;
    }
    /// Clicks there; what it asked for.
    std::vector<std::pair<int, int>> clicked(int at) {
        host_.forget();
        click(bar_, along(at).x, along(at).y);
        return requests();
    }

    using Requests = std::vector<std::pair<int, int>>;

    HostDialog host_{{.width = 1400, .height = 700}};
    std::unique_ptr<QkFlatScrollbar> object_;
    HWND bar_ = nullptr;
    bool vertical_ = true;
    int arrow_ = 0;
};

TEST_F(ScrollbarTest, EachPartSendsItsRequestAndTheBarStaysWhereItsHostPutIt) {
    for (const bool vertical : {true, false}) {
        for (const wchar_t* className : {L"SCROLLBAR", L"STATIC"}) {
            addBar(vertical, className);
            EXPECT_EQ(clicked(-2), (Requests{{SB_LINEUP, 0}, {SB_ENDSCROLL, 0}}));
            EXPECT_EQ(clicked(159), (Requests{{SB_PAGEUP, 0}, {SB_ENDSCROLL, 0}}));
            EXPECT_EQ(clicked(160), (Requests{{SB_THUMBPOSITION, 40}, {SB_ENDSCROLL, 0}}));
            EXPECT_EQ(clicked(240), (Requests{{SB_PAGEDOWN, 0}, {SB_ENDSCROLL, 0}}));
            EXPECT_EQ(clicked(401), (Requests{{SB_LINEDOWN, 0}, {SB_ENDSCROLL, 0}}));
            SendMessageW(bar_, SBM_ENABLE_ARROWS, ESB_DISABLE_RTDN, 0);
            EXPECT_EQ(clicked(401), Requests());
            EXPECT_EQ(clicked(-2).size(), 2U) << "the other arrow";
            for (const UINT half : {WM_LBUTTONDBLCLK, WM_LBUTTONUP})
                SendMessageW(bar_, half, 0, MAKELPARAM(along(-2).x, along(-2).y));
            EXPECT_EQ(requests(), (Requests{{SB_LINEUP, 0}, {SB_ENDSCROLL, 0}})) << "double click";
            EXPECT_EQ(info().nPos, 40);
            DestroyWindow(bar_);
        }
    }
}

TEST_F(ScrollbarTest, DragReportsPositionsAndEndsOnceWithTheLast) {
    addBar();
    moveMouse(170);
    press();
    moveMouse(174);
    EXPECT_EQ(info().nTrackPos, 41);
    EXPECT_EQ(info().nPos, 40) << "until the drag ends";
    EXPECT_EQ(colourAt(163), kTrack);
    EXPECT_EQ(colourAt(164), RGB(27, 118, 192)) << "the pressed frame";
    set(SIF_POS, 0);
    EXPECT_EQ(colourAt(164), RGB(27, 118, 192)) << "the thumb stays with the mouse";
    moveMouse(900);
    release();
    EXPECT_EQ(
        requests(),
        (Requests{
            {SB_THUMBTRACK, 41}, {SB_THUMBTRACK, 80}, {SB_THUMBPOSITION, 80}, {SB_ENDSCROLL, 0}}));
    EXPECT_EQ(info().nPos, 80);
    EXPECT_EQ(GetCapture(), nullptr);
    moveMouse(330);
    press();
    moveMouse(290);
    SetCapture(host_.window());
    ReleaseCapture();
    release();
    EXPECT_EQ(requests(),
              (Requests{{SB_THUMBTRACK, 70}, {SB_THUMBPOSITION, 70}, {SB_ENDSCROLL, 0}}));
    set(SIF_RANGE | SIF_PAGE, 0, 19);
    drag(bar_, along(10), along(300));
    EXPECT_EQ(requests(), (Requests{{SB_THUMBPOSITION, 0}, {SB_ENDSCROLL, 0}})) << "no room";
}

TEST_F(ScrollbarTest, HeldArrowRepeatsFromTheFourthTickUnderTheMouseUntilItIsReleased) {
    addBar();
    moveMouse(-2);
    press();
    pump(700);
    EXPECT_EQ(requests(), (Requests{{SB_LINEUP, 0}}));
    ASSERT_TRUE(pumpUntil([&] { return host_.heard().size() == 2; }, 600));
    EXPECT_EQ(requests(), (Requests{{SB_LINEUP, 0}, {SB_LINEUP, 0}}));
    moveMouse(300);
    ASSERT_TRUE(pumpUntil([&] { return !host_.heard().empty(); }));
    EXPECT_EQ(requests().front(), std::pair(SB_PAGEDOWN, 0));
    set(SIF_POS, 65);
    pump(450);
    host_.forget();
    release();
    EXPECT_EQ(requests(), (Requests{{SB_THUMBPOSITION, 65}, {SB_ENDSCROLL, 0}}))
        << "the thumb that came under the mouse is dragged";
    EXPECT_FALSE(KillTimer(bar_, kTimer));
    // A repeat on its way when the button comes up is nobody's press.
    moveMouse(-2);
    press();
    EXPECT_TRUE(pumpUntil([&] { return host_.heard().size() == 2; }));
    Sleep(250);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, bar_, WM_TIMER, WM_TIMER, PM_REMOVE));
    DispatchMessageW(&message);
    SendMessageW(bar_, WM_LBUTTONUP, 0, 0);
    release();
    EXPECT_EQ(requests(), (Requests{{SB_LINEUP, 0}, {SB_LINEUP, 0}, {SB_ENDSCROLL, 0}}));
}

TEST_F(ScrollbarTest, HostThatKnowsNothingOfItIsAnsweredAsByAStandardBar) {
    addBar();
    EXPECT_EQ(set(SIF_POS, 500), 80) << "as far as the page lets it";
    EXPECT_EQ(SetScrollPos(bar_, SB_CTL, 30, TRUE), 80) << "the position before";
    EXPECT_EQ(GetScrollPos(bar_, SB_CTL), 30);
    EXPECT_TRUE(SetScrollRange(bar_, SB_CTL, INT_MIN, INT_MAX, TRUE));
    int min = 0;
    int max = 0;
    EXPECT_TRUE(GetScrollRange(bar_, SB_CTL, &min, &max));
    EXPECT_EQ(std::pair(min, max), std::pair(INT_MIN, INT_MAX));
    SendMessageW(bar_, SBM_SETRANGE, 0, 9);
    EXPECT_EQ(SendMessageW(bar_, SBM_SETPOS, 150, TRUE), 150) << "stored as it is";
    EXPECT_EQ(SendMessageW(bar_, SBM_GETPOS, 0, 0), 150);
    EXPECT_EQ(SendMessageW(bar_, SBM_SETRANGEREDRAW, 0, 99), 1);
    set(SIF_RANGE | SIF_PAGE | SIF_POS, 40);

    SCROLLBARINFO state{};
    state.cbSize = sizeof state;
    EXPECT_TRUE(GetScrollBarInfo(bar_, OBJID_CLIENT, &state));
    EXPECT_EQ(Box(state.rcScrollBar), windowBox(bar_));
    EXPECT_EQ(state.dxyLineButton, arrow_);
    EXPECT_EQ(std::pair(state.xyThumbTop, state.xyThumbBottom),
              std::pair(arrow_ + 160, arrow_ + 240));
    EXPECT_EQ(state.rgstate[5], 0U);
    set(SIF_PAGE | SIF_DISABLENOSCROLL, 0, 0, 100);
    EXPECT_TRUE(GetScrollBarInfo(bar_, OBJID_CLIENT, &state));
    EXPECT_EQ(state.rgstate[1], STATE_SYSTEM_UNAVAILABLE);
    EXPECT_EQ(state.rgstate[4], STATE_SYSTEM_INVISIBLE) << "no track after the thumb";
    EXPECT_EQ(clicked(-2), Requests());
    set(SIF_PAGE | SIF_DISABLENOSCROLL, 0, 0, 20);
    EXPECT_EQ(clicked(-2).size(), 2U);
}

TEST_F(ScrollbarTest, WhatTheStandardBarWasSetToIsTakenOverAndGivenBack) {
    bar_ = host_.add(L"SCROLLBAR", L"", SBS_VERT, area(20, 20, 20, 400), kId);
    set(SIF_RANGE | SIF_PAGE | SIF_POS, 33, 200, 50);
    object_ = std::make_unique<QkFlatScrollbar>(kId, true);
    object_->Attach(bar_);
    EXPECT_EQ(std::pair(info().nPos, info().nPage), std::pair(33, 50U));
    set(SIF_POS, 44);
    moveTo(bar_, 5, 5);
    press();
    object_.reset();
    EXPECT_FALSE(KillTimer(bar_, kTimer));
    EXPECT_EQ(GetCapture(), nullptr);
    release();
    EXPECT_EQ(std::pair(info().nPos, info().nMax), std::pair(44, 200));
}

TEST_F(ScrollbarTest, ParentMayEndOrDisableTheBarOrOpenADialogWhileItIsTold) {
    std::function<void()> act;
    host_.onMessage([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_VSCROLL && act)
            std::exchange(act, nullptr)();
        return std::nullopt;
    });
    const std::function<void()> ends[] = {[&] { DestroyWindow(bar_); }, [&] { object_.reset(); }};
    for (const auto& end : ends) {
        for (const int at : {-2, 10, 401}) {
            addBar();
            act = end;
            clicked(at);
            DestroyWindow(bar_);
            addBar();
            moveMouse(200);
            press();
            act = end;
            moveMouse(210);
            release();
            DestroyWindow(bar_);
        }
    }
    addBar();
    act = [&] { EnableWindow(bar_, FALSE); };
    moveMouse(-2);
    press();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(KillTimer(bar_, kTimer)) << "a disabled bar repeats nothing";
    release();
    EnableWindow(bar_, TRUE);
    host_.forget();
    act = [&] {
        EnableWindow(host_.window(), FALSE);
        pump(1100);
        EnableWindow(host_.window(), TRUE);
    };
    moveMouse(-2);
    press();
    EXPECT_EQ(requests(), (Requests{{SB_LINEUP, 0}, {SB_ENDSCROLL, 0}})) << "one box, not five";
    release();
}

TEST_F(ScrollbarTest, KeysAndWheelScrollToo) {
    for (const wchar_t* className : {L"SCROLLBAR", L"STATIC"}) {
        addBar(true, className, WS_TABSTOP);
        click(bar_, along(10).x, along(10).y);
        EXPECT_EQ(GetFocus(), bar_);
        host_.forget();
        const std::pair<int, int> keys[] = {{VK_PRIOR, SB_PAGEUP}, {VK_NEXT, SB_PAGEDOWN},
                                            {VK_UP, SB_LINEUP},    {VK_DOWN, SB_LINEDOWN},
                                            {VK_LEFT, SB_LINEUP},  {VK_RIGHT, SB_LINEDOWN},
                                            {VK_HOME, SB_TOP},     {VK_END, SB_BOTTOM}};
        for (const auto& [key, request] : keys) {
            keyTap(key);
            EXPECT_EQ(requests(), (Requests{{request, 0}, {SB_ENDSCROLL, 0}})) << key;
        }
        UINT lines = 0;
        SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
        wheel(1);
        EXPECT_EQ(host_.timesHeard(scrolled(WM_VSCROLL, kId, SB_LINEUP)), static_cast<int>(lines));
        host_.forget();
        for (int third = 0; third < 3; ++third)
            SendMessageW(bar_, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA / 3)),
                         0);
        EXPECT_EQ(host_.timesHeard(scrolled(WM_VSCROLL, kId, SB_LINEDOWN)),
                  static_cast<int>(lines));
        DestroyWindow(bar_);
    }
}

TEST_F(ScrollbarTest, ShowsEachStateAndNeverTheStandardBar) {
    for (const wchar_t* className : {L"SCROLLBAR", L"STATIC"}) {
        addBar(true, className);
        const Image normal = onScreen(bar_);
        EXPECT_EQ(normal.count(kTrack), 30 * 320 + 2 * 30 + 2 * 78) << "track and thumb's frame";
        EXPECT_EQ(normal.count(kThumb), 28 * 78);
        EXPECT_THAT(printed(bar_), looksLike(normal));
        SendMessageW(bar_, WM_SETFOCUS, 0, 0);
        SendMessageW(bar_, WM_ENABLE, TRUE, 0);
        SetWindowTextW(bar_, L"text");
        set(SIF_POS, 40);
        UpdateWindow(bar_);
        EXPECT_THAT(onScreen(bar_), looksLike(normal));
        moveMouse(200);
        UpdateWindow(bar_);
        EXPECT_EQ(colourAt(160), RGB(101, 167, 232)) << "hot";
        moveMouse(-1);
        UpdateWindow(bar_);
        EXPECT_EQ(colourAt(160), kTrack) << "no longer hot";
        EXPECT_EQ(onScreen(bar_).at(0, 0), RGB(229, 243, 251));
        press();
        EXPECT_EQ(onScreen(bar_).at(0, 0), RGB(210, 232, 253));
        release();
        moveAway();
        EXPECT_THAT(onScreen(bar_), looksLike(normal)) << "the mouse has left";
        SendMessageW(bar_, SBM_ENABLE_ARROWS, ESB_DISABLE_LTUP, 0);
        UpdateWindow(bar_);
        EXPECT_TRUE(onScreen(bar_).part(Box(0, 0, 30, arrow_)).contains(RGB(204, 204, 204)));
        EXPECT_FALSE(onScreen(bar_).part(Box(0, 0, 30, arrow_)).contains(RGB(121, 121, 121)));
        EXPECT_TRUE(normal.part(Box(0, 0, 30, arrow_)).contains(RGB(121, 121, 121)));
        EnableWindow(bar_, FALSE);
        EXPECT_EQ(colourAt(10), RGB(223, 223, 223));
        EXPECT_EQ(colourAt(200), RGB(246, 246, 246));
        DestroyWindow(bar_);
    }
}

TEST_F(ScrollbarTest, MirroredBarBeginsOnTheRightAndItsArrowsPointOutwards) {
    HostDialog mirrored({.width = 1400, .height = 100, .rightToLeft = true});
    addBar(false);
    const Image plain = onScreen(bar_);
    const HWND other = mirrored.add(L"SCROLLBAR", L"", 0, area(20, 20, plain.width(), 30), kId);
    QkFlatScrollbar object(kId, false);
    object.Attach(other);
    const SCROLLINFO info{sizeof info, SIF_ALL, 0, 99, 20, 40, 0};
    SetScrollInfo(other, SB_CTL, &info, TRUE);
    EXPECT_THAT(onScreen(other), looksLike(plain)) << "at the middle both look alike";
    SetScrollPos(other, SB_CTL, 0, TRUE);
    EXPECT_EQ(onScreen(other).at(plain.width() - arrow_ - 40, 15), kThumb);
    click(other, arrow_ / 2, 15);
    focus(other);
    keyTap(VK_LEFT);
    EXPECT_EQ(mirrored.heard(), (HeardList{scrolled(WM_HSCROLL, kId, SB_LINEUP),
                                           scrolled(WM_HSCROLL, kId, SB_ENDSCROLL),
                                           scrolled(WM_HSCROLL, kId, SB_LINEDOWN),
                                           scrolled(WM_HSCROLL, kId, SB_ENDSCROLL)}));
    DestroyWindow(other);
}

TEST_F(ScrollbarTest, TakesTheSystemsColoursInHighContrastAndPaintingLeavesNothingBehind) {
    addBar();
    const SystemColours dark({{COLOR_WINDOW, RGB(0, 0, 0)}, {COLOR_WINDOWFRAME, RGB(255, 255, 0)}});
    HighContrast contrast;
    InvalidateRect(bar_, nullptr, FALSE);
    UpdateWindow(bar_);
    EXPECT_EQ(colourAt(10), RGB(255, 255, 0));
    EXPECT_EQ(colourAt(160), RGB(255, 255, 0)) << "the thumb's frame";
    EXPECT_EQ(colourAt(200), RGB(0, 0, 0));
    EXPECT_TRUE(onScreen(bar_).part(Box(0, 0, 30, arrow_)).contains(RGB(255, 255, 255)));
    EXPECT_EQ(onScreen(bar_).at(0, 0), RGB(0, 0, 0));
    const Paper paper(bar_);
    EXPECT_TRUE(doesNotLeak(paintRounds(), [&] {
        contrast.turn(!IsHighContrast());
        object_->PaintBar(paper.dc());
    }));
}

CHILD_PROCESS(EnablesUnknownArrows) {
    const HostDialog host;
    QkFlatScrollbar object(kId, true);
    const HWND bar = CreateWindowW(L"SCROLLBAR", L"", WS_CHILD, 0, 0, 20, 90, host.window(),
                                   nullptr, nullptr, nullptr);
    object.Attach(bar);
    SendMessageW(bar, SBM_ENABLE_ARROWS, 4, 0);
}

TEST_F(ScrollbarTest, UnknownArrowsAreReported) {
    expectAssertReport("EnablesUnknownArrows", "src/QkCustScroll", 677);
}

}  // namespace
