#pragma once

#include "QkDlg/Win32.h"

namespace QkDlg {

/// Entries of the UI colour table.
enum UiColor : int {
    UICLR_WHITE = 0,
    UICLR_FACE_LIGHT = 1,
    UICLR_FACE = 2,
    UICLR_ACCENT = 3,
    UICLR_HOVER = 4,
    UICLR_HOVER_BORDER = 5,
    UICLR_PRESSED = 6,
    UICLR_PRESSED_BORDER = 7,
    UICLR_DARK_GREY = 8,
    UICLR_GREY = 9,
    UICLR_LIGHT_GREY = 10,
    UICLR_LINE = 11,
};

/// Colour value of the control colour fields that means "none: inherit".
constexpr COLORREF kNoColor = 0xFFFFFFFF;

/// Text colour of a disabled control outside high contrast.
constexpr COLORREF kDisabledText = 0x808080;

/// Entry `index` of the UI colour table. In high-contrast mode the accent, hover and pressed
/// entries are system colours. Asked afresh at every call, from any thread. An index outside the
/// table raises the assertion report.
[[nodiscard]] COLORREF GetUIColor(int index);

/// True while the system's high-contrast mode is on (SystemParametersInfo, SPI_GETHIGHCONTRAST).
[[nodiscard]] bool IsHighContrast();

/// True when the screen shows fewer than 32 bits per pixel.
[[nodiscard]] bool IsLowColourDisplay();

/// The background colour of a DC of the window's parent.
[[nodiscard]] COLORREF GetParentBkColor(HWND hwnd);

/// What a disabled control writes in: grey, in high contrast the system's grey text, so that text
/// and background always come from the same scheme.
[[nodiscard]] COLORREF GetDisabledTextColor();

}  // namespace QkDlg
