#pragma once

#include <vector>

namespace QkDlgBench {

/// Values of one figure, one for each round.
class Samples {
public:
    void add(double value) { m_values.push_back(value); }
    [[nodiscard]] const std::vector<double>& values() const { return m_values; }
    [[nodiscard]] double median() const { return quantile(0.5); }
    /// Value below which that share of the values lies; 0 without values.
    [[nodiscard]] double quantile(double share) const;
    /// From the first quartile to the third, as a share of the median; 0 without a median.
    [[nodiscard]] double spread() const;

private:
    std::vector<double> m_values;
};

}  // namespace QkDlgBench
