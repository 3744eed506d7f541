#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <vector>

#include "QkDlg/Win32.h"

namespace QkDlgTest {

/// What the process, or its calling thread in the case of windows, holds at a moment.
struct Holdings {
    int gdiObjects = 0;
    int fonts = 0;  ///< of the GDI objects; 0 where the system does not tell
    int windows = 0;

    bool operator==(const Holdings&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Holdings& holdings);

/// Of this thread, without the input method's own.
[[nodiscard]] std::vector<HWND> topLevelWindows();
/// Those and all their children.
[[nodiscard]] int windowCount();
[[nodiscard]] Holdings holdings();

/// EXPECT_TRUE(doesNotLeak(10'000, body)): runs the body some times to fill caches, then that
/// many times, after which there must be exactly as many GDI objects and windows as before.
[[nodiscard]] testing::AssertionResult doesNotLeak(int times, const std::function<void()>& body);

}  // namespace QkDlgTest
