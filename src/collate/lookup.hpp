// Collation elements of a character and of a pair of characters, by a sort object.
#pragma once

#include <algorithm>
#include <cstdint>

#include "collate/sort.hpp"
#include "frame/objman.hpp"
#include "locale/locale.hpp"

// One collation element. A weight of 0 means that it has nothing on that level.
struct TSSortElement {
    std::uint16_t weight1;
    std::uint8_t weight2;
    std::uint8_t weight3;
    std::uint16_t weight4;
};

namespace vlx {

// What a lookup has found: up to two elements and their directions.
struct SortElements {
    TSSortElement first{};
    TSSortElement second{};
    std::uint8_t directions = 0;
};

// A sort object that can be read, with what is wanted of it for every character.
struct Sort {
    Sort(const TSSortData& content, const TSSortTraits& known)
        : data(content), traits(known), chars(sortChars(content)),
          contracts(content.contractionCount != 0)
    {
    }

    bool hasContractions() const { return contracts; }
    const TSSortPage& page(TSChar16 value) const { return data.sortPages[value >> 8]; }
    const TSSortChar& record(const TSSortPage& page, TSChar16 value) const
    {
        return chars[page.pageBase + (value & 0xFFu)];
    }
    // False if the value begins no contraction; the other way round it need not be so.
    bool mayBeginPair(TSChar16 value) const { return !(traits.alone >> (value & 63) & 1); }

    const TSSortData& data;
    const TSSortTraits& traits;
    const TSSortChar* const chars;
    const bool contracts;
};

#pragma GCC visibility push(hidden)
extern const TSSortData kCodeOrder; // each value is its own level 1 weight
extern const TSSortTraits kCodeOrderTraits;
#pragma GCC visibility pop

// Finds the traits of a sort. While another thread does that, nothing is known of it.
const TSSortTraits& findSortTraits(TSObject& object);

// The sort of a locale. An object of another type, or one without data, orders by code.
inline Sort sortOf(const TSLocale& locale)
{
    TSObject* const object = locale.sort;
    if (!object || object->type != TS_OBJ_SORT || !object->sections[0]) [[unlikely]]
        return {kCodeOrder, kCodeOrderTraits};
    const TSSortTraits& traits =
        object->hasSortTraits() ? object->sortTraits : findSortTraits(*object);
    return {*reinterpret_cast<const TSSortData*>(object->sections[0]), traits};
}

// The record of a list that is searched from the front, or where that gives the same by halving;
// null if there is none. `compare` tells how a record stands to the one that is sought.
template <class Record, class KeyOf, class Key>
const Record* findRecord(const Record* begin, unsigned count, bool isOrdered, Key key,
                         const KeyOf& keyOf)
{
    const Record* const end = begin + count;
    const Record* const found =
        isOrdered
            ? std::lower_bound(
                  begin, end, key,
                  [&](const Record& record, Key sought) { return keyOf(record) < sought; })
            : std::find_if(begin, end, [&](const Record& record) { return keyOf(record) == key; });
    return found != end && keyOf(*found) == key ? found : nullptr;
}

// The element of a record with one.
template <class Record>
TSSortElement elementOf(const Record& record)
{
    if (record.sortBits & kSortSpecial)
        return {0, 0, 0, record.weight1};
    return {record.weight1, record.weight2, record.weight3, 0};
}

inline std::int32_t lookUpExpansion(const Sort& sort, TSChar16 value, SortElements& found)
{
    const TSSortExpansion* const expansion = findRecord(
        sortExpansions(sort.data), sort.data.expansionCount, sort.traits.isOrdered, value,
        [](const TSSortExpansion& record) -> TSChar16 { return record.character; });
    if (!expansion)
        return 0;
    found.first = {expansion->weight1, expansion->weight2, expansion->weight3, 0};
    found.second = {expansion->secondWeight1, expansion->secondWeight2, expansion->secondWeight3,
                    0};
    return 2;
}

} // namespace vlx

// The elements of a character; returns their number, 0 to 2.
inline std::int32_t TSSortLookupChar(const vlx::Sort& sort, TSChar16 value,
                                     vlx::SortElements& found)
{
    const TSSortPage& page = sort.page(value);
    if (!vlx::isTablePage(page)) {
        if (page.pageFlags & vlx::kPageWithoutWeights)
            return 0;
        const auto weight = static_cast<std::uint16_t>(page.pageBase + (value & 0xFF));
        found.first = page.pageFlags & vlx::kPageLevel1 ? TSSortElement{weight, 0, 0, 0}
                                                        : TSSortElement{0, 0, 0, weight};
        found.directions = page.pageDirection;
        return 1;
    }
    const TSSortChar& record = sort.record(page, value);
    found.directions = vlx::directionsOf(record.sortBits);
    if (record.sortBits & vlx::kSortExpansion)
        return vlx::lookUpExpansion(sort, value, found);
    found.first = vlx::elementOf(record);
    return 1;
}

// The element of a contraction; 0 if the two characters are none.
inline std::int32_t TSSortLookupPair(const vlx::Sort& sort, TSChar16 first, TSChar16 second,
                                     vlx::SortElements& found)
{
    if (!sort.mayBeginPair(first))
        return 0;
    const TSSortContraction* const contraction = vlx::findRecord(
        vlx::sortContractions(sort.data), sort.data.contractionCount, sort.traits.isOrdered,
        std::uint32_t{first} << 16 | second, vlx::contractionKey);
    if (!contraction)
        return 0;
    found.first = vlx::elementOf(*contraction);
    found.directions = vlx::directionsOf(contraction->sortBits);
    return 1;
}
