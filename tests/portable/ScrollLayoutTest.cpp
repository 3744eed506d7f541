#include "QkCustScroll/ScrollLayout.h"

#include <gtest/gtest.h>

#include <climits>

#include "QkCustScroll/HolderLayout.h"

using namespace QkDlg;

namespace {

TEST(ScrollLayout, ThumbIsThePagesShareOfTheTrackAndNeverBelowTenPixels) {
    // track, min, max, page, arrow; the thumb
    const int cases[][6] = {{200, 0, 99, 25, 17, 50}, {200, 0, 100, 0, 17, 17},
                            {200, 0, 100, 0, 5, 10},  {200, 0, 9999, 1, 17, 10},
                            {200, 0, 9, 50, 17, 200}, {200, 5, 0, 3, 17, 200}};
    for (const auto& c : cases)
        EXPECT_EQ(thumbLength(c[0], {c[1], c[2], c[3]}, c[4]), c[5]) << c[2] << ' ' << c[3];
    EXPECT_EQ(thumbLength(200, {INT_MIN, INT_MAX, INT_MAX}, 17), 100);
}

TEST(ScrollLayout, PixelsBecomePositionsWithinReachAndNothingIsDividedByZero) {
    // offset, room, min, max, page; the position
    const int cases[][6] = {
        {50, 99, 10, 108, 20, 50}, {99, 99, 10, 108, 20, 89}, {-5, 99, 0, 99, 0, 0},
        {99, 99, 0, 99, 0, 99},    {150, 99, 0, 99, 1, 99},   {2, 3, 0, 1000, 1, 667},
        {50, 0, 3, 9, 2, 3},       {50, 99, 3, 9, 7, 3},      {50, 99, 9, 3, 0, 9}};
    for (const auto& c : cases)
        EXPECT_EQ(positionAt(c[0], c[1], {c[2], c[3], c[4]}), c[5]) << c[0] << ", page " << c[4];
    EXPECT_EQ(positionAt(100, 100, {INT_MIN, INT_MAX, 0}), INT_MAX);
}

TEST(ScrollLayout, APositionsPixelStandsForItAgainAndTheEndsAreMetExactly) {
    for (const int page : {0, 1, 20}) {
        const ScrollRange range{-50, 149, page};
        for (int position = range.min; position <= lastPosition(range); ++position)
            ASSERT_EQ(positionAt(offsetOf(position, 1000, range), 1000, range), position) << page;
        EXPECT_EQ(offsetOf(INT_MAX, 1000, range), 1000) << "out of reach";
        EXPECT_EQ(offsetOf(INT_MIN, 1000, range), 0) << "out of reach";
    }
    EXPECT_EQ(offsetOf(7, 1000, {0, 9, 10}), 0) << "nothing to scroll";
    EXPECT_EQ(offsetOf(0, 1000, {INT_MIN, INT_MAX, 0}), 500);
}

TEST(ScrollLayout, PartsShareAShortBarAndHitsTellTheTwoSidesOfTheThumb) {
    const auto bar = [](int length) { return layOutScrollbar({{9, length}, true}, 17, {0, 9}, 9); };
    EXPECT_EQ(bar(100),
              (ScrollParts{{0, 0, 9, 17}, {0, 83, 9, 100}, {0, 17, 9, 83}, {0, 66, 9, 83}}));
    EXPECT_EQ(bar(44).thumb, (Rect{0, 22, 9, 22})) << "10 pixels for a thumb of 17";
    EXPECT_EQ(bar(21),
              (ScrollParts{{0, 0, 9, 10}, {0, 10, 9, 21}, {0, 10, 9, 10}, {0, 10, 9, 10}}));
    EXPECT_EQ(layOutScrollbar({{100, 9}, false}, 17, {0, 9, 5}, 5).thumb, (Rect{50, 0, 83, 9}));
    EXPECT_EQ(layOutSlider({{101, 30}, false}, {11, 20, 4}, {0, 10, 1}, 5),
              (ScrollParts{{}, {}, {0, 13, 101, 17}, {45, 5, 56, 25}}));
    const int hits[][3] = {{100, -1, 0},  {100, 0, 1},  {100, 16, 1}, {100, 17, 2},
                           {100, 65, 2},  {100, 66, 3}, {100, 82, 3}, {100, 83, 5},
                           {100, 100, 0}, {44, 21, 2},  {44, 22, 4}};
    for (const auto& [length, y, part] : hits)
        EXPECT_EQ(hitScrollPart(bar(length), true, 8, y), part) << "at " << y;
    EXPECT_EQ(hitScrollPart(bar(100), true, 9, 50), kNoPart) << "beside the bar";
    // The largest picture of half an arrow, or the smallest.
    for (const auto& [arrow, picture] : {std::pair(0, 0), {25, 0}, {26, 1}, {99, 6}, {100, 7}})
        EXPECT_EQ(arrowPicture(arrow), picture) << arrow;
}

TEST(ScrollLayout, DistanceOfAListIsInPagesOfTheClientAreaAndNeverFaults) {
    EXPECT_EQ(scrollDistance({25, 5, 0, 99, 10}, 300), 600);
    EXPECT_EQ(scrollDistance({5, 25, 0, 99, 0}, 300), -60) << "no page: the range";
    EXPECT_EQ(scrollDistance({5, 25, 0, -1, 0}, 300), 0) << "neither";
    EXPECT_EQ(scrollDistance({INT_MAX, INT_MIN, INT_MIN, INT_MAX, 1}, 1000), INT_MAX);
}

TEST(HolderLayout, BarsStandWhereTheClientAreaEndsAndNeverOutsideTheFrame) {
    const auto layOut = [](Rect client, Size bars) {
        return holderLayout({100, 50, 300, 250}, client, {true, true}, bars);
    };
    EXPECT_EQ(layOut({120, 70, 300, 235}, {20, 15}),
              (HolderLayout{{100, 70, 120, 235}, {120, 235, 300, 250}, {100, 235, 120, 250}}))
        << "on the left, below a caption";
    EXPECT_EQ(layOut({102, 52, 298, 248}, {20, 15}), HolderLayout()) << "asked for, not there";
    EXPECT_EQ(layOut({102, 52, 297, 247}, {999, 999}).corner, (Rect{102, 52, 298, 248}));
    EXPECT_EQ(layOut({102, 254, 270, 254}, {20, 15}), HolderLayout()) << "squeezed";
}

}  // namespace
