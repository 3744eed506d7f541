#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace QkDlgBench {

/// The names of a list with commas between them.
[[nodiscard]] inline std::vector<std::string> split(std::string_view list) {
    std::vector<std::string> parts;
    while (!list.empty()) {
        const auto comma = list.find(',');
        parts.emplace_back(list.substr(0, comma));
        list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
    }
    return parts;
}

}  // namespace QkDlgBench
