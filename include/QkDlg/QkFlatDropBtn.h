#pragma once

#include "QkDlg/QkFlatSplitBtn.h"

namespace QkDlg {

/// A split button that is meant to open its drop-down from anywhere on it. The host opens its menu
/// on BCN_DROPDOWN and on BN_CLICKED alike.
class QkFlatDropBtn : public QkFlatSplitBtn {
public:
    /// For the window of that control id.
    explicit QkFlatDropBtn(UINT id);
};

}  // namespace QkDlg
