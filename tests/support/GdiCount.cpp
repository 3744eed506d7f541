#include "support/GdiCount.h"

#include "common/GdiObjects.h"

namespace QkDlgTest {

namespace {

constexpr int kWarmUps = 20;

BOOL CALLBACK collect(HWND window, LPARAM list) {
    wchar_t name[8]{};
    GetClassNameW(window, name, 8);
    if (lstrcmpiW(name, L"IME") != 0)
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Holdings& holdings) {
    return out << holdings.gdiObjects << " GDI objects (" << holdings.fonts << " fonts), "
               << holdings.windows << " windows";
}

std::vector<HWND> topLevelWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), &collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

int windowCount() {
    std::vector<HWND> windows = topLevelWindows();
    for (const HWND window : topLevelWindows())
        EnumChildWindows(window, &collect, reinterpret_cast<LPARAM>(&windows));
    return static_cast<int>(windows.size());
}

Holdings holdings() {
    const QkDlgTools::GdiObjects objects = QkDlgTools::countGdiObjects();
    return {objects.all, objects.fonts, windowCount()};
}

testing::AssertionResult doesNotLeak(int times, const std::function<void()>& body) {
    for (int i = 0; i < kWarmUps; ++i)
        body();
    const Holdings before = holdings();
    for (int i = 0; i < times; ++i)
        body();
    const Holdings after = holdings();
    if (after == before)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << before << " became " << after << " in " << times << " rounds";
}

}  // namespace QkDlgTest
