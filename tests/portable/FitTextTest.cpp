#include "QkCustCtrl/FitText.h"

#include <gtest/gtest.h>

using namespace QkDlg;

namespace {

struct Case {
    int points = 0;
    int dpi = 0;
    Size window;
    FittedText fitted;
};

// A text of ten pixels a point, and two pixels a point high.
TEST(FitText, LargeFontShrinksThenGrowsTheWindowAndSmallFontWidensItByThreeScaledPixels) {
    for (const auto& [points, dpi, window, fitted] : {
             Case{14, 96, {115, 100}, {11, {115, 100}}}, Case{12, 96, {50, 100}, {9, {50, 100}}},
             Case{12, 96, {50, 10}, {9, {50, 20}}}, Case{10, 96, {200, 21}, {10, {200, 22}}},
             Case{10, 96, {200, 22}, {10, {200, 22}}}, Case{9, 96, {200, 10}, {9, {200, 10}}},
             Case{9, 96, {89, 10}, {9, {89, 10}}},  // not at 96 DPI
             Case{9, 97, {87, 10}, {9, {90, 10}}}, Case{9, 97, {86, 10}, {9, {86, 10}}},
             Case{9, 144, {85, 10}, {9, {90, 10}}}, Case{9, 480, {75, 10}, {9, {90, 10}}},
             Case{9, 480, {74, 10}, {9, {74, 10}}}, Case{9, 192, {95, 10}, {9, {95, 10}}},
             Case{12, 120, {87, 10}, {9, {90, 20}}},  // shrunk to nine points, then widened
         }) {
        const auto measure = [](int size) { return Size{10 * size, 2 * size}; };
        EXPECT_EQ(fitText(points, window, dpi, measure), fitted)
            << points << " points at " << dpi << " DPI in " << window.width << " pixels";
    }
}

}  // namespace
