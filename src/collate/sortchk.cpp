// The check of a sort object at load, the copy of one that does not pass, and what the data of a
// sort have in common.
#include <algorithm>

#include "collate/lookup.hpp"
#include "frame/sections.hpp"

namespace vlx {
namespace {

constexpr std::uint32_t kPageRecords = 256;

const TSSortData& dataOf(const Section& section)
{
    return *reinterpret_cast<const TSSortData*>(section.data);
}

// The bytes up to the end of the last record that a lookup can reach.
std::uint32_t reachOf(const TSSortData& data)
{
    std::uint32_t reach = sizeof(TSSortData);
    const auto extend = [&reach](std::uint32_t offset, std::uint32_t records, std::size_t size) {
        if (records != 0)
            reach = std::max(reach, offset + records * static_cast<std::uint32_t>(size));
    };
    for (const TSSortPage& page : data.sortPages)
        if (isTablePage(page))
            extend(data.charTableOffset, page.pageBase + kPageRecords, sizeof(TSSortChar));
    extend(data.expansionTableOffset, data.expansionCount, sizeof(TSSortExpansion));
    extend(data.contractionTableOffset, data.contractionCount, sizeof(TSSortContraction));
    return reach;
}

// Collects what the elements of a sort have in common.
class TraitFinder {
  public:
    explicit TraitFinder(const TSSortData& data) : data_(data) {}

    TSSortTraits run()
    {
        traits_ = {kAllForward, kAllForward, true, true, ~std::uint64_t{0}};
        for (const TSSortPage& page : data_.sortPages)
            lookAt(page);
        lookAtExpansions();
        lookAtContractions();
        return traits_;
    }

  private:
    // A weight that is not 0, on a level and in a direction.
    void lookAt(unsigned weight, int level, std::uint8_t directions)
    {
        if (weight == 0)
            return;
        std::uint8_t& levels =
            directions & forwardBit(level) ? traits_.backwardLevels : traits_.forwardLevels;
        levels = static_cast<std::uint8_t>(levels & ~forwardBit(level));
        traits_.isWithout4 = traits_.isWithout4 && level != 4;
    }

    // A character or a contraction that is no expansion.
    template <class Record>
    void lookAt(const Record& record)
    {
        const std::uint8_t directions = directionsOf(record.sortBits);
        if (record.sortBits & kSortSpecial) {
            lookAt(record.weight1, 4, directions);
            return;
        }
        lookAt(record.weight1, 1, directions);
        lookAt(record.weight2, 2, directions);
        lookAt(record.weight3, 3, directions);
    }

    void lookAt(const TSSortPage& page)
    {
        if (isTablePage(page)) {
            const TSSortChar* const records = sortChars(data_) + page.pageBase;
            std::for_each(records, records + kPageRecords, [this](const TSSortChar& record) {
                if (record.sortBits & kSortExpansion) // its weights are those of some expansion
                    for (const int level : {1, 2, 3})
                        lookAt(1, level, directionsOf(record.sortBits));
                else
                    lookAt(record);
            });
        } else if (!(page.pageFlags & kPageWithoutWeights)) {
            lookAt(1, page.pageFlags & kPageLevel1 ? 1 : 4, page.pageDirection);
        }
    }

    void lookAtExpansions()
    {
        const TSSortExpansion* const begin = sortExpansions(data_);
        const TSSortExpansion* const end = begin + data_.expansionCount;
        for (const TSSortExpansion* at = begin; at != end; ++at)
            if (at != begin && at[-1].character >= at->character)
                traits_.isOrdered = false;
    }

    void lookAtContractions()
    {
        const TSSortContraction* const begin = sortContractions(data_);
        const TSSortContraction* const end = begin + data_.contractionCount;
        for (const TSSortContraction* at = begin; at != end; ++at) {
            lookAt(*at);
            traits_.alone &= ~(std::uint64_t{1} << (at->first & 63));
            if (at != begin && contractionKey(at[-1]) >= contractionKey(*at))
                traits_.isOrdered = false;
        }
    }

    const TSSortData& data_;
    TSSortTraits traits_{};
};

} // namespace

bool sortIsSound(const Section& section)
{
    if (!section.data)
        return true;
    return section.size >= sizeof(TSSortData) && reachOf(dataOf(section)) <= section.size;
}

bool padSort(const Section& section, Section& copy)
{
    // The header may be cut, too: what is missing of it is zero.
    TSSortData header{};
    std::memcpy(&header, section.data, std::min<std::size_t>(section.size, sizeof header));
    const std::uint32_t size = reachOf(header);
    copy = {copyPadded(section, size), size, true};
    return copy.data != nullptr;
}

TSSortTraits sortTraitsOf(const std::uint8_t* section)
{
    return TraitFinder(*reinterpret_cast<const TSSortData*>(section)).run();
}

const TSSortTraits& findSortTraits(TSObject& object)
{
    static constexpr TSSortTraits kNothingKnown{};
    std::uint8_t state = TSObject::kTraitsWanted;
    if (!__atomic_compare_exchange_n(&object.sortTraitsState, &state, TSObject::kTraitsSought,
                                     false, __ATOMIC_ACQUIRE, __ATOMIC_ACQUIRE))
        return object.hasSortTraits() ? object.sortTraits : kNothingKnown;
    object.sortTraits = sortTraitsOf(object.sections[0]);
    __atomic_store_n(&object.sortTraitsState, TSObject::kTraitsThere, __ATOMIC_RELEASE);
    return object.sortTraits;
}

} // namespace vlx
