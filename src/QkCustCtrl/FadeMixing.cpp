#include "QkCustCtrl/FadeMixing.h"

namespace QkDlg {

namespace {

std::uint32_t mixedChannel(std::uint32_t from, std::uint32_t to, int step, int shift) {
    const int start = static_cast<int>(from >> shift & 0xFF);
    const int end = static_cast<int>(to >> shift & 0xFF);
    return static_cast<std::uint32_t>(start + (end - start) * step / kFadeSteps) << shift;
}

}  // namespace

std::uint32_t mixedColour(std::uint32_t from, std::uint32_t to, int step) {
    return mixedChannel(from, to, step, 0) | mixedChannel(from, to, step, 8) |
           mixedChannel(from, to, step, 16);
}

}  // namespace QkDlg
