#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace QkDlgTools {

/// What the program was started with, without its own name.
[[nodiscard]] std::vector<std::wstring> commandLineArguments();

/// The argument as it has to stand in a command line so that the program started with it reads it
/// back whole (the rules of CommandLineToArgvW).
[[nodiscard]] std::wstring quotedArgument(std::wstring_view argument);

}  // namespace QkDlgTools
