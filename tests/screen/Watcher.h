#pragma once

#include <atomic>
#include <functional>
#include <string>

#include "Screen.h"

namespace ScreenTest {

struct Score {
    int seen = 0;     ///< frames read
    int changed = 0;  ///< of these, the ones that differ from their predecessor
    int wrong = 0;
};

/// Names and counts what is wrong on a page, and keeps pictures of it in a folder.
struct Report {
    std::wstring folder;
    std::wstring page;
    std::atomic<const wchar_t*> act = L"";  ///< of the session, to be named with a fault
    std::atomic<int> wrong = 0;
    std::atomic<int> looks = 0;  ///< how often the watcher has asked where the windows are

    void add(const wchar_t* fault, const Frame& frame, const RECT& mark,
             const std::wstring& control, const Frame* expected = nullptr);
};

/// Reads the screen over and over in a thread of its own until `meanwhile` returns, and judges each
/// new frame: the look of a standard control, an area that nobody painted, a control that was empty
/// for a moment.
Score watch(HWND main, const Screen& screen, Report& report,
            const std::function<void()>& meanwhile);

}  // namespace ScreenTest
