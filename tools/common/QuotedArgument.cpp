#include <cstddef>

#include "common/CommandLine.h"

namespace QkDlgTools {

// Backslashes count only before a quotation mark, where each must be doubled.
std::wstring quotedArgument(std::wstring_view argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'"')
            quoted.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    return quoted.append(backslashes, L'\\') + L'"';
}

}  // namespace QkDlgTools
