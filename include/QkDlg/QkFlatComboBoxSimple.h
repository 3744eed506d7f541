#pragma once

#include "QkDlg/QkFlatComboBoxBase.h"

namespace QkDlg {

/// A flat combo box of style CBS_SIMPLE: a flat edit and, always open under it, the list.
class QkFlatComboBoxSimple : public QkFlatComboBoxBase {
public:
    /// For the window of that control id.
    explicit QkFlatComboBoxSimple(UINT id);
    ~QkFlatComboBoxSimple() override;

    void Attach(HWND hwnd) override;
    /// Nothing: edit and list are windows of their own.
    void Paint(HDC hdc) override;
};

}  // namespace QkDlg
