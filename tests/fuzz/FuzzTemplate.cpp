// Dialog templates of any bytes get another font: the first byte is the length of the new face,
// the second the spare words behind the template, the rest the template.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "Dlg/TemplateFont.h"

namespace {

using Words = std::vector<std::uint16_t>;

void require(bool holds) {
    if (!holds)
        std::abort();
}

Words tail(const Words& words, std::size_t from, std::size_t to) {
    from = std::min(from + from % 2, to);
    return {words.begin() + static_cast<std::ptrdiff_t>(from),
            words.begin() + static_cast<std::ptrdiff_t>(to)};
}

void checkRewritten(const Words& before, const Words& after, std::u16string_view face) {
    const auto was = QkDlg::readTemplateShape(before);
    const auto is = QkDlg::readTemplateShape(after);
    require(was && is && is->hasFont && is->extended == was->extended &&
            is->fontAt == was->fontAt && is->fontEnd >= face.size() + 1);
    const auto name = after.begin() + static_cast<std::ptrdiff_t>(is->fontEnd - face.size() - 1);
    require(std::equal(face.begin(), face.end(), name));
    if ((was->itemCount & 0xFF) == 0)
        return;
    const Words items = tail(before, was->fontEnd, before.size());
    const std::size_t itemsAt = is->fontEnd + is->fontEnd % 2;
    require(items.empty() || tail(after, is->fontEnd, itemsAt + items.size()) == items);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4)
        return 0;
    const std::u16string face(data[0], u'f');
    Words before((size - 2) / 2);
    std::memcpy(before.data(), data + 2, before.size() * 2);
    Words words = before;
    // Exactly as large as it may be, so that the sanitizer sees each step over the end.
    words.resize(before.size() + data[1]);
    words.shrink_to_fit();
    const Words untouched = words;
    if (QkDlg::setTemplateFont(words, before.size(), {face, 9}, 0x80000))
        checkRewritten(before, words, face);
    else
        require(words == untouched);
    return 0;
}
