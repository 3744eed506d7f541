#include "common/CommandLine.h"

#include "QkDlg/Win32.h"
// Needs windows.h first.
#include <shellapi.h>

namespace QkDlgTools {

std::vector<std::wstring> commandLineArguments() {
    int count = 0;
    wchar_t** list = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!list)
        return {};
    std::vector<std::wstring> result(list + 1, list + count);
    LocalFree(list);
    return result;
}

}  // namespace QkDlgTools
