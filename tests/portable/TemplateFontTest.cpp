#include "Dlg/TemplateFont.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace QkDlg {
namespace {

using Words = std::vector<std::uint16_t>;

constexpr char16_t kMessageFont[] = {kMessageFontSize, 0};  ///< stands for its size, without a face

void add(Words& words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
}
void add(Words& words, std::u16string_view text) {
    words.insert(words.end(), text.begin(), text.end());
    words.push_back(0);
}

struct Font {
    std::u16string face;  ///< empty: no font
    std::uint16_t size = 8;
    Words weightAndStyle{700, 0xEE01};
};

/// Templates as a resource compiler writes them.
struct Source {
    bool extended = false;
    bool menuById = false;
    std::u16string caption;
    std::uint16_t items = 2;

    [[nodiscard]] Words build(const Font& font, std::uint16_t upperStyle = 0) const {
        Words words(extended ? 13U : 9U);
        if (extended)
            words[1] = 0xFFFF;
        words[extended ? 6 : 0] = font.face.empty() ? 0x80 : 0x80 | kDsSetFont;
        words[extended ? 7 : 1] = upperStyle;
        words[extended ? 8 : 4] = items;
        add(words, menuById ? Words{0xFFFF, 100, 0} : Words{0, 0});
        add(words, caption);
        if (font.face == kMessageFont) {
            words.push_back(kMessageFontSize);
        } else if (!font.face.empty()) {
            words.push_back(font.size);
            if (extended)
                add(words, font.weightAndStyle);
            add(words, font.face);
        }
        words.resize((words.size() + 1) / 2 * 2);
        add(words, {0x1111, 0x2222, 0x3333, 0x4444, 0x5555});
        return words;
    }
};

/// The template after rewriting, with 32 spare words, or nothing when it was refused.
Words rewritten(Words words, std::u16string_view face) {
    const std::size_t used = words.size();
    words.resize(used + 32);
    return setTemplateFont(words, used, {face, 9}, 0x00040000) ? words : Words();
}

TEST(TemplateFont, IsAsIfTheTemplateHadBeenCompiledWithIt) {
    for (const bool extended : {false, true})
        for (const bool menuById : {false, true})
            for (const std::u16string caption : {u"", u"T", u"Title"})
                for (const std::u16string oldFace : {u"", u"MS Shell Dlg", u"Tahoma", kMessageFont})
                    for (const std::u16string newFace :
                         {u"Segoe UI", u"Courier", u"Lucida", u"A"}) {
                        const Source source{extended, menuById, caption};
                        const bool hadFace = !oldFace.empty() && oldFace != kMessageFont;
                        const Words kept = hadFace ? Words{700, 0xEE01} : Words{400, 0x0100};
                        const Words expected = source.build({newFace, 9, kept}, 0x0004);
                        Words actual = rewritten(source.build({oldFace}), newFace);
                        ASSERT_GE(actual.size(), expected.size());
                        // A word of padding before the items is nobody's.
                        const auto shape = readTemplateShape(expected);
                        ASSERT_TRUE(shape);
                        if (shape->fontEnd % 2 != 0)
                            actual[shape->fontEnd] = 0;
                        actual.resize(expected.size());
                        EXPECT_EQ(actual, expected) << extended << menuById << caption.size();
                    }
}

TEST(TemplateFont, ItemsStayWhereTheLowByteOfTheirNumberIsZero) {
    const Words before = Source{true, false, u"Title", 256}.build({u"Tahoma"});
    const Words after = rewritten(before, u"A");
    EXPECT_TRUE(std::equal(before.end() - 5, before.end(), after.end() - 32 - 5));
}

}  // namespace
}  // namespace QkDlg
