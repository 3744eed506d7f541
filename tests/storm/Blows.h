#pragma once

#include "storm/Stage.h"
#include "support/SystemScopes.h"

namespace QkDlgTest {

/// High contrast, DPI and timers as the library sees them: the storm turns them on and off, changes
/// it, and lets them fire, none by the clock.
class Surroundings {
public:
    Surroundings();
    ~Surroundings();
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

    void turnContrast(bool on) { contrast_.turn(on); }
    static void setDpi(int dpi);
    static void fireTimers();

private:
    HighContrast contrast_;
    ImportPatch caps_;
    ImportPatch set_;
    ImportPatch kill_;
};

/// Strikes a stage: sends some message to some control, or does something to it.
class Blows {
public:
    Blows(Stage& stage, Dice& dice, Surroundings& surroundings, bool free)
        : stage_(stage), dice_(dice), surroundings_(surroundings), free_(free) {}

    /// Writes down what it does before it does it.
    void strike(std::string& told);

private:
    struct Deed;
    static const std::vector<Deed>& deeds();
    void send(const Actor& actor, HWND window);
    void redraw(HWND window);

    Stage& stage_;
    Dice& dice_;
    Surroundings& surroundings_;
    bool free_;  ///< no twin is compared, so that everything may happen
    std::string* told_ = nullptr;
};

}  // namespace QkDlgTest
