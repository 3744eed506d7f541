#pragma once

#include <string>

#include "QkDlg/QkFlatComboBoxDropdownBase.h"

namespace QkDlg {

/// A flat combo box of style CBS_DROPDOWNLIST: the chosen item, drawn by the control (or by the
/// host, if the combo is owner-drawn), an arrow button and a list that drops down.
class QkFlatComboBoxDropdownList : public QkFlatComboBoxDropdownBase {
public:
    /// For the window of that control id.
    explicit QkFlatComboBoxDropdownList(UINT id);
    ~QkFlatComboBoxDropdownList() override;

    void Attach(HWND hwnd) override;
    void Paint(HDC hdc) override;

private:
    [[nodiscard]] std::wstring ItemText() const;
    void DrawItemText(HDC dc, const RECT& area);
    void LetHostDrawItem(HDC dc, const RECT& area) const;
};

}  // namespace QkDlg
