// The plain member.
#include "compare/oracle_compare_parts.hpp"

namespace vlx::oracle {

namespace {

std::int32_t lengthAt(const Locale& locale, const Side& side)
{
    return static_cast<std::int32_t>(charLength(locale.page, side.bytes.at(0)));
}

std::int32_t plainLength(const Locale& locale, const Text& text, std::uint32_t options)
{
    std::int32_t length = text.length;
    if ((options & kCharCount) != 0 && length > 0)
        length = charsToBytes(locale.page, text.bytes, 0, length);
    if (length == -1)
        return static_cast<std::int32_t>(terminatedLength(text.bytes));
    if (length < 0)
        return 0;
    static_cast<void>(text.bytes.from(length));
    if (locale.singleByte)
        return length;
    std::int32_t offset = 0;
    while (offset < length) {
        const auto n = static_cast<std::int32_t>(charLength(locale.page, text.bytes.at(offset)));
        if (offset + n > length)
            break;
        offset += n;
    }
    return offset;
}

// A half-width image and its length.
struct Narrow {
    Area area{};
    std::int32_t length = 0;
};

Narrow narrowOf(const Locale& locale, const Side& side)
{
    const std::int32_t k = lengthAt(locale, side);
    Bytes image(4, 0);
    mapString(locale, {}, image, 4, {side.bytes, 0, k}, kHalfWidth);
    Narrow narrow{areaOf(image), static_cast<std::int32_t>(charLength(locale.page, image[0]))};
    if (image[0] == 0) {
        narrow.length = k;
        for (std::int32_t i = 0; i < k; ++i)
            narrow.area[static_cast<std::size_t>(i)] = static_cast<unsigned char>(side.bytes.at(i));
    }
    return narrow;
}

std::int32_t widthLoop(const Locale& locale, Side first, Side second)
{
    while (first.length > 0 && second.length > 0) {
        const Narrow one = narrowOf(locale, first);
        const Narrow two = narrowOf(locale, second);
        if (one.length != two.length || first.length < one.length || second.length < two.length)
            return one.length - two.length;
        if (const std::int32_t result = compareAreas(one.area, two.area))
            return result;
        step(first, lengthAt(locale, first));
        step(second, lengthAt(locale, second));
    }
    return first.length - second.length;
}

std::int32_t caseLoop(const Locale& locale, Side first, Side second)
{
    std::int32_t m = std::min(first.length, second.length);
    if (locale.singleByte) {
        for (std::int32_t i = 0; i < m; ++i) {
            const auto one = static_cast<std::int32_t>(toUpper(locale.page, first.bytes.at(i)));
            const auto two = static_cast<std::int32_t>(toUpper(locale.page, second.bytes.at(i)));
            if (one != two)
                return one - two;
        }
        return 0;
    }
    const auto upper = [&](const Side& side) {
        if (lengthAt(locale, side) == 1)
            return areaOf({static_cast<unsigned char>(toUpper(locale.page, side.bytes.at(0)))});
        return areaOf(mapChar(locale.page, side.bytes, 4));
    };
    while (m > 0) {
        const std::int32_t k1 = lengthAt(locale, first);
        const std::int32_t k2 = lengthAt(locale, second);
        if (k1 != k2 || m < k1)
            return k1 - k2;
        if (const std::int32_t result = compareAreas(upper(first), upper(second)))
            return result;
        step(first, k1);
        step(second, k2);
        m -= k1;
    }
    return 0;
}

} // namespace

Outcome Comparison::plain(const Text& text1, const Text& text2, std::uint32_t options) const
{
    if ((options & kRefused) != 0)
        return {0, kBadArgument};
    Side first{text1.bytes, plainLength(locale, text1, options)};
    Side second{text2.bytes, plainLength(locale, text2, options)};
    if ((options & kStripBlanks) != 0 && memory) {
        for (Side* side : {&first, &second}) {
            Bytes copy = terminatedCopy(*side);
            side->length = truncate(locale, copy, side->length + 1, truncation(options)).result - 1;
        }
    }
    options &= ~(kStripBlanks | kCharCount);
    if (first.length == 0 || second.length == 0)
        return {first.length - second.length, 0};
    const std::int32_t m = std::min(first.length, second.length);
    std::int32_t result = 0;
    if (options == 0 || (ignoresWidth(options) && locale.singleByte))
        result = compareBytes(first.bytes, second.bytes, m);
    else if (ignoresWidth(options))
        return {widthLoop(locale, first, second), 0};
    else if (!language.upper.empty()) {
        if (!memory)
            return {0, kNoMemory};
        return {compareImages(first, second,
                              [&](Bytes& image, const Side& side) {
                                  return mapString(locale, language, image,
                                                   static_cast<std::int32_t>(image.size()),
                                                   {side.bytes, 0, side.length}, kUpper)
                                      .result;
                              }),
                0};
    } else
        result = caseLoop(locale, first, second);
    return {result != 0 ? result : first.length - second.length, 0};
}

} // namespace vlx::oracle
