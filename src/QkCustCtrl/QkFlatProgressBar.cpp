#include "QkDlg/QkFlatProgressBar.h"

#include "QkCustCtrl/CachedBrush.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/ProgressLayout.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Rects.h"
#include "QkUtil/WindowClass.h"

namespace QkDlg {

namespace {

constexpr UINT_PTR kMarqueeTimer = 10551;
constexpr UINT kMarqueeTick = 30;
constexpr int kBorderWidth = 2;
constexpr COLORREF kErrorColour = RGB(218, 38, 38);
constexpr COLORREF kPausedColour = RGB(218, 203, 38);

}  // namespace

QkFlatProgressBar::QkFlatProgressBar(UINT id) : QkCustomControl(id, nullptr, {}, 0) {}

QkFlatProgressBar::~QkFlatProgressBar() {
    EndMarquee();
    // A window that is still there goes on with its standard look.
    if (m_hWnd)
        InvalidateRect(m_hWnd, nullptr, TRUE);
}

bool QkFlatProgressBar::HasStyle(LONG_PTR style) const {
    return (GetWindowLongPtrW(m_hWnd, GWL_STYLE) & style) != 0;
}

// PBM_ and TBM_ messages share their numbers, and so do PBS_ and TBS_ styles.
bool QkFlatProgressBar::IsVertical() const {
    return HasStyle(m_trackbar ? TBS_VERT : PBS_VERTICAL);
}

bool QkFlatProgressBar::IsMarquee() const {
    return !m_trackbar && HasStyle(PBS_MARQUEE);
}

// Painting

HBRUSH QkFlatProgressBar::OnCtlColor(HDC hdc, HWND) {
    static CachedBrush brush;
    SetBkMode(hdc, TRANSPARENT);
    return brush.of(RGB(255, 255, 255));
}

COLORREF QkFlatProgressBar::BarColour() const {
    if (m_trackbar)
        return GetUIColor(UICLR_ACCENT);
    const LRESULT set = AskStandard(PBM_GETBARCOLOR);
    if (static_cast<COLORREF>(set) != CLR_DEFAULT)
        return static_cast<COLORREF>(set);
    // Asked of the window: Wine's bar keeps no state, so whoever has one there answers for it.
    switch (SendMessageW(m_hWnd, PBM_GETSTATE, 0, 0)) {
        case PBST_ERROR: return kErrorColour;
        case PBST_PAUSED: return kPausedColour;
        default: return GetUIColor(UICLR_ACCENT);
    }
}

Progress QkFlatProgressBar::CurrentProgress() const {
    if (m_trackbar)
        return {static_cast<int>(AskStandard(TBM_GETPOS)),
                static_cast<int>(AskStandard(TBM_GETRANGEMIN)),
                static_cast<int>(AskStandard(TBM_GETRANGEMAX))};
    PBRANGE range{};
    AskStandard(PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
    return {static_cast<int>(AskStandard(PBM_GETPOS)), range.iLow, range.iHigh};
}

RECT QkFlatProgressBar::FillRectangle(const RECT& client) const {
    if (m_marqueeOn && IsMarquee())
        return toWin32(
            marqueeBlock(fromWin32(client), IsVertical(), {m_marqueeTrail, m_marqueeLead}));
    return toWin32(progressFill(fromWin32(client), IsVertical(), CurrentProgress()));
}

void QkFlatProgressBar::PaintBar(HDC hdc) {
    if (!m_hWnd)
        return;
    const RECT client = clientRect(m_hWnd);
    const RECT inside = frameRect(hdc, client, GetUIColor(UICLR_LINE), kBorderWidth);
    if (IsRectEmpty(&inside))
        return;
    // The border is on the screen already, and the copy must not wipe it.
    const SavedDc clipped(hdc);
    IntersectClipRect(hdc, inside.left, inside.top, inside.right, inside.bottom);
    const Canvas canvas(hdc, m_hWnd, {client.right, client.bottom});
    SetBkMode(canvas.dc(), TRANSPARENT);
    fillRect(canvas.dc(), client, GetUIColor(UICLR_FACE));
    fillRect(canvas.dc(), FillRectangle(client), BarColour());
}

// Marquee

void QkFlatProgressBar::SetMarquee(bool on) {
    if (on && !IsMarquee())
        return;
    if (!on) {
        EndMarquee();
    } else if (!m_marqueeOn) {
        m_marqueeOn = true;
        m_marqueeTimer = SetTimer(m_hWnd, kMarqueeTimer, kMarqueeTick, nullptr);
        m_marqueeTrail = m_marqueeLead = 0;
    }
    Refresh();
}

void QkFlatProgressBar::EndMarquee() {
    m_marqueeOn = false;
    if (m_marqueeTimer == 0)
        return;
    KillTimer(m_hWnd, m_marqueeTimer);
    m_marqueeTimer = 0;
    m_marqueeTrail = m_marqueeLead = 0;
}

void QkFlatProgressBar::OnTimerTick(UINT_PTR timer) {
    if (timer != kMarqueeTimer || !m_hWnd)
        return;
    if (!IsMarquee()) {
        EndMarquee();
        Refresh();
        return;
    }
    const RECT client = clientRect(m_hWnd);
    const int extent = IsVertical() ? client.bottom : client.right;
    const Marquee next = advanced({m_marqueeTrail, m_marqueeLead}, extent);
    m_marqueeTrail = next.trail;
    m_marqueeLead = next.lead;
    // At once: a busy host that leaves paint messages waiting still shows that it is alive.
    const WindowDc window(m_hWnd);
    if (window)
        PaintBar(window.get());
}

// Messages

/// What the standard control invalidates is what changes in its own drawing, which is not ours.
LRESULT QkFlatProgressBar::PassOnAndCompare(const Message& message, DWORD_PTR referenceData) {
    const RECT client = clientRect(m_hWnd);
    const Rect before = fromWin32(FillRectangle(client));
    const LRESULT result = message.passOn();
    auto* const bar = livingControl<QkFlatProgressBar>(message.hwnd, referenceData);
    if (bar && fromWin32(bar->FillRectangle(client)) != before)
        bar->Refresh();
    return result;
}

bool QkFlatProgressBar::MovesTrackbar(UINT message) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_MOUSEMOVE:
        case WM_MOUSEWHEEL:
        case WM_KEYDOWN:
        case WM_TIMER:
        case TBM_SETPOS:
        case TBM_SETRANGE:
        case TBM_SETRANGEMIN:
        case TBM_SETRANGEMAX: return true;
        default: return false;
    }
}

