#include "preview/Options.h"

namespace QkPreview {
namespace {

constexpr std::uint32_t kLongestLimit = 3600;

std::optional<std::uint32_t> digitOf(wchar_t unit) {
    if (unit >= L'0' && unit <= L'9')
        return static_cast<std::uint32_t>(unit - L'0');
    const wchar_t low = static_cast<wchar_t>(unit | 0x20);
    if (low >= L'a' && low <= L'f')
        return static_cast<std::uint32_t>(low - L'a') + 10;
    return std::nullopt;
}

bool setFlag(Options& options, std::wstring_view name) {
    if (name == L"--plain")
        return options.plain = true;
    if (name == L"--check")
        return options.check = true;
    return false;
}

bool setText(std::wstring& place, const std::wstring& value) {
    place = value;
    return !value.empty();
}

bool setLanguage(Options& options, const std::wstring& value) {
    const auto number = parseNumber(value, UINT16_MAX);
    options.language = static_cast<std::uint16_t>(number.value_or(0));
    return number.has_value();
}

bool setLimit(Options& options, const std::wstring& value) {
    const auto number = parseNumber(value, kLongestLimit);
    options.limitSeconds = number.value_or(0);
    return options.limitSeconds > 0;
}

bool setWorker(Options& options, const std::wstring& value) {
    const auto number = parseNumber(value, UINT32_MAX);
    options.worker = number.value_or(0);
    return number.has_value();
}

bool setValue(Options& options, std::wstring_view name, const std::wstring& value) {
    if (name == L"--dialog")
        return setText(options.dialog.emplace(), value);
    if (name == L"--language")
        return setLanguage(options, value);
    if (name == L"--xml")
        return setText(options.xml, value);
    if (name == L"--png")
        return setText(options.png, value);
    if (name == L"--all")
        return setText(options.all, value);
    if (name == L"--prefix")
        return setText(options.prefix, value);
    if (name == L"--limit")
        return setLimit(options, value);
    return name == L"--worker" && setWorker(options, value);
}

/// One window and one picture file have room for one dialog of one module.
bool fitTogether(const Options& options) {
    if (options.modules.empty())
        return false;
    if (!options.png.empty() && (!options.dialog || !options.all.empty()))
        return false;
    const bool oneDialog = !options.png.empty() || options.interactive();
    return !oneDialog || options.modules.size() == 1;
}

void append(std::vector<std::wstring>& arguments, const wchar_t* name, const std::wstring& value) {
    if (!value.empty())
        arguments.insert(arguments.end(), {name, value});
}

}  // namespace

std::optional<std::uint32_t> parseNumber(std::wstring_view text, std::uint32_t limit) {
    std::uint32_t base = 10;
    if (text.starts_with(L"0x") || text.starts_with(L"0X")) {
        base = 16;
        text.remove_prefix(2);
    }
    if (text.empty())
        return std::nullopt;
    std::uint64_t number = 0;
    for (const wchar_t unit : text) {
        const auto digit = digitOf(unit);
        if (!digit || *digit >= base)
            return std::nullopt;
        number = number * base + *digit;
        if (number > limit)
            return std::nullopt;
    }
    return static_cast<std::uint32_t>(number);
}

std::optional<Options> parseOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::wstring& argument = arguments[i];
        if (setFlag(options, argument))
            continue;
        if (!argument.starts_with(L"--")) {
            options.modules.push_back(argument);
            continue;
        }
        ++i;
        if (i == arguments.size() || !setValue(options, argument, arguments[i]))
            return std::nullopt;
    }
    return fitTogether(options) ? std::optional(options) : std::nullopt;
}

std::vector<std::wstring> workerArguments(const Options& options, const std::wstring& module,
                                          std::size_t first) {
    std::vector<std::wstring> arguments{module, L"--worker", std::to_wstring(first)};
    if (options.dialog)
        append(arguments, L"--dialog", *options.dialog);
    if (options.language)
        append(arguments, L"--language", std::to_wstring(*options.language));
    append(arguments, L"--xml", options.xml);
    append(arguments, L"--png", options.png);
    append(arguments, L"--all", options.all);
    append(arguments, L"--prefix", options.prefix);
    if (options.plain)
        arguments.emplace_back(L"--plain");
    if (options.check)
        arguments.emplace_back(L"--check");
    return arguments;
}

std::wstring usage() {
    return L"QkPreview MODULE... [--language N]\n"
           L"    lists the dialog templates of programs and DLLs\n"
           L"QkPreview MODULE --dialog NAME|ID [--language N] [--plain] [--xml FILE] [--png FILE]\n"
           L"    shows one dialog, or saves a picture of it\n"
           L"QkPreview MODULE... --all FOLDER [--check] [--dialog NAME|ID] [--language N]\n"
           L"    saves a picture of each dialog, plain beside flat, and sheets of all of them\n"
           L"QkPreview MODULE... --check [--dialog NAME|ID] [--language N] [--xml FILE]\n"
           L"    tells what became of each control, and what in the DLG_XML matches none\n"
           L"\n"
           L"  MODULE         a program or DLL, or a pattern such as C:\\App\\*.dll\n"
           L"  --dialog X     the resource name or number of a dialog template\n"
           L"  --language N   only templates of this language, such as 0x0409\n"
           L"  --plain        the standard controls, without the library\n"
           L"  --xml FILE     this dialog description instead of the module's own DLG_XML\n"
           L"  --limit N      give a dialog up after N seconds (30)\n"
           L"\n"
           L"The exit code is 0 when all went well, 1 when something was found wrong (a module or\n"
           L"template that cannot be shown, a description that matches nothing), 2 for wrong "
           L"usage.\n";
}

}  // namespace QkPreview
