#include "QkDlg/QkFlatBlueBtn.h"

namespace QkDlg {

QkFlatBlueBtn::QkFlatBlueBtn(UINT id) : QkFlatBtn(id) {
    UseAccentColours();
    FollowTable(&QkFlatBlueBtn::m_clrHover, UICLR_ACCENT);
    m_bOuterFrame = true;
}

int QkFlatBlueBtn::OnAnimateColor(COLORREF) {
    return 0;
}

}  // namespace QkDlg
