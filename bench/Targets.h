#pragma once

#include <optional>
#include <vector>

#include "Results.h"

namespace QkDlgBench {

/// A promise about a figure: a ratio of two columns of a row, or a column by itself.
struct Target {
    const char* section;
    const char* subject;
    const char* column;
    const char* against;  ///< the column to divide by; null for the figure itself
    double limit;         ///< the largest value that keeps the promise
};

struct Verdict {
    Target target;
    double value;
    bool kept;
};

/// Of all targets whose figures were measured.
[[nodiscard]] std::vector<Verdict> judge(const Results& results);

}  // namespace QkDlgBench
