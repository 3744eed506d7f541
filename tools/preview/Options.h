#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace QkPreview {

/// What the command line asks for.
struct Options {
    std::vector<std::wstring> modules;      ///< files or patterns such as C:\App\*.dll
    std::optional<std::wstring> dialog;     ///< a name, or a number as text
    std::optional<std::uint16_t> language;  ///< only templates of this language
    bool plain = false;                     ///< the standard controls, without the library
    bool check = false;                     ///< tell what became of each control
    std::wstring xml;                       ///< a dialog description in place of the module's own
    std::wstring png;                       ///< where the picture of one dialog goes
    std::wstring all;                       ///< the folder for pictures of all dialogs
    unsigned limitSeconds = 30;             ///< how long one dialog may take
    /// Set in a worker process: the first template that it is to deal with.
    std::optional<std::size_t> worker;
    std::wstring prefix;  ///< what the names of its pictures begin with

    /// Whether a window is to stay open until the user closes it.
    [[nodiscard]] bool interactive() const {
        return dialog && png.empty() && all.empty() && !check;
    }
};

/// Nothing when the arguments are wrong.
[[nodiscard]] std::optional<Options> parseOptions(const std::vector<std::wstring>& arguments);

/// The arguments for a worker that deals with one module from that template on.
[[nodiscard]] std::vector<std::wstring> workerArguments(const Options& options,
                                                        const std::wstring& module,
                                                        std::size_t first);

/// A number from 0 to `limit`, decimal or hexadecimal after "0x"; nothing for other text.
[[nodiscard]] std::optional<std::uint32_t> parseNumber(std::wstring_view text, std::uint32_t limit);

[[nodiscard]] std::wstring usage();

}  // namespace QkPreview
