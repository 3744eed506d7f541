#include <gtest/gtest.h>

#include "QkCustCtrl/FadeMixing.h"
#include "QkUtil/PixelMath.h"

namespace QkDlg {
namespace {

TEST(FadeMixing, GoesFromOneColourToTheOther) {
    EXPECT_EQ(mixedColour(0xF6F6F6, 0xFBF3E5, 0), 0xF6F6F6U);
    EXPECT_EQ(mixedColour(0xF6F6F6, 0xFBF3E5, kFadeSteps), 0xFBF3E5U);
}

TEST(FadeMixing, TruncatesEachChannelTowardsZero) {
    // Red falls by 17 * 9 / 10 = 15.3, green by 2.7, blue rises by 4.5.
    EXPECT_EQ(mixedColour(0xF6F6F6, 0xFBF3E5, 9), 0xFAF4E7U);
    EXPECT_EQ(mixedColour(0x000000, 0x0000FF, 1), 25U);
    EXPECT_EQ(mixedColour(0x0000FF, 0x000000, 1), 255U - 25U);
}

TEST(PixelMath, PremultipliesRoundingDown) {
    EXPECT_EQ(premultiplied(0x80FFFFFF), 0x80808080U);
    EXPECT_EQ(premultiplied(0x01FF7F80), 0x01010000U);
    EXPECT_EQ(premultiplied(0x00FFFFFF), 0U);
    EXPECT_EQ(premultiplied(0xFF123456), 0xFF123456U);
}

TEST(PixelMath, HighContrastGlyphMakesSoftEdgesNearlySolid) {
    const auto alphaOf = [](Pixel alpha) {
        return highContrastGlyph(alpha << 24 | 0x123456, 0xFFFFFF) >> 24;
    };
    EXPECT_EQ(alphaOf(20), 0U);
    EXPECT_EQ(alphaOf(21), 192U);
    EXPECT_EQ(alphaOf(192), 192U);
    EXPECT_EQ(alphaOf(193), 224U);
    EXPECT_EQ(alphaOf(224), 224U);
    EXPECT_EQ(alphaOf(225), 225U);
    EXPECT_EQ(alphaOf(255), 255U);
}

TEST(PixelMath, HighContrastGlyphTakesTheColourAsItStands) {
    // A COLORREF's red byte becomes the pixel's blue one, as it always has.
    EXPECT_EQ(highContrastGlyph(0xFF000000, 0x0000FF), 0xFF0000FFU);
}

TEST(PixelMath, GreyedPictureLosesColourAndHalfItsOpacity) {
    const Pixel grey = greyed(0xFF1B76C0);
    EXPECT_EQ(grey >> 24, 127U);
    EXPECT_EQ(grey & 0xFF, grey >> 8 & 0xFF);
    EXPECT_EQ(grey & 0xFF, grey >> 16 & 0xFF);
    EXPECT_EQ(greyed(0x00FFFFFF) >> 24, 0U);
}

}  // namespace
}  // namespace QkDlg
