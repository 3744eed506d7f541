#pragma once

#include <string>

#include "Results.h"

namespace QkDlgBench {

/// Writes all figures and the verdicts about the targets; false when the file cannot be written.
[[nodiscard]] bool writeJson(const Results& results, const std::string& file);

}  // namespace QkDlgBench
