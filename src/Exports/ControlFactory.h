#pragma once

#include <memory>

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// Builds the control object of a type number for a dialog control id, not yet attached. A number
/// without a class of its own, negative ones included, gives a plain flat button.
[[nodiscard]] std::unique_ptr<QkCustomControl> makeControl(int type, UINT id);

}  // namespace QkDlg
