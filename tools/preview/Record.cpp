#include "preview/Record.h"

#include <algorithm>

namespace QkPreview {
namespace {

// A character that no other text begins with.
constexpr wchar_t kMark = 1;
constexpr wchar_t kSeparator = L'\t';
constexpr std::wstring_view kKinds = L"BTRFPS";

std::wstring cleaned(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t unit) { return unit < L' '; }, L' ');
    return text;
}

}  // namespace

std::wstring toLine(const Record& record) {
    std::wstring line{kMark, static_cast<wchar_t>(record.kind)};
    line.append(cleaned(record.first)).append(1, kSeparator).append(cleaned(record.second));
    return line + L'\n';
}

std::optional<Record> fromLine(std::wstring_view line) {
    if (line.size() < 2 || line[0] != kMark || kKinds.find(line[1]) == std::wstring_view::npos)
        return std::nullopt;
    const auto separator = line.find(kSeparator, 2);
    if (separator == std::wstring_view::npos)
        return std::nullopt;
    return Record{static_cast<RecordKind>(line[1]), std::wstring(line.substr(2, separator - 2)),
                  std::wstring(line.substr(separator + 1))};
}

}  // namespace QkPreview
