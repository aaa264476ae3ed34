// Sort objects, the comparison of elements, and the key.
#include <algorithm>

#include "collate/oracle_collate.hpp"

namespace vlx::oracle {

unsigned SortObject::word(std::ptrdiff_t offset) const
{
    return content_.at(offset) | content_.at(offset + 1) << 8;
}

Lookup SortObject::character(unsigned value) const
{
    const std::ptrdiff_t page = 6 + 4 * static_cast<std::ptrdiff_t>(value >> 8);
    const unsigned flags = content_.at(page);
    const unsigned base = word(page + 2);
    const unsigned low = value & 0xFF;
    if ((flags & 1) != 0)
        return {};
    if ((flags & 2) != 0)
        return {1, {(base + low) & 0xFFFF, 0, 0, 0}, {}, content_.at(page + 1)};
    if ((flags & 4) != 0)
        return {1, {0, 0, 0, (base + low) & 0xFFFF}, {}, content_.at(page + 1)};
    const std::ptrdiff_t record = word(1030) + 6 * static_cast<std::ptrdiff_t>(base + low);
    const unsigned bits = word(record + 4);
    const unsigned directions = bits >> 10 & 15;
    if ((bits & 0x4000) != 0) {
        for (unsigned i = 0; i < word(2); ++i) {
            const std::ptrdiff_t at = word(1032) + 14 * static_cast<std::ptrdiff_t>(i);
            if (word(at) == value)
                return {2,
                        {word(at + 2), content_.at(at + 4), content_.at(at + 5), 0},
                        {word(at + 6), content_.at(at + 8), content_.at(at + 9), 0},
                        directions};
        }
        return {};
    }
    if ((bits & 0x8000) != 0)
        return {1, {0, 0, 0, word(record)}, {}, directions};
    return {1, {word(record), content_.at(record + 2), content_.at(record + 3), 0}, {}, directions};
}

Lookup SortObject::pair(unsigned first, unsigned second) const
{
    for (unsigned i = 0; i < contractions(); ++i) {
        const std::ptrdiff_t at = word(1034) + 10 * static_cast<std::ptrdiff_t>(i);
        if (word(at) != first || word(at + 2) != second)
            continue;
        const unsigned bits = word(at + 8);
        const unsigned directions = bits >> 10 & 15;
        if ((bits & 0x8000) != 0)
            return {1, {0, 0, 0, word(at + 4)}, {}, directions};
        return {1, {word(at + 4), content_.at(at + 6), content_.at(at + 7), 0}, {}, directions};
    }
    return {};
}

namespace {

// A stream: its items, and where the insertion point is.
struct Stream {
    std::vector<std::uint64_t> items;
    std::size_t insertion = 0;

    void add(std::uint64_t item, bool isForward)
    {
        if (isForward) {
            items.push_back(item);
            insertion = items.size();
        } else {
            items.insert(items.begin() + static_cast<std::ptrdiff_t>(insertion), item);
        }
    }

    // The items as bytes, the high one first.
    Bytes bytes(int width) const
    {
        Bytes result;
        for (const std::uint64_t item : items)
            for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
                result.push_back(static_cast<unsigned char>(item >> shift));
        return result;
    }
};

struct Streams {
    Stream level[4];

    void push(const SortElement& element, unsigned position, unsigned directions)
    {
        if (element.weight1 != 0)
            level[0].add(element.weight1, (directions & 8) != 0);
        if (element.weight2 != 0)
            level[1].add(element.weight2, (directions & 4) != 0);
        if (element.weight3 != 0)
            level[2].add(element.weight3, (directions & 2) != 0);
        if (element.weight4 != 0)
            level[3].add(static_cast<std::uint64_t>(position & 0xFFFF) << 16 | element.weight4,
                         (directions & 1) != 0);
    }
};

struct Side {
    const Next& next;
    Cursor cursor;
    int got = 0;
    Lookup found;
    SortElement current;
    bool advance = true;
    Streams streams;

    unsigned weight1() const { return current.weight1; }
    bool stands() const { return got != 0 && weight1() != 0; }
    bool hasLength() const { return cursor.remaining != 0; }

