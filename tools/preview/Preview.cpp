// Shows the dialogs of any program, plain and flat, before a line of its code is changed: lists
// them, opens them, takes pictures of them, tells what became of their controls.

#include "QkDlg/Win32.h"
// Needs windows.h first.
#include <shlobj.h>

#include <array>
#include <set>

#include "common/CommandLine.h"
#include "common/Console.h"
#include "preview/Module.h"
#include "preview/Options.h"
#include "preview/Record.h"
#include "preview/Sheets.h"
#include "preview/Worker.h"
#include "preview/WorkerProcess.h"

namespace QkPreview {
namespace {

using QkDlgTools::printOut;

constexpr int kExitFault = 1;
constexpr int kExitUsage = 2;
constexpr DWORD kMillisecondsPerSecond = 1000;

/// Exceptions have large numbers, known by their hexadecimal digits.
std::wstring shownStatus(DWORD status) {
    if (HIWORD(status) == 0)
        return std::to_wstring(status);
    return hexWord(HIWORD(status)) + hexWord(LOWORD(status)).substr(2);
}

/// Runs the workers and hands on what they tell.
class Supervisor {
public:
    explicit Supervisor(const Options& options) : options_(options) {}

    int run() {
        for (const std::wstring& pattern : options_.modules) {
            const std::vector<std::wstring> files = matchingFiles(pattern);
            if (files.empty())
                fault(pattern + L": no file fits");
            for (const std::wstring& file : files)
                runModule(file);
        }
        if (!pictures_.empty() && !options_.all.empty())
            makeSheets();
        summarise();
        return faults_ == 0 ? 0 : kExitFault;
    }

private:
    /// What is known about the worker that runs.
    struct Progress {
        std::optional<std::size_t> begun;
        std::wstring title;
        std::wstring lastWords;
    };

    /// A worker that ends before its time is replaced by one that starts behind the template at
    /// which that happened.
    void runModule(const std::wstring& file) {
        ++modules_;
        const Options options = optionsFor(file);
        std::size_t templates = 0;
        for (std::optional<std::size_t> next = 0; next;) {
            progress_ = {};
            const auto status = runWorkerProcess(workerArguments(options, file, *next),
                                                 options_.limitSeconds * kMillisecondsPerSecond,
                                                 [this](const std::wstring& line) { read(line); });
            next = afterWorker(file, status);
            templates += progress_.begun ? 1 : 0;
        }
        if (templates == 0)
            empty_.push_back(fileNameOf(file));
    }

    /// Two modules of one file name get pictures of different names.
    Options optionsFor(const std::wstring& file) {
        Options options = options_;
        options.prefix = fileNameOf(file);
        for (int number = 2; !prefixes_.insert(options.prefix).second; ++number)
            options.prefix = fileNameOf(file) + L"-" + std::to_wstring(number);
        return options;
    }

    /// The template to go on with, if the worker did not get through.
    std::optional<std::size_t> afterWorker(const std::wstring& file, std::optional<DWORD> status) {
        if (status && *status <= 1)
            return std::nullopt;
        const std::wstring reason =
            status ? L"the process ended with status " + shownStatus(*status)
                   : L"no answer within " + std::to_wstring(options_.limitSeconds) + L" s";
        const std::wstring place = progress_.begun ? progress_.title : fileNameOf(file);
        const std::wstring words =
            progress_.lastWords.empty() ? L"" : L" (" + progress_.lastWords + L")";
        fault(place + L": " + reason + words);
        if (!progress_.begun)
            return std::nullopt;
        return *progress_.begun + 1;
    }

    void read(const std::wstring& line) {
        const auto record = fromLine(line);
        if (!record) {
            if (line.size() > 1)
                progress_.lastWords = line.substr(0, line.find(L'\r'));
            return;
        }
        switch (record->kind) {
            case RecordKind::Begin:
                ++templates_;
                progress_.begun = std::stoul(record->first);
                progress_.title = record->second;
                break;
            case RecordKind::Text: printOut(record->first + L"\n"); break;
            case RecordKind::Remark:
                ++remarks_;
                printOut(L"  remark: " + record->first + L"\n");
                break;
            case RecordKind::Fault: fault(record->first); break;
            case RecordKind::Picture: pictures_.push_back({record->first, record->second}); break;
            case RecordKind::Shown: ++shown_; break;
        }
    }

    void fault(const std::wstring& text) {
        ++faults_;
        printOut(L"  FAULT: " + text + L"\n");
    }

    void makeSheets() {
        const std::vector<std::wstring> sheets = drawSheets(pictures_, options_.all);
        if (sheets.empty())
            return fault(options_.all + L": the contact sheets cannot be saved");
        printOut(std::to_wstring(sheets.size()) + L" contact sheets, from " + sheets.front() +
                 L"\n");
    }

    void summarise() {
        if (options_.modules.size() == 1 && !empty_.empty() && faults_ == 0 && templates_ == 0)
            printOut(empty_.front() + L": no such dialog template\n");
        printOut(std::to_wstring(modules_) + L" modules, " + std::to_wstring(templates_) +
                 L" dialog templates, " + std::to_wstring(shown_) + L" shown, " +
                 std::to_wstring(remarks_) + L" remarks, " + std::to_wstring(faults_) +
                 L" faults\n");
    }

    const Options& options_;
    Progress progress_;
    std::set<std::wstring> prefixes_;
    std::vector<std::wstring> empty_;
    std::vector<SheetPicture> pictures_;
    std::size_t modules_ = 0;
    std::size_t templates_ = 0;
    std::size_t shown_ = 0;
    std::size_t remarks_ = 0;
    std::size_t faults_ = 0;
};

/// With the folders that it lies in. True as well when it is there already.
bool makeFolder(const std::wstring& folder) {
    std::array<wchar_t, MAX_PATH> path{};
    const DWORD length = GetFullPathNameW(folder.c_str(), MAX_PATH, path.data(), nullptr);
    if (length == 0 || length >= path.size())
        return false;
    SHCreateDirectoryExW(nullptr, path.data(), nullptr);
    const DWORD attributes = GetFileAttributesW(path.data());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int run() {
    const std::optional<Options> options = parseOptions(QkDlgTools::commandLineArguments());
    if (!options) {
        QkDlgTools::printError(usage(), L"QkPreview");
        return kExitUsage;
    }
    if (options->worker)
        return runWorker(*options);
    if (options->interactive())
        return runInteractive(*options);
    if (!options->all.empty() && !makeFolder(options->all)) {
        QkDlgTools::printError(options->all + L": the folder cannot be made\n", L"QkPreview");
        return kExitFault;
    }
    return Supervisor(*options).run();
}

}  // namespace
}  // namespace QkPreview

int main() {
    return QkPreview::run();
}
