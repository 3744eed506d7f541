#include "QkCustCtrl/ListViewLayout.h"

#include <gtest/gtest.h>

namespace QkDlg {
namespace {

TEST(ListViewLayout, PicturesStandInTheFirstDisplayedColumnAndTakeRoomFromItsText) {
    const Rect cell{10, 100, 110, 125};
    const struct {
        CellKind kind;
        CellParts parts;
    } cases[] = {
        {{false, true, true}, {{}, {}, {18, 100, 104, 119}}},
        {{true, false, true}, {{}, {10, 104, 26, 120}, {34, 100, 104, 119}}},
        {{true, true, true}, {{10, 104, 26, 120}, {30, 104, 46, 120}, {54, 100, 104, 119}}},
    };
    for (const auto& [kind, parts] : cases)
        EXPECT_EQ(layOutCell(cell, kind, ListLengths(96)), parts);
    const CellParts large = layOutCell(cell, {true, true, true}, ListLengths(144));
    EXPECT_EQ(large, (CellParts{{10, 106, 34, 130}, {40, 106, 64, 130}, {76, 100, 101, 116}}));
    EXPECT_EQ(checkBoxOf(cell, ListLengths(144)), large.checkBox) << "found where it is drawn";
}

TEST(ListViewLayout, SortArrowFollowsTheTextAndKeepsItsRoomFromALongOne) {
    const ListLengths normal(96);
    const Rect area = headerTextArea({100, 0, 200, 24}, normal);
    EXPECT_EQ(layOutSortedHeader(area, {30, 14}, false, normal),
              (HeaderParts{{104, 0, 134, 18}, {140, 9, 147, 13}}));
    const HeaderParts atEnd{{104, 0, 183, 18}, {189, 9, 196, 13}};
    EXPECT_EQ(layOutSortedHeader(area, {300, 14}, false, normal), atEnd);
    EXPECT_EQ(layOutSortedHeader(area, {30, 14}, true, normal), atEnd);
}

TEST(ListViewLayout, AskedStyleIsSetAndTheRestOfTheMaskTurnedOver) {
    EXPECT_EQ(requestedExStyle(0x24, 0xF, 0x1), 0x2BU) << "0x4 went off, 0x2 and 0x8 went on";
}

}  // namespace
}  // namespace QkDlg
