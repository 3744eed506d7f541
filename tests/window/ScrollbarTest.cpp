#include "QkDlg/QkFlatScrollbar.h"

#include <memory>
#include <tuple>

#include "QkDlg/UiColors.h"
#include "support/ChildProcess.h"
#include "support/WindowTest.h"

using namespace QkDlg;
using namespace QkDlgTest;

namespace {

constexpr UINT_PTR kTimer = 10551;
constexpr COLORREF kTrack = RGB(204, 204, 204);
constexpr COLORREF kThumb = RGB(230, 230, 230);
constexpr COLORREF kGlyph = RGB(121, 121, 121);

class ScrollbarTest : public WindowTest {
protected:
    /// A bar with a track of 400 pixels, the range 0 to 99, pages of 20 and the position 40: a
    /// thumb of 80 pixels that moves 4 pixels from each position to the next.
    void addBar(bool vertical = true, const wchar_t* className = L"SCROLLBAR", DWORD style = 0) {
        DestroyWindow(bar_);
        vertical_ = vertical;
        arrow_ = GetSystemMetrics(vertical ? SM_CYVSCROLL : SM_CXHSCROLL);
        const int length = 400 + 2 * arrow_;
        const RECT place = vertical ? area(9, 9, 30, length) : area(9, 9, length, 30);
        bar_ = host_.add(className, L"", style, place, 5);
        object_ = std::make_unique<QkFlatScrollbar>(5, vertical);
        object_->Attach(bar_);
        set(SIF_RANGE | SIF_PAGE | SIF_POS, 40);
    }
    int set(UINT mask, int position, UINT page = 20) const {
        const SCROLLINFO info{sizeof info, mask, 0, 99, page, position, 0};
        return SetScrollInfo(bar_, SB_CTL, &info, TRUE);
    }
    SCROLLINFO info() const {
        SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
        GetScrollInfo(bar_, SB_CTL, &info);
        return info;
    }
    /// Points along the bar count from where its track begins.
    void moveMouse(int at) const {
        moveTo(bar_, vertical_ ? 15 : arrow_ + at, vertical_ ? arrow_ + at : 15);
    }
    Image shown() const {
        UpdateWindow(bar_);
        return onScreen(bar_);
    }
    COLORREF colourAt(int at) const { return shown().at(15, arrow_ + at); }
    /// What was asked for, with the positions that go with it.
    std::string requests() {
        const auto names = {"up ",    "down ", "page up ", "page down ", "position ",
                            "track ", "top ",  "bottom ",  "end "};
        std::string result;
        for (const Heard& heard : host_.heard()) {
            EXPECT_EQ(heard.message, static_cast<UINT>(vertical_ ? WM_VSCROLL : WM_HSCROLL));
            result += std::data(names)[heard.code];
            result += heard.position ? std::to_string(heard.position) + ' ' : "";
        }
        host_.forget();
        return result;
    }
    std::string clicked(int at) {
        moveMouse(at);
        click();
        return requests();
    }

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
            EXPECT_EQ(clicked(-2), "up end ");
            EXPECT_EQ(clicked(159), "page up end ");
            EXPECT_EQ(clicked(160), "position 40 end ");
            EXPECT_EQ(clicked(240), "page down end ");
            EXPECT_EQ(clicked(401), "down end ");
            SendMessageW(bar_, SBM_ENABLE_ARROWS, ESB_DISABLE_RTDN, 0);
            EXPECT_EQ(clicked(401), "");
            SendMessageW(bar_, WM_LBUTTONDBLCLK, 0, MAKELPARAM(5, 5));
            SendMessageW(bar_, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
            EXPECT_EQ(requests(), "up end ") << "a double click, at the other arrow";
            EXPECT_EQ(info().nPos, 40);
        }
    }
}

TEST_F(ScrollbarTest, DragReportsPositionsAndEndsOnceWithTheLast) {
    addBar();
    moveMouse(170);
    press();
    moveMouse(174);
    EXPECT_EQ(std::pair(info().nTrackPos, info().nPos), std::pair(41, 40));
    EXPECT_EQ(colourAt(163), kTrack);
    set(SIF_POS, 0);
    EXPECT_EQ(colourAt(164), kAccent) << "the thumb stays with the mouse";
    moveMouse(900);
    release();
    EXPECT_EQ(requests(), "track 41 track 80 position 80 end ");
    EXPECT_EQ(GetCapture(), nullptr);
    moveMouse(330);
    press();
    moveMouse(290);
    SetCapture(host_.window());
    release();
    EXPECT_EQ(requests(), "track 70 position 70 end ");
}

