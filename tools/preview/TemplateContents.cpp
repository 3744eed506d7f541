#include "preview/TemplateContents.h"

#include <array>
#include <cstddef>
#include <utility>

#include "Dlg/TemplateFont.h"

namespace QkPreview {
namespace {

using Words = std::span<const std::uint16_t>;

constexpr std::uint16_t kOrdinalMark = 0xFFFF;
constexpr std::uint16_t kFirstPredefined = 0x80;
constexpr std::array kPredefined{L"Button",  L"Edit",      L"Static",
                                 L"ListBox", L"ScrollBar", L"ComboBox"};

constexpr std::size_t kClassicHeader = 9;
constexpr std::size_t kExtendedHeader = 13;
constexpr std::size_t kClassicStyle = 0;
constexpr std::size_t kExtendedStyle = 6;
constexpr std::size_t kRectWords = 4;

/// Takes words from the front. Once it has run past the end it gives zeros and says failed().
class Reader {
public:
    Reader(Words words, std::size_t at) : words_(words), at_(at) {}

    [[nodiscard]] bool failed() const { return failed_; }

    std::uint16_t word() {
        if (at_ >= words_.size()) {
            failed_ = true;
            return 0;
        }
        return words_[at_++];
    }
    std::uint32_t doubleWord() {
        const std::uint32_t low = word();
        return low | std::uint32_t{word()} << 16;
    }
    void skip(std::size_t count) {
        failed_ = failed_ || count > words_.size() - at_;
        at_ = failed_ ? words_.size() : at_ + count;
    }
    void align() { skip(at_ % 2 != 0 && at_ < words_.size() ? 1 : 0); }

    std::wstring string() {
        std::wstring text;
        while (const std::uint16_t unit = word())
            text += static_cast<wchar_t>(unit);
        return text;
    }
    /// A string, or an ordinal, of which there is a name if it is that of a predefined class.
    std::wstring stringOrClass() {
        if (at_ >= words_.size() || words_[at_] != kOrdinalMark)
            return string();
        skip(1);
        const std::size_t index = word() - std::size_t{kFirstPredefined};
        return index < kPredefined.size() ? kPredefined[index] : std::wstring();
    }

private:
    Words words_;
    std::size_t at_;
    bool failed_ = false;
};

TemplateControl readControl(Reader& reader, bool extended) {
    TemplateControl control;
    reader.align();
    if (extended)
        reader.skip(4);  // help id, extended style
    control.style = reader.doubleWord();
    if (!extended)
        reader.skip(2);  // extended style
    reader.skip(kRectWords);
    control.id = extended ? reader.doubleWord() : reader.word();
    control.className = reader.stringOrClass();
    static_cast<void>(reader.stringOrClass());  // the text, or the number of a picture
    const std::size_t extraBytes = reader.word();
    reader.skip((extraBytes + 1) / 2);
    return control;
}

std::size_t stylePlace(Words words) {
    const bool extended = words.size() > 1 && words[1] == kOrdinalMark;
    return extended ? kExtendedStyle : kClassicStyle;
}

}  // namespace

std::optional<TemplateContents> readTemplate(Words words) {
    const auto shape = QkDlg::readTemplateShape(words);
    if (!shape)
        return std::nullopt;
    TemplateContents contents;
    contents.extended = shape->extended;
    contents.controlCount = shape->itemCount;
    const std::size_t style = stylePlace(words);
    contents.style = words[style] | std::uint32_t{words[style + 1]} << 16;

    Reader header(words, shape->extended ? kExtendedHeader : kClassicHeader);
    static_cast<void>(header.stringOrClass());  // the menu
    contents.windowClass = header.stringOrClass();
    contents.caption = header.string();

    Reader reader(words, shape->fontEnd);
    while (!contents.whole()) {
        TemplateControl control = readControl(reader, shape->extended);
        if (reader.failed())
            break;
        contents.controls.push_back(std::move(control));
    }
    return contents;
}

std::optional<std::wstring> templateFault(const std::optional<TemplateContents>& contents) {
    if (!contents)
        return L"the template is cut off before its first control";
    if (contents->whole())
        return std::nullopt;
    return L"the template is cut off in control " + std::to_wstring(contents->controls.size() + 1) +
           L" of " + std::to_wstring(contents->controlCount);
}

bool changeTemplateStyle(std::span<std::uint16_t> words, std::uint32_t clear, std::uint32_t set) {
    const std::size_t at = stylePlace(words);
    if (words.size() < at + 2)
        return false;
    const std::uint32_t old = words[at] | std::uint32_t{words[at + 1]} << 16;
    const std::uint32_t style = (old & ~clear) | set;
    words[at] = static_cast<std::uint16_t>(style & 0xFFFF);
    words[at + 1] = static_cast<std::uint16_t>(style >> 16);
    return true;
}

}  // namespace QkPreview
