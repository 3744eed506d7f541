#include "QkDlg/QkFlatScrollbar.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <utility>

#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkCustScroll/ScrollArrows.h"
#include "QkCustScroll/ScrollLayout.h"
#include "QkCustScroll/ScrollRepeat.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kUnknownArrows{"src/QkCustScroll", 677};

constexpr UINT_PTR kRepeatTimer = 10551;
constexpr UINT kRepeatTick = 200;
constexpr COLORREF kThumbColour = 0xE6E6E6;
constexpr int kFocusInset = 2;
constexpr int kNothingPressed = -1;
constexpr UINT kDefaultWheelLines = 3;

// SetScrollPos asks in this undocumented way for the position before.
constexpr UINT kPositionBefore = 0x1000;

constexpr int kNone = static_cast<int>(ScrollPart::None);
constexpr int kArrow1 = static_cast<int>(ScrollPart::Arrow1);
constexpr int kThumb = static_cast<int>(ScrollPart::Thumb);
constexpr int kArrow2 = static_cast<int>(ScrollPart::Arrow2);

// What a press on each part asks for; the thumb is dragged.
constexpr std::array kPartRequests{SB_ENDSCROLL,  SB_LINEUP,   SB_PAGEUP,
                                   SB_THUMBTRACK, SB_PAGEDOWN, SB_LINEDOWN};

void requestMouseLeave(HWND hwnd) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof track;
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = hwnd;
    TrackMouseEvent(&track);
}

bool carriesPosition(int request) {
    return request == SB_THUMBTRACK || request == SB_THUMBPOSITION;
}

/// What a key of a bar asks for. In a mirrored bar the left arrow key goes where it points.
std::optional<int> keyRequest(WPARAM key, bool mirrored) {
    switch (key) {
        case VK_PRIOR: return SB_PAGEUP;
        case VK_NEXT: return SB_PAGEDOWN;
        case VK_UP: return SB_LINEUP;
        case VK_DOWN: return SB_LINEDOWN;
        case VK_LEFT: return mirrored ? SB_LINEDOWN : SB_LINEUP;
        case VK_RIGHT: return mirrored ? SB_LINEUP : SB_LINEDOWN;
        case VK_HOME: return SB_TOP;
        case VK_END: return SB_BOTTOM;
        default: return std::nullopt;
    }
}

UINT wheelLines(bool horizontal) {
    UINT lines = kDefaultWheelLines;
    SystemParametersInfoW(horizontal ? SPI_GETWHEELSCROLLCHARS : SPI_GETWHEELSCROLLLINES, 0, &lines,
                          0);
    return lines;
}

/// Hosts built for old systems leave the last member out.
bool isComplete(const SCROLLINFO* info) {
    return info && (info->cbSize == sizeof *info || info->cbSize == sizeof *info - sizeof(int));
}

}  // namespace

/// A press that is held, of whichever bar of the process: there is one mouse.
struct QkFlatScrollbar::Repeat {
    ScrollRepeat state;
    QkFlatScrollbar* owner = nullptr;
};

QkFlatScrollbar::Repeat& QkFlatScrollbar::SharedRepeat() {
    static Repeat repeat;
    return repeat;
}

QkFlatScrollbar::QkFlatScrollbar(UINT id, bool vertical)
    : QkCustomControl(id, nullptr, {}, 0),
      m_bVertical(vertical ? 1 : 0),
      m_nArrowSize(GetSystemMetrics(vertical ? SM_CYVSCROLL : SM_CXHSCROLL)),
      m_arrows(std::make_unique<ScrollArrows>()) {}

QkFlatScrollbar::~QkFlatScrollbar() {
    EndRepeat();
    if (!m_hWnd)
        return;
    // Unbound first, so that the messages from here on are the standard bar's.
    const HWND hwnd = m_hWnd;
    Detach();
    if (m_bBarPressed && GetCapture() == hwnd)
        ReleaseCapture();
    GiveBack(hwnd);
}

// Geometry

