// QkPictures FOLDER [--suffix TEXT] [--high-contrast] [--only NAME]
// QkPictures --compare FILE FILE
//
// Draws a sheet of states for each control type, states-NAME and the suffix.png, or tells whether
// two pictures look alike (exit code 0).

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
    std::vector<std::wstring> names;  ///< a folder, or two files
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
    const std::size_t wanted = options.compare ? 2 : 1;
    return options.names.size() == wanted ? std::optional(options) : std::nullopt;
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
    const std::wstring difference = differenceOf(options.names[0], options.names[1]);
    QkDlgTools::printOut(difference);
    return difference.empty() ? 0 : kExitFailure;
}

int run() {
    const std::optional<Options> options = readOptions();
    if (!options) {
        printError(
            L"QkPictures FOLDER [--suffix TEXT] [--high-contrast] [--only NAME]\n"
            L"QkPictures --compare FILE FILE\n");
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
