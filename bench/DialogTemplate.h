#pragma once

#include <vector>

#include "QkDlg/Win32.h"

namespace QkDlgBench {

/// The words of a dialog template with so many controls in a grid, in turn of all kinds that the
/// dialog class makes flat by itself.
[[nodiscard]] std::vector<WORD> mixedDialog(int count);

}  // namespace QkDlgBench
