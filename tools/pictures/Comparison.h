#pragma once

#include <string>

namespace QkPictures {

/// What tells two picture files apart, in words; empty when they look alike.
/// A few differing pixels do not count, nor shades that nobody sees.
[[nodiscard]] std::wstring differenceOf(const std::wstring& file, const std::wstring& other);

}  // namespace QkPictures
