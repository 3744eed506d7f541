// QkPictures FOLDER [--suffix TEXT] [--high-contrast] [--only NAME]
// QkPictures --compare FOLDER OTHER NAME...
//
// Draws a sheet of states for each control type, states-NAME and the suffix.png, or names the
// pictures that look different in two folders, each with what differs.

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "common/CommandLine.h"
#include "common/Console.h"
#include "common/Picture.h"
#include "pictures/Comparison.h"
#include "pictures/HighContrastScheme.h"
#include "pictures/StateSheet.h"

namespace QkPictures {
namespace {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

struct Options {
    std::vector<std::wstring> names;  ///< a folder, or two and pictures
    std::wstring suffix;
    std::wstring only;
    bool highContrast = false;
    bool compare = false;
};

std::optional<Options> readOptions() {
    Options options;
    const std::vector<std::wstring> arguments = QkDlgTools::commandLineArguments();
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (*argument == L"--high-contrast") {
            options.highContrast = true;
        } else if (*argument == L"--compare") {
            options.compare = true;
        } else if (*argument == L"--suffix" || *argument == L"--only") {
            std::wstring& value = *argument == L"--only" ? options.only : options.suffix;
            if (++argument == arguments.end())
                return std::nullopt;
            value = *argument;
        } else {
            options.names.push_back(*argument);
        }
    }
    const bool complete = options.compare ? options.names.size() >= 2 : options.names.size() == 1;
    return complete ? std::optional(options) : std::nullopt;
}

void printError(const std::wstring& text) {
    QkDlgTools::printError(text, L"Pictures");
}

int drawSheets(const Options& options) {
    std::optional<HighContrastScheme> scheme;
    if (options.highContrast)
        scheme.emplace();
    for (const auto& family : {buttonTypes(), fieldTypes(), barTypes(), listTypes()}) {
        for (const ControlType& type : family) {
            if (!options.only.empty() && options.only != type.name)
                continue;
            const std::wstring file =
                options.names.front() + L"\\states-" + type.name + options.suffix + L".png";
            if (!QkDlgTools::savePng(drawStateSheet(type).get(), file)) {
                printError(L"The picture could not be saved: " + file + L"\n");
                return kExitFailure;
            }
        }
    }
    return 0;
}

int compare(const Options& options) {
    for (auto name = options.names.begin() + 2; name != options.names.end(); ++name) {
        const std::wstring file = L"\\" + *name + L".png";
        const std::wstring difference =
            differenceOf(options.names[0] + file, options.names[1] + file);
        if (!difference.empty())
            QkDlgTools::printOut(*name + L" " + difference + L"\n");
    }
    return 0;
}

int run() {
    const std::optional<Options> options = readOptions();
    if (!options) {
        printError(
            L"QkPictures FOLDER [--suffix TEXT] [--high-contrast] [--only NAME]\n"
            L"QkPictures --compare FOLDER OTHER NAME...\n");
        return kExitUsage;
    }
    return options->compare ? compare(*options) : drawSheets(*options);
}

}  // namespace
}  // namespace QkPictures

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    return QkPictures::run();
}
