#pragma once

#include "QkDlg/ColourFade.h"
#include "QkDlg/QkFlatComboBoxBase.h"

namespace QkDlg {

/// Base of the combo boxes whose list drops down: an arrow button that fades to the hover colour
/// under the mouse.
class QkFlatComboBoxDropdownBase : public QkFlatComboBoxBase {
public:
    ~QkFlatComboBoxDropdownBase() override;

    /// The concrete class has measured the arrow (UpdateImage) and set m_buttonWidth; a width of 0
    /// raises the assertion report.
    void Attach(HWND hwnd) override;
    void Refresh() override;
    int OnAnimateColor(COLORREF colour) override;
    void UpdateImage() override;
    void OnMouseMove(int x, int y) override;
    void OnMouseLeave() override;
    void Paint(HDC hdc) override;

    /// The arrow button in client coordinates.
    [[nodiscard]] const RECT& GetButtonRect() const { return m_buttonRect; }

protected:
    /// For the window of that control id.
    explicit QkFlatComboBoxDropdownBase(UINT id);

    /// The ground and the button, without the border. `dc` has the client's coordinates.
    void PaintFace(HDC dc);

    /// Takes the room beside the edit for the button's; as long as there is none, that of a
    /// drop-down list.
    void MeasureButton(HWND combo, HWND edit);

    int m_buttonWidth = 0;              ///< width of the arrow button
    RECT m_buttonRect{};                ///< the arrow button
    POINT m_arrowPos{};                 ///< the arrow's left top corner
    SIZE m_arrowSize{};                 ///< of the arrow bitmap
    COLORREF m_hoverColour = kNoColor;  ///< the button's colour of the fade, or none
    bool m_tracking = false;            ///< the fade has started, leaving will be told
    ColourFade m_fade;                  ///< the hover fade

private:
    void DrawArrow(HDC dc, int x, int y);
    void LayOutButton();
    void DrawButton(HDC dc, POINT at);
    void RedrawButton();
};

}  // namespace QkDlg
