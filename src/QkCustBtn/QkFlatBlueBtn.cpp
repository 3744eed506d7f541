#include "QkDlg/QkFlatBlueBtn.h"

namespace QkDlg {

QkFlatBlueBtn::QkFlatBlueBtn(UINT id) : QkFlatBtn(id) {
    m_clrText = GetUIColor(UICLR_WHITE);
    m_clrBk = m_clrHover = m_clrPressed = GetUIColor(UICLR_ACCENT);
    m_bOuterFrame = true;
}

int QkFlatBlueBtn::OnAnimateColor(COLORREF) {
    return 0;
}

}  // namespace QkDlg
