// How QkFlatScrollbar looks.

#include <algorithm>

#include "QkCustScroll/ScrollArrows.h"
#include "QkCustScroll/ScrollLayout.h"
#include "QkDlg/QkFlatScrollbar.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr COLORREF kThumbColour = 0xE6E6E6;
constexpr int kFocusInset = 2;

}  // namespace

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
    // A short or narrow bar has smaller arrows.
    const int size = static_cast<int>(
        std::min({static_cast<LONG>(m_nArrowSize), m_rcArrow1.right - m_rcArrow1.left,
                  m_rcArrow1.bottom - m_rcArrow1.top}));
    m_arrows = ScrollArrows::of({IsVertical(), IsMirrored(), size});
    m_arrows->draw(dc, box, part == kArrow2, on);
}

void QkFlatScrollbar::CalcFocusRect() {
    m_rcFocus = m_rcThumb;
    const int inset = scaled(kFocusInset);
    InflateRect(&m_rcFocus, -inset, -inset);
}

}  // namespace QkDlg
