#pragma once

#include <memory>

#include "QkDlg/Win32.h"

namespace QkDlg {

struct HolderGroup;

/// Dresses a window that scrolls by scroll bars of its own (WS_VSCROLL, WS_HSCROLL): two holder
/// windows with a flat scroll bar each stand over the standard bars, follow the target's size,
/// visibility, parent and z-order, and drive it as the standard bars would.
///
/// The object belongs to the GUI thread of its target. Deleted before the target, it gives the
/// standard bars back; destroyed before the object, the target takes the holder windows along.
class ScrollbarHolder {
public:
    /// The width of the vertical and the height of the horizontal bar, in pixels: usually
    /// SM_CXVSCROLL and SM_CYHSCROLL.
    ScrollbarHolder(int verticalWidth, int horizontalHeight);
    ~ScrollbarHolder();
    ScrollbarHolder(const ScrollbarHolder&) = delete;
    ScrollbarHolder& operator=(const ScrollbarHolder&) = delete;

    /// Subclasses the target (subclass id: its handle) and puts the bars over it. False when the
    /// target is no child window, is dressed already, or the system refuses.
    bool Attach(HWND target);

    /// The subclass procedure on the target.
    static LRESULT CALLBACK TargetProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR reference);

    /// The flat bar (a SCROLLBAR window) in the vertical or horizontal holder; null when there is
    /// none.
    [[nodiscard]] HWND GetBar(bool vertical) const;

private:
    [[nodiscard]] bool Dresses(HWND target) const;
    void Leave();
    void End();
    void Update();
    void Synchronise();
    void LayOut();
    void OnPosChanged(const WINDOWPOS& position);
    LRESULT OnNcPaint(WPARAM update);
    void OnBefore(UINT message, WPARAM wParam, LPARAM lParam);
    void OnAfter(UINT message, WPARAM wParam, LPARAM lParam);

    std::shared_ptr<HolderGroup> m_group;
    int m_verticalWidth;
    int m_horizontalHeight;
    HWND m_parent = nullptr;
    bool m_hidden = false;     ///< the target is, which WS_VISIBLE does not tell for sure
    bool m_redrawOff = false;  ///< WM_SETREDRAW
    bool m_painting = false;   ///< the target is at its WM_PAINT, which ends with a look at it
    bool m_addedClip = false;  ///< WS_CLIPSIBLINGS was not the target's own
};

}  // namespace QkDlg
