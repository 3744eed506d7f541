#include "Statistics.h"

#include <algorithm>
#include <cmath>

namespace QkDlgBench {

double Samples::quantile(double share) const {
    if (m_values.empty())
        return 0;
    std::vector<double> sorted = m_values;
    std::ranges::sort(sorted);
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], place - static_cast<double>(below));
}

double Samples::spread() const {
    const double middle = median();
    return middle > 0 ? (quantile(0.75) - quantile(0.25)) / middle : 0;
}

}  // namespace QkDlgBench
