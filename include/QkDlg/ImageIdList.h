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

/// The bitmap resource ids of a control's images, up to three, each in eight sizes. Lists of the
/// same ids share them; the ids are kept for the life of the process.
class ImageIdList {
public:
    /// An empty list.
    ImageIdList();

    /// Copies ids up to and including kImageIdEnd; null gives an empty list. The number of entries
    /// must be one more than a multiple of 8, or the assertion report is raised.
    explicit ImageIdList(const std::uint32_t* ids);

    /// The list of one image whose eight ids follow each other.
    [[nodiscard]] static ImageIdList fromFirstId(std::uint32_t firstId);

    /// How many images the list has, 0 to 3.
    [[nodiscard]] std::uint32_t imageCount() const { return m_slots->count; }

    /// The resource id of an image at a DPI bucket, 0 for none. An image past the last reads as
    /// image 0. An empty list has id 0 for images 0 to 2 and raises the assertion report beyond.
    [[nodiscard]] std::uint32_t idOf(std::uint32_t image, unsigned bucket) const;

private:
    struct Slots {
        std::array<std::uint32_t, 25> ids{};
        std::uint32_t count = 0;  ///< of images

        /// The ids tell their count.
        bool operator<(const Slots& other) const { return ids < other.ids; }
    };

    explicit ImageIdList(const Slots& slots);
    static const Slots* shared(const Slots& slots);

    const Slots* m_slots;
};

}  // namespace QkDlg
