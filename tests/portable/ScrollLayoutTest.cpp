#include "QkCustScroll/ScrollLayout.h"

#include <gtest/gtest.h>

#include <climits>

#include "QkCustScroll/ScrollRepeat.h"

using namespace QkDlg;

namespace {

constexpr ScrollRange kWholeInt{INT_MIN, INT_MAX, 0};

TEST(ScrollLayout, ThumbIsThePagesShareOfTheTrackAndNeverBelowTenPixels) {
    struct {
        int track;
        ScrollRange range;
        int arrow;
        int expected;
    } const cases[] = {
        {200, {0, 99, 25}, 17, 50},       {200, {0, 100, 0}, 17, 17},
        {200, {0, 100, 0}, 5, 10},        {200, {0, 2, 1}, 17, 67},
        {200, {0, 1'000'000, 1}, 17, 10}, {200, {0, 9, 10}, 17, 200},
        {200, {0, 9, 50}, 17, 200},       {200, {5, 0, 3}, 17, 200},
        {5, {0, 9, 10}, 17, 10},          {200, {INT_MIN, INT_MAX, INT_MAX}, 17, 100},
    };
    for (const auto& c : cases)
        EXPECT_EQ(thumbLength(c.track, c.range, c.arrow), c.expected)
            << c.track << ' ' << c.range.max << ' ' << c.range.page;
}

TEST(ScrollLayout, PixelsBecomePositionsWithinReachAndNothingIsDividedByZero) {
    struct {
        int offset, room;
        ScrollRange range;
        int expected;
    } const cases[] = {
        {0, 100, {10, 109, 20}, 10},  {50, 100, {10, 109, 20}, 50}, {100, 100, {10, 109, 20}, 90},
        {-5, 100, {0, 99, 0}, 0},     {100, 100, {0, 99, 0}, 99},   {150, 100, {0, 99, 1}, 99},
        {50, 0, {3, 9, 2}, 3},        {50, 100, {3, 9, 7}, 3},      {50, 100, {3, 9, 70}, 3},
        {50, 100, {9, 3, 0}, 9},      {50, 100, kWholeInt, 0},      {100, 100, kWholeInt, INT_MAX},
        {0, 100, kWholeInt, INT_MIN}, {1, 3, {0, 1000, 1}, 333},    {2, 3, {0, 1000, 1}, 667},
    };
    for (const auto& c : cases)
        EXPECT_EQ(positionAt(c.offset, c.room, c.range), c.expected)
            << c.offset << " of " << c.room << ", page " << c.range.page;
}

TEST(ScrollLayout, APositionsPixelStandsForItAgainAndTheEndsAreMetExactly) {
    for (const int page : {0, 1, 20}) {
        const ScrollRange range{-50, 149, page};
        for (int position = range.min; position <= lastPosition(range); ++position)
            ASSERT_EQ(positionAt(offsetOf(position, 1000, range), 1000, range), position) << page;
        EXPECT_EQ(offsetOf(lastPosition(range), 1000, range), 1000) << page;
        EXPECT_EQ(offsetOf(INT_MAX, 1000, range), 1000) << "out of reach";
        EXPECT_EQ(offsetOf(INT_MIN, 1000, range), 0) << "out of reach";
    }
    EXPECT_EQ(offsetOf(7, 1000, {0, 9, 10}), 0) << "nothing to scroll";
    EXPECT_EQ(offsetOf(0, 1000, kWholeInt), 500);
    EXPECT_EQ(offsetOf(5, -3, {0, 9, 1}), 0) << "no room";
}

TEST(ScrollLayout, ArrowsShareAShortBarAndTheThumbThatDoesNotFitHasNoLength) {
    const ScrollRange range{0, 9, 0};
    const auto vertical = [&](int length) {
        return layOutScrollbar({{17, length}, true}, 17, range, 9);
    };
    EXPECT_EQ(vertical(100),
              (ScrollParts{{0, 0, 17, 17}, {0, 83, 17, 100}, {0, 17, 17, 83}, {0, 66, 17, 83}}));
    EXPECT_EQ(vertical(44).thumb, (Rect{0, 22, 17, 22})) << "10 pixels for a thumb of 17";
    EXPECT_EQ(vertical(21),
              (ScrollParts{{0, 0, 17, 10}, {0, 10, 17, 21}, {0, 10, 17, 10}, {0, 10, 17, 10}}));
    EXPECT_EQ(vertical(0).track, (Rect{0, 0, 17, 0}));
    EXPECT_EQ(layOutScrollbar({{100, 17}, false}, 17, {0, 9, 5}, 5).thumb, (Rect{50, 0, 83, 17}));
    EXPECT_EQ(layOutSlider({{101, 30}, false}, {11, 20, 4}, {0, 10, 1}, 5),
              (ScrollParts{{}, {}, {0, 13, 101, 17}, {45, 5, 56, 25}}));
    EXPECT_EQ(layOutSlider({{9, 9}, true}, {11, 20, 4}, {0, 10, 1}, 5).thumb, (Rect{0, 4, 9, 4}));
}

TEST(ScrollLayout, HitsTellTheTrackBeforeTheThumbFromTheTrackAfterIt) {
    const ScrollParts bar = layOutScrollbar({{17, 100}, true}, 17, {0, 9, 0}, 5);
    const int thumb = bar.thumb.top;
    const std::pair<int, int> cases[] = {
        {-1, 0},         {0, 1},          {16, 1}, {17, 2}, {thumb - 1, 2}, {thumb, 3},
        {thumb + 16, 3}, {thumb + 17, 4}, {82, 4}, {83, 5}, {99, 5},        {100, 0}};
    for (const auto& [y, part] : cases)
        EXPECT_EQ(hitScrollPart(bar, true, 8, y), part) << "at " << y;
    EXPECT_EQ(hitScrollPart(bar, true, 17, 50), kNoPart) << "beside the bar";
    const ScrollParts small = layOutScrollbar({{17, 44}, true}, 17, {0, 9, 0}, 5);
    EXPECT_EQ(hitScrollPart(small, true, 8, 21), kTrackBefore) << "no thumb";
    EXPECT_EQ(hitScrollPart(small, true, 8, 22), kTrackAfter) << "no thumb";
}

TEST(ScrollLayout, ArrowPictureIsTheLargestOfHalfAnArrowOrTheSmallest) {
    const std::pair<int, int> cases[] = {{0, 0},  {17, 0}, {25, 0}, {26, 1},  {34, 2},
                                         {42, 3}, {85, 6}, {99, 6}, {100, 7}, {900, 7}};
    for (const auto& [arrow, picture] : cases)
        EXPECT_EQ(arrowPicture(arrow), picture) << arrow;
}

TEST(ScrollRepeat, TheFourthTickBringsTheFirstRepeatAndStoppingEndsThem) {
    ScrollRepeat repeat;
    repeat.start();
    std::string ticks;
    for (int i = 0; i < 6; ++i)
        ticks += repeat.tick() ? '!' : '.';
    repeat.stop();
    EXPECT_EQ(ticks + (repeat.tick() ? '!' : '.'), "...!!!.");
}

}  // namespace
