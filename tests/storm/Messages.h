#pragma once

#include <map>
#include <span>
#include <string>
#include <utility>

#include "Stage.h"
#include "support/SystemScopes.h"

namespace QkDlgTest {

/// The timers of this program, which fire when the storm says so and not by the clock.
class ManualTimers {
public:
    ManualTimers();
    static void fire();

private:
    ImportPatch set_;
    ImportPatch kill_;
};

/// High contrast and DPI as the library sees them.
class Surroundings {
public:
    Surroundings();
    ~Surroundings();
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

    void turnContrast(bool on) { contrast_.turn(on); }
    void setDpi(int dpi);

private:
    HighContrast contrast_;
    ImportPatch caps_;
    void* awareness_;
};

/// One blow of the storm: what it did is written to `trail`.
struct Blow {
    Stage& stage;
    Dice& dice;      ///< the same in both plays
    Dice& flatDice;  ///< for what only objects go through
    Surroundings& surroundings;
    bool free;  ///< no twin is compared, so that everything may happen
    std::string& trail;

    /// Sends some message to some control, or does something to it.
    void strike();

private:
    struct Deed;
    static std::span<const Deed> deeds();
    void send(Actor& actor);
    void doSomething(Actor& actor);
};

}  // namespace QkDlgTest
