#pragma once

#include "QkDlg/QkFlatToggleBase.h"

namespace QkDlg {

/// A check box shown as an on/off switch: "On" or "Off" on the left, and a thumb in a track on the
/// right that the user clicks or drags. A change by mouse reaches the dialog as the new check
/// state only, without BN_CLICKED; by keyboard it is the standard check box's own.
class QkFlatToggleBtn : public QkFlatToggleBase {
public:
    /// For the window of that control id.
    explicit QkFlatToggleBtn(UINT id);
    ~QkFlatToggleBtn() override;

    /// Binds, gives the window the size of a switch, and sets its text.
    void Attach(HWND hwnd) override;
    void OnMouseMove(int x, int y) override;
    void OnLButtonDown(int x, int y) override;
    void OnLButtonUp(int x, int y) override;
    void CalcFocusRect() override;
    void Paint(HDC hdc) override;

    /// The thumb as last painted, in client coordinates.
    [[nodiscard]] const RECT& GetThumb() const { return m_rcThumb; }
    /// The track as last painted, in client coordinates.
    [[nodiscard]] const RECT& GetTrack() const { return m_rcTrack; }

private:
    struct Colours;

    static LRESULT CALLBACK ToggleProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR referenceData);

    [[nodiscard]] static bool TakeFocus(HWND hwnd, DWORD_PTR referenceData);
    LRESULT ClickByMessage(const Message& message, DWORD_PTR referenceData);
    void ResizeToSwitch();
    void SetCaption(bool checked);
    void MoveThumb();
    void DragThumb();
    void EndDrag();
    void PaintSwitch(HDC dc, const Colours& colours) const;
    void PaintCaption(HDC dc, const RECT& area, COLORREF background);
    [[nodiscard]] Colours CurrentColours() const;

    RECT m_rcThumb{};           ///< as last painted, client coordinates
    RECT m_rcTrack{};           ///< as last painted, client coordinates
    INT32 m_nDragX = -1;        ///< cursor at the previous drag paint, or at the press; -1: none
    INT32 m_bPendingCheck = 0;  ///< the state to set when the mouse button comes up
    int m_nPressX = 0;          ///< where the mouse button went down
    bool m_bDragged = false;    ///< the cursor has left the place of the press
    bool m_bClickedByMessage = false;  ///< mouse messages are those of BM_CLICK
};

}  // namespace QkDlg
