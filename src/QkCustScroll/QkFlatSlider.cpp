#include "QkDlg/QkFlatSlider.h"

#include <algorithm>
#include <array>

#include "QkCustCtrl/SubclassGlue.h"
#include "QkCustScroll/ScrollLayout.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

// At 96 DPI.
constexpr int kThumbLength = 10;
constexpr int kThumbThickness = 20;
constexpr int kTrackThickness = 4;

constexpr int kPagesPerRange = 5;

// A trackbar's codes by those of a scroll bar.
constexpr std::array kTrackCodes{TB_LINEUP,   TB_LINEDOWN,      TB_PAGEUP,
                                 TB_PAGEDOWN, TB_THUMBPOSITION, TB_THUMBTRACK,
                                 TB_TOP,      TB_BOTTOM,        TB_ENDTRACK};

}  // namespace

QkFlatSlider::QkFlatSlider(UINT id, bool vertical) : QkFlatScrollbar(id, vertical) {}

QkFlatSlider::~QkFlatSlider() = default;

// Geometry

ScrollRange QkFlatSlider::ThumbRange() const {
    // One position is left at the end: all of them can be reached.
    return {m_nMin, m_nMax, 1};
}

ScrollParts QkFlatSlider::LayOut() const {
    const RECT client = clientRect(m_hWnd);
    return layOutSlider({{client.right, client.bottom}, IsVertical()},
                        {scaled(kThumbLength), scaled(kThumbThickness), scaled(kTrackThickness)},
                        ThumbRange(), m_nPos);
}

int QkFlatSlider::HitTest(int x, int y) const {
    const RECT client = clientRect(m_hWnd);
    const int hit = QkFlatScrollbar::HitTest(x, y);
    if (hit != kNoPart || !PtInRect(&client, {x, y}))
        return hit;
    return IsVertical() ? QkFlatScrollbar::HitTest(m_rcTrack.left, y)
                        : QkFlatScrollbar::HitTest(x, m_rcTrack.top);
}

void QkFlatSlider::CalcFocusRect() {
    m_rcFocus = clientRect(m_hWnd);
}

// Requests

int QkFlatSlider::TranslateRequest(int request) const {
    return kTrackCodes.at(static_cast<std::size_t>(request));
}

int QkFlatSlider::PositionAfter(int request, int position) const {
    // A fifth of a short range is nothing, but a click on the track is to move the thumb.
    const std::int64_t page = std::max(m_nPage, 1);
    std::int64_t next = m_nPos;
    switch (request) {
        case SB_LINEUP: --next; break;
        case SB_LINEDOWN: ++next; break;
        case SB_PAGEUP: next -= page; break;
        case SB_PAGEDOWN: next += page; break;
        case SB_TOP: next = m_nMin; break;
        case SB_BOTTOM: next = m_nMax; break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION: next = position; break;
        default: return m_nPos;
    }
    return clampedPosition(next, ThumbRange());
}

bool QkFlatSlider::Request(int request, int position) {
    const int next = PositionAfter(request, position);
    if (next != m_nPos) {
        SetPosition(next, false);
        repaintNow(m_hWnd);
    }
    return QkFlatScrollbar::Request(request, position);
}

// Attach

void QkFlatSlider::Attach(HWND hwnd) {
    QkFlatScrollbar::Attach(hwnd);
    const std::int64_t range = std::int64_t{m_nMax} - m_nMin;
    SetPage(static_cast<int>(range / kPagesPerRange), true);
}

}  // namespace QkDlg
