#include "Targets.h"

#include <optional>

#include "Lists.h"

namespace QkDlgBench {

namespace {

/// What a ratio may miss its limit by before two decimals show it.
constexpr double kRounding = 0.005;

constexpr double kFewBytes = 0.3 * 1024;
constexpr double kMoreBytes = 1.0 * 1024;
constexpr double kPasswordBytes = 4.0 * 1024;

constexpr char kAllKinds[] =
    "push,blue,check,radio,switch,split,drop,settings,static,progress,edit,password,"
    "combo list,combo drop,combo simple,scroll bar,slider";

/// The same promise for some rows of a table: about the ratio of two columns, or a column itself.
struct Target {
    const char* section;
    const char* subjects;  ///< with commas between them
    const char* column;
    const char* against;  ///< the column to divide by; null for the figure itself
    double limit;
};

constexpr Target kTargets[] = {
    {"repaint", "push", "flat", "bare", 0.50},
    {"repaint", "blue", "flat", "bare", 0.60},
    {"repaint", "radio", "flat", "bare", 0.52},
    {"repaint", "check,switch", "flat", "bare", 0.45},
    {"repaint", "progress", "flat", "bare", 0.62},
    {"repaint", "combo list", "flat", "bare", 0.80},
    {"repaint", "static,edit,password", "flat", "bare", 1.03},
    {"repaint", "all but bars,all together", "flat", "standard", 1.00},
    {"print", "push,blue,check,radio,switch,split,drop,settings,progress", "flat", "standard",
     0.50},
    {"print", "combo list,combo drop,combo simple", "flat", "standard", 0.70},
    {"attach", "push,blue,check,radio,split,drop,settings,progress", "attach", "create", 0.18},
    {"attach", "static", "attach", "create", 0.40},
    {"attach", "combo list,combo drop,combo simple", "attach", "create", 0.15},
    {"attach", "switch", "attach", "create", 0.60},
    {"attach", "edit", "attach", "create", 0.90},
    {"attach", "password", "attach", "create", 2.50},
    {"hover, timer messages", kAllKinds, "flat", nullptr, 10},
    {"hover, then idle", "timer messages,wake-ups", "flat", nullptr, 0},
    {"keep, bytes",
     "push,blue,check,radio,switch,split,drop,settings,static,progress,scroll bar,slider", "flat",
     nullptr, kFewBytes},
    {"keep, bytes", "edit,combo list,combo drop,combo simple", "flat", nullptr, kMoreBytes},
    {"keep, bytes", "password", "flat", nullptr, kPasswordBytes},
    {"keep, GDI objects",
     "push,blue,check,radio,switch,split,drop,settings,static,progress,edit,combo list,combo drop,"
     "combo simple,scroll bar,slider",
     "flat", nullptr, 0},
    {"keep, GDI objects", "password", "flat", nullptr, 2},
    {"dialog", "1000 open", "flat", "standard", 1.20},
    {"dialog", "1000 redraw", "flat", "standard", 1.15},
    {"dialog", "1000 close", "flat", "standard", 1.95},
    {"dialog, per control", "flat open,flat redraw,flat close", "1000", "100", 1.05},
    {"list", "100000 by row,100000 by five rows,100000 by page", "flat", "standard", 1.00},
};

std::optional<double> valueOf(const Target& target, const std::string& subject,
                              const Results& results) {
    const Samples* const figure = results.find(target.section, subject, target.column);
    if (!figure)
        return std::nullopt;
    if (!target.against)
        return figure->median();
    const Samples* const base = results.find(target.section, subject, target.against);
    if (!base || base->median() <= 0)
        return std::nullopt;
    return figure->median() / base->median();
}

std::string nameOf(const Target& target, const std::string& subject) {
    std::string name = std::string(target.section) + ": " + subject + ", " + target.column;
    if (target.against)
        name += std::string("/") + target.against;
    return name;
}

}  // namespace

std::vector<Verdict> judge(const Results& results) {
    std::vector<Verdict> verdicts;
    for (const Target& target : kTargets) {
        for (const std::string& subject : split(target.subjects)) {
            if (const auto value = valueOf(target, subject, results))
                verdicts.push_back({nameOf(target, subject), target.limit, *value,
                                    *value < target.limit + kRounding});
        }
    }
    return verdicts;
}

}  // namespace QkDlgBench
