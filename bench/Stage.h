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

/// Installs a subclass that passes everything on.
void subclassBare(HWND window);

/// Lengths at 96 DPI in pixels of the screen.
[[nodiscard]] int scaled(int length);

/// Takes what is in the queue, until it is empty and everything drawn is on the screen.
void settle();
/// The same for a while.
void pump(std::chrono::milliseconds duration);

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

/// A dialog without controls, as their parent.
[[nodiscard]] UniqueWindow makeHost(bool visible);

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
    void show(bool visible) const { ShowWindow(window(), visible ? SW_SHOWNA : SW_HIDE); }

private:
    void setClientSize(SIZE size) const;

    std::unique_ptr<FloorPainter> m_floor;
    // The window goes first.
    std::unique_ptr<QkDlg::QkCustomControl> m_control;
    UniqueWindow m_window;
};

/// One control in all looks at the same place, of which one shows at a time.
class Quartet {
public:
    Quartet(HWND host, const Kind& kind);

    [[nodiscard]] const Kind& kind() const { return *m_kind; }
    [[nodiscard]] const Subject& in(Look look) const {
        return *m_subjects[static_cast<std::size_t>(look)];
    }

private:
    const Kind* m_kind;
    std::array<std::unique_ptr<Subject>, kLooks.size()> m_subjects;
};

}  // namespace QkDlgBench
