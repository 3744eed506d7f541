#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// Private window message: one step of a colour fade, the colour in lParam. The control answers
/// with what its OnAnimateColor returns; 0 ends the fade.
constexpr UINT WM_FADECOLOR = WM_USER + 111;

/// Fades a control's colour in ten steps of 10 ms, delivered to its window as WM_FADECOLOR. One
/// per control; GUI thread only.
class ColourFade {
public:
    ColourFade() = default;
    /// Ends a fade that runs.
    ~ColourFade() { Stop(); }
    ColourFade(const ColourFade&) = delete;
    ColourFade& operator=(const ColourFade&) = delete;

    /// Starts to fade. A fade that already runs raises the assertion report.
    void Start(HWND hwnd, COLORREF from, COLORREF to);

    /// Ends the fade where it is. A tick that still comes finds nothing and ends its timer.
    void Stop();

    /// Whether steps are still to come.
    [[nodiscard]] bool IsRunning() const { return m_bRunning; }

private:
    static void CALLBACK OnTick(HWND hwnd, UINT message, UINT_PTR timerId, DWORD time);
    void Step();

    HWND m_hWnd = nullptr;
    COLORREF m_clrFrom = 0;
    COLORREF m_clrTo = 0;
    INT32 m_nTimerId = 0;
    INT16 m_nStep = 0;
    bool m_bRunning = false;
};

}  // namespace QkDlg
