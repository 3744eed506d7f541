#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "QkDlg/QkXDlg.h"
#include "QkDlg/ScrollbarHolder.h"
#include "support/HostDialog.h"

namespace QkDlgTest {

/// Random numbers that are the same wherever the storm is repeated.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}
    /// 0 to `sides` - 1
    [[nodiscard]] int roll(int sides) {
        return static_cast<int>(engine_() % static_cast<std::uint64_t>(sides));
    }
    [[nodiscard]] bool oneIn(int sides) { return roll(sides) == 0; }

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
    kAny = ~0U,
};

/// Where a flat control differs from a plain one on purpose; docs/controls.md has the reasons.
enum Difference : unsigned {
    kOwnMouse = 1,      ///< answers the mouse by itself
    kOwnKeys = 2,       ///< answers the keyboard by itself
    kOwnText = 4,       ///< sets its text
    kOwnPlace = 8,      ///< sets its size
    kOwnMask = 16,      ///< masks its text
    kOwnScrolling = 32  ///< keeps position and range by itself
};

struct Kind {
    const char* name;
    const wchar_t* windowClass;
    std::vector<DWORD> styles;
    DWORD toggledStyles;  ///< one of these is switched now and then
    unsigned family;
    unsigned differences;
    DWORD ownStyle;  ///< style bits that the library sets as it needs them
    std::unique_ptr<QkDlg::QkCustomControl> (*make)(UINT id);  ///< null: a scroll bar holder
};

[[nodiscard]] const std::vector<Kind>& kinds();

/// A control on the stage: the window, and in the flat play what makes it flat.
struct Actor {
    const Kind* kind = nullptr;
    int id = 0;
    DWORD style = 0;
    HWND window = nullptr;
    std::unique_ptr<QkDlg::QkCustomControl> control;
    std::unique_ptr<QkDlg::ScrollbarHolder> holder;
};

/// A dialog with controls that a storm goes over. The same numbers give the same plain dialog, the
/// twin: it has the same windows, and nothing of the library.
class Stage {
public:
    enum class Play { Flat, Plain, Converted };

    Stage(Play play, bool visible, const std::vector<const Kind*>& cast, Dice& dice);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    [[nodiscard]] HWND host() const { return host_; }
    [[nodiscard]] std::vector<Actor>& actors() { return actors_; }
    /// Whether this play has objects that may be deleted and made again.
    [[nodiscard]] bool hasObjects() const { return play_ == Play::Flat; }

    void createWindow(Actor& actor);
    void makeFlat(Actor& actor);
    static void makePlain(Actor& actor);
    /// Ends windows and objects in a random order.
    void end(Dice& dice);

    /// What can be told of the controls, and what they told the dialog since the last time.
    [[nodiscard]] std::string state();
    /// Is called at the next notification, once.
    void react(std::function<void()> reaction) { reaction_ = std::move(reaction); }

private:
    static LRESULT CALLBACK listen(HWND window, UINT message, WPARAM wp, LPARAM lp, UINT_PTR id,
                                   DWORD_PTR self);
    void hear(UINT message, WPARAM wp, LPARAM lp);

    Play play_;
    HWND host_ = nullptr;
    std::unique_ptr<QkDlg::QkXDlg> dialog_;
    std::vector<Actor> actors_;
    HeardList heard_;
    std::function<void()> reaction_;
};

}  // namespace QkDlgTest
