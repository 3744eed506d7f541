#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace QkLib {

/// UTF-8 bytes as wide text; nothing when the bytes are not UTF-8.
[[nodiscard]] std::optional<std::wstring> wideFromUtf8(std::string_view bytes);

/// The bytes of a text file as wide text. A byte order mark chooses UTF-8 or UTF-16 (either byte
/// order) and is not part of the text; without one the bytes are UTF-8. Nothing when they are
/// not what they claim to be.
[[nodiscard]] std::optional<std::wstring> wideFromTextBytes(std::string_view bytes);

}  // namespace QkLib
