#include "Watcher.h"

#include <map>
#include <optional>
#include <thread>
#include <utility>

#include "Dye.h"
#include "Scene.h"
#include "common/Console.h"
#include "support/HostDialog.h"

namespace ScreenTest {

namespace {

constexpr ULONGLONG kLookTime = 100;
constexpr ULONGLONG kFlashTime = 500;
constexpr int kMaxPictures = 20;
// Blacker than the text is thick, at 96 DPI.
constexpr int kBlackWidth = 16;
constexpr int kBlackHeight = 6;
constexpr int kFewestDyed = 4;
constexpr std::uint32_t kDyedPixel = kDye[2] << 16U | kDye[1] << 8U | kDye[0];

bool isEmpty(const Frame& frame, const RECT& place) {
    const std::uint32_t first = frame.row(place, place.top).front();
    for (LONG y = place.top; y < place.bottom; ++y) {
        for (const std::uint32_t pixel : frame.row(place, y)) {
            if (pixel != first)
                return false;
        }
    }
    return true;
}

/// An endless bar between two rounds; an edit without a text; a label, which has no ground of its
/// own: whatever erases its parent wipes it, too, before it can paint itself again; the corner
/// between two bars.
bool mayBeEmpty(HWND window) {
    const std::wstring name = className(window);
    const bool endless = (GetWindowLongW(window, GWL_STYLE) & PBS_MARQUEE) != 0;
    const bool transparent = (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TRANSPARENT) != 0;
    const bool corner = name == L"SCROLLBARHOLDER" && !GetWindow(window, GW_CHILD);
    return name == WC_EDITW || corner || (name == WC_STATICW && transparent) ||
           (name == PROGRESS_CLASSW && endless);
}

using Fault = std::optional<std::pair<const wchar_t*, RECT>>;

class Watcher {
public:
    Watcher(HWND main, const Screen& screen, Report& report)
        : screen_(screen), report_(report), scene_(main), frame_{scene_.place(), {}} {}

    [[nodiscard]] const Score& score() const { return score_; }

    void run(const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            // What a window has just uncovered is judged later, even if nothing changes.
            const bool due = GetTickCount64() - looked_ > kLookTime;
            // Before the frame, so that a change after it is noticed.
            if (due)
                (void)lookAround();
            const bool changed = screen_.read(frame_);
            ++score_.seen;
            if (changed)
                ++score_.changed;
            if (changed || due)
                judge(changed);
            Sleep(1);
        }
    }

private:
    bool lookAround() {
        const bool changed = scene_.update();
        ++report_.looks;
        looked_ = GetTickCount64();
        return changed;
    }

    void judge(bool changed) {
        Fault found = fault();
        // Where windows have come or gone since the last look, nobody knows whose the picture is:
        // what is wrong is so in the next one, too.
        if (found)
            found = lookAround() ? std::nullopt : fault();
        // What stays wrong is one fault for each frame that shows it.
        if (found && (changed || !wasWrong_)) {
            const auto& [what, mark] = *found;
            const POINT middle{(mark.left + mark.right) / 2, (mark.top + mark.bottom) / 2};
            report_.add(what, frame_, mark, scene_.nameAt(middle));
        }
        wasWrong_ = found.has_value();
        for (const Scene::Control& control : scene_.controls())
            judgeInk(control);
    }

    // A control that shows nothing may have nothing to show; one that shows something before and
    // after was wiped and painted in two steps.
    void judgeInk(const Scene::Control& control) {
        const ULONGLONG now = GetTickCount64();
        Ink& ink = ink_[control.window];
        const bool empty = isEmpty(frame_, control.place);
        if (!control.settled) {
            ink = {empty, 0, {}};
        } else if (empty && !ink.empty) {
            ink = {true, now, frame_};
        } else if (!empty && ink.empty) {
            const bool flashed = ink.since != 0 && now - ink.since < kFlashTime;
            if (flashed && IsWindowVisible(control.window) && !mayBeEmpty(control.window))
                report_.add(L"empty for a moment", ink.frame, control.place,
                            scene_.nameAt({control.place.left, control.place.top}));
            ink = {false, 0, {}};
        }
    }

    Fault fault() const {
        if (const auto standard = dyed())
            return std::pair(L"standard look", *standard);
        if (const auto bare = black())
            return std::pair(L"not painted", *bare);
        return std::nullopt;
    }

    // Two pixels wide and high at least: the line around a list is the system's, and so thin.
    std::optional<RECT> dyed() const {
        RECT box{};
        int count = 0;
        const auto width = static_cast<std::size_t>(frame_.width());
        const auto& pixels = frame_.pixels;
        for (std::size_t i = width + 1; i < pixels.size(); ++i) {
            if (pixels[i] != kDyedPixel || pixels[i - 1] != kDyedPixel ||
                pixels[i - width] != kDyedPixel || pixels[i - width - 1] != kDyedPixel ||
                !scene_.isJudged(i))
                continue;
            ++count;
            const auto [x, y] = frame_.pointOf(i);
            const RECT pixel{x, y, x + 1, y + 1};
            UnionRect(&box, &box, &pixel);
        }
        return count < kFewestDyed ? std::nullopt : std::optional(box);
    }

    std::optional<RECT> black() const {
        const int minimumWidth = QkDlgTest::scaled(kBlackWidth);
        const int minimumHeight = QkDlgTest::scaled(kBlackHeight);
        const auto width = static_cast<std::size_t>(frame_.width());
        std::vector<int> heights(width);  // of the black above each pixel of the row
        int run = 0;
        for (std::size_t i = 0; i < frame_.pixels.size(); ++i) {
            const std::size_t x = i % width;
            const bool isBlack = frame_.pixels[i] == 0 && scene_.isJudged(i);
            heights[x] = isBlack ? heights[x] + 1 : 0;
            run = heights[x] < minimumHeight ? 0 : x == 0 ? 1 : run + 1;
            if (run < minimumWidth)
                continue;
            const POINT end = frame_.pointOf(i);
            return RECT{end.x + 1 - run, end.y + 1 - minimumHeight, end.x + 1, end.y + 1};
        }
        return std::nullopt;
    }

    struct Ink {
        bool empty = true;
        ULONGLONG since = 0;
        Frame frame;  ///< the one in which it was found empty
    };

    const Screen& screen_;
    Report& report_;
    Scene scene_;
    Frame frame_;
    std::map<HWND, Ink> ink_;
    Score score_;
    ULONGLONG looked_ = 0;
    bool wasWrong_ = false;
};

}  // namespace

void Report::add(const wchar_t* fault, const Frame& frame, const RECT& mark,
                 const std::wstring& control, const Frame* expected) {
    const int number = ++wrong;
    if (number > kMaxPictures)
        return;
    const std::wstring name = page + L"-" + std::to_wstring(number);
    QkDlgTools::printOut(L"  " + page + L": " + fault + L" at " + control + L" during \"" +
                         act.load() + L"\", " + name + L".png\n");
    saveMarked(frame, mark, folder + L"\\" + name + L".png");
    if (expected)
        saveMarked(*expected, mark, folder + L"\\" + name + L"-expected.png");
}

Score watch(HWND main, const Screen& screen, Report& report,
            const std::function<void()>& meanwhile) {
    Watcher watcher(main, screen, report);
    std::jthread thread([&watcher](const std::stop_token& stop) { watcher.run(stop); });
    meanwhile();
    thread.request_stop();
    thread.join();
    Score score = watcher.score();
    score.wrong = report.wrong;
    return score;
}

}  // namespace ScreenTest