LRESULT CALLBACK QkFlatProgressBar::BarProc(HWND hwnd, UINT id, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR subclassId, DWORD_PTR referenceData) {
    const Message message{hwnd, id, wParam, lParam};
    auto* const bar = livingControl<QkFlatProgressBar>(hwnd, referenceData);
    if (id == WM_NCDESTROY) {
        RemoveWindowSubclass(hwnd, BarProc, subclassId);
        if (bar) {
            bar->EndMarquee();
            bar->Detach();
        }
        return message.passOn();
    }
    if (!bar)
        return message.passOn();

    switch (id) {
        case WM_PAINT: {
            const PaintDc paint(hwnd);
            bar->PaintBar(paint.get());
            return 1;
        }
        // Painting covers all of it.
        case WM_ERASEBKGND: return 1;
        case WM_PRINTCLIENT: bar->PaintBar(reinterpret_cast<HDC>(wParam)); return 1;
        case WM_NCPAINT: return 1;
        default: break;
    }
    if (bar->m_trackbar)
        return MovesTrackbar(id) ? bar->PassOnAndCompare(message, referenceData) : message.passOn();

    switch (id) {
        case WM_TIMER: bar->OnTimerTick(wParam); return 0;
        case PBM_SETMARQUEE: bar->SetMarquee(wParam != 0); break;
        case PBM_SETPOS:
        case PBM_DELTAPOS:
        case PBM_STEPIT:
        case PBM_SETRANGE:
        case PBM_SETRANGE32: return bar->PassOnAndCompare(message, referenceData);
        case PBM_SETBARCOLOR:
        case PBM_SETSTATE: bar->Refresh(); break;
        default: break;
    }
    return message.passOn();
}

// Attach

void QkFlatProgressBar::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
    m_trackbar = windowClassIs(hwnd, TRACKBAR_CLASSW);
    installSubclass(hwnd, BarProc, *this);
    Refresh();
}

}  // namespace QkDlg
