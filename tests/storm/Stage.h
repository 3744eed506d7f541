#pragma once

#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "QkDlg/QkXDlg.h"
#include "QkDlg/ScrollbarHolder.h"
#include "support/HostDialog.h"
#include "support/SystemScopes.h"

namespace QkDlgTest {

/// Random numbers that are the same wherever a storm is repeated.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}
    /// 0 to `sides` - 1
    [[nodiscard]] int roll(int sides) {
        return static_cast<int>(engine_() % static_cast<unsigned>(sides));
    }
    [[nodiscard]] bool oneIn(int sides) { return roll(sides) == 0; }
    template <typename List>
    [[nodiscard]] auto& one(List& list) {
        return list[static_cast<std::size_t>(roll(static_cast<int>(std::size(list))))];
    }

private:
    std::mt19937_64 engine_;
};

/// What a control understands; decides which messages it is sent and what is compared.
enum Family : unsigned {
    kButton = 1,
    kStatic = 2,
    kEdit = 4,
    kCombo = 8,
    kProgress = 16,
    kTrackbar = 32,
    kScroll = 64,
    kSlider = 128,
    kListView = 256,
    kListBox = 512,
    kAny = 1023
};

/// Where a flat control differs from a plain one on purpose (docs/controls.md has the reasons), and
/// where the system's own would make the twins differ. Messages about it are not compared.
enum Difference : unsigned {
    kMouse = 1,   ///< answers the mouse itself, or its parts stand elsewhere
    kKeys = 2,    ///< answers the keyboard itself
    kText = 4,    ///< sets its text
    kPlace = 8,   ///< sets its size
    kMask = 16,   ///< masks its text
    kRange = 32,  ///< keeps position and range itself
    kFree = 64    ///< in no storm with a twin
};

struct Kind {
    const char* name = nullptr;
    const wchar_t* windowClass = nullptr;
    unsigned family = 0;
    std::unique_ptr<QkDlg::QkCustomControl> (*make)(UINT id) =
        nullptr;  ///< null: a ScrollbarHolder
    DWORD style = 0;
    DWORD otherStyle = 0;
    DWORD toggled = 0;  ///< style bits that are switched now and then
    unsigned differences = 0;
    DWORD ownStyle = 0;  ///< style bits that the library sets as it needs them
};

[[nodiscard]] const std::vector<Kind>& kinds();

/// A control on the stage: the window, and in the flat play what makes it flat.
struct Actor {
    const Kind* kind = nullptr;
    int id = 0;
    DWORD style = 0;
    HWND window = nullptr;
    std::unique_ptr<QkDlg::QkCustomControl> control{};
    std::unique_ptr<QkDlg::ScrollbarHolder> holder{};
};

/// The screen's DPI and the timers as the library sees them while a stage stands: none goes by the
/// clock.
void setDpi(int dpi);
void fireTimers();

/// How a stage is filled: with flat controls, with their plain twins, or by the conversion of
/// QkXDlg.
enum class Play { Flat, Plain, Converted };

/// A dialog with controls that a storm goes over. The same numbers give the same windows, whatever
/// the play.
class Stage {
public:
    Stage(Play play, bool onScreen, const std::vector<const Kind*>& cast, Dice& dice);
    ~Stage();

    HighContrast contrast;

    [[nodiscard]] HWND host() const { return host_; }
    [[nodiscard]] std::vector<Actor>& actors() { return actors_; }

    /// A new window in place of the old one, flat as that was to be.
    void renew(Actor& actor);
    /// A new object; one whose window is gone is bound again. Only in the flat play, like its end.
    void makeFlat(Actor& actor);
    void makePlain(Actor& actor);
    /// Ends windows and objects in a random order. Tells how many windows were left when no object
    /// was, if there was such a time.
    std::string end(Dice& dice);

    /// What can be told of the controls, and what they told the dialog since the last time.
    [[nodiscard]] std::string state();
    /// Is called at the next notification, once.
    void react(std::function<void()> reaction) { reaction_ = std::move(reaction); }

private:
    void createWindow(Actor& actor);
    static LRESULT CALLBACK listen(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR id,
                                   DWORD_PTR self);
    void hear(UINT message, WPARAM wp, LPARAM lp);

    ImportPatch caps_;
    ImportPatch set_;
    ImportPatch kill_;
    Play play_;
    HWND host_ = nullptr;
    std::unique_ptr<QkDlg::QkXDlg> dialog_;
    std::vector<Actor> actors_;
    std::ostringstream heard_;
    std::function<void()> reaction_;
};

}  // namespace QkDlgTest
