#pragma once

#include "Watcher.h"

namespace ScreenTest {

/// One act after another until the time is over; the same seed plays the same ones. False when the
/// program has ended.
bool playSession(HWND main, const Screen& screen, Report& report, unsigned seed, int milliseconds);

}  // namespace ScreenTest
