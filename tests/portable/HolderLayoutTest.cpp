#include "QkCustScroll/HolderLayout.h"

#include <gtest/gtest.h>

using namespace QkDlg;

TEST(HolderLayout, BarsStandInsideTheFrameWhereTheClientAreaEndsAndNeverOutside) {
    const auto layOut = [](Rect client, BarStyles styles, Size bars = {20, 15}) {
        return holderLayout({100, 50, 300, 250}, client, styles, bars);
    };
    EXPECT_EQ(layOut({102, 52, 278, 233}, {true, true}),
              (HolderLayout{{278, 52, 298, 233}, {102, 233, 278, 248}, {278, 233, 298, 248}}));
    EXPECT_EQ(layOut({101, 51, 299, 234}, {false, true}).horizontal, (Rect{101, 234, 299, 249}));
    EXPECT_EQ(layOut({120, 70, 300, 235}, {true, true}),
              (HolderLayout{{100, 70, 120, 235}, {120, 235, 300, 250}, {100, 235, 120, 250}}))
        << "on the left, below a caption";
    EXPECT_EQ(layOut({102, 52, 298, 248}, {true, true}), HolderLayout()) << "asked for, not there";
    EXPECT_EQ(layOut({102, 52, 297, 247}, {true, true}, {999, 999}).corner,
              (Rect{102, 52, 298, 248}));
    EXPECT_EQ(holderLayout({0, 0, 30, 3}, {2, 4, 20, 4}, {true, true}, {20, 15}), HolderLayout())
        << "squeezed";
}
