#pragma once

namespace QkDlg {

/// When a press that is held repeats: not at once, so that a click stays one, and then with every
/// tick of its timer.
class ScrollRepeat {
public:
    void start() {
        m_running = true;
        m_delay = kFirstRepeat;
    }
    void stop() { m_running = false; }
    [[nodiscard]] bool running() const { return m_running; }

    /// One tick of the timer; true when the press repeats.
    [[nodiscard]] bool tick() {
        if (m_delay > 0)
            --m_delay;
        return m_running && m_delay == 0;
    }

private:
    static constexpr int kFirstRepeat = 4;

    bool m_running = false;
    int m_delay = 0;
};

}  // namespace QkDlg
