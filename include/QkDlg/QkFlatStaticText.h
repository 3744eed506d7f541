#pragma once

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// A flat label over a standard one ("static"). The standard control draws the text, in this
/// object's font and colours and without a ground of its own. A text that is too wide shrinks the
/// font, down to 9 points; a label never grows its font back.
class QkFlatStaticText : public QkCustomControl {
public:
    /// Black on white in the default font.
    explicit QkFlatStaticText(UINT id);
    /// On white. An empty face and a size of 0 mean the default; size in points.
    QkFlatStaticText(UINT id, std::wstring_view fontFace, int fontSize, COLORREF textColour);
    ~QkFlatStaticText() override;

    void Attach(HWND hwnd) override;
    HBRUSH OnCtlColor(HDC hdc, HWND hwnd) override;
    /// A label shows no focus.
    void DrawFocus(HDC hdc) override;

    /// Shrinks the font or grows the window so that `text` fits.
    void FitText(const std::wstring& text);
    /// Fills the client area with the effective background colour.
    void FillGround();
    /// Whether the label draws itself instead of the standard control: a disabled text.
    [[nodiscard]] bool DrawsItself() const;
    /// Draws the disabled text, on the ground that the parent gives (WM_CTLCOLORSTATIC).
    void PaintDisabled(HDC hdc);

private:
    void UseFont();
};

}  // namespace QkDlg
