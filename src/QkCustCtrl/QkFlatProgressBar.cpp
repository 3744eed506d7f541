#include "QkDlg/QkFlatProgressBar.h"

#include "QkCustCtrl/CachedBrush.h"
#include "QkCustCtrl/LiveControls.h"
#include "QkCustCtrl/ProgressLayout.h"
#include "QkCustCtrl/SubclassGlue.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Rects.h"

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
}

bool QkFlatProgressBar::HasStyle(LONG_PTR style) const {
    return (GetWindowLongPtrW(m_hWnd, GWL_STYLE) & style) != 0;
}

// Painting

HBRUSH QkFlatProgressBar::OnCtlColor(HDC hdc, HWND) {
    static CachedBrush brush;
    SetBkMode(hdc, TRANSPARENT);
    return brush.of(RGB(255, 255, 255));
}

COLORREF QkFlatProgressBar::BarColour() const {
    const LRESULT set = SendMessageW(m_hWnd, PBM_GETBARCOLOR, 0, 0);
    if (static_cast<COLORREF>(set) != CLR_DEFAULT)
        return static_cast<COLORREF>(set);
    switch (SendMessageW(m_hWnd, PBM_GETSTATE, 0, 0)) {
        case PBST_ERROR: return kErrorColour;
        case PBST_PAUSED: return kPausedColour;
        default: return GetUIColor(UICLR_ACCENT);
    }
}

RECT QkFlatProgressBar::FillRectangle(const RECT& client) const {
    const bool vertical = HasStyle(PBS_VERTICAL);
    if (m_marqueeOn && HasStyle(PBS_MARQUEE))
        return toWin32(marqueeBlock(fromWin32(client), vertical, {m_marqueeTrail, m_marqueeLead}));
    PBRANGE range{};
    SendMessageW(m_hWnd, PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
    const auto position = static_cast<int>(SendMessageW(m_hWnd, PBM_GETPOS, 0, 0));
    return toWin32(progressFill(fromWin32(client), vertical, {position, range.iLow, range.iHigh}));
}

void QkFlatProgressBar::PaintBar(HDC hdc) {
    if (!m_hWnd)
        return;
    const RECT client = clientRect(m_hWnd);
    {
        const Canvas canvas(hdc, m_hWnd, {client.right, client.bottom});
        SetBkMode(canvas.dc(), TRANSPARENT);
        fillRect(canvas.dc(), client, GetUIColor(UICLR_FACE));
        fillRect(canvas.dc(), FillRectangle(client), BarColour());
    }
    frameRect(hdc, client, GetUIColor(UICLR_LINE), kBorderWidth);
}

// Marquee

void QkFlatProgressBar::SetMarquee(bool on) {
    if (on && !HasStyle(PBS_MARQUEE))
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
    if (!HasStyle(PBS_MARQUEE)) {
        EndMarquee();
        Refresh();
        return;
    }
    const RECT client = clientRect(m_hWnd);
    const int extent = HasStyle(PBS_VERTICAL) ? client.bottom : client.right;
    const Marquee next = advanced({m_marqueeTrail, m_marqueeLead}, extent);
    m_marqueeTrail = next.trail;
    m_marqueeLead = next.lead;
    // At once: a busy host that leaves paint messages waiting still shows that it is alive.
    const WindowDc window(m_hWnd);
    if (window)
        PaintBar(window.get());
}

// Messages

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
        case WM_PRINTCLIENT: bar->PaintBar(reinterpret_cast<HDC>(wParam)); return 1;
        case WM_NCPAINT: return 1;
        case WM_TIMER: bar->OnTimerTick(wParam); return 0;
        case PBM_SETMARQUEE: bar->SetMarquee(wParam != 0); break;
        case PBM_SETPOS:
        case PBM_DELTAPOS:
        case PBM_STEPIT:
        case PBM_SETRANGE:
        case PBM_SETRANGE32: {
            // The standard bar invalidates what changes in its own drawing, which is not ours.
            const RECT client = clientRect(hwnd);
            const Rect before = fromWin32(bar->FillRectangle(client));
            const LRESULT result = message.passOn();
            if (livingControl<QkFlatProgressBar>(hwnd, referenceData) &&
                fromWin32(bar->FillRectangle(client)) != before)
                bar->Refresh();
            return result;
        }
        case PBM_SETBARCOLOR:
        case PBM_SETSTATE: bar->Refresh(); break;
        default: break;
    }
    return message.passOn();
}

// Attach

void QkFlatProgressBar::Attach(HWND hwnd) {
    QkCustomControl::Attach(hwnd);
    installSubclass(hwnd, BarProc, *this);
    Refresh();
}

}  // namespace QkDlg
