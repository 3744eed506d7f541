#pragma once

#include <cstdint>

namespace QkDlg {

/// Steps of a whole fade; the last one is the end colour itself.
constexpr int kFadeSteps = 10;

/// The colour at `step` of a fade: each of red, green and blue is from + (to - from) * step /
/// kFadeSteps, truncated towards zero.
[[nodiscard]] std::uint32_t mixedColour(std::uint32_t from, std::uint32_t to, int step);

}  // namespace QkDlg
