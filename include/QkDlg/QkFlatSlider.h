#pragma once

#include "QkDlg/QkFlatScrollbar.h"

namespace QkDlg {

/// A flat slider in place of a "SCROLLBAR" or plain "static" control: a thin track and a thumb of
/// fixed length, without arrows. It answers what a scroll bar answers, TBM_GETPOS, TBM_SETRANGE
/// and their kin among it.
///
/// Like a trackbar it moves by itself, within its range, before it tells the parent (WM_HSCROLL or
/// WM_VSCROLL with a TB_ code). A line is one position; the page is only a step and does not
/// shorten the range: a fifth of the range as it is at Attach, until it is set.
class QkFlatSlider : public QkFlatScrollbar {
public:
    /// For the window of that control id, whose own style does not decide the direction.
    QkFlatSlider(UINT id, bool vertical);
    ~QkFlatSlider() override;

    void Attach(HWND hwnd) override;
    /// The track can be hit over the whole thickness of the control.
    [[nodiscard]] int HitTest(int x, int y) const override;
    [[nodiscard]] int TranslateRequest(int request) const override;
    [[nodiscard]] bool Request(int request, int position) override;
    [[nodiscard]] ScrollParts LayOut() const override;
    [[nodiscard]] ScrollRange ThumbRange() const override;
    void CalcFocusRect() override;

    /// The position that an SB_ request leads to; `position` is that of the thumb requests.
    [[nodiscard]] virtual int PositionAfter(int request, int position) const;
};

}  // namespace QkDlg
