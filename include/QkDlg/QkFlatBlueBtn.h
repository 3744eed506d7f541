#pragma once

#include "QkDlg/QkFlatBtn.h"

namespace QkDlg {

/// The accented push button for a dialog's main action: white caption on the accent colour, no
/// fade, and a ring on the parent while it is hot or pressed.
class QkFlatBlueBtn : public QkFlatBtn {
public:
    /// For the window of that control id.
    explicit QkFlatBlueBtn(UINT id);

    int OnAnimateColor(COLORREF colour) override;
};

}  // namespace QkDlg
