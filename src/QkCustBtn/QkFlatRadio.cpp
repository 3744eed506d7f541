#include "QkDlg/QkFlatRadio.h"

#include "QkUtil/Bitmaps.h"
#include "QkUtil/Rects.h"

namespace QkDlg {

namespace {

constexpr UINT32 kChecked = 62056;
constexpr UINT32 kCheckedDisabled = 62064;
constexpr UINT32 kUncheckedDisabled = 62072;
constexpr UINT32 kUnchecked = 62080;

constexpr COLORREF kRim = 0xC0C0C0;

constexpr int kFocusInset = 2;

void drawEllipse(HDC hdc, const RECT& box, HBRUSH brush, int penWidth, COLORREF penColour) {
    const UniquePen pen(CreatePen(PS_SOLID, penWidth, penColour));
    const Selection penSelected(hdc, pen.get());
    const Selection brushSelected(hdc, brush);
    Ellipse(hdc, box.left, box.top, box.right, box.bottom);
}

}  // namespace

QkFlatRadio::QkFlatRadio(UINT id)
    : QkFlatBmpToggleBase(id,
                          {ImageIdList::fromFirstId(kChecked), ImageIdList::fromFirstId(kUnchecked),
                           ImageIdList::fromFirstId(kCheckedDisabled),
                           ImageIdList::fromFirstId(kUncheckedDisabled)}) {
    m_nLayout = DT_LEFT;
    RegisterToggle();
}

void QkFlatRadio::DrawImage(HDC hdc, HBITMAP bitmap, int x, int y) {
    if (!IsHighContrast()) {
        QkFlatBmpToggleBase::DrawImage(hdc, bitmap, x, y);
        return;
    }
    // The width serves for both axes, also of a picture that is not square.
    const int width = bitmapSize(bitmap).width;
    const int line = HighContrastLine(width);
    const COLORREF ink = HighContrastInk();
    const UniqueBrush ground = solidBrush(GetSysColor(COLOR_WINDOW));
    drawEllipse(hdc, {x + 1, y, x + 1 + width, y + width}, ground.get(), 1, kRim);
    drawEllipse(hdc, {x + 2, y + 1, x + width, y + width - 1}, ground.get(), line, ink);
    if (!IsChecked())
        return;
    const UniqueBrush dot = solidBrush(ink);
    const int left = x + 2 * line + 1;
    const int top = y + 2 * line;
    const int side = width - 4 * line;
    drawEllipse(hdc, {left, top, left + side, top + side}, dot.get(), 1, ink);
}

void QkFlatRadio::CalcFocusRect() {
    const bool hasCaption = AskStandard(WM_GETTEXTLENGTH) > 0;
    if (hasCaption && !m_bSizeToImage) {
        QkCustomControl::CalcFocusRect();
        return;
    }
    m_rcFocus = windowRectIn(m_hWnd, m_hWnd);
    if (!hasCaption)
        InflateRect(&m_rcFocus, -kFocusInset, -kFocusInset);
}

}  // namespace QkDlg
