// Comparison of multi-byte text without shift bytes, character by character.
#pragma once

#include "chars/runs.hpp"
#include "mapping/mapbytes.hpp"
#include "strings/compare.hpp"

namespace vlx {

inline constexpr std::int32_t kLongestCharacter = 4;

// Whether two characters have the same bytes; most of them are short.
inline bool areAlike(const char* first, const char* second, std::int32_t length)
{
    while (length > 0 && first[length - 1] == second[length - 1])
        --length;
    return length == 0;
}

// The half-width form of a character. One that the end of a terminated string cuts off is its own,
// of which nothing behind the end is read.
inline Image narrowImage(const MultiMap& form, const MultiMap::Text& text, const Mapping& narrow)
{
    if (form.length(text) <= text.left())
        return widthImage(form, text, narrow);
    Image image;
    image.length = form.length(text);
    std::memcpy(image.bytes, text.at, static_cast<std::size_t>(text.left()));
    return image;
}

// By half-width forms. Gives the result: of what differs first, or of what is left behind it.
inline std::int32_t compareWidth(const TSLocale& locale, const CompareText& text1,
                                 const CompareText& text2)
{
    const MultiMap form{{locale.codePage}};
    const Mapping narrow(TS_MAP_HALF_WIDTH);
    MultiMap::Text first{text1.string, text1.string + text1.length};
    MultiMap::Text second{text2.string, text2.string + text2.length};
    while (first.left() > 0 && second.left() > 0) {
        const std::int32_t length1 = form.length(first);
        const std::int32_t length2 = form.length(second);
        const std::int32_t least = std::min(first.left(), second.left());
        if (least < kLongestCharacter || !areAlike(first.at, second.at, length1)) {
            const Image image1 = narrowImage(form, first, narrow);
            const Image image2 = narrowImage(form, second, narrow);
            // Deliberate: an image longer than what is left ends the comparison, with 0 if the
            // other one has its length.
            if (image1.length != image2.length || image1.length > least)
                return image1.length - image2.length;
            const std::int32_t result = byteDifference(image1.bytes, image2.bytes, image1.length);
            if (result != 0)
                return result;
        }
        first.at += length1;
        second.at += length2;
    }
    return first.left() - second.left();
}

// By upper-case forms, without pairs: what differs first, or 0.
inline std::int32_t compareCase(const TSLocale& locale, const CompareText& text1,
                                const CompareText& text2)
{
    const MultiMap form{{locale.codePage}};
    const Mapping upper(TS_MAP_UPPER | TS_MAP_SIMPLE);
    const std::uint8_t* const bytes = tsCodePage(locale.codePage).toUpper;
    const std::int32_t common = std::min(text1.length, text2.length);
    MultiMap::Text first{text1.string, text1.string + common};
    MultiMap::Text second{text2.string, text2.string + common};
    while (first.left() > 0) {
        const std::int32_t length = form.length(first);
        if (length != form.length(second) || first.left() < length)
            return length - form.length(second);
        if (length == 1) {
            const std::uint8_t image1 = bytes[static_cast<std::uint8_t>(*first.at)];
            const std::uint8_t image2 = bytes[static_cast<std::uint8_t>(*second.at)];
            if (image1 != image2)
                return image1 - image2;
        } else if (!areAlike(first.at, second.at, length)) {
            const std::int32_t result = byteDifference(
                form.cased(first, upper).bytes, form.cased(second, upper).bytes, kLongestCharacter);
            if (result != 0)
                return result;
        }
        first.at += length;
        second.at += length;
    }
    return 0;
}

// The same for single-byte text.
inline std::int32_t compareSingleCase(const TSLocale& locale, const CompareText& text1,
                                      const CompareText& text2)
{
    const std::uint8_t* const upper = tsCodePage(locale.codePage).toUpper;
    const auto* const first = reinterpret_cast<const std::uint8_t*>(text1.string);
    const auto* const second = reinterpret_cast<const std::uint8_t*>(text2.string);
    const std::int32_t common = std::min(text1.length, text2.length);
    const bool byBlocks = (locale.pageTraits & kAsciiCase) != 0;
    std::int32_t at = 0;
    while (at < common) {
        if (byBlocks && common - at >= kBlock &&
            areSameButForCase(text1.string + at, text2.string + at)) {
            at += kBlock;
            continue;
        }
        const std::int32_t end = std::min(at + kBlock, common);
        for (; at < end; ++at)
            if (upper[first[at]] != upper[second[at]])
                return upper[first[at]] - upper[second[at]];
    }
    return 0;
}

// The bytes at the start of two texts whose upper-case images are surely the same, though pairs may
// lengthen them: whole blocks that differ in the case of ASCII letters alone, where pairs leave
// those and replace single characters. Something is left of each text.
inline std::int32_t sameImageHead(const TSLocale& locale, const CompareText& text1,
                                  const CompareText& text2)
{
    constexpr unsigned kNeeded = kAllSingle | kAsciiBytes | kAsciiCase;
    if ((locale.pageTraits & kNeeded) != kNeeded ||
        !PairStarts(locale.language, PairTable::kUpper).leaveAscii())
        return 0;
    const std::int32_t common = std::min(text1.length, text2.length);
    std::int32_t at = 0;
    while (common - at > kBlock && areSameButForCase(text1.string + at, text2.string + at))
        at += kBlock;
    return at;
}

} // namespace vlx
