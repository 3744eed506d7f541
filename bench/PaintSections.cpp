// Repaints of each control class in all looks.
#include <functional>
#include <map>

#include "GdiTable.h"
#include "QkUtil/Handles.h"
#include "Sections.h"
#include "Stage.h"

namespace QkDlgBench {

namespace {

constexpr int kRounds = 41;
constexpr int kRepaintsPerRound = 8;
constexpr int kPrintsPerRound = 40;
constexpr int kCountedPaints = 4;
constexpr char kAll[] = "all together";
/// The platform paints standard scroll bars many times as slowly as anything else.
constexpr char kNoBars[] = "all but bars";

void repaint(HWND window) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    GdiFlush();
}

/// A bitmap of a control's size that controls print into.
class Paper {
public:
    explicit Paper(SIZE size) : m_memory(CreateCompatibleDC(nullptr)) {
        const QkDlg::WindowDc screen(nullptr);
        m_bitmap.reset(CreateCompatibleBitmap(screen.get(), size.cx, size.cy));
        SelectObject(m_memory.get(), m_bitmap.get());
    }
    [[nodiscard]] HDC dc() const { return m_memory.get(); }

private:
    QkDlg::UniqueBitmap m_bitmap;
    QkDlg::MemoryDc m_memory;  ///< goes before the bitmap that is selected into it
};

void print(HWND window, const Paper& paper) {
    SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(paper.dc()),
                 PRF_CLIENT | PRF_ERASEBKGND);
}

std::vector<std::unique_ptr<Quartet>> makeQuartets(const Hosts& hosts, const Options& options) {
    std::vector<std::unique_ptr<Quartet>> quartets;
    for (const Kind* const kind : options.wantedKinds())
        quartets.push_back(std::make_unique<Quartet>(hosts, *kind));
    settle();
    return quartets;
}

bool isBar(const Kind& kind) {
    return lstrcmpiW(kind.windowClass, L"ScrollBar") == 0;
}

using Measure = std::function<double(const Subject&)>;

/// One value of each kind in each look; false keeps them out of the results.
void runRound(const std::vector<std::unique_ptr<Quartet>>& quartets, const char* section,
              const Measure& measure, Results* results) {
    std::map<Look, double> all;
    std::map<Look, double> noBars;
    for (const auto& quartet : quartets) {
        for (const Look look : kLooks) {
            const Subject& subject = quartet->in(look);
            subject.show();
            const double value = measure(subject);
            subject.hide();
            all[look] += value;
            noBars[look] += isBar(quartet->kind()) ? 0 : value;
            if (results)
                results->add(section, quartet->kind().name, nameOf(look), value);
        }
    }
    if (!results || quartets.size() < 2)
        return;
    for (const Look look : kLooks) {
        results->add(section, kNoBars, nameOf(look), noBars[look]);
        results->add(section, kAll, nameOf(look), all[look]);
    }
}

void compare(const Options& options, const char* section, const Measure& measure, int rounds,
             Results& results) {
    const Hosts hosts;
    const auto quartets = makeQuartets(hosts, options);
    runRound(quartets, section, measure, nullptr);
    for (int round = 0; round < rounds; ++round)
        runRound(quartets, section, measure, &results);
}

double timeOfRepaint(const Subject& subject) {
    repaint(subject.window());
    settle();
    const double time = timeOf([&] {
        for (int i = 0; i < kRepaintsPerRound; ++i)
            repaint(subject.window());
        settle();
    });
    return time / kRepaintsPerRound;
}

double timeOfPrint(const Subject& subject) {
    const Paper paper(subject.clientSize());
    print(subject.window(), paper);
    const double time = timeOf([&] {
        for (int i = 0; i < kPrintsPerRound; ++i)
            print(subject.window(), paper);
        GdiFlush();
    });
    return time / kPrintsPerRound;
}

double objectsOfRepaint(const Subject& subject) {
    repaint(subject.window());
    const GdiTable before;
    for (int i = 0; i < kCountedPaints; ++i)
        repaint(subject.window());
    return static_cast<double>(GdiTable().madeSince(before)) / kCountedPaints;
}

}  // namespace

void runRepaint(const Options& options, Results& results) {
    compare(options, "repaint", &timeOfRepaint, options.roundsOr(kRounds), results);
}

void runPrint(const Options& options, Results& results) {
    compare(options, "print", &timeOfPrint, options.roundsOr(kRounds), results);
}

void runGdi(const Options& options, Results& results) {
    // Counts are the same in each round.
    if (GdiTable().known())
        compare(options, "gdi", &objectsOfRepaint, 1, results);
}

}  // namespace QkDlgBench
