#pragma once

#include <memory>
#include <vector>

#include "QkDlg/ControlMap.h"
#include "QkXFlatDlg/FlatChoice.h"

namespace QkDlg {

/// What the conversion did with one child window.
struct ConvertedChild {
    HWND hwnd = nullptr;
    UINT32 id = 0;
    FlatChoice choice;
};

/// Puts a control under its id. A control that was there is replaced, neither deleted nor unbound.
void registerControl(ControlMap& controls, std::unique_ptr<QkCustomControl> control);

/// Makes flat controls for the children of a dialog from the dialog description of its template
/// id, registers them, and settles which button is the default and which has the accent colour.
/// Each new control knows its window already, but is not attached. Children that are converted
/// already stay as they are. Tells what became of every child, in z-order.
std::vector<ConvertedChild> convertToFlat(HWND dialog, UINT32 templateId, ControlMap& controls);

}  // namespace QkDlg
