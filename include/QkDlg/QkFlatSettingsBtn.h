#pragma once

#include "QkDlg/QkFlatBtn.h"

namespace QkDlg {

/// A gear without a caption, as large as its picture, with a border only under the mouse. Attach
/// resizes the window about its centre.
class QkFlatSettingsBtn : public QkFlatBtn {
public:
    /// For the window of that control id.
    explicit QkFlatSettingsBtn(UINT id);

    void Attach(HWND hwnd) override;
    /// Chooses the gear for the colour scheme anew and repaints.
    void Refresh() override;
    void OnMouseMove(int x, int y) override;
    void OnMouseLeave() override;

private:
    void ChooseImage();
};

}  // namespace QkDlg
