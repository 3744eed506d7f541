#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "QkDlg/FontFace.h"
#include "QkDlg/ImageIdList.h"
#include "QkDlg/UiColors.h"
#include "QkDlg/Win32.h"

/// The classes behind the four functions of QkDlg.h, for C++ hosts that link them.
namespace QkDlg {

/// Base of every flat control. An object never creates a window: Attach binds it to an existing
/// child window, which it subclasses and paints from then on, while the standard control stays
/// underneath with its state and its notifications.
///
/// Objects belong to the GUI thread of their window. The host owns an object and deletes it after
/// the window is gone; deleted earlier, the window goes on with its standard look.
class QkCustomControl {
public:
    /// `imageIds`: bitmap resource ids as ImageIdList takes them, or null. An empty face and a
    /// size of 0 mean the library's default font, filled in by Attach. Size in points.
    QkCustomControl(UINT id, const UINT32* imageIds, std::wstring_view fontFace, int fontSize);
    QkCustomControl(const QkCustomControl&) = delete;
    QkCustomControl& operator=(const QkCustomControl&) = delete;

    // The order of the virtual operations is fixed; families append theirs.

    /// Unbinds: the window's procedures find no object any more and pass every message on.
    virtual ~QkCustomControl();
    /// Place 1 of the fixed order. Nothing calls it; does nothing.
    virtual void OnReserved1();
    /// Binds the object to its window, a child window of the calling thread of the class that the
    /// control is made for. Every derived Attach calls this one first, then installs its subclass
    /// procedure. An object may be attached again, to another window as well, once its window is
    /// gone. A window that does not exist leaves an object that does nothing (combo boxes raise the
    /// assertion report).
    virtual void Attach(HWND hwnd);
    /// The brush for a WM_CTLCOLOR message about this control, or null for the standard one.
    virtual HBRUSH OnCtlColor(HDC hdc, HWND hwnd);
    /// Place 4 of the fixed order: QkXDlg asks it about WM_MEASUREITEM (`info`: the
    /// MEASUREITEMSTRUCT). True when it has answered; false here.
    virtual bool QueryReserved4(LPARAM info);
    /// Place 5: the same about WM_DRAWITEM (`info`: the DRAWITEMSTRUCT). False here.
    virtual bool QueryReserved5(LPARAM info);
    /// The window has moved to a place in its parent's client area; pixels. Nothing here.
    virtual void OnMove(int x, int y);
    /// Place 7: QkXDlg tells of WM_UPDATEUISTATE (the high and the low word of its wParam). Nothing
    /// here.
    virtual void OnReserved7(UINT flags, UINT action);
    /// The standard control is about to take another check state (BM_SETCHECK). Nothing here.
    virtual void OnSetCheck(bool checked);
    /// Repaints the window some time soon.
    virtual void Refresh();
    /// Place 10 of the fixed order. Nothing calls it; does nothing.
    virtual void OnReserved10();
    /// One step of a colour fade; 0 refuses it and ends the fade.
    virtual int OnAnimateColor(COLORREF colour);
    /// The text colour that was set, whatever the state and the colour scheme.
    virtual COLORREF GetConfiguredTextColor();
    /// The text colour of the enabled control; in high contrast the system's.
    virtual COLORREF GetTextColor();
    /// The background that was set; kNoColor stands for the parent's.
    virtual COLORREF GetConfiguredBkColor();
    /// The background to paint now: pressed, in a fade, set, or the parent's; in high contrast the
    /// system's.
    virtual COLORREF GetBkColor();
    /// What the background fades to under the mouse.
    virtual COLORREF GetHoverColor();
    /// The background while the mouse holds the control down; kNoColor: the parent's.
    virtual COLORREF GetPressedColor();
    /// The border at rest.
    virtual COLORREF GetBorderColor();
    /// The border under the mouse.
    virtual COLORREF GetHotBorderColor();
    /// Chooses the images for the control's state; painting begins with it. Nothing here.
    virtual void UpdateImage();
    /// The width that a picture and its padding take from a caption, in pixels. 0 here.
    virtual int GetContentWidth();
    /// The mouse moved to a point of the client area; pixels. As the next three, nothing here.
    virtual void OnMouseMove(int x, int y);
    /// The left button went down there.
    virtual void OnLButtonDown(int x, int y);
    /// The left button came up there.
    virtual void OnLButtonUp(int x, int y);
    /// The mouse has left the window.
    virtual void OnMouseLeave();
    /// Draws an image for the control's state. Changes the bitmap: give it a fresh one.
    virtual void DrawImage(HDC hdc, HBITMAP bitmap, int x, int y);
    /// Draws the focus rectangle, if the window has the focus and shows its keyboard cues.
    virtual void DrawFocus(HDC hdc);
    /// Puts the place of the focus rectangle into m_rcFocus.
    virtual void CalcFocusRect();

    /// The id that the object was made with.
    [[nodiscard]] UINT GetId() const { return m_nId; }
    /// The bound window; null before Attach and after the window's end.
    [[nodiscard]] HWND GetWindow() const { return m_hWnd; }
    /// The window that Attach is going to get, for whoever must know it before.
    void SetWindow(HWND hwnd) { m_hWnd = hwnd; }
    /// The window is going: the object is unbound. For subclass procedures, at WM_NCDESTROY.
    void Detach();

