// Shows the flat controls page by page, and takes pictures of them: a host like any other, with
// ordinary dialog resources and a DLL that it loads.

#include <algorithm>
#include <optional>

#include "FlatLibrary.h"
#include "Handles.h"
#include "MainWindow.h"
#include "Options.h"
#include "Page.h"
#include "Pointer.h"
#include "common/Console.h"
#include "common/Picture.h"

namespace Gallery {
namespace {

using QkDlgTools::capturedClient;
using QkDlgTools::printOut;
using QkDlgTools::savePng;

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

// Long enough for the first paint, and for the fades between two states.
constexpr DWORD kSettleTime = 400;

void printError(const std::wstring& text) {
    QkDlgTools::printError(text, L"Gallery");
}

std::wstring pageNames() {
    std::wstring names;
    for (const Page& page : pages())
        names.append(page.name).append(L"\n");
    return names;
}

std::optional<size_t> pageIndex(const std::wstring& name) {
    if (name.empty())
        return 0;
    const auto found = std::ranges::find(pages(), name, &Page::name);
    if (found == pages().end())
        return std::nullopt;
    return static_cast<size_t>(found - pages().begin());
}

void dispatch(HWND mainWindow, MSG& message) {
    if (IsDialogMessageW(mainWindow, &message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void pumpFor(HWND mainWindow, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
        MSG message{};
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            dispatch(mainWindow, message);
        else
            MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now),
                                      QS_ALLINPUT);
    }
}

int takePicture(const MainWindow& main, const Options& options) {
    pumpFor(main.window(), kSettleTime);
    if (!applyPointer(main.page(), options)) {
        printError(L"The page has no such control.\n");
        return kExitUsage;
    }
    pumpFor(main.window(), kSettleTime);
    const bool saved = savePng(capturedClient(main.window()).get(), options.png);
    releasePointer(options);
    if (!saved)
        printError(L"The picture could not be saved: " + options.png + L"\n");
    return saved ? 0 : kExitFailure;
}

int runUntilClosed(HWND mainWindow) {
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        dispatch(mainWindow, message);
    return 0;
}

// Shows what has been painted so far, which the system may have kept back. Wine has kept it back
// until its program waits for something.
LRESULT CALLBACK showPainted(int code, WPARAM wParam, LPARAM lParam) {
    GdiFlush();
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 0, 0);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Before and after each message that is sent, so that nothing painted in between escapes a watcher.
void showEveryStep() {
    for (const int hook : {WH_CALLWNDPROC, WH_CALLWNDPROCRET, WH_GETMESSAGE})
        SetWindowsHookExW(hook, &showPainted, nullptr, GetCurrentThreadId());
}

int show(const Options& options, size_t firstPage) {
    // While this event exists the application as a whole wants flat dialogs.
    UniqueKernelHandle flatStyle;
    std::optional<FlatLibrary> library;
    if (!options.plain) {
        flatStyle.reset(CreateEventW(nullptr, TRUE, FALSE, L"VANTOR_DLG_STYLE_FLAT"));
        library = loadFlatLibrary();
        if (!library) {
            printError(L"The library is not beside the program, or not complete.\n");
            return kExitFailure;
        }
    }
    const bool flat = library && library->flatStyleEnabled();

    if (options.everyStep)
        showEveryStep();
    const MainWindow main(flat ? &*library : nullptr, firstPage);
    if (!main.page()) {
        printError(L"The window could not be created.\n");
        return kExitFailure;
    }
    // Before the window comes up under it: the news that the mouse has left would come late.
    if (!options.png.empty())
        parkPointer();
    ShowWindow(main.window(), SW_SHOWNORMAL);
    return options.png.empty() ? runUntilClosed(main.window()) : takePicture(main, options);
}

int run() {
    const std::optional<Options> options = readOptions();
    if (!options) {
        printError(usage());
        return kExitUsage;
    }
    if (options->list) {
        printOut(pageNames());
        return 0;
    }
    const std::optional<size_t> firstPage = pageIndex(options->page);
    if (!firstPage) {
        printError(L"There is no such page. The pages are:\n" + pageNames());
        return kExitUsage;
    }
    if (options->rightToLeft)
        SetProcessDefaultLayout(LAYOUT_RTL);
    return show(*options, *firstPage);
}

}  // namespace
}  // namespace Gallery

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    return Gallery::run();
}
