#pragma once

#include "QkDlg/QkFlatToggleBase.h"

namespace QkDlg {

/// The pictures of a check box or radio button.
struct ToggleImages {
    ImageIdList checked;            ///< checked and enabled
    ImageIdList unchecked;          ///< not checked, enabled
    ImageIdList checkedDisabled;    ///< checked and disabled
    ImageIdList uncheckedDisabled;  ///< not checked, disabled
};

/// A two-state button with a picture for each state beside a left-aligned caption. The standard
/// style BS_LEFTTEXT puts the picture on the right.
class QkFlatBmpToggleBase : public QkFlatToggleBase {
public:
    /// For the window of that control id. The pictures are those of the derived class.
    QkFlatBmpToggleBase(UINT id, const ToggleImages& images);

    void Attach(HWND hwnd) override;
    void OnSetCheck(bool checked) override;
    void UpdateImage() override;

protected:
    /// What box and circle are drawn in on the window colour of a high-contrast scheme.
    [[nodiscard]] COLORREF HighContrastInk() const;

    /// How thick their lines are there, for a picture of that width; pixels.
    [[nodiscard]] static int HighContrastLine(int pictureWidth);

    ImageIdList m_imgChecked;            ///< checked and enabled
    ImageIdList m_imgUnchecked;          ///< not checked, enabled
    ImageIdList m_imgCheckedDisabled;    ///< checked and disabled
    ImageIdList m_imgUncheckedDisabled;  ///< not checked, disabled
};

}  // namespace QkDlg