ScrollRange QkFlatScrollbar::ThumbRange() const {
    return {m_nMin, m_nMax, m_nPage};
}

ScrollParts QkFlatScrollbar::LayOut() const {
    const RECT client = clientRect(m_hWnd);
    return layOutScrollbar({{client.right, client.bottom}, IsVertical()}, m_nArrowSize,
                           ThumbRange(), m_nPos);
}

ScrollParts QkFlatScrollbar::Parts() const {
    return {fromWin32(m_rcArrow1), fromWin32(m_rcArrow2), fromWin32(m_rcTrack),
            fromWin32(m_rcThumb)};
}

void QkFlatScrollbar::UpdateParts() {
    ScrollParts parts = LayOut();
    // A dragged thumb stays with the mouse, whatever position it stands for.
    if (m_bDragging)
        parts.thumb = thumbMovedTo(parts, IsVertical(), m_dragOffset);
    m_rcArrow1 = toWin32(parts.arrow1);
    m_rcArrow2 = toWin32(parts.arrow2);
    m_rcTrack = toWin32(parts.track);
    m_rcThumb = toWin32(parts.thumb);
}

void QkFlatScrollbar::Changed(bool redraw) {
    UpdateParts();
    if (redraw)
        Refresh();
}

int QkFlatScrollbar::HitTest(int x, int y) const {
    return static_cast<int>(hitScrollPart(Parts(), IsVertical(), x, y));
}

int QkFlatScrollbar::PartUnderMouse() const {
    return m_bBarPressed || m_bBarHover ? HitTest(m_mouse.x, m_mouse.y) : kNone;
}

