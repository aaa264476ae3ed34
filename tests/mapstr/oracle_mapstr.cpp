// The byte members.
#include "mapstr/oracle_mapstr.hpp"

#include <algorithm>

#include "mapping/oracle_maps.hpp"
#include "mapstr/oracle_mapstr_parts.hpp"

namespace vlx::oracle {

namespace {

// Bytes that were laid out in a zeroed area of four; the length is that of the first byte.
Bytes fromArea(const Locale& locale, const Bytes& written)
{
    Bytes area = written;
    area.resize(std::max<std::size_t>(area.size(), 4), 0);
    area.resize(charLength(locale.page, area[0]));
    return area;
}

Bytes sourceBytes(Span text, std::ptrdiff_t at, std::ptrdiff_t length)
{
    Bytes bytes;
    for (std::ptrdiff_t i = 0; i < length; ++i)
        bytes.push_back(static_cast<unsigned char>(text.at(at + i)));
    return bytes;
}

unsigned caseOfByte(const Page& page, unsigned byte, bool upper)
{
    return upper ? toUpper(page, byte) : toLower(page, byte);
}

std::uint32_t caseBits(bool upper)
{
    return upper ? 4 : 2;
}

bool append(Bytes& output, std::ptrdiff_t capacity, const Bytes& image)
{
    if (std::ssize(output) + std::ssize(image) > capacity)
        return false;
    output.insert(output.end(), image.begin(), image.end());
    return true;
}

// The plain member over the bytes of a source.
struct Plain {
    const Locale& locale;
    const Language& language;
    std::uint32_t mapping;
    Span text;
    std::ptrdiff_t length;
    std::ptrdiff_t capacity;

    std::ptrdiff_t lengthAt(std::ptrdiff_t at) const
    {
        return static_cast<std::ptrdiff_t>(charLength(locale.page, text.at(at)));
    }
    std::uint16_t unicodeAt(std::ptrdiff_t at) const
    {
        if (lengthAt(at) == 1)
            return static_cast<std::uint16_t>(toUnicode(locale.page, text.at(at)));
        return mbToUnicode(locale.page, text.from(at));
    }
    std::uint32_t typeAt(std::ptrdiff_t at) const
    {
        if (locale.singleByte || lengthAt(at) == 1)
            return byteType(locale.page, text.at(at));
        return recordType(locale.page, charTypeRecord(locale.page, text.from(at)));
    }

    Bytes caseAt(std::ptrdiff_t at, bool upper) const
    {
        if (locale.singleByte || lengthAt(at) == 1)
            return fromArea(
                locale, {static_cast<unsigned char>(caseOfByte(locale.page, text.at(at), upper))});
        return fromArea(locale, mapChar(locale.page, text.from(at), caseBits(upper)));
    }
    Bytes widthAt(std::ptrdiff_t at) const
    {
        const std::uint32_t character = getWide(locale.page, text.from(at));
        const std::uint32_t value = mapping == kFullWidth ? mapValue(locale.page, character)
                                                          : unmapValue(locale.page, character);
        const Bytes layout = putWide(value);
        return layout[0] == 0 ? sourceBytes(text, at, lengthAt(at)) : fromArea(locale, layout);
    }
    Bytes digitAt(std::ptrdiff_t at) const
    {
        if ((typeAt(at) & 0x008) == 0 || digit(unicodeAt(at)) == 0)
            return sourceBytes(text, at, lengthAt(at));
        return unicodeToMb(locale.page, digit(unicodeAt(at)));
    }

    Bytes singleByte() const
    {
        Bytes output;
        for (std::ptrdiff_t i = 0; i < std::min(length, capacity); ++i) {
            if (mapping == kFullWidth || mapping == kHalfWidth)
                output.push_back(static_cast<unsigned char>(text.at(i)));
            else if (mapping == kMapDigits)
                output.push_back(digitAt(i)[0]);
            else
                output.push_back(static_cast<unsigned char>(
                    caseOfByte(locale.page, text.at(i), isUpper(mapping))));
        }
        return output;
    }

    Bytes oneByOne() const
    {
        Bytes output;
        for (std::ptrdiff_t at = 0; at < length && at + lengthAt(at) <= length;
             at += lengthAt(at)) {
            const Bytes image = mapping == kMapDigits ? digitAt(at)
                                : mapping == kFullWidth || mapping == kHalfWidth
                                    ? widthAt(at)
                                    : caseAt(at, isUpper(mapping));
            if (!append(output, capacity, image))
                break;
        }
        return output;
    }

