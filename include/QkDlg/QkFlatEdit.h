#pragma once

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

struct Message;

/// A flat edit over a standard one ("edit"): its own border goes, and a frame window behind it, a
/// little larger and disabled, paints a plain frame instead. The frame follows the edit and takes
/// the dialog's colour round a read-only one. Typing, undo, clipboard, input methods and
/// notifications stay the standard edit's own. Deleted before its window, the object takes the
/// frame away and gives the edit its border back.
class QkFlatEdit : public QkCustomControl {
public:
    /// `cueText` is shown in the empty edit, while it has the focus as well.
    explicit QkFlatEdit(UINT id, std::wstring_view cueText = {});
    ~QkFlatEdit() override;

    void Attach(HWND hwnd) override;
    /// The ground and the colours of the text; null in high contrast, for the system's.
    HBRUSH OnCtlColor(HDC hdc, HWND hwnd) override;
    void OnMove(int x, int y) override;
    /// No focus rectangle on an edit; it has its caret.
    void DrawFocus(HDC hdc) override;

    /// The edit is shown or hidden: `show` is the wParam of WM_SHOWWINDOW.
    virtual void ShowFrame(WPARAM show);

    /// Thickness of the frame in pixels, 2 unless set. For before Attach.
    void SetFrameWidth(int width) { m_frameWidth = width; }
    /// Makes the helper windows without WS_VISIBLE. For before Attach.
    void SetStartHidden(bool hidden) { m_startHidden = hidden; }

    /// The frame window; null before Attach and after the frame's end.
    [[nodiscard]] HWND GetFrameWindow() const { return m_frameWindow; }

protected:
    /// Takes the border off the edit, sets the cue text and binds the object.
    void Prepare(HWND hwnd);
    /// Makes the frame window, wider by the eye button of a password box.
    void CreateFrame(bool withEye);
    /// Destroys the frame window, if there is one.
    void DestroyFrame();
    /// Leaves a standard edit behind, if it is still there. For destructors.
    void Release();

    /// A sibling of the edit at the place, marked by the window property.
    HWND CreateHelper(DWORD exStyle, const wchar_t* className, DWORD style, const RECT& place,
                      const wchar_t* property);
    /// Behind all its siblings.
    static void PutBehind(HWND helper);
    /// Shows a helper window that has not been subclassed yet.
    static void ShowHelper(HWND helper);
    /// Destroys a helper window, or leaves that to the dialog's own end.
    static void DestroyHelper(HWND helper);
    /// Whether helper windows are shown from the start.
    [[nodiscard]] bool StartsShown() const;

    /// Puts the helper windows round the edit where it stands now, in its present size.
    virtual void FollowEdit();
    /// What the frame shows inside its border.
    virtual void PaintFrameInside(HDC hdc);
    /// Repaints the frame some time soon.
    void RefreshFrame();
    /// What the edit is filled with now; sets colours of the DC as well.
    [[nodiscard]] HBRUSH GroundBrush(HDC hdc) const;
    /// Once the subclass procedure is there: colours, margins and the first paint.
    void ShowNewLook();
    /// Whether an object still lives and is bound to the window. To be asked before a member is
    /// touched after a call that may have run the host's code.
    static bool IsBound(const QkFlatEdit* edit, HWND hwnd);
    /// Moves a helper window, if there is one, to a place in its parent's client area.
    static void Place(HWND helper, const RECT& place);
    /// What every flat edit does about a message, passing it on included.
    LRESULT HandleCommon(const Message& message);
    /// Passes on the edit's last message.
    static LRESULT PassOnLast(const Message& message);

    RECT m_frameRect{};            ///< the edit in its parent's client coordinates, at Attach
    HWND m_frameWindow = nullptr;  ///< paints the frame behind the edit
    std::wstring m_cueText;        ///< shown while the edit is empty
    bool m_startHidden = false;    ///< helper windows start without WS_VISIBLE
    int m_frameWidth = 2;          ///< thickness of the frame in pixels

private:
    static LRESULT CALLBACK EditProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR referenceData);
    static LRESULT CALLBACK FrameProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR referenceData);

    void PaintFrame(HDC hdc);
    LRESULT PassPaintOn(const Message& message);
    void PaintMargin();
    void PaintMarginAsEdit();
    void PrintMargin(HDC hdc) const;
    void FillMargin(HDC hdc, HBRUSH ground) const;
    void CoverOwnBorder();
    static void OnGround(QkCustomControl& control, HDC hdc, HBRUSH brush);
    [[nodiscard]] bool ClientHasMargin() const;
    [[nodiscard]] POINT WindowCorner(POINT moved) const;

    /// What a window was told to paint with; without a brush while that is not known.
    struct Ground {
        HBRUSH brush = nullptr;
        COLORREF colour = kNoColor;

        bool operator==(const Ground&) const = default;
    };

    LONG_PTR m_borderStyle = 0;     ///< what Attach took off: WS_BORDER or nothing
    LONG_PTR m_borderExStyle = 0;   ///< WS_EX_CLIENTEDGE or nothing
    int m_margin = 0;               ///< room between window edge and text where the border was
    Ground m_ground;                ///< what the parent has answered last
    Ground m_marginGround;          ///< what the margin shows
    bool m_painting = false;        ///< the standard edit is about its WM_PAINT
    bool m_marginDue = false;       ///< the margin has to be painted after it
    bool m_drawsOwnBorder = false;  ///< the standard edit has a border inside its client area
};

}  // namespace QkDlg
