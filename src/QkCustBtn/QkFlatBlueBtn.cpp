#include "QkDlg/QkFlatBlueBtn.h"

namespace QkDlg {

QkFlatBlueBtn::QkFlatBlueBtn(UINT id) : QkFlatBtn(id) {
    m_clrText = GetUIColor(UICLR_WHITE);
    FollowTable(&QkFlatBlueBtn::m_clrBk, UICLR_ACCENT);
    FollowTable(&QkFlatBlueBtn::m_clrHover, UICLR_ACCENT);
    FollowTable(&QkFlatBlueBtn::m_clrPressed, UICLR_ACCENT);
    m_bOuterFrame = true;
}

int QkFlatBlueBtn::OnAnimateColor(COLORREF) {
    return 0;
}

}  // namespace QkDlg
