#pragma once

#include <array>
#include <cstdint>

namespace QkDlg {

/// Number of images of one set: one for each DPI bucket.
constexpr unsigned kImageSizes = 8;

/// Ends an array of bitmap resource ids.
constexpr std::uint32_t kImageIdEnd = 0x7FFFFFFF;

/// The bucket of a screen's DPI: 0 below 120, then from 120, 144, 192, 240, 288, 384 and 480 on.
[[nodiscard]] constexpr unsigned dpiBucket(int dpi) {
    constexpr std::array<int, kImageSizes - 1> limits{120, 144, 192, 240, 288, 384, 480};
    unsigned bucket = 0;
    for (const int limit : limits)
        bucket += dpi >= limit ? 1U : 0U;
    return bucket;
}

/// The bitmap resource ids of a control's images, up to three, each in eight sizes. Most controls
/// of a dialog have the same, so equal lists share their ids.
class ImageIdList {
public:
    /// An empty list.
    ImageIdList() = default;

    /// Copies ids up to and including kImageIdEnd; null gives an empty list. The number of entries
    /// must be one more than a multiple of 8, or the assertion report is raised.
    explicit ImageIdList(const std::uint32_t* ids);

    /// The list of one image whose eight ids follow each other.
    [[nodiscard]] static ImageIdList fromFirstId(std::uint32_t firstId);

    [[nodiscard]] std::uint32_t imageCount() const { return m_count; }

    /// The resource id of an image at a DPI bucket, 0 for none. An image past the last reads as
    /// image 0. An empty list has id 0 for images 0 to 2 and raises the assertion report beyond.
    [[nodiscard]] std::uint32_t idOf(std::uint32_t image, unsigned bucket) const;

private:
    static constexpr unsigned kSlots = 25;

    using Slots = std::array<std::uint32_t, kSlots>;

    ImageIdList(const Slots& slots, std::uint32_t count);

    const Slots* m_slots = nullptr;  ///< shared by equal lists, for as long as the process lives
    std::uint32_t m_count = 0;
};

}  // namespace QkDlg
