#include "QkCustCombo/ComboLayout.h"

#include <gtest/gtest.h>

namespace QkDlg {
namespace {

TEST(ComboLayout, ArrowStandsInTheMiddleOfTheButtonAtTheRightEnd) {
    EXPECT_EQ(layOutArrowButton({200, 23}, 22, {10, 10}), (ArrowButton{{178, 0, 200, 23}, 184, 6}));
    EXPECT_EQ(layOutArrowButton({200, 24}, 23, {10, 10}), (ArrowButton{{177, 0, 200, 24}, 183, 7}));
    EXPECT_EQ(layOutArrowButton({10, 8}, 22, {10, 10}), (ArrowButton{{-12, 0, 10, 8}, -6, -1}))
        << "a combo smaller than its button";
}

TEST(ComboLayout, ListIsPlacedUnderTheItem) {
    const Rect item{10, 20, 110, 43};
    EXPECT_EQ(listUnderItem(item, 80, {0, -1}), (Rect{10, 42, 110, 122}));
    EXPECT_EQ(listUnderItem(item, 80, {2, 1}), (Rect{8, 44, 112, 124}));
}

/// Cuts as if every character were ten pixels wide.
std::wstring_view cut(std::wstring_view text, int x, int right) {
    return cutToFit(text, x, right,
                    [](std::wstring_view part) { return 10 * static_cast<int>(part.size()); });
}

TEST(ComboLayout, TextLosesWholeCharactersUntilItKeepsClearOfTheButton) {
    EXPECT_EQ(cut(L"abcde", 6, 58), L"abcde") << "56 is left of 57";
    EXPECT_EQ(cut(L"abcde", 6, 57), L"abcd") << "56 is not left of 56";
    EXPECT_EQ(cut(L"abcde", 6, 17), L"");
    EXPECT_EQ(cut(L"", 6, -40), L"");
    const std::wstring pair{L'a', static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00), L'b'};
    EXPECT_EQ(cut(pair, 0, 32), pair.substr(0, 3));
    EXPECT_EQ(cut(pair, 0, 31), L"a");
}

}  // namespace
}  // namespace QkDlg
