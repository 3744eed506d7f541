#include "Options.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "Lists.h"
#include "Sections.h"

namespace QkDlgBench {

namespace {

bool contains(const std::vector<std::string>& list, std::string_view name) {
    return list.empty() || std::ranges::find(list, name) != list.end();
}

void tellUsage() {
    std::fputs(
        "ControlBench [--only SECTION,...] [--kinds KIND,...] [--rounds N] [--json FILE]\n"
        "sections:",
        stderr);
    for (const Section& section : allSections())
        std::fprintf(stderr, " %s", section.name);
    std::fputs("\nkinds:", stderr);
    for (const Kind& kind : allKinds())
        std::fprintf(stderr, " \"%s\"", kind.name);
    std::fputs("\n", stderr);
}

bool areKnown(const Options& options) {
    const auto isSection = [](const std::string& name) {
        return std::ranges::any_of(allSections(), [&](const Section& s) { return name == s.name; });
    };
    const auto isKind = [](const std::string& name) {
        return std::ranges::any_of(allKinds(), [&](const Kind& kind) { return name == kind.name; });
    };
    return std::ranges::all_of(options.sections, isSection) &&
           std::ranges::all_of(options.kinds, isKind);
}

bool take(Options& options, const std::string& name, const std::string& value) {
    if (name == "--only")
        options.sections = split(value);
    else if (name == "--kinds")
        options.kinds = split(value);
    else if (name == "--rounds")
        options.rounds = std::atoi(value.c_str());
    else if (name == "--json")
        options.json = value;
    else
        return false;
    return true;
}

}  // namespace

bool Options::wants(const char* section) const {
    return contains(sections, section);
}

std::vector<const Kind*> Options::wantedKinds() const {
    std::vector<const Kind*> wanted;
    for (const Kind& kind : allKinds()) {
        if (contains(kinds, kind.name))
            wanted.push_back(&kind);
    }
    return wanted;
}

std::optional<Options> readOptions(const std::vector<std::string>& arguments) {
    Options options;
    bool good = arguments.size() % 2 == 0;
    for (std::size_t i = 0; good && i < arguments.size(); i += 2)
        good = take(options, arguments[i], arguments[i + 1]);
    if (good && options.rounds >= 0 && areKnown(options))
        return options;
    tellUsage();
    return std::nullopt;
}

}  // namespace QkDlgBench
