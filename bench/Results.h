#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Statistics.h"

namespace QkDlgBench {

/// All figures of a run: each section has a row for each subject (a control class, a dialog of
/// some size) and columns to compare (flat, bare, standard ...). Rows and columns keep the order
/// in which they were first met.
class Results {
public:
    struct Cell {
        std::string section;
        std::string subject;
        std::string column;
        Samples samples;
    };

    void add(std::string_view section, std::string_view subject, std::string_view column,
             double value);
    /// Null when nothing of that kind was measured.
    [[nodiscard]] const Samples* find(std::string_view section, std::string_view subject,
                                      std::string_view column) const;
    [[nodiscard]] const std::vector<Cell>& cells() const { return m_cells; }

    [[nodiscard]] std::vector<std::string> subjects(std::string_view section) const;
    [[nodiscard]] std::vector<std::string> columns(std::string_view section) const;

private:
    std::vector<Cell> m_cells;
};

}  // namespace QkDlgBench
