#include "QkDlg/QkFlatDropBtn.h"

namespace QkDlg {

QkFlatDropBtn::QkFlatDropBtn(UINT id) : QkFlatSplitBtn(id) {
    // Nothing is bound yet, so both messages go to no window and the standard control's own split
    // style stays as the template made it. Deliberate: without the split its arrow would send no
    // BCN_DROPDOWN, and hosts that listen for it would lose their menu.
    BUTTON_SPLITINFO info{};
    info.mask = BCSIF_STYLE;
    SendMessageW(m_hWnd, BCM_GETSPLITINFO, 0, reinterpret_cast<LPARAM>(&info));
    info.uSplitStyle |= BCSS_NOSPLIT;
    SendMessageW(m_hWnd, BCM_SETSPLITINFO, 0, reinterpret_cast<LPARAM>(&info));
    m_nSplitStyle = info.uSplitStyle;
}

}  // namespace QkDlg
