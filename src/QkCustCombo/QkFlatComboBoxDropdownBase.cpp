#include "QkDlg/QkFlatComboBoxDropdownBase.h"

#include "QkCustCombo/ComboLayout.h"
#include "QkUtil/Bitmaps.h"
#include "QkUtil/Canvas.h"
#include "QkUtil/Metrics.h"
#include "QkUtil/MouseTracking.h"
#include "QkUtil/Rects.h"
#include "QkUtil/Resources.h"
#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNoButtonWidth{"src/QkCustCombo", 192};

constexpr UINT kFirstArrowId = 62096;
constexpr UINT kFirstDisabledArrowId = 62104;

constexpr int kListOverhang = 2;
constexpr int kListGap = 1;

}  // namespace

QkFlatComboBoxDropdownBase::QkFlatComboBoxDropdownBase(UINT id) : QkFlatComboBoxBase(id) {
    m_listOverhang = kListOverhang;
    m_listGap = kListGap;
}

QkFlatComboBoxDropdownBase::~QkFlatComboBoxDropdownBase() = default;

// Painting

void QkFlatComboBoxDropdownBase::Paint(HDC hdc) {
    if (!m_hWnd)
        return;
    const RECT client = clientRect(m_hWnd);
    const Canvas canvas(hdc, m_hWnd, {client.right, client.bottom});
    PaintFace(canvas.dc());
    frameRect(canvas.dc(), client, GetUIColor(UICLR_LINE));
}

void QkFlatComboBoxDropdownBase::PaintFace(HDC dc) {
    LayOutButton();
    fillRect(dc, clientRect(m_hWnd), GetBkColor());
    DrawButton(dc, {m_buttonRect.left, m_buttonRect.top});
}

/// The button with its left top corner at `at` of the DC.
void QkFlatComboBoxDropdownBase::DrawButton(HDC dc, POINT at) {
    const POINT shift{at.x - m_buttonRect.left, at.y - m_buttonRect.top};
    RECT button = m_buttonRect;
    OffsetRect(&button, shift.x, shift.y);
    const bool faded = m_hoverColour != kNoColor && !IsHighContrast();
    fillRect(dc, button, faded ? m_hoverColour : GetBkColor());
    DrawArrow(dc, m_arrowPos.x + shift.x, m_arrowPos.y + shift.y);
    fillRect(dc, {button.left, button.top, button.left + 1, button.bottom}, GetUIColor(UICLR_LINE));
}

void QkFlatComboBoxDropdownBase::DrawArrow(HDC dc, int x, int y) {
    const UINT first = IsWindowEnabled(m_hWnd) ? kFirstArrowId : kFirstDisabledArrowId;
    const FreshPicture arrow(first + dpiBucket(screenDpi()));
    if (arrow.get())
        DrawImage(dc, arrow.get(), x, y);
}

void QkFlatComboBoxDropdownBase::RedrawButton() {
    if (!m_hWnd)
        return;
    LayOutButton();
    const WindowDc window(m_hWnd);
    if (!window)
        return;
    const Rect button = fromWin32(m_buttonRect);
    const Canvas canvas(window.get(), m_hWnd, {button.width(), button.height()},
                        {button.left, button.top});
    const bool direct = canvas.dc() == window.get();
    const POINT at = direct ? POINT{button.left, button.top} : POINT{0, 0};
    DrawButton(canvas.dc(), at);
    RECT border = clientRect(m_hWnd);
    OffsetRect(&border, at.x - button.left, at.y - button.top);
    frameRect(canvas.dc(), border, GetUIColor(UICLR_LINE));
}

/// Afresh for each use, since the window may have another size by now.
void QkFlatComboBoxDropdownBase::LayOutButton() {
    const RECT client = clientRect(m_hWnd);
    // Only now the edit may have got its room.
    if (client.right != m_buttonRect.right && !IsItsOwnItem())
        MeasureButton(m_hWnd, m_comboInfo.hwndItem);
    const ArrowButton layout = layOutArrowButton({client.right, client.bottom}, m_buttonWidth,
                                                 {m_arrowSize.cx, m_arrowSize.cy});
    m_buttonRect = toWin32(layout.button);
    m_arrowPos = {layout.arrowX, layout.arrowY};
}

void QkFlatComboBoxDropdownBase::MeasureButton(HWND combo, HWND edit) {
    const int beside =
        static_cast<int>(windowRectIn(combo, combo).right - windowRectIn(edit, combo).right - 1);
    m_buttonWidth = beside > 0 ? beside : arrowButtonWidth(m_arrowSize.cx, captionPadding());
}

void QkFlatComboBoxDropdownBase::UpdateImage() {
    const Size arrow = bitmapSize(FreshPicture(kFirstArrowId + dpiBucket(screenDpi())).get());
    m_arrowSize = {arrow.width, arrow.height};
}

void QkFlatComboBoxDropdownBase::Refresh() {
    UpdateImage();
    QkFlatComboBoxBase::Refresh();
}

// Mouse

int QkFlatComboBoxDropdownBase::OnAnimateColor(COLORREF colour) {
    m_hoverColour = colour;
    RedrawButton();
    return 1;
}

void QkFlatComboBoxDropdownBase::OnMouseMove(int x, int y) {
    LayOutButton();
    if (m_tracking || !PtInRect(&m_buttonRect, {x, y}) || IsLowColourDisplay() || IsHighContrast())
        return;
    trackMouseLeave(m_hWnd);
    m_tracking = true;
    RenewTableColours();
    if (!m_fade.IsRunning())
        m_fade.Start(m_hWnd, GetBkColor(), m_clrHover);
}

void QkFlatComboBoxDropdownBase::OnMouseLeave() {
    if (!m_tracking)
        return;
    m_fade.Stop();
    m_tracking = false;
    m_hoverColour = kNoColor;
    RedrawButton();
}

// Attach

void QkFlatComboBoxDropdownBase::Attach(HWND hwnd) {
    if (m_buttonWidth == 0)
        QkLib::reportAssertFailure(kNoButtonWidth);
    QkFlatComboBoxBase::Attach(hwnd);
    m_fade.Stop();
    m_tracking = false;
    m_hoverColour = kNoColor;
    LayOutButton();
}

}  // namespace QkDlg
