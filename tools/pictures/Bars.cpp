#include "QkDlg/QkFlatProgressBar.h"
#include "QkDlg/QkFlatScrollbar.h"
#include "QkDlg/QkFlatSlider.h"
#include "pictures/ControlType.h"

namespace QkPictures {
namespace {

// Progress bars

constexpr UINT_PTR kStateAnswer = 1;
constexpr int kMarqueeTicks = 24;
// The flat bar's own timer, whose ticks are sent here one by one: a picture shows a certain moment.
constexpr WPARAM kMarqueeTimer = 10551;

LRESULT CALLBACK answerState(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                             DWORD_PTR state) {
    if (message == PBM_GETSTATE)
        return static_cast<LRESULT>(state);
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(control, answerState, id);
    return DefSubclassProc(control, message, wParam, lParam);
}

void setState(HWND control, WPARAM state) {
    SendMessageW(control, PBM_SETSTATE, state, 0);
    // Wine's progress bar has no states.
    if (static_cast<WPARAM>(SendMessageW(control, PBM_GETSTATE, 0, 0)) != state)
        SetWindowSubclass(control, answerState, kStateAnswer, state);
}

void fail(HWND control) {
    setState(control, PBST_ERROR);
}

void pause(HWND control) {
    setState(control, PBST_PAUSED);
}

void setColour(HWND control) {
    SendMessageW(control, PBM_SETBARCOLOR, 0, RGB(70, 150, 90));
}

template <int Percent>
void advance(HWND control) {
    SendMessageW(control, PBM_SETPOS, Percent, 0);
}

void runMarquee(HWND control) {
    SendMessageW(control, PBM_SETMARQUEE, TRUE, 0);
    KillTimer(control, kMarqueeTimer);
    for (int i = 0; i < kMarqueeTicks; ++i)
        SendMessageW(control, WM_TIMER, kMarqueeTimer, 0);
}

constexpr Column kProgressColumns[] = {
    {L"Normal"},
    {.label = L"Error", .begin = fail},
    {.label = L"Paused", .begin = pause},
    {.label = L"Own colour", .begin = setColour},
    {L"Disabled", State::Disabled},
};

constexpr QkDlg::Size kUpright{20, 80};

constexpr Specimen kProgress[] = {
    {.label = L"0 %"},
    {.label = L"60 %", .fill = advance<60>},
    {.label = L"100 %", .fill = advance<100>},
    {.label = L"Marquee", .style = PBS_MARQUEE, .show = runMarquee},
    {.label = L"Vertical", .style = PBS_VERTICAL, .size = kUpright, .fill = advance<60>},
    {.label = L"Mirrored", .fill = advance<60>, .mirrored = true},
};

// Scroll bars and sliders

template <typename Bar, bool Upright>
std::unique_ptr<QkDlg::QkCustomControl> makeBar() {
    return std::make_unique<Bar>(kControlId, Upright);
}

template <int Position, int Page>
void setRange(HWND control) {
    const SCROLLINFO info{sizeof info, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 99, Page, Position, 0};
    SetScrollInfo(control, SB_CTL, &info, TRUE);
}

void disableFirstArrow(HWND control) {
    SendMessageW(control, SBM_ENABLE_ARROWS, ESB_DISABLE_LTUP, 0);
}

void disableArrows(HWND control) {
    SendMessageW(control, SBM_ENABLE_ARROWS, ESB_DISABLE_BOTH, 0);
}

// Along the bar; the first number goes down an upright one.
constexpr Spot kArrow{5, 50};
constexpr Spot kThumb{42, 50};
constexpr Spot kTrack{72, 50};

constexpr Column kScrollColumns[] = {
    {L"Normal"},
    {L"Arrow hot", State::Hot, kArrow},
    {L"Arrow pressed", State::Pressed, kArrow},
    {L"Thumb hot", State::Hot, kThumb},
    {L"Thumb pressed", State::Pressed, kThumb},
    {L"Track pressed", State::Pressed, kTrack},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
};

// Columns whose spots meet another part in some specimens.
constexpr unsigned kWithoutThumb = 0b11100111;
constexpr unsigned kWithoutTrack = 0b11011111;

constexpr auto makeUprightScrollbar = makeBar<QkDlg::QkFlatScrollbar, true>;

constexpr Specimen kScrollbars[] = {
    {.label = L"Horizontal", .fill = setRange<30, 25>},
    {.label = L"No page", .fill = setRange<40, 0>},
    {.label = L"Nothing to scroll", .fill = setRange<0, 100>, .columns = kWithoutTrack},
    {.label = L"An arrow disabled",
     .fill = setRange<0, 25>,
     .show = disableFirstArrow,
     .columns = kWithoutThumb},
    {.label = L"Both disabled", .fill = setRange<30, 25>, .show = disableArrows},
    {.label = L"Mirrored", .fill = setRange<30, 25>, .mirrored = true, .columns = kWithoutThumb},
    {.label = L"Vertical",
     .style = SBS_VERT,
     .size = {17, 100},
     .fill = setRange<30, 25>,
     .make = makeUprightScrollbar},
    {.label = L"Vertical, short",
     .style = SBS_VERT,
     .size = {17, 40},
     .fill = setRange<30, 25>,
     .columns = kWithoutThumb & kWithoutTrack,
     .make = makeUprightScrollbar},
};

template <int Position>
void slideTo(HWND control) {
    SendMessageW(control, TBM_SETPOS, TRUE, Position);
}

constexpr Column kSliderColumns[] = {
    {L"Normal"},
    {L"Hot", State::Hot, {42, 50}},
    {L"Pressed", State::Pressed, {42, 50}},
    {L"Focused", State::Focused},
    {L"Disabled", State::Disabled},
};

constexpr auto makeUprightSlider = makeBar<QkDlg::QkFlatSlider, true>;

// Where the mouse is not over the thumb.
constexpr unsigned kWithoutMouse = 0b11001;

constexpr Specimen kSliders[] = {
    {.label = L"In between", .show = slideTo<41>},
    {.label = L"At the start", .show = slideTo<0>, .columns = kWithoutMouse},
    {.label = L"At the end", .show = slideTo<100>, .columns = kWithoutMouse},
    {.label = L"Mirrored", .show = slideTo<41>, .mirrored = true},
    {.label = L"Vertical",
     .style = SBS_VERT,
     .size = {24, 90},
     .show = slideTo<41>,
     .make = makeUprightSlider},
};

constexpr ControlType kTypes[] = {
    {.name = L"progress",
     .className = PROGRESS_CLASSW,
     .size = {120, 20},
     .make = make<QkDlg::QkFlatProgressBar>,
     .columns = kProgressColumns,
     .specimens = kProgress},
    {.name = L"scrollbar",
     .className = WC_SCROLLBARW,
     .style = WS_TABSTOP,
     .size = {110, 17},
     .make = makeBar<QkDlg::QkFlatScrollbar, false>,
     .columns = kScrollColumns,
     .specimens = kScrollbars},
    {.name = L"slider",
     .className = WC_SCROLLBARW,
     .style = WS_TABSTOP,
     .size = {120, 24},
     .make = makeBar<QkDlg::QkFlatSlider, false>,
     .columns = kSliderColumns,
     .specimens = kSliders},
};

}  // namespace

std::span<const ControlType> barTypes() {
    return kTypes;
}

}  // namespace QkPictures
