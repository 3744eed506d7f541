#pragma once

#include <vector>

namespace QkDlgBench {

/// A look at the process's table of GDI handles, which counts for each of its entries how often
/// it was given out.
class GdiTable {
public:
    GdiTable();

    /// False where the system does not show the table.
    [[nodiscard]] bool known() const { return !m_generations.empty(); }
    /// Objects made since an earlier look, gone or not; less than 255 in one place.
    [[nodiscard]] int madeSince(const GdiTable& earlier) const;

private:
    std::vector<unsigned char> m_generations;
};

}  // namespace QkDlgBench