    Bytes withPairs() const
    {
        const bool upper = isUpper(mapping);
        Bytes output;
        std::ptrdiff_t at = 0;
        std::ptrdiff_t pending = 0;
        while (at < length) {
            const std::ptrdiff_t n = pending != 0 ? pending : lengthAt(at);
            if (at + n > length)
                break;
            const std::uint16_t u = unicodeAt(at);
            std::vector<std::uint16_t> results = mapPair(language, upper, u, 0);
            if (results.empty() && at + n < length) {
                pending = lengthAt(at + n);
                if (at + n + pending <= length)
                    results = mapPair(language, upper, u, unicodeAt(at + n));
            } else if (upper) {
                pending = 0; // lower case leaves it as it was
            }
            Bytes image;
            std::ptrdiff_t step = n;
            if (results.empty()) {
                image = caseAt(at, upper);
            } else {
                for (const std::uint16_t result : results)
                    append(image, 8, unicodeToMb(locale.page, result));
                step += pending;
                pending = 0;
            }
            if (!append(output, capacity, image))
                break;
            at += step;
        }
        return output;
    }

    Bytes run() const
    {
        if (isCase(mapping) && usesPairs(language, mapping))
            return withPairs();
        return locale.singleByte ? singleByte() : oneByOne();
    }
};

// A source that is read by its state, which the shift bytes before a character set.
struct Shifted {
    const Locale& locale;
    const Language& language;
    std::uint32_t mapping;
    Span text;
    std::ptrdiff_t length;
    std::ptrdiff_t capacity;

    struct Place {
        std::ptrdiff_t at = 0;
        std::int32_t state = 0;
    };

    std::ptrdiff_t step(const Place& place) const { return stepOf(locale, place.state); }

    // Moves behind shift bytes; false if no whole character is there.
    bool settle(Place& place) const
    {
        if (place.at < length && isShift(locale, text.at(place.at))) { // one of them
            place.state = stateBehind(locale, text.at(place.at));
            place.at += 1;
        }
        return place.at < length && place.at + step(place) <= length;
    }

    std::uint16_t unicodeAt(const Place& place) const
    {
        if (place.state == 0)
            return static_cast<std::uint16_t>(toUnicode(locale.page, text.at(place.at)));
        return mbToUnicode(locale.page, text.from(place.at));
    }
    // As the classification does it, which passes a shift byte of its own.
    std::uint32_t typeAt(Place place) const
    {
        if (isShift(locale, text.at(place.at))) {
            place.state = stateBehind(locale, text.at(place.at));
            place.at += 1;
        }
        if (place.state == 0)
            return byteType(locale.page, text.at(place.at));
        return recordType(locale.page, charTypeRecord(locale.page, text.from(place.at)));
    }

    Bytes imageAt(const Place& place) const
    {
        Bytes source = sourceBytes(text, place.at, step(place));
        if (isCase(mapping)) {
            const bool upper = isUpper(mapping);
            if (place.state == 0)
                return {
                    static_cast<unsigned char>(caseOfByte(locale.page, text.at(place.at), upper))};
            return mapCharEx(locale.page, text.from(place.at), caseBits(upper));
        }
        if (mapping == kMapDigits) {
            if (digit(unicodeAt(place)) == 0 || (typeAt(place) & 0x008) == 0)
                return source;
            return unicodeToMb(locale.page, digit(unicodeAt(place)));
        }
        std::uint32_t value = 0;
        if (mapping == kHalfWidth)
            value =
                unmapValue(locale.page, getWideEx(locale.page, text.from(place.at), place.state));
        else if (place.state == 0)
            value = mapValue(locale.page, text.at(place.at));
        else if (static_cast<std::ptrdiff_t>(charLength(locale.page, text.at(place.at))) <=
                 length - place.at)
            value = pairValue(locale.page, getWide(locale.page, text.from(place.at)));
        const Bytes layout = putWide(value);
        return layout[0] == 0 ? source : layout;
    }

