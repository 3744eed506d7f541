// Plays a session with real input over each page of the gallery, reads the screen all the while,
// and counts the frames that show what a person must never see.

#include <algorithm>
#include <chrono>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "Dye.h"
#include "QkUtil/Handles.h"
#include "Screen.h"
#include "Session.h"
#include "Watcher.h"
#include "common/CommandLine.h"
#include "common/Console.h"

namespace ScreenTest {
namespace {

using QkDlgTools::printOut;

constexpr int kUsage = 2;
constexpr int kStartTime = 10'000;
constexpr int kSecond = 1000;

/// Paths of the machine underneath are taken, too.
std::wstring windowsPath(std::wstring path) {
    if (!path.starts_with(L'/'))
        return path;
    std::ranges::replace(path, L'/', L'\\');
    return L"Z:" + path;
}

/// The file in which the display server keeps what it shows, if it does.
std::wstring screenFile() {
    std::wstring file(MAX_PATH, L'\0');
    file.resize(GetEnvironmentVariableW(L"QKDLG_SCREEN", file.data(), MAX_PATH));
    return windowsPath(file);
}

struct Options {
    std::wstring pages;      // separated by commas
    std::wstring pictures;   // a folder
    std::wstring arguments;  // of the gallery
    int seconds = 0;         // for each page
    unsigned seed = 1;
    int flashes = 0;  // that do not fail the run
    bool plain = false;
};

std::optional<Options> readOptions() {
    Options options;
    const std::vector<std::wstring> given = QkDlgTools::commandLineArguments();
    for (std::size_t i = 0; i + 1 < given.size(); i += 2) {
        const std::wstring& value = given[i + 1];
        if (given[i] == L"--pages")
            options.pages = value;
        else if (given[i] == L"--pictures")
            options.pictures = windowsPath(value);
        else if (given[i] == L"--gallery")
            options.arguments = L" " + value;
        else if (given[i] == L"--seconds")
            options.seconds = _wtoi(value.c_str());
        else if (given[i] == L"--seed")
            options.seed = static_cast<unsigned>(_wtoi(value.c_str()));
        else if (given[i] == L"--allow-flashes")
            options.flashes = _wtoi(value.c_str());
        else
            return std::nullopt;
    }
    options.plain = options.arguments.find(L"--plain") != std::wstring::npos;
    const bool complete = given.size() % 2 == 0 && options.seconds > 0 && !options.pages.empty();
    return complete ? std::optional(options) : std::nullopt;
}

/// The gallery as a process of its own. What is left of it ends with this object.
class Gallery {
public:
    explicit Gallery(const std::wstring& arguments) {
        std::wstring program(MAX_PATH, L'\0');
        program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
        program.resize(program.find_last_of(L'\\') + 1);
        std::wstring command = L"\"" + program + L"Gallery.exe\"" + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &startup, &process_))
            return;
        const ULONGLONG end = GetTickCount64() + kStartTime;
        while (!window_ && GetTickCount64() < end) {
            pause(kSecond / 20);
            EnumWindows(&find, reinterpret_cast<LPARAM>(this));
        }
    }
    ~Gallery() {
        if (!process_.hProcess)
            return;
        PostMessageW(window_, WM_CLOSE, 0, 0);
        if (WaitForSingleObject(process_.hProcess, kSecond) != WAIT_OBJECT_0)
            TerminateProcess(process_.hProcess, 1);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    Gallery(const Gallery&) = delete;
    Gallery& operator=(const Gallery&) = delete;

    [[nodiscard]] HWND window() const { return window_; }
    [[nodiscard]] DWORD process() const { return process_.dwProcessId; }

private:
    static BOOL CALLBACK find(HWND window, LPARAM self) {
        auto* gallery = reinterpret_cast<Gallery*>(self);
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == gallery->process() && IsWindowVisible(window))
            gallery->window_ = window;
        return TRUE;
    }

    PROCESS_INFORMATION process_{};
    HWND window_ = nullptr;
};

/// What one page came to; the program that ended by itself counts as wrong.
Score watchPage(const Options& options, const std::wstring& page, const Screen& screen) {
    Report report(options.pictures, page);
    const Gallery gallery(L" --page " + page + options.arguments);
    if (!gallery.window())
        return {0, 0, 1, 0};
    Session session(gallery.process(), gallery.window(), screen, report, options.seed);
    // A window that has just come shows what the system likes until it is painted.
    pause(kSecond);
    session.waitForPaint();
    Watcher watcher(gallery.process(), screen, watchedPlace(gallery.window()), report);
    const bool stayed = session.play(options.seconds * kSecond);
    Score score = watcher.stop();
    if (!stayed) {
        printOut(L"  " + page + L": the gallery ended by itself\n");
        ++score.wrong;
    }
    return score;
}

void print(const std::wstring& name, const Score& score) {
    std::wostringstream line;
    line.width(12);
    line << std::left << name << std::right;
    for (const int number : {score.seen, score.changed, score.wrong}) {
        line.width(10);
        line << number;
    }
    printOut(line.str() + L"\n");
}

int run() {
    const std::optional<Options> options = readOptions();
    if (!options) {
        printOut(
            L"ScreenTest --pages NAME,... --seconds N [--seed N] [--pictures FOLDER]\n"
            L"           [--gallery ARGUMENTS] [--allow-flashes N]\n");
        return kUsage;
    }
    const Dye dye;
    const Screen screen(screenFile());
    Score sum;
    bool allWrong = true;
    printOut(L"page            frames   changed     wrong\n");
    std::wistringstream names(options->pages);
    for (std::wstring page; std::getline(names, page, L',');) {
        const Score score = watchPage(*options, page, screen);
        print(page, score);
        allWrong = allWrong && score.wrong > 0;
        sum = {sum.seen + score.seen, sum.changed + score.changed, sum.wrong + score.wrong,
               sum.flashes + score.flashes};
    }
    print(L"all", sum);
    // Standard controls must be found out on each page: this is the test of the test.
    const int excused = std::min(sum.flashes, options->flashes);
    return (options->plain ? allWrong : sum.wrong == excused) ? 0 : 1;
}

}  // namespace
}  // namespace ScreenTest

int main() {
    return ScreenTest::run();
}
