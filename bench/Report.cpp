#include "Report.h"

#include <algorithm>
#include <cstdio>

#include "Targets.h"

namespace QkDlgBench {

namespace {

/// Columns to divide by one another, where a table has both.
struct Ratio {
    const char* column;
    const char* against;
};
constexpr Ratio kRatios[] = {{"flat", "bare"},  {"flat", "standard"}, {"bare", "standard"},
                             {"flat", "floor"}, {"attach", "create"}, {"detach", "create"},
                             {"1000", "100"}};

bool has(const std::vector<std::string>& columns, const char* name) {
    return std::ranges::find(columns, name) != columns.end();
}

std::vector<Ratio> ratiosOf(const std::vector<std::string>& columns) {
    std::vector<Ratio> ratios;
    for (const Ratio& ratio : kRatios) {
        if (has(columns, ratio.column) && has(columns, ratio.against))
            ratios.push_back(ratio);
    }
    return ratios;
}

void printHead(const std::string& table, const std::vector<std::string>& columns,
               const std::vector<Ratio>& ratios) {
    std::printf("\n%-22s", table.c_str());
    for (const std::string& column : columns)
        std::printf(" %15s", column.c_str());
    for (const Ratio& ratio : ratios)
        std::printf("  %s/%s", ratio.column, ratio.against);
    std::printf("\n");
}

void printRow(const Results& results, const std::string& table, const std::string& subject,
              const std::vector<std::string>& columns, const std::vector<Ratio>& ratios) {
    std::printf("%-22s", subject.c_str());
    for (const std::string& column : columns) {
        const Samples* const samples = results.find(table, subject, column);
        if (!samples)
            std::printf(" %15s", "");
        else if (samples->values().size() < 2)
            std::printf(" %15.1f", samples->median());
        else
            std::printf(" %10.1f %3.0f%%", samples->median(), samples->spread() * 100);
    }
    for (const Ratio& ratio : ratios) {
        const Samples* const figure = results.find(table, subject, ratio.column);
        const Samples* const base = results.find(table, subject, ratio.against);
        const int width = static_cast<int>(std::string_view(ratio.column).size() +
                                           std::string_view(ratio.against).size() + 3);
        if (figure && base && base->median() > 0)
            std::printf("%*.2f", width, figure->median() / base->median());
        else
            std::printf("%*s", width, "");
    }
    std::printf("\n");
}

}  // namespace

void printSection(const Results& results, const char* section) {
    std::vector<std::string> tables;
    for (const Results::Cell& cell : results.cells()) {
        if (cell.section.starts_with(section) && !has(tables, cell.section.c_str()))
            tables.push_back(cell.section);
    }
    for (const std::string& table : tables) {
        const auto columns = results.columns(table);
        const auto ratios = ratiosOf(columns);
        printHead(table, columns, ratios);
        for (const std::string& subject : results.subjects(table))
            printRow(results, table, subject, columns, ratios);
    }
    std::fflush(stdout);
}

void printTargets(const Results& results) {
    const auto verdicts = judge(results);
    if (verdicts.empty())
        return;
    std::printf("\n%-48s %8s %8s\n", "target", "at most", "found");
    for (const Verdict& verdict : verdicts)
        std::printf("%-48s %8.2f %8.2f  %s\n", verdict.figure.c_str(), verdict.limit, verdict.value,
                    verdict.kept ? "met" : "MISSED");
    std::printf("%td of %zu targets met\n", std::ranges::count_if(verdicts, &Verdict::kept),
                verdicts.size());
    std::fflush(stdout);
}

}  // namespace QkDlgBench
