#include "QkCustCtrl/FitText.h"

#include <gtest/gtest.h>

#include <vector>

using namespace QkDlg;

namespace {

/// A text of ten pixels a point, and two pixels a point high, that keeps what sizes were tried.
struct Text {
    std::vector<int> tried;

    MeasureText measure() {
        return [this](int points) {
            tried.push_back(points);
            return Size{10 * points, 2 * points};
        };
    }
};

TEST(FitText, LargeFontShrinksPointByPointUntilTheTextFits) {
    Text text;
    EXPECT_EQ(fitText(14, {115, 100}, 96, text.measure()), (FittedText{11, {115, 100}}));
    EXPECT_EQ(text.tried, (std::vector{14, 13, 12, 11}));
}

TEST(FitText, ShrinkingStopsAtNinePointsAndTheRestIsCutOff) {
    Text text;
    EXPECT_EQ(fitText(12, {50, 100}, 96, text.measure()), (FittedText{9, {50, 100}}));
    EXPECT_EQ(text.tried.back(), 9);
}

TEST(FitText, LargeFontGrowsTheWindowToTheTextAndTwoPixels) {
    Text text;
    EXPECT_EQ(fitText(12, {50, 10}, 96, text.measure()), (FittedText{9, {50, 20}}));
    EXPECT_EQ(fitText(10, {200, 21}, 96, text.measure()), (FittedText{10, {200, 22}}));
    EXPECT_EQ(fitText(10, {200, 22}, 96, text.measure()), (FittedText{10, {200, 22}}));
    EXPECT_EQ(fitText(9, {200, 10}, 96, text.measure()), (FittedText{9, {200, 10}}))
        << "a small font leaves the height alone";
}

TEST(FitText, SmallFontWidensTheWindowByThreeScaledPixelsAtMost) {
    struct Case {
        int dpi;
        int excess;
        bool widened;
    };
    for (const auto& [dpi, excess, widened] :
         {Case{96, 1, false}, Case{97, 3, true}, Case{97, 4, false}, Case{120, 4, true},
          Case{120, 5, false}, Case{144, 5, true}, Case{192, 6, true}, Case{192, 7, false},
          Case{480, 15, true}, Case{480, 16, false}, Case{192, 0, false}, Case{192, -5, false}}) {
        Text text;
        const Size window{90 - excess, 10};
        EXPECT_EQ(fitText(9, window, dpi, text.measure()).window,
                  (Size{widened ? 90 : window.width, 10}))
            << dpi << " DPI, " << excess << " pixels too wide";
    }
}

TEST(FitText, TextThatShrankToNinePointsIsWidenedAsWell) {
    Text text;
    EXPECT_EQ(fitText(12, {87, 10}, 120, text.measure()), (FittedText{9, {90, 20}}));
}

}  // namespace
