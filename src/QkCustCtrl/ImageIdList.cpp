#include "QkDlg/ImageIdList.h"

#include <algorithm>
#include <set>

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
    Slots slots{};
    std::copy_n(ids, count, slots.begin());
    *this = ImageIdList(slots, count / kImageSizes);
}

ImageIdList::ImageIdList(const Slots& slots, std::uint32_t count) : m_count(count) {
    // Never destroyed: a host's static object may end after this module's.
    static auto& known = *new std::set<Slots>;
    m_slots = &*known.insert(slots).first;
}

ImageIdList ImageIdList::fromFirstId(std::uint32_t firstId) {
    Slots slots{};
    for (unsigned bucket = 0; bucket < kImageSizes; ++bucket)
        slots.at(bucket) = firstId + bucket;
    slots.at(kImageSizes) = kImageIdEnd;
    return {slots, 1};
}

std::uint32_t ImageIdList::idOf(std::uint32_t image, unsigned bucket) const {
    // Unsigned on purpose: the last image of an empty list is the largest number there is.
    const std::uint32_t last = m_count - 1;
    const std::uint64_t slot = std::uint64_t{image > last ? 0 : image} * kImageSizes + bucket;
    if (slot >= kUsableSlots)
        QkLib::reportAssertFailure(kSlotOutOfRange);
    const std::uint32_t id = m_slots ? m_slots->at(static_cast<std::size_t>(slot)) : 0;
    return id == kImageIdEnd ? 0 : id;
}

}  // namespace QkDlg
