#pragma once

#include <memory>
#include <optional>

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

class ScrollArrows;
struct ScrollParts;
struct ScrollRange;

/// A flat scroll bar over a "SCROLLBAR" control, or in place of a plain "static" one.
///
/// Position, range and page live in this object: it answers the scroll bar messages (SBM_*) itself,
/// and the trackbar's TBM_GETPOS, TBM_SETRANGE... as well. SetScrollInfo, GetScrollInfo and their
/// kin work as with a standard bar. What a standard bar was set to before Attach is taken over, and
/// given back when the object is deleted before its window.
///
/// Mouse, wheel and keyboard send WM_VSCROLL or WM_HSCROLL to the parent: SB_LINE..., SB_PAGE...,
/// while the thumb is dragged SB_THUMBTRACK, at the end of the drag SB_THUMBPOSITION, and
/// SB_ENDSCROLL at the end of each. The bar itself moves by being dragged only; all else is the
/// parent's to do, which may also disable, destroy or delete the bar meanwhile.
class QkFlatScrollbar : public QkCustomControl {
public:
    /// For the window of that control id, whose own style does not decide the direction.
    QkFlatScrollbar(UINT id, bool vertical);
    ~QkFlatScrollbar() override;

    void Attach(HWND hwnd) override;
    void OnMouseMove(int x, int y) override;
    void OnLButtonDown(int x, int y) override;
    void OnLButtonUp(int x, int y) override;
    void OnMouseLeave() override;
    /// The dotted rectangle of the focus stands in the thumb.
    void CalcFocusRect() override;

    /// Paints the whole bar.
    virtual void PaintBar(HDC hdc);
    /// A tick of the timer that repeats a held press.
    virtual void OnRepeatTick();
    /// Answers a message of the window or passes it on.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// The part at a client point: 0 none, 1 first arrow, 2 track before the thumb, 3 thumb,
    /// 4 track after it, 5 second arrow.
    [[nodiscard]] virtual int HitTest(int x, int y) const;
    /// Stores a position as given, in the range or not.
    virtual void SetPosition(int position, bool redraw);
    /// Both ends belong to the range. The position stays as it is.
    virtual void SetRange(int min, int max, bool redraw);
    /// A negative page counts as 0.
    virtual void SetPage(int page, bool redraw);
    /// The code by which the parent knows an SB_ request.
    [[nodiscard]] virtual int TranslateRequest(int request) const;
    /// The user wants to scroll: tells the parent the SB_ request, and with the two thumb requests
    /// the position. False when the parent has ended the binding or this object, which nothing may
    /// touch from then on.
    [[nodiscard]] virtual bool Request(int request, int position);
    /// Where arrows, track and thumb stand.
    [[nodiscard]] virtual ScrollParts LayOut() const;
    /// What the thumb scrolls over.
    [[nodiscard]] virtual ScrollRange ThumbRange() const;

    /// As the object was made.
    [[nodiscard]] bool IsVertical() const { return m_bVertical != 0; }
    /// The position as it was set last; while the thumb is dragged that of before.
    [[nodiscard]] int GetPosition() const { return m_nPos; }

protected:
    static constexpr INT32 kNewMaximum = 100;  ///< of a bar that nobody has given a range

    INT32 m_bVertical;                             ///< vertical, else horizontal
    RECT m_rcArrow1{};                             ///< top or left arrow
    RECT m_rcArrow2{};                             ///< bottom or right arrow
    RECT m_rcTrack{};                              ///< between the arrows
    RECT m_rcThumb{};                              ///< without length where it does not fit
    bool m_bBarPressed = false;                    ///< a button is down on the bar
    bool m_bBarHover = false;                      ///< the mouse is over the bar
    bool m_bDragging = false;                      ///< the thumb follows the mouse
    INT32 m_nHitPart = -1;                         ///< the part that is pressed; -1 for none
    INT32 m_nMin = 0;                              ///< range
    INT32 m_nMax = kNewMaximum;                    ///< range, the last position included
    INT32 m_nPage = 0;                             ///< positions that show at once; 0 without pages
    INT32 m_nPos = 0;                              ///< position
    INT32 m_nTrackPos = 0;                         ///< position while dragging
    bool m_bArrow1Enabled = true;                  ///< first arrow
    bool m_bArrow2Enabled = true;                  ///< second arrow
    INT32 m_nArrowSize;                            ///< length of an arrow in pixels
    std::shared_ptr<const ScrollArrows> m_arrows;  ///< their four pictures, once they were painted

private:
    struct Repeat;

    static LRESULT CALLBACK BarProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR referenceData);
    static void CALLBACK RepeatProc(HWND hwnd, UINT message, UINT_PTR timer, DWORD time);
    static Repeat& SharedRepeat();

    void PaintThumb(HDC dc, bool enabled);
    void PaintArrow(HDC dc, int part, bool enabled);
    [[nodiscard]] ScrollParts Parts() const;
    void UpdateParts();
    [[nodiscard]] int PartUnderMouse() const;
    [[nodiscard]] bool IsMirrored() const;
    [[nodiscard]] bool IsOn(int part) const;
    void Changed(bool redraw);

    // Each false when the object's end came of it.
    [[nodiscard]] bool TakeFocus();
    [[nodiscard]] bool Hold(int part);
    void BeginDrag();
    [[nodiscard]] int MouseAlong() const;
    void DragToMouse();
    void EndPress(bool mouseIsOver);
    void ForgetInput();
    void BeginRepeat();
    void EndRepeat();
    void OnWheel(int delta, bool horizontal);
    [[nodiscard]] bool OnKeyDown(WPARAM key);

    [[nodiscard]] std::optional<LRESULT> AnswerMouse(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> AnswerBarMessage(UINT message, WPARAM wParam,
                                                          LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> AnswerSliderMessage(UINT message, WPARAM wParam,
                                                             LPARAM lParam);
    LRESULT SetInfo(const SCROLLINFO& info, bool redraw);
    [[nodiscard]] bool GetInfo(SCROLLINFO& info) const;
    [[nodiscard]] bool GetBarInfo(SCROLLBARINFO& info) const;
    void EnableArrows(WPARAM arrows);
    void ResetValues();
    void TakeOver(HWND hwnd);
    void GiveBack(HWND hwnd) const;

    POINT m_mouse{};              ///< where the mouse was last, while it is over the bar or held
    INT32 m_grip = 0;             ///< pixels from the thumb's beginning to the mouse that drags it
    INT32 m_dragOffset = 0;       ///< where the dragged thumb begins, in pixels from its track
    INT32 m_wheelRest = 0;        ///< wheel movement that made no whole line yet
    bool m_keyScrolls = false;    ///< a key that scrolled is down
    bool m_repeatPosted = false;  ///< a repeated press is in the message queue
    bool m_wasBound = false;      ///< the object has had a window
};

}  // namespace QkDlg
