#include "sort_reader.hpp"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

using Element = SortReader::Element;
using Found = SortReader::Found;

// One stream of a level: items of one to four bytes, most significant first.
struct Stream {
    std::vector<std::string> items;
    std::size_t insertion = 0;

    void push(const std::string& item, bool isForward)
    {
        if (isForward) {
            items.push_back(item);
            insertion = items.size();
        } else {
            items.insert(items.begin() + static_cast<std::ptrdiff_t>(insertion), item);
        }
    }
    std::string bytes() const
    {
        std::string all;
        for (const std::string& item : items)
            all += item;
        return all;
    }
};

std::string bytesOf(unsigned value, int count)
{
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

struct Streams {
    std::array<Stream, 4> levels;

    void push(const Element& element, unsigned position, unsigned directions)
    {
        if (element.weight1 != 0)
            levels[0].push(bytesOf(element.weight1, 2), directions & 8);
        if (element.weight2 != 0)
            levels[1].push(bytesOf(element.weight2, 1), directions & 4);
        if (element.weight3 != 0)
            levels[2].push(bytesOf(element.weight3, 1), directions & 2);
        if (element.weight4 != 0)
            levels[3].push(bytesOf(position & 0xFFFF, 2) + bytesOf(element.weight4, 2),
                           directions & 1);
    }
};

constexpr unsigned kNothing = 0xFFFF;

// One of the two texts under comparison.
struct Side {
    const SortReader& sort;
    std::u16string_view text;
    std::size_t cursor = 0;
    std::size_t length;
    unsigned position = 0;
    unsigned pending = kNothing;
    int got = 0;
    Element current;
    Element held;
    unsigned directions = 0;
    bool advance = true;
    Streams streams;

    Side(const SortReader& reader, std::u16string_view units)
        : sort(reader), text(units), length(units.size())
    {
    }

    int next()
    {
        char16_t c;
        if (pending != kNothing) {
            c = static_cast<char16_t>(pending);
            pending = kNothing;
            --length;
        } else {
            if (cursor == text.size()) { // the length counts a value that was lost
                length = 0;
                return 0;
            }
            c = text[cursor++];
            --length;
            ++position;
        }
        Found found;
        bool isPair = false;
        if (sort.contractionCount() > 0 && cursor < text.size()) {
            pending = text[cursor++];
            --length;
            found = sort.lookUpPair(c, static_cast<char16_t>(pending));
            if (found.count == 1) {
                pending = kNothing;
                ++position;
                isPair = true;
            } else {
                ++length;
            }
        }
        if (!isPair)
            found = sort.lookUp(c);
        current = found.first;
        held = found.second;
        directions = found.directions;
        return found.count;
    }

    void step()
    {
        if (got < 2) {
            got = next();
        } else {
            current = held;
            got = 1;
        }
    }
    bool stands() const { return got != 0 && current.weight1 != 0; }
    void push() { streams.push(current, position, directions); }
};

int signOf(int value)
{
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

int compareBytes(const std::string& one, const std::string& other, bool lengthsCount)
{
    const int order = std::memcmp(one.data(), other.data(), std::min(one.size(), other.size()));
    if (order != 0)
        return signOf(order);
    return !lengthsCount || one.size() == other.size() ? 0 : one.size() < other.size() ? -1 : 1;
}

int finish(const Side& one, const Side& other, bool isForward)
{
    if (!isForward)
        if (const int order =
                compareBytes(one.streams.levels[0].bytes(), other.streams.levels[0].bytes(), false))
            return order;
    for (std::size_t level = 1; level < 4; ++level)
        if (const int order = compareBytes(one.streams.levels[level].bytes(),
                                           other.streams.levels[level].bytes(), true))
            return order;
    return 0;
}

// The rest of the longer text; `sign` is the result where it decides.
int tail(Side& rest, int sign, const Side& one, const Side& other, bool isForward)
{
    while (rest.length != 0 || rest.got == 2) {
        rest.step();
        if (rest.got == 0)
            continue;
        if (isForward && rest.current.weight1 != 0)
            return sign;
        rest.push();
    }
    return finish(one, other, isForward);
}

} // namespace

SortReader SortReader::ofFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    const Bytes file{std::istreambuf_iterator<char>(in), {}};
    const auto number = [&file](std::size_t at, int count) {
        std::size_t value = 0;
        for (int i = count - 1; i >= 0; --i)
            value = value << 8 | file.at(at + static_cast<std::size_t>(i));
        return value;
    };
    const auto begin = static_cast<std::ptrdiff_t>(number(12, 4));
    const auto size = static_cast<std::ptrdiff_t>(number(10, 2));
    if (begin + size > static_cast<std::ptrdiff_t>(file.size()))
        throw std::out_of_range(path);
    return SortReader(Bytes(file.begin() + begin, file.begin() + begin + size));
}

