#include "QkDlg/QkFlatScrollbar.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <utility>

#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkCustScroll/ScrollLayout.h"
#include "QkCustScroll/ScrollRepeat.h"
#include "QkUtil/Handles.h"
#include "QkUtil/MouseTracking.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr UINT_PTR kRepeatTimer = 10551;
constexpr UINT kRepeatTick = 200;
constexpr int kNothingPressed = -1;
constexpr UINT kDefaultWheelLines = 3;

// What a press on each part asks for; the thumb is dragged.
constexpr std::array kPartRequests{SB_ENDSCROLL,  SB_LINEUP,   SB_PAGEUP,
                                   SB_THUMBTRACK, SB_PAGEDOWN, SB_LINEDOWN};

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

/// Tells, after code of the host has run, whether a control is still there and bound as it was.
class Lifeline {
public:
    explicit Lifeline(QkCustomControl& control)
        : m_hwnd(control.GetWindow()), m_reference(reinterpret_cast<DWORD_PTR>(&control)) {}

    [[nodiscard]] bool holds() const {
        return livingControl<QkFlatScrollbar>(m_hwnd, m_reference) != nullptr;
    }

private:
    HWND m_hwnd;
    DWORD_PTR m_reference;
};

UINT wheelLines(bool horizontal) {
    UINT lines = kDefaultWheelLines;
    SystemParametersInfoW(horizontal ? SPI_GETWHEELSCROLLCHARS : SPI_GETWHEELSCROLLLINES, 0, &lines,
                          0);
    return lines;
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
      m_nArrowSize(GetSystemMetrics(vertical ? SM_CYVSCROLL : SM_CXHSCROLL)) {}

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
    return hitScrollPart(Parts(), IsVertical(), x, y);
}

int QkFlatScrollbar::PartUnderMouse() const {
    return m_bBarPressed || m_bBarHover ? HitTest(m_mouse.x, m_mouse.y) : kNoPart;
}

bool QkFlatScrollbar::IsMirrored() const {
    return !IsVertical() && (GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
}

bool QkFlatScrollbar::IsOn(int part) const {
    if (part == kArrow1)
        return m_bArrow1Enabled;
    if (part == kArrow2)
        return m_bArrow2Enabled;
    return part != kNoPart;
}

// Mouse, wheel and keyboard

int QkFlatScrollbar::TranslateRequest(int request) const {
    return request;
}

bool QkFlatScrollbar::Request(int request, int position) {
    const Lifeline lifeline(*this);
    const WORD high = carriesPosition(request) ? static_cast<WORD>(position) : WORD{0};
    SendMessageW(GetParent(m_hWnd), IsVertical() ? WM_VSCROLL : WM_HSCROLL,
                 MAKEWPARAM(TranslateRequest(request), high), reinterpret_cast<LPARAM>(m_hWnd));
    return lifeline.holds();
}

bool QkFlatScrollbar::TakeFocus() {
    const Lifeline lifeline(*this);
    if ((GetWindowLongPtrW(m_hWnd, GWL_STYLE) & WS_TABSTOP) != 0)
        SetFocus(m_hWnd);
    return lifeline.holds();
}

/// Whoever had the capture before may tell the host of its loss.
bool QkFlatScrollbar::Hold(int part) {
    m_bBarPressed = true;
    m_nHitPart = part;
    if (GetCapture() == m_hWnd)
        return true;
    const Lifeline lifeline(*this);
    SetCapture(m_hWnd);
    return lifeline.holds();
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
    if (!Hold(on ? part : kNothingPressed))
        return;
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
    if (!Hold(kThumb))
        return;
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
        trackMouseLeave(m_hWnd);
    }
    if (m_bDragging)
        DragToMouse();
    else if (PartUnderMouse() != before)
        Refresh();
}

void QkFlatScrollbar::OnLButtonUp(int x, int y) {
    m_mouse = {x, y};
    EndPress(HitTest(x, y) != kNoPart);
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
        trackMouseLeave(m_hWnd);
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
    if (off || m_bBarPressed)
        return true;
    m_keyScrolls = true;
    if (Request(*request, 0))
        Refresh();
    return true;
}

/// Nothing of the mouse and the keyboard goes on in the window that the bar is bound to next.
void QkFlatScrollbar::ForgetInput() {
    EndRepeat();
    m_bBarPressed = m_bBarHover = m_bDragging = m_keyScrolls = m_repeatPosted = false;
    m_nHitPart = kNothingPressed;
    m_wheelRest = 0;
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
            passOnUnseen(message);
            // Once more later: EnableScrollBar may show the standard bar after this message.
            InvalidateRect(message.hwnd, nullptr, FALSE);
            return 0;
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
            if (std::exchange(m_keyScrolls, false))
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
            bar->ForgetInput();
            bar->Detach();
        }
    } else if (bar) {
        return bar->OnMessage(id, wParam, lParam);
    }
    return DefSubclassProc(hwnd, id, wParam, lParam);
}

// Attach

void QkFlatScrollbar::ResetValues() {
    m_nMin = m_nPage = m_nPos = m_nTrackPos = 0;
    m_nMax = kNewMaximum;
    m_bArrow1Enabled = m_bArrow2Enabled = true;
}

void QkFlatScrollbar::Attach(HWND hwnd) {
    // Nothing is left of the last window's bar.
    if (std::exchange(m_wasBound, true) && m_hWnd != hwnd)
        ResetValues();
    // Unbound as yet, so that nobody but the standard bar answers.
    TakeOver(hwnd);
    ForgetInput();
    QkCustomControl::Attach(hwnd);
    installSubclass(hwnd, BarProc, *this);
    Changed(true);
}

}  // namespace QkDlg
