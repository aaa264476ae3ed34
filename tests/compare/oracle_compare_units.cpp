// The members of 16-bit and 32-bit text.
#include <bit>

#include "compare/oracle_compare_parts.hpp"
#include "mapping/oracle_maps.hpp"

namespace vlx::oracle {

namespace {

constexpr std::uint32_t kIgnoreCase = 0x80000040;

std::uint32_t at(const Units& text, std::int32_t position)
{
    if (position < 0 || position >= std::ssize(text))
        throw StrayRead();
    return text[static_cast<std::size_t>(position)];
}

std::int32_t lengthOf(const Units& text, std::int32_t length)
{
    if (length < 0)
        return lengthUnits(text);
    if (length > std::ssize(text))
        throw StrayRead();
    return length;
}

// The bytes of an image in some order.
Bytes bytesOf(const Units& image, const std::vector<int>& shifts)
{
    Bytes bytes;
    for (const std::uint32_t unit : image)
        for (const int shift : shifts)
            bytes.push_back(static_cast<unsigned char>(unit >> shift));
    return bytes;
}

std::int32_t compareBytes(const Bytes& first, const Bytes& second)
{
    for (std::size_t i = 0; i < std::min(first.size(), second.size()); ++i)
        if (first[i] != second[i])
            return first[i] - second[i];
    return 0;
}

std::int32_t compareCounts(const Units& first, const Units& second)
{
    return static_cast<std::int32_t>(first.size()) - static_cast<std::int32_t>(second.size());
}

} // namespace

Outcome Comparison::units(const Units& first, std::int32_t length1, const Units& second,
                          std::int32_t length2, std::uint32_t options) const
{
    const bool strips = (options & kStripBlanks) != 0;
    options &= ~(kStripBlanks | kCharCount);
    if ((options & 0x7FFFFFBE) != 0)
        return {0, kBadArgument};
    length1 = lengthOf(first, length1);
    length2 = lengthOf(second, length2);
    if (strips) {
        const std::uint32_t blank = std::endian::native == std::endian::little ? 0x2000 : 0x0020;
        while (length1 > 0 && at(first, length1 - 1) == blank)
            --length1;
        while (length1 > 0 && length2 > 0 && at(second, length2 - 1) == blank)
            --length2;
    }
    if (length1 == 0 || length2 == 0)
        return {length1 - length2, 0};
    const std::int32_t m = std::min(length1, length2);
    std::int32_t result = 0;
    if (options == 0) {
        for (std::int32_t i = 0; i < m && result == 0; ++i)
            result =
                static_cast<std::int32_t>(at(first, i)) - static_cast<std::int32_t>(at(second, i));
    } else if ((options & kIgnoreWidth) == kIgnoreWidth || language.upper.empty()) {
        const bool width = (options & kIgnoreWidth) == kIgnoreWidth;
        for (std::int32_t i = 0; i < m && result == 0; ++i) {
            const auto unit1 = static_cast<std::uint16_t>(at(first, i));
            const auto unit2 = static_cast<std::uint16_t>(at(second, i));
            const unsigned image1 = width ? toHalfWidth(unit1) : toUpper(unit1);
            const unsigned image2 = width ? toHalfWidth(unit2) : toUpper(unit2);
            if (image1 != image2)
                result = image1 > image2 ? 1 : -1;
        }
    } else {
        if (!memory)
            return {0, kNoMemory};
        Units image1(static_cast<std::size_t>(length1) * 2);
        Units image2(static_cast<std::size_t>(length2) * 2);
        image1.resize(static_cast<std::size_t>(
            mapStringU(language, image1, 2 * length1, first, length1, kUpper).result));
        image2.resize(static_cast<std::size_t>(
            mapStringU(language, image2, 2 * length2, second, length2, kUpper).result));
        result = compareBytes(bytesOf(image1, {8, 0}), bytesOf(image2, {8, 0}));
        if (result == 0)
            result = compareCounts(image1, image2);
    }
    return {result != 0 ? result : length1 - length2, 0};
}

Outcome Comparison::packed(const Units& first, std::int32_t length1, const Units& second,
                           std::int32_t length2, std::uint32_t options) const
{
    const bool strips = (options & kStripBlanks) != 0;
    options &= ~(kStripBlanks | kCharCount);
    if (options != 0 && options != kIgnoreCase)
        return {0, kBadArgument};
    length1 = lengthOf(first, length1);
    length2 = lengthOf(second, length2);
    if (strips) {
        const std::uint32_t blank = (locale.page.sections[0].at(0x110C) & 1) != 0 ? 0x20 : 0x40;
        while (length1 > 0 && at(first, length1 - 1) == blank)
            --length1;
        while (length2 > 0 && at(second, length2 - 1) == blank)
            --length2;
    }
    if (length1 == 0 || length2 == 0)
        return {length1 - length2, 0};
    const std::int32_t m = std::min(length1, length2);
    std::int32_t result = 0;
    if (options == 0) {
        for (std::int32_t i = 0; i < m && result == 0; ++i)
            result = static_cast<std::int32_t>(at(first, i) - at(second, i));
        return {result != 0 ? result : length1 - length2, 0};
    }
    if (!language.upper.empty() && !memory)
        return {0, kNoMemory};
    const std::uint32_t mapping = language.upper.empty() ? kUpper | 0x2000 : kUpper;
    Units image1(static_cast<std::size_t>(length1) * 2);
    Units image2(static_cast<std::size_t>(length2) * 2);
    image1.resize(static_cast<std::size_t>(
        mapStringW(locale, language, image1, 2 * length1, first, length1, mapping).result));
    image2.resize(static_cast<std::size_t>(
        mapStringW(locale, language, image2, 2 * length2, second, length2, mapping).result));
    if (language.upper.empty()) {
        for (std::int32_t i = 0; i < m && result == 0; ++i)
            if (at(image1, i) != at(image2, i))
                result = at(image1, i) > at(image2, i) ? 1 : -1;
    } else {
        // Each half of a value in the order of its bytes, the low half first.
        result = compareBytes(bytesOf(image1, {8, 0, 24, 16}), bytesOf(image2, {8, 0, 24, 16}));
        if (result == 0)
            result = compareCounts(image1, image2);
    }
    return {result != 0 ? result : length1 - length2, 0};
}

} // namespace vlx::oracle