bool QkFlatScrollbar::IsMirrored() const {
    return !IsVertical() && (GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
}

bool QkFlatScrollbar::IsOn(int part) const {
    if (part == kArrow1)
        return m_bArrow1Enabled;
    if (part == kArrow2)
        return m_bArrow2Enabled;
    return part != kNone;
}

// Painting

void QkFlatScrollbar::PaintBar(HDC hdc) {
    if (!m_hWnd)
        return;
    const RECT client = clientRect(m_hWnd);
    const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
    const Canvas canvas(hdc, m_hWnd, {client.right, client.bottom});
    fillRect(canvas.dc(), client, GetBkColor());
    PaintThumb(canvas.dc(), enabled);
    PaintArrow(canvas.dc(), kArrow1, enabled);
    PaintArrow(canvas.dc(), kArrow2, enabled);
    DrawFocus(canvas.dc());
}

void QkFlatScrollbar::PaintThumb(HDC dc, bool enabled) {
    const bool contrast = IsHighContrast();
    const COLORREF line = contrast ? GetSysColor(enabled ? COLOR_WINDOWFRAME : COLOR_GRAYTEXT)
                                   : GetUIColor(enabled ? UICLR_LIGHT_GREY : UICLR_LINE);
    fillRect(dc, m_rcTrack, line);
    if (IsRectEmpty(&m_rcThumb))
        return;
    const COLORREF face = enabled ? kThumbColour : GetUIColor(UICLR_FACE);
    fillRect(dc, m_rcThumb, contrast ? GetSysColor(COLOR_WINDOW) : face);
    frameRect(dc, m_rcThumb, line);
    if (!contrast && enabled && (m_bDragging || PartUnderMouse() == kThumb))
        frameRect(dc, m_rcThumb, GetUIColor(m_bBarPressed ? UICLR_ACCENT : UICLR_PRESSED_BORDER));
}

void QkFlatScrollbar::PaintArrow(HDC dc, int part, bool enabled) {
    const RECT& box = part == kArrow1 ? m_rcArrow1 : m_rcArrow2;
    if (IsRectEmpty(&box))
        return;
    const bool on = enabled && IsOn(part);
    const bool pressed = m_nHitPart == part;
    if (on && PartUnderMouse() == part && (pressed || !m_bBarPressed)) {
        if (IsHighContrast())
            frameRect(dc, box, GetSysColor(COLOR_HIGHLIGHT));
        else
            fillRect(dc, box, GetUIColor(pressed ? UICLR_PRESSED : UICLR_HOVER));
    }
    m_arrows->draw(dc, box, {IsVertical(), IsMirrored(), m_nArrowSize}, part == kArrow2, on);
}

void QkFlatScrollbar::CalcFocusRect() {
    m_rcFocus = m_rcThumb;
    const int inset = scaled(kFocusInset);
    InflateRect(&m_rcFocus, -inset, -inset);
}

// Position, range and page

void QkFlatScrollbar::SetPosition(int position, bool redraw) {
    m_nPos = position;
    Changed(redraw);
}

void QkFlatScrollbar::SetRange(int min, int max, bool redraw) {
    m_nMin = min;
    m_nMax = max;
    Changed(redraw);
}

void QkFlatScrollbar::SetPage(int page, bool redraw) {
    m_nPage = std::max(page, 0);
    Changed(redraw);
}

void QkFlatScrollbar::EnableArrows(WPARAM arrows) {
    if (arrows > ESB_DISABLE_BOTH)
        QkLib::reportAssertFailure(kUnknownArrows);
    m_bArrow1Enabled = (arrows & ESB_DISABLE_LTUP) == 0;
    m_bArrow2Enabled = (arrows & ESB_DISABLE_RTDN) == 0;
    Refresh();
}

LRESULT QkFlatScrollbar::SetInfo(const SCROLLINFO& info, bool redraw) {
    const int before = m_nPos;
    if (info.fMask & SIF_RANGE)
        SetRange(info.nMin, info.nMax, false);
    if (info.fMask & SIF_PAGE)
        SetPage(static_cast<int>(std::min<UINT>(info.nPage, INT_MAX)), false);
    if (info.fMask & SIF_POS)
        SetPosition(info.nPos, false);
    // Hosts scroll by asking for any position and reading back what became of it.
    if (info.fMask & (SIF_RANGE | SIF_PAGE | SIF_POS))
        SetPosition(clampedPosition(m_nPos, ThumbRange()), false);
    if (info.fMask & SIF_DISABLENOSCROLL) {
        const bool scrolls = lastPosition(ThumbRange()) > m_nMin;
        EnableArrows(scrolls ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH);
    }
    if (redraw)
        repaintNow(m_hWnd);
    else
        Refresh();
    return info.fMask & kPositionBefore ? before : m_nPos;
}

bool QkFlatScrollbar::GetInfo(SCROLLINFO& info) const {
    if (info.fMask & SIF_RANGE) {
        info.nMin = m_nMin;
        info.nMax = m_nMax;
    }
    if (info.fMask & SIF_PAGE)
        info.nPage = static_cast<UINT>(m_nPage);
    if (info.fMask & SIF_POS)
        info.nPos = m_nPos;
    if ((info.fMask & SIF_TRACKPOS) && info.cbSize == sizeof info)
        info.nTrackPos = m_bDragging ? m_nTrackPos : m_nPos;
    return (info.fMask & SIF_ALL) != 0;
}

bool QkFlatScrollbar::GetBarInfo(SCROLLBARINFO& info) const {
    if (info.cbSize != sizeof info)
        return false;
    const RECT client = clientRect(m_hWnd);
    info.rcScrollBar = client;
    MapWindowPoints(m_hWnd, HWND_DESKTOP, reinterpret_cast<POINT*>(&info.rcScrollBar), 2);
    const auto start = [this](const RECT& rect) { return IsVertical() ? rect.top : rect.left; };
    const auto end = [this](const RECT& rect) { return IsVertical() ? rect.bottom : rect.right; };
    info.dxyLineButton = end(m_rcArrow1) - start(m_rcArrow1);
    info.xyThumbTop = start(m_rcThumb);
    info.xyThumbBottom = end(m_rcThumb);
    info.reserved = 0;

    const std::array<LONG, CCHILDREN_SCROLLBAR + 1> lengths{
        end(client),
        info.dxyLineButton,
        start(m_rcThumb) - start(m_rcTrack),
        end(m_rcThumb) - start(m_rcThumb),
        end(m_rcTrack) - end(m_rcThumb),
        end(m_rcArrow2) - start(m_rcArrow2),
    };
    const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
    for (int part = 0; part <= CCHILDREN_SCROLLBAR; ++part) {
        DWORD state = 0;
        if (lengths.at(static_cast<std::size_t>(part)) <= 0)
            state |= STATE_SYSTEM_INVISIBLE;
        if (!enabled || (part != kNone && !IsOn(part)))
            state |= STATE_SYSTEM_UNAVAILABLE;
        if (part != kNone && part == m_nHitPart)
            state |= STATE_SYSTEM_PRESSED;
        info.rgstate[part] = state;
    }
    if (!IsWindowVisible(m_hWnd))
        info.rgstate[0] |= STATE_SYSTEM_INVISIBLE;
    return true;
}

// Mouse, wheel and keyboard

int QkFlatScrollbar::TranslateRequest(int request) const {
    return request;
}

bool QkFlatScrollbar::Request(int request, int position) {
    const HWND hwnd = m_hWnd;
    const auto reference = reinterpret_cast<DWORD_PTR>(static_cast<QkCustomControl*>(this));
    const WORD high = carriesPosition(request) ? static_cast<WORD>(position) : WORD{0};
    SendMessageW(GetParent(hwnd), IsVertical() ? WM_VSCROLL : WM_HSCROLL,
                 MAKEWPARAM(TranslateRequest(request), high), reinterpret_cast<LPARAM>(hwnd));
    return livingControl<QkFlatScrollbar>(hwnd, reference) != nullptr;
}

bool QkFlatScrollbar::TakeFocus() {
    const HWND hwnd = m_hWnd;
    const auto reference = reinterpret_cast<DWORD_PTR>(static_cast<QkCustomControl*>(this));
    if ((GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_TABSTOP) != 0)
        SetFocus(hwnd);
    return livingControl<QkFlatScrollbar>(hwnd, reference) != nullptr;
}

void QkFlatScrollbar::Hold(int part) {
    m_bBarPressed = true;
    m_nHitPart = part;
    if (GetCapture() != m_hWnd)
        SetCapture(m_hWnd);
}

void QkFlatScrollbar::OnLButtonDown(int x, int y) {
    m_mouse = {x, y};
    if (!m_bBarPressed && !TakeFocus())
        return;
    const int part = HitTest(x, y);
    if (m_bDragging || part == kThumb)
        return BeginDrag();
    const bool on = IsOn(part);
    if (!on && !m_bBarPressed)
        return;
    Hold(on ? part : kNothingPressed);
    BeginRepeat();
    repaintNow(m_hWnd);
    // Last, as the parent may open a dialog or end this bar.
    if (on)
        (void)Request(kPartRequests.at(static_cast<std::size_t>(part)), 0);
}

int QkFlatScrollbar::MouseAlong() const {
    return IsVertical() ? m_mouse.y - m_rcTrack.top : m_mouse.x - m_rcTrack.left;
}

void QkFlatScrollbar::BeginDrag() {
    if (m_bDragging)
        return;
    // A held press that brought the thumb under the mouse ends by dragging it.
    EndRepeat();
    Hold(kThumb);
    m_dragOffset = thumbOffset(Parts(), IsVertical());
    m_grip = MouseAlong() - m_dragOffset;
    m_nTrackPos = clampedPosition(m_nPos, ThumbRange());
    m_bDragging = true;
    repaintNow(m_hWnd);
}

void QkFlatScrollbar::DragToMouse() {
    const int room = thumbRoom(Parts(), IsVertical());
    const int offset = std::clamp(MouseAlong() - m_grip, 0, std::max(room, 0));
    // A thumb that is not moved keeps its exact position.
    if (offset == m_dragOffset)
        return;
    m_dragOffset = offset;
    const int position = positionAt(offset, room, ThumbRange());
    UpdateParts();
    repaintNow(m_hWnd);
    if (position == m_nTrackPos)
        return;
    m_nTrackPos = position;
    (void)Request(SB_THUMBTRACK, position);
}

void QkFlatScrollbar::OnMouseMove(int x, int y) {
    const int before = PartUnderMouse();
    m_mouse = {x, y};
    if (!m_bBarHover) {
        m_bBarHover = true;
        requestMouseLeave(m_hWnd);
    }
    if (m_bDragging)
        DragToMouse();
    else if (PartUnderMouse() != before)
        Refresh();
}

void QkFlatScrollbar::OnLButtonUp(int x, int y) {
    m_mouse = {x, y};
    EndPress(HitTest(x, y) != kNone);
}

/// The button is up, or the mouse belongs to somebody else. A drag is told of once: what comes
/// second finds nothing pressed.
void QkFlatScrollbar::EndPress(bool mouseIsOver) {
    const bool pressed = std::exchange(m_bBarPressed, false);
    const bool dragged = std::exchange(m_bDragging, false);
    m_nHitPart = kNothingPressed;
    EndRepeat();
    if (GetCapture() == m_hWnd)
        ReleaseCapture();
    m_bBarHover = mouseIsOver;
    if (mouseIsOver)
        requestMouseLeave(m_hWnd);
    if (dragged)
        SetPosition(clampedPosition(m_nTrackPos, ThumbRange()), false);
    repaintNow(m_hWnd);
    if (!pressed || (dragged && !Request(SB_THUMBPOSITION, m_nPos)))
        return;
    if (Request(SB_ENDSCROLL, 0))
        Refresh();
}

void QkFlatScrollbar::OnMouseLeave() {
    if (!m_bBarPressed) {
        m_bBarHover = false;
        if (GetCapture() == m_hWnd)
            ReleaseCapture();
    }
    Refresh();
}

void QkFlatScrollbar::OnWheel(int delta, bool horizontal) {
    const UINT lines = wheelLines(horizontal);
    const bool pages = lines == WHEEL_PAGESCROLL;
    const int perNotch = pages ? 1 : static_cast<int>(std::min<UINT>(lines, SHRT_MAX));
    if (m_bBarPressed || perNotch == 0)
        return;
    // What was left of the other direction does not hold a turn back.
    if ((delta < 0) != (m_wheelRest < 0))
        m_wheelRest = 0;
    m_wheelRest += delta;
    const int steps = m_wheelRest * perNotch / WHEEL_DELTA;
    m_wheelRest -= steps * WHEEL_DELTA / perNotch;
    const bool back = steps > 0;
    if (steps == 0 || !IsOn(back ? kArrow1 : kArrow2))
        return;
    const int line = back ? SB_LINEUP : SB_LINEDOWN;
    const int page = back ? SB_PAGEUP : SB_PAGEDOWN;
    for (int step = 0; step < std::abs(steps); ++step) {
        if (!Request(pages ? page : line, 0))
            return;
    }
    if (Request(SB_ENDSCROLL, 0))
        Refresh();
}

bool QkFlatScrollbar::OnKeyDown(WPARAM key) {
    const auto request = keyRequest(key, IsMirrored());
    if (!request)
        return false;
    const bool off = (*request == SB_LINEUP && !m_bArrow1Enabled) ||
                     (*request == SB_LINEDOWN && !m_bArrow2Enabled);
    if (!off && !m_bBarPressed && Request(*request, 0))
        Refresh();
    return true;
}

// Repeated presses

void QkFlatScrollbar::BeginRepeat() {
    Repeat& repeat = SharedRepeat();
    if (repeat.state.running())
        return;
    repeat.state.start();
    repeat.owner = this;
    SetTimer(m_hWnd, kRepeatTimer, kRepeatTick, RepeatProc);
}

void QkFlatScrollbar::EndRepeat() {
    Repeat& repeat = SharedRepeat();
    if (repeat.owner != this)
        return;
    repeat = {};
    KillTimer(m_hWnd, kRepeatTimer);
}

void CALLBACK QkFlatScrollbar::RepeatProc(HWND hwnd, UINT, UINT_PTR timer, DWORD) {
    QkFlatScrollbar* const owner = SharedRepeat().owner;
    if (owner && owner->GetWindow() == hwnd)
        owner->OnRepeatTick();
    else
        KillTimer(hwnd, timer);
}

void QkFlatScrollbar::OnRepeatTick() {
    // A dialog that the parent opened has the mouse now, and nobody will tell of the button.
    if (GetCapture() != m_hWnd || !IsWindowEnabled(GetAncestor(m_hWnd, GA_ROOT)))
        return EndPress(false);
    if (!SharedRepeat().state.tick() || m_repeatPosted)
        return;
    POINT at{};
    GetCursorPos(&at);
    ScreenToClient(m_hWnd, &at);
    const LPARAM point = MAKELPARAM(static_cast<WORD>(at.x), static_cast<WORD>(at.y));
    m_repeatPosted = PostMessageW(m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, point) != FALSE;
}

// Messages

std::optional<LRESULT> QkFlatScrollbar::AnswerBarMessage(UINT message, WPARAM wParam,
                                                         LPARAM lParam) {
    switch (message) {
        case SBM_SETPOS: SetPosition(static_cast<int>(wParam), lParam != 0); return m_nPos;
        case SBM_GETPOS: return m_nPos;
        case SBM_SETRANGE:
        case SBM_SETRANGEREDRAW:
            SetRange(static_cast<int>(wParam), static_cast<int>(lParam),
                     message == SBM_SETRANGEREDRAW);
            return 1;
        case SBM_GETRANGE:
            if (auto* const min = reinterpret_cast<int*>(wParam))
                *min = m_nMin;
            if (auto* const max = reinterpret_cast<int*>(lParam))
                *max = m_nMax;
            return 1;
        case SBM_ENABLE_ARROWS: EnableArrows(wParam); return 1;
        case SBM_SETSCROLLINFO: {
            const auto* const info = reinterpret_cast<const SCROLLINFO*>(lParam);
            return isComplete(info) ? SetInfo(*info, wParam != 0) : 0;
        }
        case SBM_GETSCROLLINFO: {
            auto* const info = reinterpret_cast<SCROLLINFO*>(lParam);
            return isComplete(info) && GetInfo(*info);
        }
        case SBM_GETSCROLLBARINFO: {
            auto* const info = reinterpret_cast<SCROLLBARINFO*>(lParam);
            return info && GetBarInfo(*info);
        }
        default: return std::nullopt;
    }
}

std::optional<LRESULT> QkFlatScrollbar::AnswerSliderMessage(UINT message, WPARAM wParam,
                                                            LPARAM lParam) {
    const bool redraw = wParam != 0;
    const int value = static_cast<int>(lParam);
    switch (message) {
        case TBM_GETPOS: return m_nPos;
        case TBM_GETRANGEMIN: return m_nMin;
        case TBM_GETRANGEMAX: return m_nMax;
        case TBM_SETPOS: SetPosition(value, redraw); return 0;
        case TBM_SETRANGE:
            SetRange(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)),
                     redraw);
            return 0;
        case TBM_SETRANGEMIN: SetRange(value, m_nMax, redraw); return 0;
        case TBM_SETRANGEMAX: SetRange(m_nMin, value, redraw); return 0;
        case TBM_SETPAGESIZE: SetPage(value, redraw); return 0;
        default: return std::nullopt;
    }
}

