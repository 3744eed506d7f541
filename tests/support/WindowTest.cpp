#include "support/WindowTest.h"

#include <list>

#include "QkUtil/Handles.h"

namespace QkDlgTest {

namespace {

int faults = 0;

// The system ignores memory faults of a window procedure that it calls itself, so that a call into
// freed memory would pass unnoticed.
LONG CALLBACK countFault(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION)
        ++faults;
    return EXCEPTION_CONTINUE_SEARCH;
}

void closeLeftovers() {
    for (const HWND window : topLevelWindows())
        DestroyWindow(window);
    drain();
}

// The system keeps device contexts, theme parts, patterns and the like from their first use on.
void fillCaches() {
    {
        std::list<QkDlg::WindowDc> contexts;
        for (int i = 0; i < 16; ++i)
            contexts.emplace_back(nullptr);
    }
    HostDialog host;
    int row = 0;
    const auto use = [&](const wchar_t* name, DWORD style, DWORD exStyle = 0) {
        const HWND added =
            host.add(name, L"x", style | WS_TABSTOP, area(10, 25 * row++, 100, 24), 1, exStyle);
        focus(added);
        moveTo(added);
        typeText(L"x ");
        keyTap(VK_SPACE);
        EnableWindow(added, FALSE);
        drain();
    };
    for (const LONG kind : {BS_DEFPUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON, BS_SPLITBUTTON})
        use(WC_BUTTONW, static_cast<DWORD>(kind));
    for (const LONG kind : {CBS_DROPDOWN, CBS_DROPDOWNLIST})
        use(WC_COMBOBOXW, static_cast<DWORD>(kind));
    for (const wchar_t* const name :
         {WC_LISTBOXW, WC_STATICW, WC_SCROLLBARW, PROGRESS_CLASSW, TRACKBAR_CLASSW})
        use(name, WS_BORDER);
    use(WC_EDITW, ES_PASSWORD, WS_EX_CLIENTEDGE);
    use(WC_LISTVIEWW, LVS_REPORT, WS_EX_CLIENTEDGE);
    moveAway();
}

// The system's cached device contexts gain and lose a region each, depending on which window used
// them last. What leaks one object at a time shows in doesNotLeak.
constexpr int kWobble = 4;

}  // namespace

WindowTest::WindowTest() : faultsBefore_(faults) {
    [[maybe_unused]] static const bool filled = (fillCaches(), true);
    [[maybe_unused]] static void* const handler = AddVectoredExceptionHandler(1, &countFault);
    moveAway();
    before_ = holdings();
}

WindowTest::~WindowTest() {
    releaseEverything();
    moveAway();
    EXPECT_EQ(windowCount(), before_.windows) << "the test left windows behind";
    closeLeftovers();
    EXPECT_EQ(faults, faultsBefore_) << "memory faults in window procedures";
    const Holdings after = holdings();
    EXPECT_LE(after.gdiObjects - after.fonts,
              before_.gdiObjects - before_.fonts + allowedGrowth_ + kWobble)
        << "the test left GDI objects behind: before " << before_ << ", after " << after;
}

}  // namespace QkDlgTest
