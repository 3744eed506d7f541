#pragma once

#include "QkDlg/QkFlatToggleBase.h"

namespace QkDlg {

/// The pictures of a check box or radio button.
struct ToggleImages {
    ImageIdList checked;
    ImageIdList unchecked;
    ImageIdList checkedDisabled;
    ImageIdList uncheckedDisabled;
};

/// A two-state button with a picture for each state beside a left-aligned caption. The standard
/// style BS_LEFTTEXT puts the picture on the right.
class QkFlatBmpToggleBase : public QkFlatToggleBase {
public:
    QkFlatBmpToggleBase(UINT id, const ToggleImages& images);

    void Attach(HWND hwnd) override;
    void OnSetCheck(bool checked) override;
    void UpdateImage() override;

protected:
    /// What box and circle are drawn in on the window colour of a high-contrast scheme.
    [[nodiscard]] COLORREF HighContrastInk() const;

    /// How thick their lines are there, for a picture of that width; pixels.
    [[nodiscard]] static int HighContrastLine(int pictureWidth);

    ImageIdList m_imgChecked;
    ImageIdList m_imgUnchecked;
    ImageIdList m_imgCheckedDisabled;
    ImageIdList m_imgUncheckedDisabled;
};

}  // namespace QkDlg