std::optional<LRESULT> QkFlatScrollbar::AnswerMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const int x = GET_X_LPARAM(lParam);
    const int y = GET_Y_LPARAM(lParam);
    switch (message) {
        case WM_LBUTTONDOWN:
            // A repeat that was on its way when the button came up.
            if (std::exchange(m_repeatPosted, false) && !m_bBarPressed)
                return 0;
            [[fallthrough]];
        case WM_LBUTTONDBLCLK: OnLButtonDown(x, y); return 0;
        case WM_MOUSEMOVE: OnMouseMove(x, y); return 0;
        case WM_LBUTTONUP: OnLButtonUp(x, y); return 0;
        case WM_MOUSELEAVE: OnMouseLeave(); return 0;
        case WM_MOUSEWHEEL: OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), false); return 0;
        case WM_MOUSEHWHEEL: {
            if (IsVertical())
                return std::nullopt;
            const int delta = GET_WHEEL_DELTA_WPARAM(wParam);
            OnWheel(IsMirrored() ? delta : -delta, true);
            return 0;
        }
        case WM_NCHITTEST: return HTCLIENT;
        case WM_CONTEXTMENU:
            // The standard bar's menu scrolls by a position and range that are not the bar's.
            return SendMessageW(GetParent(m_hWnd), message, wParam, lParam);
        default: return std::nullopt;
    }
}

