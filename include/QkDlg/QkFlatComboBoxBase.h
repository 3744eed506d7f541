#pragma once

#include <memory>

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// Base of the flat combo boxes, one class for each standard style. A combo and its list are
/// subclassed, lose their 3-D edges and get borders of one pixel. Selecting, typing, dropping
/// down, the keyboard, the wheel and the notifications stay the standard combo's own.
class QkFlatComboBoxBase : public QkCustomControl {
public:
    ~QkFlatComboBoxBase() override;

    /// A combo without an item or a list raises the assertion report; a drop-down list without an
    /// item window is its own item.
    void Attach(HWND hwnd) override;
    /// No focus rectangle: the caret or the filled item shows the focus.
    void DrawFocus(HDC hdc) override;

    /// Paints the combo; here just its border.
    virtual void Paint(HDC hdc);
    /// Draws the border of edit or item on the screen.
    virtual void DrawItemBorder();
    /// Draws the border of the list on the screen.
    virtual void DrawListBorder();

    /// The edit or the item; null before Attach.
    [[nodiscard]] HWND GetItemWindow() const { return m_comboInfo.hwndItem; }
    /// Null before Attach and after the list's end.
    [[nodiscard]] HWND GetListWindow() const { return m_listWindow; }

protected:
    /// For the window of that control id, in the default font.
    explicit QkFlatComboBoxBase(UINT id);

    /// Puts the list under the item: so much wider on each side, so far below.
    void AlignList(int overhang, int gap);

    /// Asks the standard list underneath; 0 without a list.
    LRESULT AskList(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    /// COMBOBOXINFO of a combo; a drop-down list that names no item is its own.
    [[nodiscard]] static COMBOBOXINFO ComboInfo(HWND combo);

    /// Whether there is no edit: a drop-down list.
    [[nodiscard]] bool IsItsOwnItem() const { return m_comboInfo.hwndItem == m_hWnd; }

    COMBOBOXINFO m_comboInfo{};                       ///< item and list, as found by Attach
    std::unique_ptr<QkCustomControl> m_innerControl;  ///< the flat edit of the edit item, if any
    HWND m_listWindow = nullptr;                      ///< the list

    int m_listOverhang = 0;  ///< how much wider the list is on each side of the item
    int m_listGap = -1;      ///< how far it is below

private:
    static LRESULT CALLBACK ComboProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR referenceData);
    static LRESULT CALLBACK ListProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR referenceData);

    [[nodiscard]] bool ItemHasBorder() const;
    void OnSize();
    [[nodiscard]] HBRUSH ColourItem(HDC hdc);

    WNDPROC m_listProc = nullptr;  ///< the list's procedure before it was subclassed
};

}  // namespace QkDlg
