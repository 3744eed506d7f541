#pragma once

#include "QkDlg/QkFlatComboBoxDropdownBase.h"

namespace QkDlg {

/// A flat combo box of style CBS_DROPDOWN: an edit, an arrow button and a list that drops down.
class QkFlatComboBoxDropdown : public QkFlatComboBoxDropdownBase {
public:
    /// For the window of that control id.
    explicit QkFlatComboBoxDropdown(UINT id);
    ~QkFlatComboBoxDropdown() override;

    void Attach(HWND hwnd) override;
    void Paint(HDC hdc) override;
};

}  // namespace QkDlg
