#pragma once

#include <map>
#include <memory>

#include "QkDlg/QkCustomControl.h"

namespace QkDlg {

/// The flat controls of a dialog by control id.
using ControlMap = std::map<UINT32, std::unique_ptr<QkCustomControl>>;

}  // namespace QkDlg