    void step1()
    {
        if (got < 2) {
            found = next(cursor);
            got = found.count;
            if (got != 0)
                current = found.first;
        } else {
            current = found.second;
            got = 1;
        }
    }
    void push() { streams.push(current, cursor.position, found.directions); }
};

std::int32_t bytesDifference(const Bytes& first, const Bytes& second)
{
    for (std::size_t i = 0; i < std::min(first.size(), second.size()); ++i)
        if (first[i] != second[i])
            return first[i] - second[i];
    return 0;
}

std::int32_t bytesOrder(const Bytes& first, const Bytes& second)
{
    if (const std::int32_t result = bytesDifference(first, second))
        return result;
    if (first.size() == second.size())
        return 0;
    return first.size() < second.size() ? -1 : 1;
}

std::int32_t finalComparison(const Side& one, const Side& two, bool forward)
{
    if (!forward)
        if (const std::int32_t result =
                bytesDifference(one.streams.level[0].bytes(2), two.streams.level[0].bytes(2)))
            return result;
    constexpr int kWidths[] = {2, 1, 1, 4};
    for (int level = 1; level < 4; ++level)
        if (const std::int32_t result = bytesOrder(one.streams.level[level].bytes(kWidths[level]),
                                                   two.streams.level[level].bytes(kWidths[level])))
            return result;
    return 0;
}

// The tail of a longer text: true if it decides.
bool tailDecides(Side& side, bool forward)
{
    while (side.hasLength() || side.got == 2) {
        side.step1();
        if (side.got == 0)
            continue;
        if (forward && side.weight1() != 0)
            return true;
        side.push();
    }
    return false;
}

} // namespace

std::int32_t compareElements(const Next& next1, Cursor cursor1, const Next& next2, Cursor cursor2)
{
    Side one{next1, cursor1, 0, {}, {}, true, {}};
    Side two{next2, cursor2, 0, {}, {}, true, {}};
    bool forward = true;
    while ((one.hasLength() && two.hasLength()) ||
           (one.got == 2 && (two.hasLength() || two.got == 2)) ||
           (two.got == 2 && (one.hasLength() || one.got == 2))) {
        for (Side* side : {&one, &two}) {
            if (side->advance)
                side->step1();
            if (side->got != 0 && side->weight1() != 0 && (side->found.directions & 8) == 0)
                forward = false;
        }
        if (forward) {
            if (one.stands() && two.stands()) {
                const std::int32_t result = static_cast<std::int32_t>(one.weight1()) -
                                            static_cast<std::int32_t>(two.weight1());
                if (result != 0)
                    return result;
            } else if (!two.hasLength() && one.stands()) {
                return 1;
            } else if (!one.hasLength() && two.stands()) {
                return -1;
            }
        }
        for (Side* side : {&one, &two})
            if (side->advance && side->got != 0)
                side->push();
        one.advance = one.got == 0 || one.weight1() == 0 || two.stands();
        two.advance = two.got == 0 || two.weight1() == 0 || one.stands();
    }
    if (one.hasLength() && !two.hasLength() && tailDecides(one, forward))
        return 1;
    if (two.hasLength() && !one.hasLength() && tailDecides(two, forward))
        return -1;
    return finalComparison(one, two, forward);
}

Bytes buildKey(const SortObject& sort, const std::vector<std::uint16_t>& values)
{
    Streams streams;
    for (std::size_t i = 0; i < values.size();) {
        Lookup found;
        unsigned position = static_cast<unsigned>(i + 1);
        std::size_t step = 1;
        if (sort.contractions() > 0 && i + 1 < values.size()) {
            found = sort.pair(values[i], values[i + 1]);
            if (found.count != 0) {
                step = 2;
                position += 1;
            }
        }
        if (found.count == 0)
            found = sort.character(values[i]);
        if (found.count >= 1)
            streams.push(found.first, position, found.directions);
        if (found.count == 2)
            streams.push(found.second, position, found.directions);
        i += step;
    }
    Bytes level1 = streams.level[0].bytes(2);
    Bytes level2 = streams.level[1].bytes(1);
    Bytes level3 = streams.level[2].bytes(1);
    Bytes level4 = streams.level[3].bytes(4);
    while (!level2.empty() && level2.back() == sort.default2())
        level2.pop_back();
    while (!level3.empty() && level3.back() == sort.default3())
        level3.pop_back();
    if (level1.empty() && level2.empty() && level3.empty()) {
        level4.clear();
        for (const std::uint64_t item : streams.level[3].items) {
            level4.push_back(static_cast<unsigned char>(item >> 8));
            level4.push_back(static_cast<unsigned char>(item));
        }
    }
    Bytes key = level1;
    for (const Bytes* run : {&level2, &level3, &level4}) {
        key.push_back(0);
        key.insert(key.end(), run->begin(), run->end());
    }
    return key;
}

} // namespace vlx::oracle
