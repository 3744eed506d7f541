#pragma once

#include <memory>
#include <type_traits>

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

class ListViewPainter;
class ScrollbarHolder;
class StateImages;
struct Message;
struct PaintedList;

/// A flat list view over a standard one (SysListView32). In report view, header, rows and cells
/// are painted flat: rows of 24 pixels at 96 DPI, check boxes of the library's own, a white ground
/// right of the last column and below the last row. In the other views the list looks as the
/// system draws it. Flat scroll bars stand in all views. Items, selection, sorting, editing and
/// the notifications stay the standard list's.
///
/// In report view the list itself works with an extended style and a small image list of the
/// library's. What the application sets and asks for meanwhile is kept aside: its extended style
/// (LVM_SETEXTENDEDLISTVIEWSTYLE), small image list, and the state images, which say which boxes
/// are checked. It all goes back to the list in another view, with the object, and, as far as the
/// list destroys its image lists, at the window's end.
/// A header lower than a row of 24 pixels at 96 DPI gets that height. While the keyboard is in use,
/// the focused row has a focus rectangle.
///
/// NM_CUSTOMDRAW of list and header does not reach the application in report view.
class QkFlatListView : public QkCustomControl {
public:
    /// For the window of that control id.
    explicit QkFlatListView(UINT id);
    ~QkFlatListView() override;

    /// Subclasses the list, its parent and, when there is one, its header. A list that the object
    /// had before is given back.
    void Attach(HWND hwnd) override;

    /// Whether the list is in report view and so painted flat.
    [[nodiscard]] bool IsFlat() const { return m_flatMode; }

private:
    struct ImageListDeleter {
        void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
    };

    static LRESULT CALLBACK ListProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR referenceData);
    static LRESULT CALLBACK HeaderProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR referenceData);
    static LRESULT CALLBACK EditProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR referenceData);
    static LRESULT CALLBACK ParentProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR referenceData);

    [[nodiscard]] bool IsReportView() const;
    [[nodiscard]] bool HasCheckBoxes() const;
    [[nodiscard]] PaintedList Painted() const;
    void ChangeExStyle(UINT32 exStyle, StateImages& images);
    void EnterFlatMode();
    void LeaveFlatMode();
    void FollowView();
    void FollowHeader();
    void FollowHeaderDrag(UINT32 savedBefore);
    void OnDestroy();
    void Release();
    void Unbind();

    LRESULT SetImages(const Message& message);
    LRESULT SetSavedExStyle(const Message& message);
    void UseKeyboard(bool on);
    void UpdateHotRow();
    void UpdateHotHeaderItem();
    [[nodiscard]] LRESULT OnHeaderDraw(const NMCUSTOMDRAW& draw) const;
    LRESULT OnCustomDraw(const Message& message);
    LRESULT OnHeaderNotify(const Message& message);
    LRESULT PassOnAndWiden(const Message& message, int column, bool withHeader);
    void OnLabelEdit(int row);
    LRESULT OnFlatMessage(const Message& message, DWORD_PTR referenceData);
    LRESULT ChangeView(const Message& message, DWORD_PTR referenceData);
    LRESULT PassOnAndFollow(const Message& message, DWORD_PTR referenceData);
    LRESULT PassOnPaint(const Message& message, DWORD_PTR referenceData);
    LRESULT PassOnItemState(const Message& message, DWORD_PTR referenceData);

    std::shared_ptr<ListViewPainter> m_painter;  ///< with the font and the check-box bitmaps
    HIMAGELIST m_savedSmallImages = nullptr;     ///< the application's
    std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListDeleter>
        m_rowSpacerImages;      ///< empty, as high as a row
    UINT32 m_savedExStyle = 0;  ///< the application's
    COLORREF m_savedGround = 0;
    bool m_flatMode = false;
    bool m_ending = false;      ///< the list is being destroyed
    bool m_knowsViews = false;  ///< the list answers LVM_GETVIEW
    bool m_quiet = false;       ///< the parent does not hear of changed items
    bool m_keyboard = false;    ///< the last input was the keyboard's
    int m_editedRow = -1;
    int m_hotRow = -1;
    int m_hotHeaderItem = -1;
    HWND m_header = nullptr;
    HWND m_parent = nullptr;
    std::unique_ptr<ScrollbarHolder> m_scrollHolder;
};

}  // namespace QkDlg