TEST_F(ScrollbarTest, HeldArrowRepeatsFromTheFourthTickUnderTheMouseUntilItIsReleased) {
    addBar();
    moveMouse(-2);
    press();
    pump(650);
    EXPECT_EQ(requests(), "up ");
    EXPECT_TRUE(pumpUntil([&] { return host_.heard().size() == 2; }, 1000));
    EXPECT_EQ(requests(), "up up ");
    moveMouse(300);
    EXPECT_TRUE(pumpUntil([&] { return requests() == "page down "; }));
    // The timer's tick posts a press, and the button comes up before that is dispatched.
    MSG tick{};
    ASSERT_TRUE(GetMessageW(&tick, bar_, WM_TIMER, WM_TIMER));
    DispatchMessageW(&tick);
    SendMessageW(bar_, WM_LBUTTONUP, 0, 0);
    release();
    EXPECT_EQ(requests(), "end ");
    EXPECT_FALSE(KillTimer(bar_, kTimer));
}

TEST_F(ScrollbarTest, HostThatKnowsNothingOfItIsAnsweredAsByAStandardBar) {
    addBar();
    EXPECT_EQ(set(SIF_POS, 500), 80) << "as far as the page lets it";
    EXPECT_EQ(SetScrollPos(bar_, SB_CTL, 30, TRUE), 80) << "the position before";
    EXPECT_TRUE(SetScrollRange(bar_, SB_CTL, INT_MIN, INT_MAX, TRUE));
    EXPECT_EQ(std::pair(info().nMin, info().nMax), std::pair(INT_MIN, INT_MAX));
    EXPECT_EQ(SendMessageW(bar_, SBM_SETRANGE, 0, 99), 1);
    EXPECT_EQ(SendMessageW(bar_, SBM_SETPOS, 150, TRUE), 150) << "stored as it is";
    EXPECT_EQ(GetScrollPos(bar_, SB_CTL), 150);
    set(SIF_POS, 40);
    SCROLLBARINFO bar{};
    bar.cbSize = sizeof bar;
    EXPECT_TRUE(GetScrollBarInfo(bar_, OBJID_CLIENT, &bar));
    EXPECT_EQ(Box(bar.rcScrollBar), windowBox(bar_));
    EXPECT_EQ(Box(bar.dxyLineButton, bar.xyThumbTop, bar.xyThumbBottom, 0),
              Box(arrow_, arrow_ + 160, arrow_ + 240, 0));
    set(SIF_PAGE | SIF_DISABLENOSCROLL, 0, 100);
    GetScrollBarInfo(bar_, OBJID_CLIENT, &bar);
    EXPECT_EQ(bar.rgstate[1], DWORD{STATE_SYSTEM_UNAVAILABLE});
    EXPECT_EQ(bar.rgstate[3], 0U);
    EXPECT_EQ(bar.rgstate[4], DWORD{STATE_SYSTEM_INVISIBLE});
    EXPECT_EQ(clicked(-2), "");
    EXPECT_TRUE(EnableScrollBar(bar_, SB_CTL, ESB_DISABLE_BOTH));
    EXPECT_EQ(colourAt(10), kFace) << "the disabled thumb that fills the track";
    // The values go to the standard bar with the object's end, and to the next object.
    for (const int last : {99, 40}) {
        addBar();
        SetScrollRange(bar_, SB_CTL, 40, last, TRUE);
        const auto values = [this] { return std::tuple(info().nMin, info().nMax, info().nPage); };
        const auto before = values();
        object_.reset();
        EXPECT_EQ(values(), before);
        object_ = std::make_unique<QkFlatScrollbar>(5, true);
        object_->Attach(bar_);
        EXPECT_EQ(values(), before);
        EXPECT_EQ(info().nPos, 40);
    }
}

TEST_F(ScrollbarTest, ParentMayEndOrDisableTheBarOrOpenADialogWhileItIsTold) {
    std::function<void()> act;
    host_.onMessage([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_VSCROLL && act)
            std::exchange(act, nullptr)();
        return std::nullopt;
    });
    const std::function<void()> ends[] = {[&] { DestroyWindow(bar_); }, [&] { object_.reset(); },
                                          [&] { EnableWindow(bar_, FALSE); }};
    for (const auto& end : ends) {
        for (const int at : {-2, 10, 170}) {
            addBar();
            moveMouse(at);
            act = end;
            press();
            if (IsWindow(bar_))
                moveMouse(at + 6);
            EXPECT_EQ(GetCapture(), nullptr) << at;
            EXPECT_FALSE(KillTimer(bar_, kTimer)) << at;
            release();
        }
    }
    addBar();
    host_.forget();
    act = [&] {
        EnableWindow(host_.window(), FALSE);
        pump(1100);
        EnableWindow(host_.window(), TRUE);
    };
    moveMouse(-2);
    press();
    EXPECT_EQ(requests(), "up end ") << "no second dialog";
    release();
}

