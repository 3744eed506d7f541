#include "Json.h"

#include <cstdio>
#include <memory>

#include "Targets.h"

namespace QkDlgBench {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using UniqueFile = std::unique_ptr<std::FILE, FileCloser>;

// The names in the results need no escapes.
void writeFigures(std::FILE* out, const Results& results) {
    const char* separator = "";
    for (const Results::Cell& cell : results.cells()) {
        std::fprintf(out,
                     "%s\n    {\"table\": \"%s\", \"row\": \"%s\", \"column\": \"%s\", "
                     "\"median\": %.4g, \"quartiles\": [%.4g, %.4g], \"rounds\": %zu}",
                     separator, cell.section.c_str(), cell.subject.c_str(), cell.column.c_str(),
                     cell.samples.median(), cell.samples.quantile(0.25),
                     cell.samples.quantile(0.75), cell.samples.values().size());
        separator = ",";
    }
}

void writeVerdicts(std::FILE* out, const Results& results) {
    const char* separator = "";
    for (const Verdict& verdict : judge(results)) {
        std::fprintf(out,
                     "%s\n    {\"figure\": \"%s\", \"limit\": %.4g, \"value\": %.4g, \"met\": %s}",
                     separator, verdict.figure.c_str(), verdict.limit, verdict.value,
                     verdict.kept ? "true" : "false");
        separator = ",";
    }
}

}  // namespace

bool writeJson(const Results& results, const std::string& file) {
    const UniqueFile out(std::fopen(file.c_str(), "w"));
    if (!out)
        return false;
    std::fputs("{\n  \"figures\": [", out.get());
    writeFigures(out.get(), results);
    std::fputs("\n  ],\n  \"targets\": [", out.get());
    writeVerdicts(out.get(), results);
    std::fputs("\n  ]\n}\n", out.get());
    return std::ferror(out.get()) == 0;
}

}  // namespace QkDlgBench
