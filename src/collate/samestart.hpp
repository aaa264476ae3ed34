// What two texts begin with in common, as far as no collation element reaches over its end.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "collate/next.hpp"

namespace vlx {

// The bytes that two areas of a size have in common at their beginnings: a word at a time, and the
// last word where its bytes are of equal worth.
inline std::size_t sameBytes(const void* area1, const void* area2, std::size_t size)
{
    const auto* const first = static_cast<const std::uint8_t*>(area1);
    const auto* const second = static_cast<const std::uint8_t*>(area2);
    const auto differs = [&](std::size_t at) {
        std::uint64_t word1;
        std::uint64_t word2;
        std::memcpy(&word1, first + at, sizeof word1);
        std::memcpy(&word2, second + at, sizeof word2);
        return word1 ^ word2;
    };
    std::size_t same = 0;
    while (size - same >= 32 &&
           (differs(same) | differs(same + 8) | differs(same + 16) | differs(same + 24)) == 0)
        same += 32;
    for (; size - same >= 8; same += 8)
        if (const std::uint64_t bits = differs(same)) {
            if constexpr (std::endian::native == std::endian::little)
                return same + static_cast<std::size_t>(std::countr_zero(bits)) / 8;
            break;
        }
    while (same < size && first[same] == second[same])
        ++same;
    return same;
}

// The units of whole characters that two texts have in common at their beginnings, or fewer.
template <class Form>
std::int32_t sameCharacters(const Form&, const Text<Form>& text1, const Text<Form>& text2)
{
    if (text1.at == text1.end || text2.at == text2.end || *text1.at != *text2.at)
        return 0;
    constexpr std::size_t kUnit = sizeof(*text1.at);
    const auto shorter = static_cast<std::size_t>(std::min(text1.left(), text2.left()));
    return static_cast<std::int32_t>(sameBytes(text1.at, text2.at, shorter * kUnit) / kUnit);
}
inline std::int32_t sameCharacters(const MultiForm& form, Text<MultiForm> text1,
                                   Text<MultiForm> text2)
{
    const char* const begin = text1.at;
    while (text1.at != text1.end && text2.at != text2.end && *text1.at == *text2.at) {
        const std::int32_t length = form.length(text1);
        if (length > 1 && (length > text1.left() || length > text2.left() ||
                           std::memcmp(text1.at, text2.at, static_cast<std::size_t>(length)) != 0))
            break;
        text1.at += length;
        text2.at += length;
    }
    return static_cast<std::int32_t>(text1.at - begin);
}
inline std::int32_t sameCharacters(const ShiftForm&, const Text<ShiftForm>&, const Text<ShiftForm>&)
{
    return 0; // the same bytes are other characters in another state
}

// Such a run, as far as a character that begins no contraction: what follows it begins an element.
template <class Form>
std::int32_t withoutOpenPair(const Form& form, const Sort& sort, const Text<Form>& text,
                             std::int32_t units)
{
    while (units > 0 && sort.mayBeginPair(form.unicode({text.at + units - 1, text.end})))
        --units;
    return units;
}
inline std::int32_t withoutOpenPair(const MultiForm&, const Sort&, const Text<MultiForm>&,
                                    std::int32_t)
{
    return 0; // characters cannot be read backwards
}
inline std::int32_t withoutOpenPair(const ShiftForm&, const Sort&, const Text<ShiftForm>&,
                                    std::int32_t)
{
    return 0;
}

// The beginning that two texts have in common.
template <class Form>
struct SameStart {
    std::int32_t measured = 0; // its units
    std::int32_t skipped = 0;  // those in front of an element
};

// Elements of the same characters are the same, whatever they are, as long as no contraction
// reaches over the end of the run.
template <class Form>
[[gnu::always_inline]] inline SameStart<Form>
sameStart(const Form& form, const Sort& sort, const Text<Form>& text1, const Text<Form>& text2)
{
    const std::int32_t units = sameCharacters(form, text1, text2);
    return {units, sort.hasContractions() ? withoutOpenPair(form, sort, text1, units) : units};
}

template <class Form>
Text<Form> textBehind(Text<Form> text, std::int32_t units)
{
    text.at += units;
    return text;
}

} // namespace vlx
