#pragma once

#include <string>
#include <vector>

#include "Results.h"

namespace QkDlgBench {

/// A promise about a figure and what was found.
struct Verdict {
    std::string figure;  ///< its table, row and columns
    double limit;        ///< the largest value that keeps the promise
    double value;
    bool kept;
};

/// Of all targets whose figures were measured.
[[nodiscard]] std::vector<Verdict> judge(const Results& results);

}  // namespace QkDlgBench
