#pragma once

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// Subclass id of every procedure that a control installs on its own window.
constexpr UINT_PTR kSubclassId = 0;

/// Installs `procedure` on a window with `control` as its reference data. From the first call on,
/// the module that holds the procedure stays loaded. False when the system refuses.
bool installSubclass(HWND hwnd, SUBCLASSPROC procedure, QkCustomControl& control,
                     UINT_PTR id = kSubclassId);

/// A message as a subclass procedure gets it.
struct Message {
    HWND hwnd;
    UINT id;
    WPARAM wParam;
    LPARAM lParam;

    /// Hands the message to the next procedure and in the end to the standard control.
    LRESULT passOn() const { return DefSubclassProc(hwnd, id, wParam, lParam); }

    // Mouse coordinates: signed, and negative on a captured mouse or a screen to the left.
    [[nodiscard]] int x() const { return GET_X_LPARAM(lParam); }
    [[nodiscard]] int y() const { return GET_Y_LPARAM(lParam); }
};

// A standard control answers some messages by painting at once, without an update region, which
// would leave its own look on the screen. Two ways to prevent that; both end with the flat look
// on the screen, within the message.

/// Nothing that a standard control draws reaches the screen while this lives (WM_SETREDRAW). For
/// subclass procedures, and only where no code of the host's runs meanwhile, as the window reads
/// as invisible. Nothing is repainted at the end.
class DrawingOff {
public:
    explicit DrawingOff(HWND hwnd);
    ~DrawingOff();
    DrawingOff(const DrawingOff&) = delete;
    DrawingOff& operator=(const DrawingOff&) = delete;
    DrawingOff(DrawingOff&&) = delete;
    DrawingOff& operator=(DrawingOff&&) = delete;

private:
    HWND m_hwnd;  ///< null for a window that was hidden anyway
};

/// Passes a message on with the window's drawing switched off, then repaints.
LRESULT passOnUnseen(const Message& message);

/// Passes a message on and repaints over what the standard control may have drawn.
LRESULT passOnAndRepaint(const Message& message);

/// Whether a window has WS_VISIBLE, whatever its parents have.
bool isShown(HWND hwnd);

/// Paints the window now, without erasing it first.
void repaintNow(HWND hwnd);

}  // namespace QkDlg
