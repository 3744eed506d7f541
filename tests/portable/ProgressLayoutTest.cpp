#include "QkCustCtrl/ProgressLayout.h"

#include <gtest/gtest.h>

#include <climits>

#include "QkCustCtrl/EditLayout.h"

namespace QkDlg {

void PrintTo(const Rect& rect, std::ostream* out);

}  // namespace QkDlg

using namespace QkDlg;

namespace {

constexpr Rect kLying{0, 0, 200, 20};
constexpr Rect kStanding{0, 0, 20, 200};

int filledWidth(const Progress& progress) {
    return progressFill(kLying, false, progress).width();
}

TEST(ProgressLayout, FillIsTheShareOfTheRange) {
    EXPECT_EQ(progressFill(kLying, false, {50, 0, 100}), (Rect{0, 0, 100, 20}));
    EXPECT_EQ(filledWidth({0, 0, 100}), 0);
    EXPECT_EQ(filledWidth({100, 0, 100}), 200);
    EXPECT_EQ(filledWidth({2, 0, 3}), 133);
}

TEST(ProgressLayout, PositionIsNotReducedByTheLowBound) {
    EXPECT_EQ(filledWidth({100, 50, 150}), 200);
    EXPECT_EQ(filledWidth({-50, -100, 0}), -100);
}

TEST(ProgressLayout, VerticalBarFillsFromItsPositionDownToTheBottom) {
    EXPECT_EQ(progressFill(kStanding, true, {30, 0, 100}), (Rect{0, 60, 20, 200}));
    EXPECT_EQ(progressFill(kStanding, true, {0, 0, 100}), kStanding);
}

TEST(ProgressLayout, EmptyRangeFillsNothing) {
    EXPECT_EQ(progressFill(kLying, false, {7, 5, 5}), Rect{});
    EXPECT_EQ(progressFill(kStanding, true, {7, 5, 5}), Rect{});
}

TEST(ProgressLayout, ProductsWrapInThirtyTwoBits) {
    EXPECT_EQ(filledWidth({30'000'000, 0, 60'000'000}), 28) << "6e9 - 2^32, over the range";
    EXPECT_EQ(progressFill({0, 0, 1, 1}, false, {INT_MIN, 0, -1}).right, INT_MIN);
    EXPECT_EQ(filledWidth({1, INT_MIN, INT_MAX}), -200) << "the range itself wraps to -1";
}

TEST(ProgressLayout, MarqueeBlockIsHalfTheBarAndEntersAgainWhenItHasLeft) {
    Marquee marquee;
    marquee = advanced(marquee, 260);
    EXPECT_EQ(marquee, (Marquee{-120, 10}));
    for (int tick = 2; tick <= 39; ++tick)
        marquee = advanced(marquee, 260);
    EXPECT_EQ(marquee, (Marquee{260, 390})) << "its trailing edge is at the end, not past it";
    EXPECT_EQ(advanced(marquee, 260), Marquee{});
}

TEST(ProgressLayout, VerticalMarqueeBlockKeepsTopBelowBottom) {
    EXPECT_EQ(marqueeBlock(kLying, false, {30, 130}), (Rect{30, 0, 130, 20}));
    EXPECT_EQ(marqueeBlock(kStanding, true, {30, 130}), (Rect{0, 130, 20, 30}));
}

TEST(EditLayout, FrameAndEyeStandRoundTheEdit) {
    constexpr Rect edit{10, 20, 110, 40};
    EXPECT_EQ(frameRectAround(edit, 2, false), (Rect{8, 18, 112, 42}));
    EXPECT_EQ(frameRectAround(edit, 2, true), (Rect{8, 18, 132, 42}));
    EXPECT_EQ(frameRectAround(edit, 0, false), edit);
    EXPECT_EQ(eyeRect(edit), (Rect{110, 20, 130, 40}));
}

}  // namespace
