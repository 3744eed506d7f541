#include <gmock/gmock.h>

#include "common/CommandLine.h"
#include "preview/Options.h"
#include "preview/Record.h"
#include "preview/SheetLayout.h"
#include "preview/TemplateContents.h"

namespace QkPreview {
namespace {

using testing::ElementsAre;
using Arguments = std::vector<std::wstring>;
using Words = std::vector<std::uint16_t>;

TEST(PreviewOptions, TakeOnlyWhatFitsTogether) {
    const Arguments wrong[] = {
        {},
        {L"--check"},
        {L"a.dll", L"--png", L"x.png"},
        {L"a.dll", L"b.dll", L"--dialog", L"1"},
        {L"a.dll", L"--dialog", L"1", L"--png", L"x.png", L"--all", L"out"},
        {L"a.dll", L"--language", L"0x10000"},
        {L"a.dll", L"--limit", L"0"},
        {L"a.dll", L"--dialog"},
        {L"a.dll", L"--unknown", L"1"},
    };
    for (const Arguments& arguments : wrong)
        EXPECT_FALSE(parseOptions(arguments)) << arguments.size();
    EXPECT_TRUE(parseOptions({L"a.dll", L"--dialog", L"MAIN"})->interactive());
    EXPECT_FALSE(parseOptions({L"a.dll", L"b.dll", L"--check", L"--dialog", L"7"})->interactive());
}

TEST(PreviewOptions, ReachTheWorkerWhole) {
    Options given = *parseOptions({L"a.dll", L"--dialog", L"7", L"--language", L"0x0409", L"--xml",
                                   L"a b.xml", L"--all", L"out", L"--check", L"--plain"});
    given.prefix = L"a.dll-2";
    const Options seen = *parseOptions(workerArguments(given, L"c:\\x y.dll", 12));
    EXPECT_EQ(seen.worker, 12U);
    EXPECT_THAT(seen.modules, ElementsAre(L"c:\\x y.dll"));
    EXPECT_EQ(workerArguments(seen, L"", 0), workerArguments(given, L"", 0));
    EXPECT_EQ(seen.language, 0x409);
}

TEST(PreviewOptions, QuoteWhatTheSystemTakesApart) {
    using QkDlgTools::quotedArgument;
    EXPECT_EQ(quotedArgument(LR"(c:\a b\)"), LR"("c:\a b\\")");
    EXPECT_EQ(quotedArgument(LR"(a\"b)"), LR"("a\\\"b")");
}

TEST(PreviewRecord, ComesBackFromItsLine) {
    const Record record{RecordKind::Picture, L"a\tb\nc", L"\u4e2d \"x\""};
    std::wstring line = toLine(record);
    line.pop_back();
    EXPECT_EQ(fromLine(line), (Record{RecordKind::Picture, L"a b c", L"\u4e2d \"x\""}));
    for (const wchar_t* other : {L"", L"FATAL ERROR\t", L"\x01Z\t", L"\x01T"})
        EXPECT_FALSE(fromLine(other));
}

void add(Words& words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
}

/// A dialog of a class of its own with a button, and an edit with creation data of three bytes.
Words sample(bool extended) {
    Words words = extended ? Words{1, 0xFFFF, 0, 0, 0, 0, 0x40, 0x9000, 2, 0, 0, 9, 9}
                           : Words{0x40, 0x9000, 0, 0, 2, 0, 0, 9, 9};
    add(words, {0xFFFF, 5, 'C', 0, 'T', 0, 8});
    add(words, extended ? Words{400, 0x100, 'F', 0} : Words{'F', 0});
    for (const bool edit : {false, true}) {
        words.resize((words.size() + 1) / 2 * 2);
        const std::uint16_t style = edit ? 0x20 : 1;
        add(words, extended ? Words{0, 0, 0, 0, style, 0x5000} : Words{style, 0x5000, 0, 0});
        add(words, {0, 0, 5, 5, 0xFFFF});
        if (extended)
            add(words, {0xFFFF});
        add(words, edit ? Words{'E', 'd', 0, 0xFFFF, 3, 3, 1, 2} : Words{0xFFFF, 0x80, 'O', 0, 0});
    }
    return words;
}

TEST(PreviewTemplate, IsReadWholeOrSaysWhereItEndsAndChangesItsStyle) {
    for (const bool extended : {false, true}) {
        Words words = sample(extended);
        const auto contents = readTemplate(words);
        ASSERT_TRUE(contents && contents->whole()) << extended;
        EXPECT_EQ(contents->windowClass, L"C");
        EXPECT_EQ(contents->caption, L"T");
        EXPECT_EQ(contents->style, 0x90000040U);
        EXPECT_EQ(contents->controls[0].className, L"Button");
        EXPECT_EQ(contents->controls[0].style, 0x50000001U);
        EXPECT_EQ(contents->controls[0].id, extended ? 0xFFFFFFFFU : 0xFFFFU);
        EXPECT_EQ(contents->controls[1].className, L"Ed");
        for (std::size_t length = 0; length < words.size(); ++length) {
            // A copy of its own, so that a sanitizer sees a read past the end.
            const Words cut(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(length));
            const auto part = readTemplate(cut);
            EXPECT_FALSE(part && part->whole()) << length;
        }
        EXPECT_TRUE(changeTemplateStyle(words, 0x10000000, 0x10));
        EXPECT_EQ(readTemplate(words)->style, 0x80000050U);
    }
}

TEST(PreviewSheets, KeepPicturesApartInsideTheirSheets) {
    const SheetMeasures measures{200, 150, 10, 5};
    const QkDlg::Size sizes[] = {{80, 40}, {80, 60}, {90, 30}, {500, 20}, {50, 400}, {50, 50}};
    const SheetLayout layout = layOutSheets(sizes, measures);
    ASSERT_EQ(layout.places.size(), std::size(sizes));
    EXPECT_EQ(layout.places[1].picture, (QkDlg::Rect{100, 15, 180, 75}));
    EXPECT_EQ(layout.places[2].picture, (QkDlg::Rect{10, 90, 100, 120}));
    for (std::size_t i = 0; i < layout.places.size(); ++i) {
        const auto& [sheet, rect] = layout.places[i];
        EXPECT_EQ(rect.width(), sizes[i].width);
        EXPECT_LE(rect.right + measures.margin, layout.sheets[sheet].width) << i;
        EXPECT_LE(rect.bottom + measures.margin, layout.sheets[sheet].height) << i;
        for (std::size_t k = 0; k < i; ++k) {
            const auto& other = layout.places[k].picture;
            EXPECT_TRUE(layout.places[k].sheet != sheet || other.right < rect.left ||
                        other.bottom + measures.captionHeight < rect.top)
                << k << " and " << i;
        }
    }
    EXPECT_EQ(layout.sheets.size(), 3U);
    EXPECT_TRUE(layOutSheets({}, measures).sheets.empty());
}

}  // namespace
}  // namespace QkPreview
