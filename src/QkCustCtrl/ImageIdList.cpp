#include "QkDlg/ImageIdList.h"

#include <algorithm>

#include "lib/AssertReport.h"

namespace QkDlg {

namespace {

constexpr QkLib::AssertSite kNotInEights{"src/QkCustCtrl", 1127};
constexpr QkLib::AssertSite kSlotOutOfRange{"src/QkCustCtrl", 1177};

constexpr std::uint32_t kUsableSlots = 24;

}  // namespace

ImageIdList::ImageIdList(const std::uint32_t* ids) {
    if (!ids)
        return;
    unsigned count = 0;
    while (count < kSlots && ids[count] != kImageIdEnd)
        ++count;
    if (count < kSlots)
        ++count;  // the terminator
    if (count % kImageSizes != 1)
        QkLib::reportAssertFailure(kNotInEights);
    std::copy_n(ids, count, m_slots.begin());
    m_count = count / kImageSizes;
}

ImageIdList ImageIdList::fromFirstId(std::uint32_t firstId) {
    ImageIdList list;
    for (unsigned bucket = 0; bucket < kImageSizes; ++bucket)
        list.m_slots.at(bucket) = firstId + bucket;
    list.m_slots.at(kImageSizes) = kImageIdEnd;
    list.m_count = 1;
    return list;
}

std::uint32_t ImageIdList::idOf(std::uint32_t image, unsigned bucket) const {
    // Unsigned on purpose: the last image of an empty list is the largest number there is.
    const std::uint32_t last = m_count - 1;
    const std::uint64_t slot = std::uint64_t{image > last ? 0 : image} * kImageSizes + bucket;
    if (slot >= kUsableSlots)
        QkLib::reportAssertFailure(kSlotOutOfRange);
    const std::uint32_t id = m_slots.at(static_cast<std::size_t>(slot));
    return id == kImageIdEnd ? 0 : id;
}

}  // namespace QkDlg
