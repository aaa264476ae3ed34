// What a mapping reads, and the members of 16-bit and 32-bit text.
#include <algorithm>

#include "chars/unitypes.hpp"
#include "mapping/oracle_maps.hpp"
#include "mapstr/oracle_mapstr_parts.hpp"

namespace vlx::oracle {

namespace {

constexpr std::ptrdiff_t kMapPairCount = 6;
constexpr std::ptrdiff_t kToUpper = 0x010A;
constexpr std::ptrdiff_t kToLower = 0x020A;
constexpr std::ptrdiff_t kCharType = 0x050C;
constexpr std::ptrdiff_t kMapValuesOffset = 0x110E;
constexpr std::ptrdiff_t kMapPairsOffset = 0x1110;

std::uint32_t word(const Page& page, std::ptrdiff_t offset, std::ptrdiff_t bytes)
{
    std::uint32_t value = 0;
    while (bytes-- > 0)
        value = value << 8 | page.sections[0].at(offset + bytes);
    return value;
}

std::ptrdiff_t offsetAt(const Page& page, std::ptrdiff_t offset)
{
    return static_cast<std::ptrdiff_t>(word(page, offset, 2));
}

std::ptrdiff_t asIndex(std::uint32_t value)
{
    return static_cast<std::ptrdiff_t>(value);
}

std::uint32_t unitAt(const Units& text, std::int32_t position)
{
    if (position < 0 || position >= std::ssize(text))
        throw StrayRead();
    return text[static_cast<std::size_t>(position)];
}

// The maps of one unit, for both members.
struct Unicode {
    static std::uint16_t unicode(std::uint32_t unit) { return static_cast<std::uint16_t>(unit); }
    static std::uint32_t unit(std::uint16_t unicode) { return unicode; }
    static std::uint32_t cased(std::uint32_t unit, bool upper)
    {
        return upper ? oracle::toUpper(unicode(unit)) : oracle::toLower(unicode(unit));
    }
    static std::uint32_t wide(std::uint32_t unit) { return toFullWidth(unicode(unit)); }
    static std::uint32_t narrow(std::uint32_t unit) { return toHalfWidth(unicode(unit)); }
    // The table of types is the library's own; it is tested with classification.
    static std::uint32_t type(std::uint32_t unit) { return uniTypeWord(unicode(unit)); }
};

struct Packed {
    const Locale& locale;

    // A single-byte page has no longer characters.
    bool isNone(std::uint32_t unit) const { return unit > 255 && maxCharBytes(locale.page) == 1; }

