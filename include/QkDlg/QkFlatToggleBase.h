#pragma once

#include "QkDlg/QkFlatBtn.h"

namespace QkDlg {

/// Base of the two-state buttons. The checked state stays with the standard control, so
/// CheckDlgButton, BM_SETCHECK and BM_GETCHECK work as ever; the face is the parent's background,
/// and hovering does not fade it.
class QkFlatToggleBase : public QkFlatBtn {
public:
    /// For the window of that control id.
    explicit QkFlatToggleBase(UINT id);
    ~QkFlatToggleBase() override;

    int OnAnimateColor(COLORREF colour) override;
    int GetContentWidth() override;

    /// The window's client width without the box or circle and the padding of the flat check box
    /// or radio button on it: the room for a caption, in pixels. The whole client width when the
    /// window has neither.
    [[nodiscard]] static int GetCaptionRoom(HWND hwnd);

protected:
    /// Lets GetCaptionRoom find the object. Once, by the constructor of a class.
    void RegisterToggle();

    /// True when the standard control is checked; indeterminate counts as not checked.
    [[nodiscard]] bool IsChecked() const;
};

}  // namespace QkDlg
