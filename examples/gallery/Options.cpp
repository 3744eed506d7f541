#include "Options.h"

#include <cwchar>
#include <string_view>
#include <vector>

#include "common/CommandLine.h"

namespace Gallery {
namespace {

bool setPointer(Options& options, Pointer pointer, const std::wstring& id) {
    options.pointer = pointer;
    options.pointerId = static_cast<int>(wcstol(id.c_str(), nullptr, 10));
    return options.pointerId > 0;
}

bool setFlag(Options& options, std::wstring_view name) {
    if (name == L"--list")
        return options.list = true;
    if (name == L"--plain")
        return options.plain = true;
    if (name == L"--rtl")
        return options.rightToLeft = true;
    if (name == L"--every-step")
        return options.everyStep = true;
    return false;
}

bool setValue(Options& options, std::wstring_view name, const std::wstring& value) {
    if (name == L"--page")
        options.page = value;
    else if (name == L"--png")
        options.png = value;
    else if (name == L"--hover")
        return setPointer(options, Pointer::Hover, value);
    else if (name == L"--press")
        return setPointer(options, Pointer::Press, value);
    else if (name == L"--focus")
        return setPointer(options, Pointer::Focus, value);
    else
        return false;
    return !value.empty();
}

}  // namespace

std::optional<Options> readOptions() {
    Options options;
    const std::vector<std::wstring> given = QkDlgTools::commandLineArguments();
    for (size_t i = 0; i < given.size(); ++i) {
        if (setFlag(options, given[i]))
            continue;
        if (i + 1 == given.size() || !setValue(options, given[i], given[i + 1]))
            return std::nullopt;
        ++i;
    }
    return options;
}

std::wstring usage() {
    return L"Gallery [--page NAME] [--plain] [--rtl] [--every-step]\n"
           L"        [--png FILE [--hover ID | --press ID | --focus ID]]\n"
           L"Gallery --list\n"
           L"  --page NAME   start with this page\n"
           L"  --plain       the standard controls, without the library\n"
           L"  --rtl         mirrored, for languages written from right to left\n"
           L"  --every-step  show what is painted after each message, for those who watch the "
           L"screen\n"
           L"  --png FILE    save a picture of the window and end\n"
           L"  --hover ID    with the mouse over this control of the page\n"
           L"  --press ID    with the mouse button held down on it\n"
           L"  --focus ID    with the keyboard focus in it\n"
           L"  --list        print the names of the pages\n";
}

}  // namespace Gallery