    /// The text colour outside high contrast. Shows at the next paint.
    void SetTextColor(COLORREF colour) { m_clrText = colour; }
    /// The background outside high contrast; kNoColor means the parent's. Shows at the next paint.
    void SetBkColor(COLORREF colour) { m_clrBk = colour; }
    /// The font to draw in: face, size in points, weight as in LOGFONT. An empty face and a size of
    /// 0 mean the default at the next Attach. A label takes a new font with its next Attach, all
    /// others with the next paint.
    void SetFont(std::wstring_view face, int size, int weight);
    /// Empty before Attach means the default.
    [[nodiscard]] const std::wstring& GetFontFace() const { return m_fontFace.name(); }
    /// In points; 0 before Attach means the default.
    [[nodiscard]] int GetFontSize() const { return m_nFontSize; }

protected:
    /// The font of face, size and weight; null when the system cannot make it.
    [[nodiscard]] HFONT ControlFont() const;

    /// What the control writes in now, enabled or not.
    [[nodiscard]] COLORREF StateTextColor();

    /// Gives a colour field (hover, background or pressed) an entry of the UI colour table, and
    /// lets it follow that entry when high contrast goes on or off, unless the field has been given
    /// another colour since.
    void FollowTable(COLORREF QkCustomControl::*field, UiColor index);

    /// Brings the fields that follow the table up to date; painting starts with it.
    void RenewTableColours();

    /// Asks the standard control underneath, past all who have subclassed the window since. Cheaper
    /// than a message to the window, and so for what painting has to know of it.
    LRESULT AskStandard(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    /// The standard control's text.
    [[nodiscard]] std::wstring GetText() const;

    /// DrawText flags that the window's style and keyboard cues ask for, for that text.
    [[nodiscard]] UINT TextFlags(std::wstring_view text) const;

    /// Gives the standard control, which measures in the font that it shows, the one drawn in.
    void GiveFont(HFONT font);

    /// Draws `text` into `bounds`, aligned by the DT_ flags in `alignment`, and keeps where it
    /// stands in m_rcItem. A font that cannot be made raises the assertion report.
    void DrawCaption(HDC hdc, const std::wstring& text, const RECT& bounds, UINT alignment);

    UINT32 m_nId;  ///< dialog control id of the window

private:
    static constexpr std::int8_t kFollowsNothing = -1;
    /// For each of kFollowers the entry it follows. Here, where alignment would leave room unused.
    std::array<std::int8_t, 3> m_followed{kFollowsNothing, kFollowsNothing, kFollowsNothing};

protected:
    HWND m_hWnd = nullptr;               ///< the bound window
    ImageIdList m_images;                ///< bitmap resource ids of the control's images
    bool m_bDrawImage = true;            ///< draw the one-pixel border (buttons)
    COLORREF m_clrText = 0;              ///< configured text colour
    COLORREF m_clrBk = kNoColor;         ///< configured background; none: the parent's
    COLORREF m_clrHover = 0;             ///< background that hover animations go to
    COLORREF m_clrAnim = kNoColor;       ///< background of the running animation, or none
    COLORREF m_clrPressed = 0xFCE8D4;    ///< background while the mouse holds the control down
    COLORREF m_clrBorder = 0xC0C0C0;     ///< border at rest
    COLORREF m_clrHotBorder = 0xEAB47E;  ///< border under the mouse
    COLORREF m_clrCurBorder = 0xC0C0C0;  ///< border in use now
    FontFace m_fontFace;                 ///< empty: the default
    INT32 m_nFontSize;                   ///< points; 0: the default
    INT32 m_nFontWeight = FW_NORMAL;     ///< as in LOGFONT
    INT32 m_bImageRight = 0;             ///< the image stands right of the caption
    INT32 m_nLayout = DT_CENTER;         ///< the caption's horizontal alignment
    INT32 m_nImageGap = DT_VCENTER;      ///< the caption's vertical alignment
    bool m_bHonourUiState = true;        ///< mnemonics as the keyboard cues say; else never
    bool m_bWordEllipsis = false;        ///< cut words with an ellipsis
    bool m_bExplicitFocusRect = false;   ///< the focus rectangle goes round m_rcItem
    bool m_bPressed = false;             ///< the mouse holds the control down
    RECT m_rcItem{};                     ///< where the text was drawn
    RECT m_rcClip{};                     ///< bounds of the explicit focus rectangle
    RECT m_rcFocus{};                    ///< as CalcFocusRect found it

    /// The standard control has got another font from somebody.
    void ForgetGivenFont() { m_givenFont = 0; }

private:
    /// The colour fields that can follow the table: hover, background, pressed.
    static const std::array<COLORREF QkCustomControl::*, 3> kFollowers;

    std::array<COLORREF, 3> m_taken{};  ///< the colour that each of them took from there
    UINT32 m_givenFont = 0;  ///< what the standard control has been given; handles have 32 bits
    WNDPROC m_standardProc = nullptr;  ///< the window's procedure before it was subclassed
};

}  // namespace QkDlg
