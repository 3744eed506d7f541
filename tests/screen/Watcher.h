#pragma once

#include <atomic>
#include <map>
#include <optional>
#include <string>
#include <thread>

#include "Scene.h"
#include "Screen.h"

namespace ScreenTest {

struct Score {
    int seen = 0;     ///< frames read
    int changed = 0;  ///< of these, the ones that differ from their predecessor
    int wrong = 0;
    int flashes = 0;  ///< of the wrong ones, controls that were empty for a moment
};

/// Names and counts what is wrong, and keeps pictures of it.
class Report {
public:
    /// Pictures go into a folder, under names that begin with the page's; with none there are none.
    Report(std::wstring folder, std::wstring page);

    void add(const wchar_t* fault, const Frame& frame, const RECT& mark,
             const std::wstring& control, const Frame* expected = nullptr);
    /// What the session is doing, to be named with a fault.
    void doing(const wchar_t* act) { act_ = act; }
    [[nodiscard]] int wrong() const { return wrong_; }
    /// The fault that was added last is a control that was empty for a moment.
    void wasFlash() { ++flashes_; }
    [[nodiscard]] int flashes() const { return flashes_; }
    /// How often the watcher has asked where the windows are.
    void looked() { ++looks_; }
    [[nodiscard]] int looks() const { return looks_; }

private:
    std::wstring folder_;
    std::wstring page_;
    std::atomic<const wchar_t*> act_ = L"";
    std::atomic<int> wrong_ = 0;
    std::atomic<int> flashes_ = 0;
    std::atomic<int> looks_ = 0;
};

/// Reads the screen over and over in a thread of its own and judges each new frame: the look of a
/// standard control, an area that nobody painted, a control that was empty for a moment.
class Watcher {
public:
    Watcher(DWORD process, const Screen& screen, const RECT& place, Report& report);
    ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    /// Ends the watch.
    Score stop();

private:
    struct Ink {
        bool empty = true;
        ULONGLONG since = 0;
        Frame frame;  ///< the one in which it was found empty
    };

    void run();
    bool lookAround();
    void judge(bool changed);
    void judgeInk(const Scene::Control& control);
    [[nodiscard]] std::optional<RECT> dyed() const;
    [[nodiscard]] std::optional<RECT> black() const;
    void tell(const wchar_t* fault, const RECT& mark);

    const Screen& screen_;
    Report& report_;
    Scene scene_;
    Frame frame_;
    std::map<HWND, Ink> ink_;
    Score score_;
    ULONGLONG sceneTime_ = 0;
    bool wasWrong_ = false;
    std::atomic<bool> stopping_ = false;
    std::thread thread_;
};

}  // namespace ScreenTest
