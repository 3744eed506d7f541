#include "QkCustCtrl/ProgressLayout.h"

#include <gtest/gtest.h>

#include <climits>

using namespace QkDlg;

namespace {

int filledWidth(const Progress& progress) {
    return progressFill({0, 0, 200, 20}, false, progress).width();
}

TEST(ProgressLayout, FillIsTheShareOfTheRangeAndTheLowBoundDoesNotReduceThePosition) {
    EXPECT_EQ(filledWidth({2, 0, 3}), 133);
    EXPECT_EQ(filledWidth({100, 50, 150}), 200);
    EXPECT_EQ(filledWidth({-50, -100, 0}), -100);
    EXPECT_EQ(progressFill({0, 0, 200, 20}, false, {7, 5, 5}), Rect{}) << "an empty range";
}

TEST(ProgressLayout, ProductsWrapInThirtyTwoBits) {
    EXPECT_EQ(filledWidth({30'000'000, 0, 60'000'000}), 28) << "6e9 - 2^32, over the range";
    EXPECT_EQ(progressFill({0, 0, 1, 1}, false, {INT_MIN, 0, -1}).right, INT_MIN);
    EXPECT_EQ(filledWidth({1, INT_MIN, INT_MAX}), -200) << "the range itself wraps to -1";
}

}  // namespace
