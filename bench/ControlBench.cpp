// What the flat controls cost beside the standard ones: times, GDI objects, memory, messages.
// scripts/bench.sh runs it as its figures want to be measured; docs/performance.md tells what they
// mean.
#include <array>
#include <cstdio>

#include "Json.h"
#include "QkDlg/Win32.h"
#include "Report.h"
#include "Sections.h"

namespace QkDlgBench {

namespace {

constexpr std::array kSections{
    Section{"repaint", &runRepaint}, Section{"print", &runPrint}, Section{"gdi", &runGdi},
    Section{"attach", &runAttach},   Section{"hover", &runHover}, Section{"keep", &runKeep},
    Section{"dialog", &runDialog},   Section{"list", &runList},
};

void initialiseControls() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES;
    InitCommonControlsEx(&controls);
}

/// Out of the way of everything that is painted.
void hideMouse() {
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
}

}  // namespace

std::span<const Section> allSections() {
    return kSections;
}

}  // namespace QkDlgBench

int main(int argc, char** argv) {
    using namespace QkDlgBench;
    const auto options = readOptions({argv + 1, argv + argc});
    if (!options)
        return 2;
    initialiseControls();
    hideMouse();
    Results results;
    for (const Section& section : allSections()) {
        if (!options->wants(section.name))
            continue;
        section.run(*options, results);
        printSection(results, section.name);
    }
    printTargets(results);
    if (options->json.empty() || writeJson(results, options->json))
        return 0;
    std::fprintf(stderr, "%s cannot be written\n", options->json.c_str());
    return 1;
}
