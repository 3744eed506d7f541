#include "QkCustScroll/HolderLayout.h"

#include <gtest/gtest.h>

using namespace QkDlg;

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