Found SortReader::lookUp(char16_t character) const
{
    const std::size_t page = 6 + 4 * (character >> 8);
    const unsigned flags = byte(page);
    const unsigned base = word(page + 2);
    const unsigned low = character & 0xFF;
    Found found;
    if (flags & 1)
        return found;
    found.count = 1;
    found.directions = byte(page + 1);
    if (flags & 2) {
        found.first.weight1 = (base + low) & 0xFFFF;
        return found;
    }
    if (flags & 4) {
        found.first.weight4 = (base + low) & 0xFFFF;
        return found;
    }
    const std::size_t record = word(1030) + std::size_t{6} * (base + low);
    const unsigned bits = word(record + 4);
    found.directions = bits >> 10 & 15;
    if (bits & 0x4000) {
        for (std::size_t i = 0; i < expansionCount(); ++i) {
            const std::size_t at = word(1032) + 14 * i;
            if (word(at) != character)
                continue;
            found.first = {word(at + 2), byte(at + 4), byte(at + 5), 0};
            found.second = {word(at + 6), byte(at + 8), byte(at + 9), 0};
            found.count = 2;
            return found;
        }
        found.count = 0;
        return found;
    }
    if (bits & 0x8000)
        found.first.weight4 = word(record);
    else
        found.first = {word(record), byte(record + 2), byte(record + 3), 0};
    return found;
}

Found SortReader::lookUpPair(char16_t first, char16_t second) const
{
    Found found;
    for (std::size_t i = 0; i < contractionCount(); ++i) {
        const std::size_t at = word(1034) + 10 * i;
        if (word(at) != first || word(at + 2) != second)
            continue;
        const unsigned bits = word(at + 8);
        found.count = 1;
        found.directions = bits >> 10 & 15;
        if (bits & 0x8000)
            found.first.weight4 = word(at + 4);
        else
            found.first = {word(at + 4), byte(at + 6), byte(at + 7), 0};
        return found;
    }
    return found;
}

int SortReader::compare(std::u16string_view text1, std::u16string_view text2) const
{
    Side one(*this, text1);
    Side other(*this, text2);
    bool isForward = true;
    const auto look = [&isForward](Side& side) {
        if (side.advance)
            side.step();
        if (side.stands() && !(side.directions & 8))
            isForward = false;
    };
    while ((one.length != 0 && other.length != 0) ||
           (one.got == 2 && (other.length != 0 || other.got == 2)) ||
           (other.got == 2 && (one.length != 0 || one.got == 2))) {
        look(one);
        look(other);
        if (isForward) {
            if (one.stands() && other.stands()) {
                if (one.current.weight1 != other.current.weight1)
                    return one.current.weight1 < other.current.weight1 ? -1 : 1;
            } else if (other.length == 0 && one.stands()) {
                return 1;
            } else if (one.length == 0 && other.stands()) {
                return -1;
            }
        }
        if (one.advance && one.got != 0)
            one.push();
        if (other.advance && other.got != 0)
            other.push();
        const bool advance1 = !one.stands() || other.stands();
        const bool advance2 = !other.stands() || one.stands();
        one.advance = advance1;
        other.advance = advance2;
    }
    if (one.length != 0 && other.length == 0)
        return tail(one, 1, one, other, isForward);
    if (other.length != 0 && one.length == 0)
        return tail(other, -1, one, other, isForward);
    return finish(one, other, isForward);
}

std::string SortReader::key(std::u16string_view text) const
{
    Streams streams;
    unsigned position = 1;
    for (std::size_t i = 0; i < text.size(); ++i, ++position) {
        Found found;
        if (contractionCount() > 0 && i + 1 < text.size())
            found = lookUpPair(text[i], text[i + 1]);
        if (found.count != 0) {
            ++i;
            ++position;
        } else {
            found = lookUp(text[i]);
        }
        if (found.count >= 1)
            streams.push(found.first, position, found.directions);
        if (found.count == 2)
            streams.push(found.second, position, found.directions);
    }
    std::array<std::string, 4> runs;
    for (std::size_t level = 0; level < 4; ++level)
        runs[level] = streams.levels[level].bytes();
    for (std::size_t level = 1; level < 3; ++level)
        while (!runs[level].empty() &&
               static_cast<std::uint8_t>(runs[level].back()) == byte(level - 1))
            runs[level].pop_back();
    if (runs[0].empty() && runs[1].empty() && runs[2].empty()) {
        std::string weights;
        for (const std::string& item : streams.levels[3].items)
            weights += item.substr(2);
        runs[3] = weights;
    }
    const std::string zero(1, '\0');
    return runs[0] + zero + runs[1] + zero + runs[2] + zero + runs[3];
}
