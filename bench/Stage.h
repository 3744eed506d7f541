#pragma once

#include <array>
#include <chrono>
#include <memory>

#include "Kinds.h"

namespace QkDlgBench {

/// What a control is compared with: itself untouched, itself under a subclass that passes
/// everything on, and the least work that fills its area with a text.
enum class Look { Standard, Bare, Flat, Floor };
constexpr std::array kLooks{Look::Standard, Look::Bare, Look::Flat, Look::Floor};
[[nodiscard]] const char* nameOf(Look look);

/// Ends the program: what was asked for cannot be measured.
[[noreturn]] void giveUp(const char* what, const char* name);

/// Installs a subclass that passes everything on.
void subclassBare(HWND window);

/// Lengths at 96 DPI in pixels of the screen.
[[nodiscard]] int scaled(int length);

/// Takes what is in the queue, until it is empty and everything drawn is on the screen.
void settle();
/// Microseconds that the action takes.
template <typename Action>
[[nodiscard]] double timeOf(Action action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    const std::chrono::duration<double, std::micro> taken =
        std::chrono::steady_clock::now() - start;
    return taken.count();
}

struct WindowDestroyer {
    void operator()(HWND window) const { DestroyWindow(window); }
};
using UniqueWindow = std::unique_ptr<std::remove_pointer_t<HWND>, WindowDestroyer>;

/// A dialog without controls, as their parent, in one of four places of the screen.
[[nodiscard]] UniqueWindow makeHost(bool visible, int place = 0);

/// The window of a kind, as a child. Ends the program when there is none.
[[nodiscard]] UniqueWindow makeControlWindow(HWND host, const Kind& kind, bool visible);

class FloorPainter;

/// A control of one kind in one look.
class Subject {
public:
    Subject(HWND host, const Kind& kind, Look look);
    ~Subject();
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    Subject(Subject&&) = delete;
    Subject& operator=(Subject&&) = delete;

    [[nodiscard]] HWND window() const { return m_window.get(); }
    [[nodiscard]] SIZE clientSize() const;
    /// Takes place, size and text of another look of the same kind.
    void become(const Subject& model) const;
    /// Until it is on the screen as a whole.
    void show() const;
    void hide() const;

private:
    void setClientSize(SIZE size) const;

    const Kind* m_kind;
    std::unique_ptr<FloorPainter> m_floor;
    // The window goes first.
    std::unique_ptr<QkDlg::QkCustomControl> m_control;
    UniqueWindow m_window;
};

/// A visible dialog for each look: flat controls may subclass their parent, which is felt by all
/// that is in it.
class Hosts {
public:
    Hosts();
    [[nodiscard]] HWND of(Look look) const { return m_hosts[static_cast<std::size_t>(look)].get(); }

private:
    std::array<UniqueWindow, kLooks.size()> m_hosts;
};

/// One control in all looks, not visible, at the same place of their dialogs.
class Quartet {
public:
    Quartet(const Hosts& hosts, const Kind& kind);

    [[nodiscard]] const Kind& kind() const { return *m_kind; }
    [[nodiscard]] const Subject& in(Look look) const {
        return *m_subjects[static_cast<std::size_t>(look)];
    }

private:
    const Kind* m_kind;
    std::array<std::unique_ptr<Subject>, kLooks.size()> m_subjects;
};

}  // namespace QkDlgBench