LRESULT QkFlatScrollbar::OnMessage(UINT id, WPARAM wParam, LPARAM lParam) {
    const Message message{m_hWnd, id, wParam, lParam};
    if (const auto answer = AnswerMouse(id, wParam, lParam))
        return *answer;
    if (const auto answer = AnswerBarMessage(id, wParam, lParam))
        return *answer;
    if (const auto answer = AnswerSliderMessage(id, wParam, lParam))
        return *answer;
    switch (id) {
        case WM_PAINT: {
            const PaintDc paint(m_hWnd);
            PaintBar(paint.get());
            return 0;
        }
        case WM_PRINTCLIENT: PaintBar(reinterpret_cast<HDC>(wParam)); return 1;
        case WM_ERASEBKGND: return 1;
        case WM_CAPTURECHANGED: EndPress(false); break;
        case WM_SIZE: Changed(true); break;
        case WM_ENABLE:
            if (!wParam)
                EndPress(false);
            return passOnUnseen(message);
        case WM_SETTEXT: return passOnUnseen(message);
        // Not for the standard bar, which would show a caret of its own.
        case WM_SETFOCUS:
        case WM_KILLFOCUS: Refresh(); return 0;
        case WM_GETDLGCODE: return DLGC_WANTARROWS;
        case WM_KEYDOWN:
            if (OnKeyDown(wParam))
                return 0;
            break;
        case WM_KEYUP:
            if (!keyRequest(wParam, false))
                break;
            (void)Request(SB_ENDSCROLL, 0);
            return 0;
        default: break;
    }
    return message.passOn();
}

