#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace QkPreview {

/// What a worker process tells, one line each.
enum class RecordKind : char {
    Begin = 'B',    ///< a template is dealt with from now on; its number and name
    Text = 'T',     ///< for the reader
    Remark = 'R',   ///< for the reader, worth counting
    Fault = 'F',    ///< for the reader, something is wrong
    Picture = 'P',  ///< a picture was saved: file and caption
    Shown = 'S',    ///< a dialog was shown
};

/// Up to two fields of text.
struct Record {
    RecordKind kind = RecordKind::Text;
    std::wstring first;
    std::wstring second;

    bool operator==(const Record&) const = default;
};

/// One line with its line break. Control characters inside become spaces.
[[nodiscard]] std::wstring toLine(const Record& record);

/// Nothing for a line that toLine did not make, such as the last words of a process.
[[nodiscard]] std::optional<Record> fromLine(std::wstring_view line);

}  // namespace QkPreview
