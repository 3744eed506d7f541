#pragma once

namespace QkDlg {

/// Whether the system is at least the Windows of that version; probed once per process.
struct OsVersionFlags {
    bool atLeast50 = false;
    bool atLeast51 = false;
    bool atLeast60 = false;
    bool atLeast61 = false;
    bool atLeast62 = false;
};

[[nodiscard]] const OsVersionFlags& osVersion();

}  // namespace QkDlg