    Bytes run(Place place, std::int32_t outputState) const
    {
        const bool pairs = isCase(mapping) && usesPairs(language, mapping);
        Bytes output;
        while (settle(place)) {
            std::vector<std::uint16_t> results;
            Place behind{place.at + step(place), place.state};
            if (pairs) {
                results = mapPair(language, isUpper(mapping), unicodeAt(place), 0);
                Place next = behind;
                if (results.empty() && settle(next)) {
                    results =
                        mapPair(language, isUpper(mapping), unicodeAt(place), unicodeAt(next));
                    if (!results.empty())
                        behind = {next.at + step(next), next.state};
                }
            }
            std::vector<Bytes> characters;
            for (const std::uint16_t result : results)
                characters.push_back(unicodeToMb(locale.page, result));
            if (results.empty())
                characters.push_back(imageAt(place));
            Bytes image;
            std::int32_t state = outputState;
            for (const Bytes& character : characters) {
                if (character.size() == 1 && state == 1)
                    image.push_back(static_cast<unsigned char>(shiftOut(locale.page)));
                if (character.size() > 1 && state == 0)
                    image.push_back(static_cast<unsigned char>(shiftIn(locale.page)));
                state = character.size() > 1 ? 1 : 0;
                image.insert(image.end(), character.begin(), character.end());
            }
            if (!append(output, capacity, image))
                break;
            outputState = state;
            place = behind;
        }
        return output;
    }
};

std::ptrdiff_t sourceLength(const Locale& locale, const Text& source, std::uint32_t options)
{
    if (source.length < 0)
        return terminatedLength(source.bytes) + 1;
    return lengthInBytes(locale, source, options);
}

std::ptrdiff_t capacityOf(std::int32_t size, bool counted)
{
    const std::int64_t all = counted ? std::min<std::int64_t>(6 * std::int64_t{size}, 512) : size;
    return std::max<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(all), 0);
}

std::int32_t handOver(Bytes& destination, const Bytes& written, std::ptrdiff_t bytes)
{
    for (std::ptrdiff_t i = 0; i < bytes; ++i)
        put(destination, i, written[static_cast<std::size_t>(i)]);
    return static_cast<std::int32_t>(bytes);
}

} // namespace

Outcome mapString(const Locale& locale, const Language& language, Bytes& destination,
                  std::int32_t size, const Text& source, std::uint32_t mapping)
{
    const bool counted = (mapping & kCharCount) != 0;
    const std::uint32_t value = mapping & ~kCharCount;
    if (!isKnown(value))
        return {-1, kBadArgument};
    const Text stateless{source.bytes, 0, source.length};
    if (isCopy(value))
        return copy(locale, destination, size, stateless, mapping & kCharCount);
    const std::ptrdiff_t length = sourceLength(locale, stateless, mapping);
    const Bytes written =
        Plain{locale, language, value, source.bytes, length, capacityOf(size, counted)}.run();
    if (!counted)
        return {handOver(destination, written, std::ssize(written)), 0};
    std::ptrdiff_t offset = 0;
    std::int32_t count = 0;
    if (locale.singleByte) {
        count = std::min(static_cast<std::int32_t>(written.size()), std::max(size, 0));
        offset = count;
    }
    while (!locale.singleByte && offset < std::ssize(written) && count < size) {
        const auto n = static_cast<std::ptrdiff_t>(
            charLength(locale.page, written[static_cast<std::size_t>(offset)]));
        if (offset + n > std::ssize(written))
            break;
        offset += n;
        ++count;
    }
    handOver(destination, written, offset);
    return {count, 0};
}

Outcome mapStringEx(const Locale& locale, const Language& language, Bytes& destination,
                    std::int32_t state, std::int32_t size, const Text& source,
                    std::uint32_t mapping)
{
    if (!locale.stateful)
        return mapString(locale, language, destination, size, source, mapping);
    const bool counted = (mapping & kCharCount) != 0;
    const std::uint32_t value = mapping & ~kCharCount;
    if (!isKnown(value))
        return {-1, kBadArgument};
    if (isCopy(value))
        return copyEx(locale, destination, state, size, source, mapping & kCharCount);
    const std::ptrdiff_t length = sourceLength(locale, source, mapping);
    const Bytes written =
        Shifted{locale, language, value, source.bytes, length, capacityOf(size, counted)}.run(
            {0, source.state}, state);
    if (!counted)
        return {handOver(destination, written, std::ssize(written)), 0};
    std::ptrdiff_t offset = 0;
    std::int32_t count = 0;
    while (offset < std::ssize(written) && count < size) {
        const unsigned byte = written[static_cast<std::size_t>(offset)];
        if (isShift(locale, byte)) {
            state = stateBehind(locale, byte);
            offset += 1;
            continue;
        }
        if (offset + stepOf(locale, state) > std::ssize(written))
            break;
        offset += stepOf(locale, state);
        ++count;
    }
    handOver(destination, written, offset);
    return {count, 0};
}

} // namespace vlx::oracle
