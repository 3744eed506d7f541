#pragma once

#include <string>
#include <string_view>

namespace QkDlgTools {

/// Writes to standard output: as text to a console, as UTF-8 to a file or a pipe. A program without
/// one stays silent.
void printOut(std::wstring_view text);

/// Writes to standard error, or shows a message box of that title when the program has none.
void printError(const std::wstring& text, const wchar_t* title);

[[nodiscard]] std::string toUtf8(std::wstring_view text);
/// What is no UTF-8 becomes replacement characters.
[[nodiscard]] std::wstring fromUtf8(std::string_view bytes);

}  // namespace QkDlgTools
