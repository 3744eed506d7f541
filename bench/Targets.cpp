#include "Targets.h"

#include <array>

namespace QkDlgBench {

namespace {

/// What a figure may miss its limit by before two decimals show it.
constexpr double kRounding = 0.005;

constexpr std::array kTargets{
    Target{"repaint", "push", "flat", "bare", 0.50},
    Target{"repaint", "blue", "flat", "bare", 0.60},
    Target{"repaint", "radio", "flat", "bare", 0.52},
    Target{"repaint", "check", "flat", "bare", 0.45},
    Target{"repaint", "switch", "flat", "bare", 0.45},
    Target{"repaint", "progress", "flat", "bare", 0.62},
    Target{"repaint", "combo list", "flat", "bare", 0.80},
    Target{"repaint", "static", "flat", "bare", 1.03},
    Target{"repaint", "edit", "flat", "bare", 1.03},
    Target{"repaint", "password", "flat", "bare", 1.03},
    Target{"repaint", "all but bars", "flat", "standard", 1.00},
    Target{"repaint", "all together", "flat", "standard", 1.00},
    Target{"print", "push", "flat", "standard", 0.50},
    Target{"print", "blue", "flat", "standard", 0.50},
    Target{"print", "check", "flat", "standard", 0.50},
    Target{"print", "radio", "flat", "standard", 0.50},
    Target{"print", "switch", "flat", "standard", 0.50},
    Target{"print", "split", "flat", "standard", 0.50},
    Target{"print", "drop", "flat", "standard", 0.50},
    Target{"print", "settings", "flat", "standard", 0.50},
    Target{"print", "progress", "flat", "standard", 0.50},
    Target{"print", "combo list", "flat", "standard", 0.70},
    Target{"print", "combo drop", "flat", "standard", 0.70},
    Target{"print", "combo simple", "flat", "standard", 0.70},
    Target{"attach", "push", "attach", "create", 0.18},
    Target{"attach", "blue", "attach", "create", 0.18},
    Target{"attach", "check", "attach", "create", 0.18},
    Target{"attach", "radio", "attach", "create", 0.18},
    Target{"attach", "split", "attach", "create", 0.18},
    Target{"attach", "drop", "attach", "create", 0.18},
    Target{"attach", "settings", "attach", "create", 0.18},
    Target{"attach", "progress", "attach", "create", 0.18},
    Target{"attach", "static", "attach", "create", 0.40},
    Target{"attach", "combo list", "attach", "create", 0.15},
    Target{"attach", "combo drop", "attach", "create", 0.15},
    Target{"attach", "combo simple", "attach", "create", 0.15},
    Target{"attach", "switch", "attach", "create", 0.60},
    Target{"attach", "edit", "attach", "create", 0.90},
    Target{"attach", "password", "attach", "create", 2.50},
    Target{"dialog", "1000 open", "flat", "standard", 1.20},
    Target{"dialog", "1000 redraw", "flat", "standard", 1.15},
    Target{"dialog", "1000 close", "flat", "standard", 1.95},
    Target{"dialog, per control", "flat open", "1000", "100", 1.05},
    Target{"dialog, per control", "flat redraw", "1000", "100", 1.05},
    Target{"dialog, per control", "flat close", "1000", "100", 1.05},
    Target{"list", "100000, by row", "flat", "standard", 1.00},
    Target{"list", "100000, by five rows", "flat", "standard", 1.00},
    Target{"list", "100000, by page", "flat", "standard", 1.00},
};

std::optional<double> valueOf(const Target& target, const Results& results) {
    const Samples* const figure = results.find(target.section, target.subject, target.column);
    if (!figure)
        return std::nullopt;
    if (!target.against)
        return figure->median();
    const Samples* const base = results.find(target.section, target.subject, target.against);
    if (!base || base->median() <= 0)
        return std::nullopt;
    return figure->median() / base->median();
}

}  // namespace

std::vector<Verdict> judge(const Results& results) {
    std::vector<Verdict> verdicts;
    for (const Target& target : kTargets) {
        if (const auto value = valueOf(target, results))
            verdicts.push_back({target, *value, *value < target.limit + kRounding});
    }
    return verdicts;
}

}  // namespace QkDlgBench
