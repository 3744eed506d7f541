#pragma once

#include "preview/Options.h"

namespace QkPreview {

/// The process that deals with one module, from the template on that the options name. What it
/// has to tell goes to standard output as records (Record.h). Returns the exit code: 0 unless the
/// module itself cannot be opened or described.
[[nodiscard]] int runWorker(const Options& options);

/// Shows one dialog until the user closes it. Returns the exit code.
[[nodiscard]] int runInteractive(const Options& options);

}  // namespace QkPreview
