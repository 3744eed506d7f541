// Position, range and page of QkFlatScrollbar, and the messages about them.

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>

#include "QkCustCtrl/SubclassGlue.h"
#include "QkCustScroll/ScrollLayout.h"
#include "QkDlg/QkFlatScrollbar.h"
#include "QkUtil/Rects.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kUnknownArrows{"src/QkCustScroll", 677};

// SetScrollPos asks in this undocumented way for the position before.
constexpr UINT kPositionBefore = 0x1000;

/// Hosts built for old systems leave the last member out.
bool isComplete(const SCROLLINFO* info) {
    return info && (info->cbSize == sizeof *info || info->cbSize == sizeof *info - sizeof(int));
}

}  // namespace

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
    // No page is larger than the range, and this too is read back.
    if (info.fMask & (SIF_RANGE | SIF_PAGE)) {
        const std::int64_t range = std::max<std::int64_t>(std::int64_t{m_nMax} - m_nMin + 1, 0);
        SetPage(static_cast<int>(std::min<std::int64_t>(m_nPage, range)), false);
    }
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
        if (!enabled || (part != kNoPart && !IsOn(part)))
            state |= STATE_SYSTEM_UNAVAILABLE;
        if (part != kNoPart && part == m_nHitPart)
            state |= STATE_SYSTEM_PRESSED;
        info.rgstate[part] = state;
    }
    if (!IsWindowVisible(m_hWnd))
        info.rgstate[0] |= STATE_SYSTEM_INVISIBLE;
    return true;
}

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

// The standard bar's own state

void QkFlatScrollbar::TakeOver(HWND hwnd) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    // A new standard bar begins with an empty range at 0, where a flat one has 100 positions.
    if (!SendMessageW(hwnd, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&info)) ||
        (info.nMin == 0 && info.nMax == 0))
        return;
    m_nMin = info.nMin;
    m_nMax = info.nMax;
    m_nPage = static_cast<INT32>(std::min<UINT>(info.nPage, INT_MAX));
    m_nPos = info.nPos;
    SCROLLBARINFO state{};
    state.cbSize = sizeof state;
    // A bar that is disabled as a whole tells nothing about its arrows.
    if (!IsWindowEnabled(hwnd) ||
        !SendMessageW(hwnd, SBM_GETSCROLLBARINFO, 0, reinterpret_cast<LPARAM>(&state)))
        return;
    m_bArrow1Enabled = (state.rgstate[kArrow1] & STATE_SYSTEM_UNAVAILABLE) == 0;
    m_bArrow2Enabled = (state.rgstate[kArrow2] & STATE_SYSTEM_UNAVAILABLE) == 0;
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

}  // namespace QkDlg
