#pragma once

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

struct Message;
struct Progress;

/// A flat progress bar over a standard one: a two-pixel border, a plain fill in the accent colour,
/// in red or yellow for the error and paused states, or in the colour that the application set
/// (PBM_SETBARCOLOR), and a marquee of its own. Range, position and state stay the standard bar's.
///
/// Over a trackbar ("msctls_trackbar32") it shows where the trackbar stands; the user still moves
/// it by mouse and keyboard. State, bar colour and marquee are a progress bar's only.
class QkFlatProgressBar : public QkCustomControl {
public:
    /// For the window of that control id.
    explicit QkFlatProgressBar(UINT id);
    ~QkFlatProgressBar() override;

    void Attach(HWND hwnd) override;
    HBRUSH OnCtlColor(HDC hdc, HWND hwnd) override;

    /// Paints the whole bar.
    virtual void PaintBar(HDC hdc);
    /// A window timer's tick: the marquee's moves the block and paints at once.
    virtual void OnTimerTick(UINT_PTR timer);

    /// Starts or stops the marquee, as PBM_SETMARQUEE does. Starts only on bars with PBS_MARQUEE;
    /// a bar that loses the style shows its position again.
    void SetMarquee(bool on);

private:
    static LRESULT CALLBACK BarProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR referenceData);

    static bool MovesTrackbar(UINT message);

    [[nodiscard]] bool HasStyle(LONG_PTR style) const;
    [[nodiscard]] bool IsVertical() const;
    [[nodiscard]] bool IsMarquee() const;
    [[nodiscard]] Progress CurrentProgress() const;
    LRESULT PassOnAndCompare(const Message& message, DWORD_PTR referenceData);
    [[nodiscard]] COLORREF BarColour() const;
    [[nodiscard]] RECT FillRectangle(const RECT& client) const;
    void EndMarquee();

    bool m_trackbar = false;   ///< the window is a trackbar: no PBM_ message means the same to it
    bool m_marqueeOn = false;  ///< the marquee is running
    UINT_PTR m_marqueeTimer = 0;  ///< its timer, 0 for none
    INT32 m_marqueeTrail = 0;     ///< trailing edge of the block, in client pixels
    INT32 m_marqueeLead = 0;      ///< leading edge of the block
};

}  // namespace QkDlg