LRESULT CALLBACK QkFlatScrollbar::BarProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR subclassId, DWORD_PTR referenceData) {
    auto* const bar = livingControl<QkFlatScrollbar>(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, BarProc, subclassId);
        if (bar) {
            bar->EndRepeat();
            bar->m_bBarPressed = bar->m_bBarHover = bar->m_bDragging = false;
            bar->Detach();
        }
    } else if (bar) {
        return bar->OnMessage(id, wParam, lParam);
    }
    return DefSubclassProc(hwnd, id, wParam, lParam);
}

// Attach

void QkFlatScrollbar::TakeOver(HWND hwnd) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    if (!SendMessageW(hwnd, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&info)) ||
        info.nMin >= info.nMax)
        return;
    m_nMin = info.nMin;
    m_nMax = info.nMax;
    m_nPage = static_cast<INT32>(std::min<UINT>(info.nPage, INT_MAX));
    m_nPos = info.nPos;
}

void QkFlatScrollbar::GiveBack(HWND hwnd) const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    info.nMin = m_nMin;
    info.nMax = m_nMax;
    info.nPage = static_cast<UINT>(m_nPage);
    info.nPos = m_nPos;
    SendMessageW(hwnd, SBM_SETSCROLLINFO, FALSE, reinterpret_cast<LPARAM>(&info));
    InvalidateRect(hwnd, nullptr, TRUE);
}

void QkFlatScrollbar::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
    TakeOver(hwnd);
    installSubclass(hwnd, BarProc, *this);
    Changed(true);
}

}  // namespace QkDlg
