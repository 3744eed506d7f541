#include "Results.h"

#include <algorithm>

namespace QkDlgBench {

namespace {

std::vector<std::string> distinct(const std::vector<Results::Cell>& cells, std::string_view section,
                                  std::string Results::Cell::*member) {
    std::vector<std::string> names;
    for (const Results::Cell& cell : cells) {
        if (cell.section == section && std::ranges::find(names, cell.*member) == names.end())
            names.push_back(cell.*member);
    }
    return names;
}

}  // namespace

void Results::add(std::string_view section, std::string_view subject, std::string_view column,
                  double value) {
    auto cell = std::ranges::find_if(m_cells, [&](const Cell& each) {
        return each.section == section && each.subject == subject && each.column == column;
    });
    if (cell == m_cells.end()) {
        m_cells.push_back({std::string(section), std::string(subject), std::string(column), {}});
        cell = m_cells.end() - 1;
    }
    cell->samples.add(value);
}

const Samples* Results::find(std::string_view section, std::string_view subject,
                             std::string_view column) const {
    const auto cell = std::ranges::find_if(m_cells, [&](const Cell& each) {
        return each.section == section && each.subject == subject && each.column == column;
    });
    return cell == m_cells.end() ? nullptr : &cell->samples;
}

std::vector<std::string> Results::subjects(std::string_view section) const {
    return distinct(m_cells, section, &Cell::subject);
}

std::vector<std::string> Results::columns(std::string_view section) const {
    return distinct(m_cells, section, &Cell::column);
}

}  // namespace QkDlgBench
