#pragma once

#include "QkDlg/Win32.h"

namespace QkDlgTest {

/// Counts memory faults while it lives: the system ignores those of a window procedure that it
/// calls itself, so a call into freed memory would pass unnoticed.
class FaultWatch {
public:
    FaultWatch();
    ~FaultWatch();
    FaultWatch(const FaultWatch&) = delete;
    FaultWatch& operator=(const FaultWatch&) = delete;

    [[nodiscard]] int faults() const;

private:
    void* handler_;
    int before_;
};

}  // namespace QkDlgTest
