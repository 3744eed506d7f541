#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QkDlg/Win32.h"

namespace QkPreview {

/// Runs this program once more with those arguments, and gives each line that it writes to
/// standard output to `onLine`, without the line break. Returns its exit code, or nothing when it
/// wrote nothing for `silence` milliseconds and was ended, or did not start at all. It ends with
/// this process in any case.
[[nodiscard]] std::optional<DWORD> runWorkerProcess(
    const std::vector<std::wstring>& arguments, DWORD silence,
    const std::function<void(const std::wstring& line)>& onLine);

}  // namespace QkPreview
