#include "Dlg/TemplateFont.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace QkDlg {
namespace {

using Words = std::vector<std::uint16_t>;

constexpr std::size_t kSpare = 32;

void add(Words& words, std::u16string_view text) {
    words.insert(words.end(), text.begin(), text.end());
    words.push_back(0);
}

/// Templates as a resource compiler writes them.
struct Source {
    bool extended = false;
    std::u16string face;  ///< empty: no font
    std::u16string caption = u"Title";
    bool menuById = false;
    std::uint16_t items = 2;

    [[nodiscard]] Words header() const {
        Words words(extended ? 13U : 9U);
        if (extended) {
            words[0] = 1;
            words[1] = 0xFFFF;
        }
        words[extended ? 6 : 0] = face.empty() ? 0x80 : 0x80 | kDsSetFont;
        words[extended ? 8 : 4] = items;
        const Words menu = menuById ? Words{0xFFFF, 100} : Words{0};
        words.insert(words.end(), menu.begin(), menu.end());
        words.push_back(0);
        add(words, caption);
        return words;
    }
    [[nodiscard]] Words build(std::uint16_t size = 8,
                              const Words& weightAndStyle = {700, 0xEE01}) const {
        Words words = header();
        if (!face.empty()) {
            words.push_back(size);
            if (extended)
                words.insert(words.end(), weightAndStyle.begin(), weightAndStyle.end());
            add(words, face);
        }
        if (words.size() % 2 != 0)
            words.push_back(0);
        words.insert(words.end(), {0x1111, 0x2222, 0x3333, 0x4444, 0x5555});
        return words;
    }
};

/// The template after rewriting, without the spare words, or nothing when it was refused.
Words rewritten(Words words, std::u16string_view face, std::size_t growth) {
    const std::size_t used = words.size();
    words.resize(used + kSpare);
    if (!setTemplateFont(words, used, {face, 9}, 0x00040000))
        return {};
    words.resize(used + growth);
    return words;
}

/// What the rewriting should give: the same template compiled with the new font.
Words compiled(Source source, std::u16string_view face, const Words& weightAndStyle) {
    source.face = face;
    Words words = source.build(9, weightAndStyle);
    words[source.extended ? 7 : 1] = 0x0004;
    return words;
}

TEST(TemplateFont, IsAsIfTheTemplateHadBeenCompiledWithIt) {
    for (const bool extended : {false, true})
        for (const bool menuById : {false, true})
            for (const std::u16string caption : {u"", u"T", u"Title"})
                for (const std::u16string oldFace : {u"", u"MS Shell Dlg", u"Tahoma"})
                    for (const std::u16string newFace : {u"Segoe UI", u"Courier", u"A"}) {
                        const Source source{extended, oldFace, caption, menuById};
                        const Words before = source.build();
                        const Words kept =
                            oldFace.empty() ? Words{400, 0x0100} : Words{700, 0xEE01};
                        Words expected = compiled(source, newFace, kept);
                        Words actual = rewritten(before, newFace, kSpare);
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

TEST(TemplateFont, ItemsStayWhereNothingMovesThem) {
    Source source{true, u"Tahoma"};
    const Words before = source.build();
    Words sameLength = rewritten(before, u"Lucida", 0);
    EXPECT_TRUE(std::equal(before.end() - 5, before.end(), sameLength.end() - 5));

    source.items = 256;
    const Words many = rewritten(source.build(), u"A", 0);
    EXPECT_TRUE(std::equal(before.end() - 5, before.end(), many.end() - 5)) << "low byte 0";
}

TEST(TemplateFont, MessageFontSizeHasNoFaceBehindIt) {
    Words words = Source{true, {}}.header();
    words[6] = kDsSetFont;
    words.push_back(kMessageFontSize);
    const auto shape = readTemplateShape(words);
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->fontEnd, words.size());
    const std::size_t at = shape->fontAt;
    const Words after = rewritten(words, u"Arial", 8);
    ASSERT_FALSE(after.empty());
    EXPECT_EQ(Words(after.begin() + static_cast<std::ptrdiff_t>(at),
                    after.begin() + static_cast<std::ptrdiff_t>(at) + 4),
              (Words{9, 400, 0x0100, u'A'}));
}

}  // namespace
}  // namespace QkDlg
