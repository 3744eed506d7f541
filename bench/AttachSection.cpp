// Making a control flat and giving it back, beside creating and destroying its window.
#include "Sections.h"
#include "Stage.h"

namespace QkDlgBench {

namespace {

constexpr int kRounds = 41;
constexpr int kWarmUps = 3;
constexpr int kWindows = 10;  ///< at a time

struct Times {
    double create = 0;
    double attach = 0;
    double detach = 0;
    double destroy = 0;
};

// In a dialog that does not show yet, as during WM_INITDIALOG.
Times runOnce(HWND host, const Kind& kind) {
    std::vector<UniqueWindow> windows;
    std::vector<std::unique_ptr<QkDlg::QkCustomControl>> controls;
    windows.reserve(kWindows);
    controls.reserve(kWindows);
    Times times;
    times.create = timeOf([&] {
        for (int i = 0; i < kWindows; ++i) {
            windows.push_back(makeControlWindow(host, kind, true));
        }
    });
    for (const UniqueWindow& window : windows) {
        if (kind.fill)
            kind.fill(window.get());
    }
    times.attach = timeOf([&] {
        for (const UniqueWindow& window : windows) {
            controls.push_back(kind.makeFlat(0));
            controls.back()->Attach(window.get());
        }
    });
    times.detach = timeOf([&] { controls.clear(); });
    times.destroy = timeOf([&] { windows.clear(); });
    settle();
    return times;
}

}  // namespace

void runAttach(const Options& options, Results& results) {
    const UniqueWindow host = makeHost(false);
    const auto kinds = options.wantedKinds();
    const int rounds = options.roundsOr(kRounds);
    for (int round = -kWarmUps; round < rounds; ++round) {
        for (const Kind* const kind : kinds) {
            const Times times = runOnce(host.get(), *kind);
            if (round < 0)
                continue;
            const auto add = [&](const char* column, double time) {
                results.add("attach", kind->name, column, time / kWindows);
            };
            add("create", times.create);
            add("attach", times.attach);
            add("detach", times.detach);
            add("destroy", times.destroy);
        }
    }
}

}  // namespace QkDlgBench
