#pragma once

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// The control objects that exist. A subclass procedure can outlive its object, because a host may
/// delete the object before the window; it asks here before it touches one. GUI thread only.
class LiveControls {
public:
    static void add(const QkCustomControl& control);
    static void remove(const QkCustomControl& control);

    /// The object behind a subclass procedure's reference data while it lives, else null.
    [[nodiscard]] static QkCustomControl* find(DWORD_PTR referenceData);
};

/// The living object of `referenceData`, provided that it is bound to `hwnd`: an object made later
/// at the same address belongs to another window, or is of another class. Null otherwise.
template <typename Control>
[[nodiscard]] Control* livingControl(HWND hwnd, DWORD_PTR referenceData) {
    QkCustomControl* control = LiveControls::find(referenceData);
    return control && control->GetWindow() == hwnd ? dynamic_cast<Control*>(control) : nullptr;
}

}  // namespace QkDlg
