// Plays a session with real input over each page of the gallery, reads the screen all the while,
// and counts the frames that show what a person must never see.

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "Dye.h"
#include "QkUtil/Handles.h"
#include "Scene.h"
#include "Screen.h"
#include "Session.h"
#include "Watcher.h"
#include "common/CommandLine.h"
#include "common/Console.h"
#include "support/MessageLoop.h"

namespace ScreenTest {
namespace {

constexpr int kUsage = 2;
constexpr int kStartTime = 10'000;
constexpr int kSecond = 1000;

/// The file in which the display server keeps what it shows, if it does.
std::wstring screenFile() {
    std::wstring file(MAX_PATH, L'\0');
    file.resize(GetEnvironmentVariableW(L"QKDLG_SCREEN", file.data(), MAX_PATH));
    return file;
}

/// The gallery, which lies beside this program, as a process of its own. What is left of it ends
/// with this object.
class Gallery {
public:
    explicit Gallery(const std::wstring& arguments) {
        std::wstring command = L"Gallery.exe" + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started{};
        if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &startup, &started))
            return;
        const QkDlg::UniqueKernelHandle thread(started.hThread);
        process_.reset(started.hProcess);
        (void)QkDlgTest::pumpUntil(
            [this, id = started.dwProcessId] {
                for (HWND window : topWindows())
                    window_ = processOf(window) == id ? window : window_;
                return window_ != nullptr;
            },
            kStartTime);
    }
    ~Gallery() {
        PostMessageW(window_, WM_CLOSE, 0, 0);
        if (WaitForSingleObject(process_.get(), kSecond) != WAIT_OBJECT_0)
            TerminateProcess(process_.get(), 1);
    }
    Gallery(const Gallery&) = delete;
    Gallery& operator=(const Gallery&) = delete;

    [[nodiscard]] HWND window() const { return window_; }

private:
    QkDlg::UniqueKernelHandle process_;
    HWND window_ = nullptr;
};

struct Options {
    int seconds;  ///< for each page
    unsigned seed;
    std::wstring pictures;   ///< a folder
    std::wstring arguments;  ///< of the gallery
};

/// What one page came to; the program that ended by itself counts as wrong.
Score watchPage(const Options& options, const std::wstring& page, const Screen& screen) {
    Report report{options.pictures, page};
    const Gallery gallery(L" --page " + page + options.arguments);
    if (!gallery.window())
        return {0, 0, 1};
    // A window that has just come shows what the system likes until it is painted.
    QkDlgTest::pump(kSecond);
    (void)QkDlgTest::pumpUntil([&] { return !hasUnpainted(gallery.window()); }, kStartTime);
    const auto play = [&] {
        if (playSession(gallery.window(), screen, report, options.seed, options.seconds * kSecond))
            return;
        QkDlgTools::printOut(L"  " + page + L": the gallery ended by itself\n");
        ++report.wrong;
    };
    return watch(gallery.window(), screen, report, play);
}

void print(const std::wstring& name, const Score& score) {
    std::array<wchar_t, 100> line{};
    wsprintfW(line.data(), L"%-12s%10d%10d%10d\n", name.c_str(), score.seen, score.changed,
              score.wrong);
    QkDlgTools::printOut(line.data());
}

int run() {
    const std::vector<std::wstring> given = QkDlgTools::commandLineArguments();
    if (given.size() < 4) {
        QkDlgTools::printOut(
            L"ScreenTest PAGE,... SECONDS SEED PICTURE-FOLDER [GALLERY ARGUMENTS...]\n");
        return kUsage;
    }
    Options options{
        _wtoi(given[1].c_str()), static_cast<unsigned>(_wtoi(given[2].c_str())), given[3], {}};
    for (std::size_t i = 4; i < given.size(); ++i)
        options.arguments += L" " + given[i];
    const Dye dye;
    const Screen screen(screenFile());
    Score sum;
    bool allWrong = true;
    QkDlgTools::printOut(L"page            frames   changed     wrong\n");
    std::wistringstream pages(given[0]);
    for (std::wstring page; std::getline(pages, page, L',');) {
        const Score score = watchPage(options, page, screen);
        print(page, score);
        allWrong = allWrong && score.wrong > 0;
        sum = {sum.seen + score.seen, sum.changed + score.changed, sum.wrong + score.wrong};
    }
    print(L"all", sum);
    // Standard controls must be found out on each page: this is the test of the test.
    const bool plain = std::ranges::count(given, L"--plain") != 0;
    return (plain ? allWrong : sum.wrong == 0) ? 0 : 1;
}

}  // namespace
}  // namespace ScreenTest

int main() {
    return ScreenTest::run();
}