// As in the second run of a dialog. The repeat that is on its way goes with the window.
TEST_F(ScrollbarTest, PressThatItsWindowTookAlongIsForgottenInTheNext) {
    addBar();
    moveMouse(-2);
    press();
    for (int tick = 0; tick < 4; ++tick)
        object_->OnRepeatTick();
    DestroyWindow(bar_);
    release();
    moveMouse(-2);
    bar_ = host_.add(L"SCROLLBAR", L"", SBS_VERT, area(9, 9, 30, 400 + 2 * arrow_), 5);
    object_->Attach(bar_);
    moveMouse(-2);
    EXPECT_EQ(onScreen(bar_).at(1, 1), GetUIColor(UICLR_HOVER));
    host_.forget();
    EXPECT_EQ(clicked(-2), "up end ");
}

TEST_F(ScrollbarTest, KeysAndWheelScrollToo) {
    addBar(true, L"STATIC", WS_TABSTOP);
    clicked(10);
    EXPECT_EQ(GetFocus(), bar_);
    for (const int key : {VK_PRIOR, VK_NEXT, VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_HOME, VK_END})
        keyTap(key);
    EXPECT_EQ(requests(),
              "page up end page down end up end down end up end down end top end bottom end ");
    int lines = 0;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    wheel(1);
    EXPECT_EQ(host_.timesHeard({WM_VSCROLL, 5, SB_LINEUP}), lines);
}

TEST_F(ScrollbarTest, ShowsEachState) {
    addBar();
    const Image normal = shown();
    EXPECT_EQ(normal.count(kThumb), 28 * 78);
    EXPECT_EQ(normal.count(kTrack), 30 * 400 - 28 * 78) << "the thumb's frame as well";
    EXPECT_TRUE(normal.contains(kGlyph));
    moveMouse(200);
    EXPECT_EQ(colourAt(160), RGB(101, 167, 232)) << "hot";
    moveMouse(-1);
    EXPECT_EQ(shown().at(0, 0), kHover);
    press();
    EXPECT_EQ(shown().at(0, 0), RGB(210, 232, 253));
    release();
    moveAway();
    SendMessageW(bar_, SBM_ENABLE_ARROWS, ESB_DISABLE_BOTH, 0);
    EXPECT_FALSE(shown().contains(kGlyph));
    SendMessageW(bar_, SBM_ENABLE_ARROWS, ESB_ENABLE_BOTH, 0);
    EnableWindow(bar_, FALSE);
    EXPECT_EQ(colourAt(10), RGB(223, 223, 223));
    EnableWindow(bar_, TRUE);
    EXPECT_THAT(shown(), looksLike(normal));
}

TEST_F(ScrollbarTest, MirroredBarBeginsOnTheRightAndItsArrowsPointOutwards) {
    addBar(false);
    const Image plain = shown();
    SetWindowLongPtrW(bar_, GWL_EXSTYLE, WS_EX_LAYOUTRTL);
    InvalidateRect(bar_, nullptr, FALSE);
    EXPECT_THAT(shown(), looksLike(plain)) << "at the middle both look alike";
    set(SIF_POS, 0);
    EXPECT_EQ(shown().at(plain.width() - arrow_ - 40, 15), kThumb);
    EXPECT_EQ(clicked(-2), "up end ");
    focus(bar_);
    keyTap(VK_LEFT);
    EXPECT_EQ(requests(), "down end ") << "to where the key points";
}

TEST_F(ScrollbarTest, TakesTheSystemsColoursInHighContrast) {
    addBar();
    const SystemColours dark({{COLOR_WINDOW, RGB(0, 0, 0)}, {COLOR_WINDOWFRAME, RGB(255, 255, 0)}});
    const HighContrast contrast;
    InvalidateRect(bar_, nullptr, FALSE);
    EXPECT_EQ(colourAt(160), RGB(255, 255, 0));
    EXPECT_EQ(colourAt(200), RGB(0, 0, 0));
    EXPECT_TRUE(shown().contains(kWhite)) << "the arrows";
    moveMouse(-1);
    EXPECT_EQ(shown().at(0, 0), GetSysColor(COLOR_HIGHLIGHT));
}

const BrokenContract kUnknownArrows("src/QkCustScroll", 677, [] {
    const HostDialog host;
    QkFlatScrollbar object(5, true);
    object.Attach(host.window());
    SendMessageW(host.window(), SBM_ENABLE_ARROWS, 4, 0);
});

}  // namespace
