#pragma once

#include "QkDlg/ColourFade.h"
#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

struct Message;

/// A flat push button over a standard one ("button"), and the base of every other button class:
/// a face in one colour, a one-pixel border, an optional image beside the caption, a fade to the
/// hover colour under the mouse and a pressed colour while the mouse holds it down. What clicking
/// and the keyboard do, and the notifications, stay the standard button's own.
class QkFlatBtn : public QkCustomControl {
public:
    /// `imageIds`: up to three images, normal, hot and pressed, as ImageIdList takes them, from the
    /// resources of the module that holds this class; null for a button without one.
    explicit QkFlatBtn(UINT id, const UINT32* imageIds = nullptr, std::wstring_view fontFace = {},
                       int fontSize = 0);
    ~QkFlatBtn() override;

    void Attach(HWND hwnd) override;
    int OnAnimateColor(COLORREF colour) override;
    COLORREF GetTextColor() override;
    COLORREF GetBkColor() override;
    void OnMouseMove(int x, int y) override;
    void OnLButtonDown(int x, int y) override;
    void OnLButtonUp(int x, int y) override;
    void OnMouseLeave() override;
    void DrawFocus(HDC hdc) override;
    void CalcFocusRect() override;

    /// Paints the button in its current state into a DC with the client area's coordinates.
    virtual void Paint(HDC hdc);

    /// White on the accent colour, pressed too, so that the caption can always be read.
    void UseAccentColours();

    /// Puts the image above the caption instead of beside it. Off unless asked for.
    void SetImageAbove(bool above) { m_bImageAbove = above; }

    /// The mouse's hold on the button ended without a release: the capture went elsewhere.
    void OnCaptureLost();

protected:
    /// Chooses the bitmap of the image set and the outer ring.
    enum class State { Normal = 0, Hot = 1, Pressed = 2 };

    /// Paints into `hdc`; null means the window itself.
    void Paint(State state, HDC hdc);

    /// Forgets the last window's mouse and effects; for every Attach.
    void ResetEffects();

    /// Subclasses the bound window with the button's message procedure.
    void InstallButtonProcedure();

    bool m_bSizeToImage = false;  ///< the window takes the size of its image
    bool m_bImageGap = true;      ///< keep the padding round the image
    bool m_bMouseDown = false;    ///< the left button went down here and has not come up
    bool m_bHover = false;        ///< the mouse is inside, its leaving will be told
    bool m_bNoHotTrack = false;   ///< no hover, no latching of m_bMouseDown
    bool m_bOuterFrame = false;   ///< ring on the parent while hot or pressed
    ColourFade m_fade;            ///< the hover fade
    bool m_bImageAbove = false;   ///< the image stands above the caption
    bool m_bGreyDisabled = true;  ///< grey the image when disabled; off where sets do it
    RECT m_rcRing{};              ///< the outer ring on the screen, in the parent; empty: none

private:
    static LRESULT PassPressOn(const Message& message, DWORD_PTR referenceData);
    static LRESULT CALLBACK ButtonProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR referenceData);

    void ResizeToImage();
    void PaintContent(HDC dc, State state);
    void PaintOuterFrame(State state, HDC target);
    void EraseOuterFrame();
    void EndEffects();
    void OnDisable();
    [[nodiscard]] UINT ImageIdFor(State state) const;
};

}  // namespace QkDlg
