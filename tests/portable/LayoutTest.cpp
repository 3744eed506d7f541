#include <gtest/gtest.h>

#include "QkUtil/Centring.h"

#include "QkCustBtn/ButtonLayout.h"
#include "QkCustBtn/SwitchLayout.h"
#include "QkCustCtrl/CaptionLayout.h"
#include "QkCustCtrl/FocusRect.h"

namespace QkDlg {

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << "(" << rect.left << "," << rect.top << ")-(" << rect.right << "," << rect.bottom << ")";
}

namespace {

TEST(ButtonLayout, PicturesStandBesideOrAboveTheCaptionOrAloneInTheMiddle) {
    using enum ImageSide;
    ButtonContent content;
    content.client = {0, 0, 100, 30};
    EXPECT_EQ(layOutButton(content), (ButtonLayout{content.client, {}, 0, 0}));
    content.image = {16, 10};
    content.hasImage = true;
    content.padding = 6;
    const auto layOut = [&content](ImageSide side, bool gap) {
        content.side = side;
        content.imageGap = gap;
        return layOutButton(content);
    };
    EXPECT_EQ(layOut(Left, true), (ButtonLayout{{23, 0, 100, 30}, {0, 0, 22, 30}, 6, 10}));
    EXPECT_EQ(layOut(Left, false), (ButtonLayout{{17, 0, 100, 30}, {0, 0, 16, 30}, 0, 10}));
    EXPECT_EQ(layOut(Right, true), (ButtonLayout{{0, 0, 77, 30}, {78, 0, 100, 30}, 78, 10}));
    EXPECT_EQ(layOut(Right, false).imageX, 84);
    EXPECT_EQ(layOut(Above, true), (ButtonLayout{{0, 23, 100, 30}, {0, 0, 100, 22}, 42, 6}));
    content.hasCaption = false;
    EXPECT_EQ(layOut(Left, false), (ButtonLayout{{0, 0, 0, 30}, content.client, 42, 10}));
    content.alignment = ImageAlignment::Top;
    EXPECT_EQ(layOutButton(content).imageY, 0);
    content.alignment = ImageAlignment::Bottom;
    EXPECT_EQ(layOutButton(content).imageY, 20);
}

TEST(CaptionLayout, OnlyOneLineIsKeptInsideTheMargin) {
    const Rect tooWide{16, 6, 300, 20};
    CaptionBox box{{10, 0, 110, 40}, 6, Horizontal::Left, Vertical::Top, false};
    EXPECT_EQ(box.placed(tooWide).right, 104);
    box.wordBreak = true;
    EXPECT_EQ(box.placed(tooWide).right, 300);
}

TEST(FocusRect, GoesRoundTheContentButNotBeyondTheClip) {
    EXPECT_EQ(focusRectAround({20, 1, 80, 29}, {0, 0, 81, 30}, 2), (Rect{18, 0, 81, 30}));
    EXPECT_TRUE(hasArea({0, 0, 1, 1}));
    EXPECT_FALSE(hasArea({0, 0, 0, 10}));
    EXPECT_FALSE(hasArea({2, 2, -2, -2})) << "a window smaller than the insets";
}

TEST(SwitchLayout, DraggedThumbStopsAtTheEndsAndDecidesByTheCentre) {
    const SwitchLayout layout = SwitchLayout::of({0, 0, 104, 24}, 2);
    EXPECT_EQ(layout.caption, (Rect{2, 2, 35, 22}));
    EXPECT_EQ(layout.track, (Rect{36, 2, 102, 22}));
    const Rect thumb{36, 2, 52, 22};
    EXPECT_EQ(layout.thumbAtRest(false), thumb);
    EXPECT_EQ(layout.thumbDragged(thumb, -500), thumb);
    EXPECT_EQ(layout.thumbDragged(thumb, 500), (Rect{86, 2, 102, 22}));
    EXPECT_EQ(layout.thumbDragged(thumb, 7), (Rect{43, 2, 59, 22}));
    EXPECT_FALSE(layout.checkedAt({61, 2, 77, 22})) << "centre on the track's centre";
    EXPECT_TRUE(layout.checkedAt({62, 2, 78, 22}));
}

TEST(Centring, StaysInsideTheAreaWhereverTheOtherWindowIs) {
    const Rect area{1000, 0, 2000, 700};  // of a second monitor, above its taskbar
    EXPECT_EQ(centredIn({100, 50}, {1200, 300, 1400, 400}, area), (Rect{1250, 325, 1350, 375}));
    EXPECT_EQ(centredIn({100, 50}, {950, 680, 1000, 720}, area), (Rect{1000, 650, 1100, 700}));
    EXPECT_EQ(centredIn({3000, 900}, {1200, 300, 1400, 400}, area), (Rect{1000, 0, 4000, 900}));
}

}  // namespace
}  // namespace QkDlg
