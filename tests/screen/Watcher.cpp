#include "Watcher.h"

#include <algorithm>
#include <ranges>
#include <utility>

#include "Dye.h"
#include "common/Console.h"

namespace ScreenTest {

namespace {

constexpr ULONGLONG kSceneTime = 100;
constexpr ULONGLONG kFlashTime = 500;
constexpr int kMaxPictures = 20;
// Blacker than the text is thick, at 96 DPI.
constexpr int kBlackWidth = 16;
constexpr int kBlackHeight = 6;
constexpr int kFewestDyed = 4;
constexpr std::uint32_t kDyedPixel = kDye[2] << 16U | kDye[1] << 8U | kDye[0];

int scaled(int length) {
    HDC dc = GetDC(nullptr);
    const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
    ReleaseDC(nullptr, dc);
    return MulDiv(length, dpi, USER_DEFAULT_SCREEN_DPI);
}

void include(RECT& box, LONG x, LONG y) {
    const RECT pixel{x, y, x + 1, y + 1};
    UnionRect(&box, &box, &pixel);
}

bool isEmpty(const Frame& frame, const RECT& place) {
    const std::uint32_t first = frame.at(place.left, place.top);
    for (LONG y = place.top; y < place.bottom; ++y) {
        const std::uint32_t* row = frame.row(y) - frame.place.left;
        if (std::any_of(row + place.left, row + place.right,
                        [first](std::uint32_t pixel) { return pixel != first; }))
            return false;
    }
    return true;
}

/// An endless bar between two rounds; an edit without a text; a label, which has no ground of its
/// own: whatever erases its parent wipes it, too, before it can paint itself again.
bool mayBeEmpty(HWND window) {
    const std::wstring name = className(window);
    const bool endless = (GetWindowLongW(window, GWL_STYLE) & PBS_MARQUEE) != 0;
    const bool transparent = (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TRANSPARENT) != 0;
    return name == WC_EDITW || (name == WC_STATICW && transparent) ||
           (name == PROGRESS_CLASSW && endless);
}

}  // namespace

Report::Report(std::wstring folder, std::wstring page)
    : folder_(std::move(folder)), page_(std::move(page)) {}

void Report::add(const wchar_t* fault, const Frame& frame, const RECT& mark,
                 const std::wstring& control, const Frame* expected) {
    const int number = ++wrong_;
    if (number > kMaxPictures)
        return;
    const std::wstring name = page_ + L"-" + std::to_wstring(number);
    const std::wstring file = name + L".png";
    QkDlgTools::printOut(L"  " + page_ + L": " + fault + L" at " + control + L" during \"" +
                         act_.load() + L"\", " + file + L"\n");
    if (folder_.empty())
        return;
    saveMarked(frame, mark, folder_ + L"\\" + file);
    if (expected)
        saveMarked(*expected, mark, folder_ + L"\\" + name + L"-expected.png");
}

Watcher::Watcher(DWORD process, const Screen& screen, const RECT& place, Report& report)
    : screen_(screen), report_(report), scene_(process, place) {
    frame_.place = place;
    thread_ = std::thread([this] { run(); });
}

Watcher::~Watcher() {
    (void)stop();
}

Score Watcher::stop() {
    stopping_ = true;
    if (thread_.joinable())
        thread_.join();
    score_.wrong = report_.wrong();
    score_.flashes = report_.flashes();
    return score_;
}

void Watcher::run() {
    while (!stopping_) {
        // What a window has just uncovered is judged later, even if nothing changes.
        const bool due = GetTickCount64() - sceneTime_ > kSceneTime;
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

bool Watcher::lookAround() {
    const bool changed = scene_.update();
    report_.looked();
    sceneTime_ = GetTickCount64();
    return changed;
}

void Watcher::judge(bool changed) {
    // Where windows have come or gone since the last look, nobody knows whose the picture is: what
    // is wrong is so in the next one, too.
    const bool unknown = (dyed() || black()) && lookAround();
    const auto standard = unknown ? std::nullopt : dyed();
    const auto bare = unknown ? std::nullopt : black();
    // What stays wrong is one fault for each frame that shows it.
    if (standard && (changed || !wasWrong_))
        tell(L"standard look", *standard);
    else if (bare && (changed || !wasWrong_))
        tell(L"not painted", *bare);
    wasWrong_ = standard || bare;
    const auto controls = scene_.controls();
    for (const Scene::Control& control : controls)
        judgeInk(control);
}

// A control that shows nothing may have nothing to show; one that shows something before and
// after was wiped and painted in two steps.
void Watcher::judgeInk(const Scene::Control& control) {
    const ULONGLONG now = GetTickCount64();
    Ink& ink = ink_[control.window];
    const bool empty = isEmpty(frame_, control.place);
    if (!control.settled) {
        ink = {empty, 0, {}};
        return;
    }
    if (empty == ink.empty)
        return;
    ink.empty = empty;
    if (empty) {
        ink.since = now;
        ink.frame = frame_;
        return;
    }
    const bool flashed = ink.since != 0 && now - ink.since < kFlashTime;
    if (flashed && IsWindowVisible(control.window) && !mayBeEmpty(control.window)) {
        report_.add(L"empty for a moment", ink.frame, control.place,
                    scene_.nameAt({control.place.left, control.place.top}));
        report_.wasFlash();
    }
    ink = {false, 0, {}};
}

// Two pixels wide and high at least: the line around a list is the system's, and so thin.
std::optional<RECT> Watcher::dyed() const {
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
        include(box, frame_.place.left + static_cast<LONG>(i % width),
                frame_.place.top + static_cast<LONG>(i / width));
    }
    return count < kFewestDyed ? std::nullopt : std::optional(box);
}

std::optional<RECT> Watcher::black() const {
    const int minimumWidth = scaled(kBlackWidth);
    const int minimumHeight = scaled(kBlackHeight);
    const auto width = static_cast<std::size_t>(frame_.width());
    std::vector<int> heights(width);  // of the black above each pixel of the row
    for (std::size_t start = 0; start < frame_.pixels.size(); start += width) {
        int run = 0;
        for (std::size_t x = 0; x < width; ++x) {
            const bool isBlack = frame_.pixels[start + x] == 0 && scene_.isJudged(start + x);
            heights[x] = isBlack ? heights[x] + 1 : 0;
            run = heights[x] >= minimumHeight ? run + 1 : 0;
            if (run < minimumWidth)
                continue;
            const LONG right = frame_.place.left + static_cast<LONG>(x) + 1;
            const LONG bottom = frame_.place.top + static_cast<LONG>(start / width) + 1;
            return RECT{right - run, bottom - minimumHeight, right, bottom};
        }
    }
    return std::nullopt;
}

void Watcher::tell(const wchar_t* fault, const RECT& mark) {
    const POINT middle{(mark.left + mark.right) / 2, (mark.top + mark.bottom) / 2};
    report_.add(fault, frame_, mark, scene_.nameAt(middle));
}

}  // namespace ScreenTest
