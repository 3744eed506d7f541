#pragma once

#include "QkUtil/Handles.h"

namespace QkDlg {

/// A memory DC to measure text with or to copy a picture from. Making one costs more than either,
/// so one use after the other has the same: leave it as it was found. GUI thread only.
class SpareDc {
public:
    SpareDc();
    ~SpareDc();
    SpareDc(const SpareDc&) = delete;
    SpareDc& operator=(const SpareDc&) = delete;
    SpareDc(SpareDc&&) = delete;
    SpareDc& operator=(SpareDc&&) = delete;

    /// Null where the system gives none.
    [[nodiscard]] HDC get() const { return m_dc.get(); }

    /// Frees what is kept for the next use.
    static void freeKept();

private:
    MemoryDc m_dc;
};

}  // namespace QkDlg
