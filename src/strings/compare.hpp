// Comparison by code: what the members share. A result is the difference of the first units that
// differ, or of the lengths.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "frame/scratch.hpp"
#include "frame/trace.hpp"
#include "mapping/mapstr.hpp"
#include "strings/length.hpp"

namespace vlx {

// What the options ask for. Any of the bits that they know, alone or together, is accepted.
struct CompareOptions {
    static constexpr std::uint32_t kKnown =
        TS_OPT_IGNORE_WIDTH | TS_OPT_IGNORE_CASE | TS_OPT_STRIP_BLANKS | TS_OPT_CHAR_COUNT;

    explicit CompareOptions(std::uint32_t options)
        : rest(options & ~(TS_OPT_STRIP_BLANKS | TS_OPT_CHAR_COUNT)),
          strips((options & TS_OPT_STRIP_BLANKS) != 0), counted((options & TS_OPT_CHAR_COUNT) != 0)
    {
    }

    bool isGood() const { return (rest & ~kKnown) == 0; }
    bool isExact() const { return rest == 0; }
    bool ignoresWidth() const { return (rest & TS_OPT_IGNORE_WIDTH) == TS_OPT_IGNORE_WIDTH; }

    bool ignoresCase() const { return !isExact() && !ignoresWidth(); } // all that is left

    const std::uint32_t rest;
    const bool strips;
    const bool counted;
};

// The first place, of `count`, at which two strings of units differ; `count` if there is none.
// Whole blocks are compared as memory first.
template <class Unit>
std::int32_t firstDifference(const Unit* first, const Unit* second, std::int32_t count)
{
    constexpr std::int32_t kUnits = 32 / sizeof(Unit);
    std::int32_t at = 0;
    while (count - at >= kUnits && std::memcmp(first + at, second + at, 32) == 0)
        at += kUnits;
    while (at < count && first[at] == second[at])
        ++at;
    return at;
}

// The difference of the first bytes that differ, 0 if none do.
inline std::int32_t byteDifference(const char* first, const char* second, std::int32_t count)
{
    if (std::memcmp(first, second, static_cast<std::size_t>(count)) == 0)
        return 0;
    const std::int32_t at = firstDifference(first, second, count);
    return static_cast<std::uint8_t>(first[at]) - static_cast<std::uint8_t>(second[at]);
}

// True for two strings that no option can tell apart.
inline bool areSame(const char* first, std::int32_t length1, const char* second,
                    std::int32_t length2)
{
    return length1 == length2 && std::memcmp(first, second, static_cast<std::size_t>(length1)) == 0;
}

// The length of text as units, the terminator not among them.
template <class Unit>
std::int32_t comparedLength(const Unit* string, std::int32_t length)
{
    return length < 0 ? unitsOf(string) : length;
}

// Working memory for the upper case of a string, `bytesEach` for each of its units: pairs can
// lengthen a text. `count` is for whoever fills it.
template <class Unit>
class UpperImage {
  public:
    UpperImage(std::int32_t length, std::int64_t bytesEach)
        : bytes_(std::min<std::int64_t>(length * bytesEach, INT32_MAX)),
          memory_(static_cast<std::uint64_t>(bytes_))
    {
    }

    explicit operator bool() const { return static_cast<bool>(memory_); }
    Unit* units() const { return memory_.template as<Unit>(); }
    std::int32_t size() const
    {
        return static_cast<std::int32_t>(bytes_ / static_cast<std::int64_t>(sizeof(Unit)));
    }

    std::int32_t count = 0;

  private:
    const std::int64_t bytes_;
    const Scratch memory_;
};

// The difference of two images, by bytes and then by counts; `difference` compares units that
// differ. An image of nothing leaves no difference.
template <class Unit, class Difference>
std::int32_t imageDifference(const UpperImage<Unit>& first, const UpperImage<Unit>& second,
                             const Difference& difference)
{
    if (first.count <= 0 || second.count <= 0)
        return 0;
    const std::int32_t count = std::min(first.count, second.count);
    const std::int32_t at = firstDifference(first.units(), second.units(), count);
    if (at == count)
        return first.count - second.count;
    return difference(first.units()[at], second.units()[at]);
}

inline std::int32_t differenceOfBytes(char first, char second)
{
    return static_cast<std::uint8_t>(first) - static_cast<std::uint8_t>(second);
}

// The difference of two units as bytes, the more significant byte first.
inline std::int32_t differenceOfUnits(TSChar16 first, TSChar16 second)
{
    if (first >> 8 != second >> 8)
        return (first >> 8) - (second >> 8);
    return (first & 0xFF) - (second & 0xFF);
}

// Compares units by their images: 1 or -1 at the first that differ, 0 if none do.
template <class Unit, class ImageOf>
std::int32_t compareImages(const Unit* first, const Unit* second, std::int32_t count,
                           const ImageOf& imageOf)
{
    for (std::int32_t at = 0; at < count; ++at) {
        if (first[at] == second[at])
            continue;
        const Unit image1 = imageOf(first[at]);
        const Unit image2 = imageOf(second[at]);
        if (image1 != image2)
            return image1 > image2 ? 1 : -1;
    }
    return 0;
}

// A string to be compared, as bytes.
struct CompareText {
    std::uint32_t size() const { return static_cast<std::uint32_t>(length); }

    const char* string;
    std::int32_t length;
    std::int32_t state = 0;
};

// Takes the blanks off the ends of two texts: off a copy, of which the length is taken. `truncate`
// cuts the copy in place to a size and gives the bytes left, with the terminator. Without memory
// the blanks stay.
template <class Truncate>
void stripBlanks(CompareText& first, CompareText& second, const Truncate& truncate)
{
    // Behind the terminator of an empty text there is room for its shift byte.
    const std::int64_t longest = std::max({first.length, second.length, 1});
    const Scratch copy(static_cast<std::uint64_t>(longest) + 1);
    if (!copy || longest == INT32_MAX)
        return;
    for (CompareText* text : {&first, &second}) {
        char* const bytes = copy.as<char>();
        std::memcpy(bytes, text->string, static_cast<std::size_t>(text->length));
        bytes[text->length] = 0;
        // An empty text has nothing to lose, though closing it would give it a shift byte.
        text->length = std::min(text->length, truncate(bytes, text->state, text->length + 1) - 1);
    }
}

inline std::uint32_t truncationOptions(const CompareOptions& options)
{
    return TS_TRUNC_STRIP_BLANKS | (options.ignoresWidth() ? TS_OPT_IGNORE_WIDTH : 0);
}

} // namespace vlx
