#include <gtest/gtest.h>

#include "QkCustCtrl/FadeMixing.h"
#include "QkUtil/PixelMath.h"

namespace QkDlg {
namespace {

TEST(FadeMixing, GoesFromOneColourToTheOtherAndTruncatesTowardsZero) {
    EXPECT_EQ(mixedColour(0xF6F6F6, 0xFBF3E5, 0), 0xF6F6F6U);
    EXPECT_EQ(mixedColour(0xF6F6F6, 0xFBF3E5, kFadeSteps), 0xFBF3E5U);
    // Red falls by 17 * 9 / 10 = 15.3, green by 2.7, blue rises by 4.5.
    EXPECT_EQ(mixedColour(0xF6F6F6, 0xFBF3E5, 9), 0xFAF4E7U);
}

TEST(PixelMath, PremultipliesRoundingDown) {
    EXPECT_EQ(premultiplied(0x80FFFFFF), 0x80808080U);
    EXPECT_EQ(premultiplied(0x01FF7F80), 0x01010000U);
}

TEST(PixelMath, HighContrastGlyphMakesSoftEdgesNearlySolidAndTakesTheColourAsItStands) {
    for (const auto& [alpha, result] :
         {std::pair(20U, 0U), {21U, 192U}, {192U, 192U}, {193U, 224U}, {225U, 225U}})
        EXPECT_EQ(highContrastGlyph(alpha << 24 | 0x123456, 0xFFFFFF) >> 24, result);
    // A COLORREF's red byte becomes the pixel's blue one, as it always has.
    EXPECT_EQ(highContrastGlyph(0xFF000000, 0x0000FF), 0xFF0000FFU);
}

}  // namespace
}  // namespace QkDlg
