#pragma once

#include <span>

#include "Options.h"
#include "Results.h"

namespace QkDlgBench {

/// A part of the run that can be chosen by name. Its tables have the same name, or names that
/// begin with it.
struct Section {
    const char* name;
    void (*run)(const Options& options, Results& results);
};

[[nodiscard]] std::span<const Section> allSections();

// The sections, each in a file of its own.

/// Repaints on the screen and into a memory DC, and the GDI objects made meanwhile.
void runRepaint(const Options& options, Results& results);
void runPrint(const Options& options, Results& results);
void runGdi(const Options& options, Results& results);
/// Making a control flat and giving it back, beside creating and destroying its window.
void runAttach(const Options& options, Results& results);
/// Dialogs of 10 to 1,000 controls, opened, redrawn and closed.
void runDialog(const Options& options, Results& results);
/// List views of 100 to 100,000 rows, scrolled.
void runList(const Options& options, Results& results);
/// Timer messages and paints while the mouse passes over a control, and what goes on afterwards.
void runHover(const Options& options, Results& results);
/// Memory, GDI objects and windows that a flat control has besides those of its window.
void runKeep(const Options& options, Results& results);

}  // namespace QkDlgBench
