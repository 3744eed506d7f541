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

ImageIdList::ImageIdList() : ImageIdList(Slots{}) {}

ImageIdList::ImageIdList(const Slots& slots) : m_slots(shared(slots)) {}

ImageIdList::ImageIdList(const std::uint32_t* ids) : ImageIdList() {
    if (!ids)
        return;
    Slots slots;
    unsigned count = 0;
    while (count < slots.ids.size() && ids[count] != kImageIdEnd)
        ++count;
    if (count < slots.ids.size())
        ++count;  // the terminator
    if (count % kImageSizes != 1)
        QkLib::reportAssertFailure(kNotInEights);
    std::copy_n(ids, count, slots.ids.begin());
    slots.count = count / kImageSizes;
    m_slots = shared(slots);
}

ImageIdList ImageIdList::fromFirstId(std::uint32_t firstId) {
    Slots slots;
    for (unsigned bucket = 0; bucket < kImageSizes; ++bucket)
        slots.ids.at(bucket) = firstId + bucket;
    slots.ids.at(kImageSizes) = kImageIdEnd;
    slots.count = 1;
    return ImageIdList(slots);
}

const ImageIdList::Slots* ImageIdList::shared(const Slots& slots) {
    // Never destroyed: a host's static object may end after this module's.
    static auto& all = *new std::set<Slots>;
    return &*all.insert(slots).first;
}

std::uint32_t ImageIdList::idOf(std::uint32_t image, unsigned bucket) const {
    // Unsigned on purpose: the last image of an empty list is the largest number there is.
    const std::uint32_t last = m_slots->count - 1;
    const std::uint64_t slot = std::uint64_t{image > last ? 0 : image} * kImageSizes + bucket;
    if (slot >= kUsableSlots)
        QkLib::reportAssertFailure(kSlotOutOfRange);
    const std::uint32_t id = m_slots->ids.at(static_cast<std::size_t>(slot));
    return id == kImageIdEnd ? 0 : id;
}

}  // namespace QkDlg
