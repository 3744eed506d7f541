#pragma once

#include <string>

namespace Gallery {

/// Writes to standard output; a program without one stays silent.
void printOut(const std::wstring& text);

/// Writes to standard error, or shows a message box when the program has none.
void printError(const std::wstring& text);

}  // namespace Gallery
