#pragma once

#include "Results.h"

namespace QkDlgBench {

/// Prints the tables of a section and of those whose names begin with it.
void printSection(const Results& results, const char* section);

/// Prints each target with the figure found.
void printTargets(const Results& results);

}  // namespace QkDlgBench
