#pragma once

#include <string>

#include "storm/Stage.h"

namespace QkDlgTest {

/// Sends some message to some control of the stage, or does something to it. `told` is written down
/// before it happens. Everything may happen where no twin is compared (`free`).
void strike(Stage& stage, Dice& dice, bool free, std::string& told);

}  // namespace QkDlgTest
