#include "lib/AssertReport.h"

#include <cstdio>
#include <cstdlib>
#include <cwchar>

#ifdef _WIN32
#include "QkDlg/Win32.h"
#endif

namespace QkLib {

namespace {

constexpr int kExitStatus = 999;

[[noreturn]] void endProcess() noexcept {
#ifdef _WIN32
    ExitProcess(kExitStatus);
#else
    std::_Exit(kExitStatus & 0xFF);
#endif
}

}  // namespace

void reportAssertFailure(const AssertSite& site) noexcept {
    // A host may have written narrow text before; where the C library ties a stream to one width,
    // the report must still get through.
    if (std::fwide(stdout, 1) < 0) {
        std::printf("\nFATAL ERROR: assert failure in Module: %s Line number: %d\n", site.module,
                    site.line);
    } else {
        std::wprintf(L"\nFATAL ERROR: assert failure in Module: %hs Line number: %d\n", site.module,
                     site.line);
    }
    std::fflush(stdout);
    endProcess();
}

}  // namespace QkLib
