#pragma once

#include "QkDlg/QkFlatBtn.h"

namespace QkDlg {

/// A flat split button over a standard one (BS_SPLITBUTTON): caption on the left, drop arrow on the
/// right. The standard control sends BN_CLICKED for its face and BCN_DROPDOWN for its arrow.
class QkFlatSplitBtn : public QkFlatBtn {
public:
    /// For the window of that control id.
    explicit QkFlatSplitBtn(UINT id);

    int OnAnimateColor(COLORREF colour) override;

    /// The split style (BCSS_...) that the variant asks for; the standard control keeps the style
    /// of its template.
    [[nodiscard]] UINT32 GetSplitStyle() const { return m_nSplitStyle; }

protected:
    UINT32 m_nSplitStyle = 0;  ///< what GetSplitStyle returns
};

}  // namespace QkDlg
