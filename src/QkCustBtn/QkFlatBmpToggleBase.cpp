#include "QkDlg/QkFlatBmpToggleBase.h"

namespace QkDlg {

QkFlatBmpToggleBase::QkFlatBmpToggleBase(UINT id, const ToggleImages& images)
    : QkFlatToggleBase(id),
      m_imgChecked(images.checked),
      m_imgUnchecked(images.unchecked),
      m_imgCheckedDisabled(images.checkedDisabled),
      m_imgUncheckedDisabled(images.uncheckedDisabled) {
    m_bDrawImage = false;
    m_clrPressed = kNoColor;
    m_bImageGap = false;
    m_bGreyDisabled = false;
    m_images = m_imgUnchecked;
    m_bExplicitFocusRect = true;
}

void QkFlatBmpToggleBase::UpdateImage() {
    const bool checked = IsChecked();
    if (IsWindowEnabled(m_hWnd))
        m_images = checked ? m_imgChecked : m_imgUnchecked;
    else
        m_images = checked ? m_imgCheckedDisabled : m_imgUncheckedDisabled;
}

void QkFlatBmpToggleBase::OnSetCheck(bool) {
    Refresh();
}

COLORREF QkFlatBmpToggleBase::HighContrastInk() const {
    constexpr COLORREF colourBits = 0xFFFFFF;
    return IsWindowEnabled(m_hWnd) ? GetSysColor(COLOR_WINDOW) ^ colourBits
                                   : GetUIColor(UICLR_GREY);
}

int QkFlatBmpToggleBase::HighContrastLine(int pictureWidth) {
    constexpr int thinBelow = 32;
    constexpr int thin = 2;
    constexpr int share = 16;
    return pictureWidth < thinBelow ? thin : pictureWidth / share;
}

void QkFlatBmpToggleBase::Attach(HWND hwnd) {
    m_images = SendMessageW(hwnd, BM_GETCHECK, 0, 0) == BST_CHECKED ? m_imgChecked : m_imgUnchecked;
    m_bImageRight = (GetWindowLongPtrW(hwnd, GWL_STYLE) & BS_LEFTTEXT) != 0 ? 1 : 0;
    QkFlatToggleBase::Attach(hwnd);
}

}  // namespace QkDlg