    std::uint16_t unicode(std::uint32_t unit) const
    {
        if (isNone(unit))
            return 0xFFFD;
        return unit < 256 ? static_cast<std::uint16_t>(toUnicode(locale.page, unit))
                          : wideToUnicode(locale.page, unit);
    }
    std::uint32_t unit(std::uint16_t unicode) const { return unicodeToWide(locale.page, unicode); }
    std::uint32_t cased(std::uint32_t unit, bool upper) const
    {
        if (isNone(unit))
            return unit;
        if (unit < 256)
            return upper ? toUpper(locale.page, unit) : toLower(locale.page, unit);
        return mapCharW(locale.page, unit, upper ? 4 : 2);
    }
    std::uint32_t wide(std::uint32_t unit) const
    {
        return locale.singleByte ? unit : mapValue(locale.page, unit);
    }
    std::uint32_t narrow(std::uint32_t unit) const
    {
        return locale.singleByte ? unit : unmapValue(locale.page, unit);
    }
    std::uint32_t type(std::uint32_t unit) const
    {
        if (isNone(unit))
            return 0;
        return unit < 256 ? byteType(locale.page, unit)
                          : recordType(locale.page, charTypeRecordW(locale.page, unit));
    }
};

template <class Map>
std::uint32_t imageOf(const Map& map, std::uint32_t unit, std::uint32_t mapping)
{
    std::uint32_t image = 0;
    switch (mapping) {
    case kFullWidth:
        image = map.wide(unit);
        return image != 0 ? image : unit;
    case kHalfWidth:
        image = map.narrow(unit);
        return image != 0 ? image : unit;
    case kMapDigits:
        if ((map.type(unit) & 0x008) == 0 || digit(map.unicode(unit)) == 0)
            return unit;
        return map.unit(digit(map.unicode(unit)));
    default:
        return map.cased(unit, isUpper(mapping));
    }
}

template <class Map>
Units withPairs(const Map& map, const Language& language, std::int32_t size, const Units& source,
                std::int32_t length, std::uint32_t mapping)
{
    Units output;
    std::int32_t i = 0;
    while (i < length) {
        const std::uint16_t first = map.unicode(unitAt(source, i));
        std::int32_t step = 1;
        auto results = mapPair(language, isUpper(mapping), first, 0);
        if (results.empty() && i < length - 1) {
            results =
                mapPair(language, isUpper(mapping), first, map.unicode(unitAt(source, i + 1)));
            step = results.empty() ? 1 : 2;
        }
        Units image;
        for (const std::uint16_t result : results)
            image.push_back(map.unit(result));
        if (results.empty())
            image.push_back(map.cased(unitAt(source, i), isUpper(mapping)));
        if (std::ssize(output) + std::ssize(image) > size)
            break;
        output.insert(output.end(), image.begin(), image.end());
        i += step;
    }
    return output;
}

template <class Map>
Outcome mapUnits(const Map& map, const Language& language, Units& destination, std::int32_t size,
                 const Units& source, std::int32_t length, std::uint32_t mapping)
{
    mapping &= ~kCharCount;
    if (!isKnown(mapping))
        return {-1, kBadArgument};
    if (isCopy(mapping))
        return copyUnits(destination, size, source, length);
    if (length < 0)
        length = lengthUnits(source) + 1;
    Units output;
    if (isCase(mapping) && usesPairs(language, mapping))
        output = withPairs(map, language, size, source, length, mapping);
    else
        for (std::int32_t i = 0; i < std::min(size, length); ++i)
            output.push_back(imageOf(map, unitAt(source, i), mapping));
    if (output.size() > destination.size())
        throw StrayRead();
    std::copy(output.begin(), output.end(), destination.begin());
    return {static_cast<std::int32_t>(output.size()), 0};
}

} // namespace

bool isCopy(std::uint32_t mapping)
{
    return mapping == 0 || mapping == 0x80000023;
}

bool isUpper(std::uint32_t mapping)
{
    return mapping == 0x80000025 || mapping == 0x80002025;
}

bool isCase(std::uint32_t mapping)
{
    return isUpper(mapping) || mapping == 0x80000024 || mapping == 0x80002024;
}

bool isKnown(std::uint32_t mapping)
{
    return isCopy(mapping) || isCase(mapping) || mapping == kMapDigits || mapping == kFullWidth ||
           mapping == kHalfWidth;
}

bool usesPairs(const Language& language, std::uint32_t mapping)
{
    const bool isSimple = (mapping & 0x2000) != 0;
    return !isSimple && !(isUpper(mapping) ? language.upper : language.lower).empty();
}

std::vector<std::uint16_t> mapPair(const Language& language, bool upper, std::uint16_t first,
                                   std::uint16_t second)
{
    for (const Language::Pair& pair : upper ? language.upper : language.lower) {
        if (pair[0] != first || pair[1] != second)
            continue;
        if (pair[3] > 0)
            return {pair[2], pair[3]};
        return {pair[2]};
    }
    return {};
}

unsigned toUpper(const Page& page, unsigned byte)
{
    return page.sections[0].at(kToUpper + asIndex(byte));
}

unsigned toLower(const Page& page, unsigned byte)
{
    return page.sections[0].at(kToLower + asIndex(byte));
}

std::uint32_t byteType(const Page& page, unsigned byte)
{
    return word(page, kCharType + 4 * asIndex(byte), 4);
}

std::uint32_t recordType(const Page& page, std::size_t record)
{
    return word(page, static_cast<std::ptrdiff_t>(record), 4);
}

std::uint32_t pairValue(const Page& page, std::uint32_t character)
{
    const std::ptrdiff_t pairs = offsetAt(page, kMapPairsOffset);
    for (std::ptrdiff_t i = 0; i < offsetAt(page, kMapPairCount); ++i)
        if (word(page, pairs + 8 * i, 4) == character)
            return word(page, pairs + 8 * i + 4, 4);
    return 0;
}

std::uint32_t mapValue(const Page& page, std::uint32_t character)
{
    if (character < 256)
        return word(page, offsetAt(page, kMapValuesOffset) + 4 * asIndex(character), 4);
    return pairValue(page, character);
}

std::uint32_t unmapValue(const Page& page, std::uint32_t value)
{
    const std::ptrdiff_t values = offsetAt(page, kMapValuesOffset);
    for (std::uint32_t byte = 0; byte < 256; ++byte)
        if (word(page, values + 4 * asIndex(byte), 4) == value)
            return byte;
    const std::ptrdiff_t pairs = offsetAt(page, kMapPairsOffset);
    for (std::ptrdiff_t i = 0; i < offsetAt(page, kMapPairCount); ++i)
        if (word(page, pairs + 8 * i + 4, 4) == value)
            return word(page, pairs + 8 * i, 4);
    return 0;
}

Outcome mapStringU(const Language& language, Units& destination, std::int32_t size,
                   const Units& source, std::int32_t length, std::uint32_t mapping)
{
    return mapUnits(Unicode{}, language, destination, size, source, length, mapping);
}

Outcome mapStringW(const Locale& locale, const Language& language, Units& destination,
                   std::int32_t size, const Units& source, std::int32_t length,
                   std::uint32_t mapping)
{
    return mapUnits(Packed{locale}, language, destination, size, source, length, mapping);
}

} // namespace vlx::oracle
