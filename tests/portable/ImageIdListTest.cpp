#include "QkDlg/ImageIdList.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace {

using QkDlg::ImageIdList;

/// `images` images with ids from 1 on, ended as an array in a program is.
ImageIdList listOf(unsigned images) {
    std::vector<std::uint32_t> ids(std::size_t{images} * 8);
    std::iota(ids.begin(), ids.end(), 1U);
    ids.push_back(QkDlg::kImageIdEnd);
    return ImageIdList(ids.data());
}

TEST(DpiBucket, ChangesExactlyAtItsLimits) {
    const int limits[] = {120, 144, 192, 240, 288, 384, 480};
    for (unsigned i = 0; i < std::size(limits); ++i) {
        EXPECT_EQ(QkDlg::dpiBucket(limits[i] - 1), i);
        EXPECT_EQ(QkDlg::dpiBucket(limits[i]), i + 1);
    }
}

TEST(ImageIdList, FindsTheIdOfImageAndBucketAmongThreeImagesAtMost) {
    EXPECT_EQ(ImageIdList(nullptr).imageCount(), 0U);
    for (const unsigned images : {0U, 1U, 2U, 3U})
        EXPECT_EQ(listOf(images).imageCount(), images);
    const ImageIdList two = listOf(2);
    EXPECT_EQ(two.idOf(0, 7), 8U);
    EXPECT_EQ(two.idOf(1, 2), 11U);
    EXPECT_EQ(two.idOf(5, 2), 3U) << "an image past the last reads as the first";
    EXPECT_EQ(listOf(3).idOf(2, 7), 24U);
    EXPECT_EQ(ImageIdList::fromFirstId(62088).idOf(0, 3), 62091U);
    EXPECT_EQ(listOf(0).idOf(0, 0), 0U) << "the terminator is no id";
    EXPECT_EQ(ImageIdList().idOf(2, 7), 0U);
}

}  // namespace
