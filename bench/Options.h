#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Kinds.h"

namespace QkDlgBench {

/// What the command line asks for.
struct Options {
    std::vector<std::string> sections;  ///< empty: all
    std::vector<std::string> kinds;     ///< empty: all
    int rounds = 0;                     ///< 0: as many as each section thinks right
    std::string json;                   ///< file to write; empty: none

    [[nodiscard]] bool wants(const char* section) const;
    [[nodiscard]] std::vector<const Kind*> wantedKinds() const;
    [[nodiscard]] int roundsOr(int standard) const { return rounds > 0 ? rounds : standard; }
};

/// Empty when the arguments make no sense, which has been told on stderr.
[[nodiscard]] std::optional<Options> readOptions(const std::vector<std::string>& arguments);

}  // namespace QkDlgBench
