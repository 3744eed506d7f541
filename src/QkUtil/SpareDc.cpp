#include "QkUtil/SpareDc.h"

#include <utility>

namespace QkDlg {

namespace {

/// The DC that waits for its next use, if any.
MemoryDc& keptDc() {
    // Never destroyed: when the process ends, GDI may be gone before this module.
    static auto& dc = *new MemoryDc;
    return dc;
}

// A DC that is compatible with no other one ends with the thread that made it.
MemoryDc screenCompatibleDc() {
    const WindowDc screen(nullptr);
    return MemoryDc(CreateCompatibleDC(screen.get()));
}

}  // namespace

SpareDc::SpareDc() : m_dc(keptDc() ? std::move(keptDc()) : screenCompatibleDc()) {}

SpareDc::~SpareDc() {
    if (!keptDc())
        keptDc() = std::move(m_dc);
}

void SpareDc::freeKept() {
    keptDc().reset();
}

}  // namespace QkDlg
