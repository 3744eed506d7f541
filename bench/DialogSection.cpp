// Dialogs of growing size, opened, redrawn and closed.
#include <string>
#include <utility>

#include "DialogTemplate.h"
#include "QkDlg/QkXDlg.h"
#include "Sections.h"
#include "Stage.h"

namespace QkDlgBench {

namespace {

struct Size {
    int controls;
    int every;  ///< how many rounds pass until its next turn: large dialogs take long
};
constexpr std::array kSizes{Size{10, 1}, Size{100, 2}, Size{1000, 4}};
constexpr int kRounds = 28;
constexpr std::array kDialogLooks{Look::Standard, Look::Bare, Look::Flat};
constexpr double kPerMillisecond = 1000;

class MixedDialog : public QkDlg::QkXDlg {
public:
    explicit MixedDialog(Look look) : QkXDlg(0), m_look(look) { m_bFlat = look == Look::Flat; }

    bool OnInitDialog() override {
        const bool result = QkXDlg::OnInitDialog();
        if (m_look != Look::Bare)
            return result;
        for (HWND child = GetWindow(m_hWnd, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            subclassBare(child);
        return result;
    }

    void open(const std::vector<WORD>& words) {
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                   reinterpret_cast<const DLGTEMPLATE*>(words.data()), nullptr,
                                   GetDialogProc(), reinterpret_cast<LPARAM>(this));
        if (!m_hWnd || !IsWindowVisible(m_hWnd))
            giveUp("did not open", "dialog");
    }
    void redraw() const {
        RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
    void close() { DestroyWindow(std::exchange(m_hWnd, nullptr)); }

private:
    Look m_look;
};

struct Times {
    double open;
    double redraw;
    double close;
};

// Each until the queue is empty, so with all that is painted.
Times runOnce(const std::vector<WORD>& words, Look look) {
    auto dialog = std::make_unique<MixedDialog>(look);
    Times times{};
    times.open = timeOf([&] {
        dialog->open(words);
        settle();
    });
    times.redraw = timeOf([&] {
        dialog->redraw();
        settle();
    });
    times.close = timeOf([&] {
        dialog->close();
        dialog.reset();
        settle();
    });
    return times;
}

/// Whole dialogs in milliseconds; each of their controls in microseconds, beside the other sizes.
void add(Results& results, const char* stage, int controls, Look look, double time) {
    const std::string size = std::to_string(controls);
    results.add("dialog", size + " " + stage, nameOf(look), time / kPerMillisecond);
    results.add("dialog, per control", std::string(nameOf(look)) + " " + stage, size,
                time / controls);
}

}  // namespace

// Sizes take turns as looks do, so that they can be compared with one another.
void runDialog(const Options& options, Results& results) {
    const int rounds = options.roundsOr(kRounds);
    for (int round = -1; round < rounds; ++round) {
        for (const Size& size : kSizes) {
            if (round > 0 && round % size.every != 0)
                continue;
            const std::vector<WORD> words = mixedDialog(size.controls);
            for (const Look look : kDialogLooks) {
                const Times times = runOnce(words, look);
                if (round < 0)
                    continue;
                add(results, "open", size.controls, look, times.open);
                add(results, "redraw", size.controls, look, times.redraw);
                add(results, "close", size.controls, look, times.close);
            }
        }
    }
}

}  // namespace QkDlgBench
