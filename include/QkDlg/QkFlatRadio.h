#pragma once

#include "QkDlg/QkFlatBmpToggleBase.h"

namespace QkDlg {

/// A flat radio button over a standard one, automatic or not.
class QkFlatRadio : public QkFlatBmpToggleBase {
public:
    /// For the window of that control id.
    explicit QkFlatRadio(UINT id);

    void DrawImage(HDC hdc, HBITMAP bitmap, int x, int y) override;
    void CalcFocusRect() override;
};

}  // namespace QkDlg
