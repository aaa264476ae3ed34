// The conversions to 16-bit and 32-bit elements, and those between bytes and packed values.
#include "support/oracle_convert_walk.hpp"

namespace vlx::oracle {

namespace {

constexpr unsigned kUtf8Id = 57352;
constexpr std::uint16_t kNoUnicode = 0xFFFD;

bool isEmpty(Span section)
{
    try {
        section.at(0);
        return false;
    } catch (const StrayRead&) {
        return true;
    }
}

ToUnicode bytesToUnicode(const Room& room, const Locale& locale, bool withState, const Text& input,
                         std::uint32_t options)
{
    if (refusesConversion(options))
        return {-1, kBadArgument, {}};
    if (room.size <= 0)
        return {};
    ByteWalk walk(locale, withState, input, bytesOf(locale, input, (options & kCharCount) != 0));
    return toElements<std::uint16_t>(
        sizeOf(room), (options & kTerminate) != 0, input.length < 0,
        [&]() -> std::optional<std::uint32_t> {
            if (!walk.next())
                return std::nullopt;
            return walk.unicode();
        },
        [&] { return walk.readAll(); });
}

std::uint16_t wideValue(const Locale& locale, std::uint32_t value)
{
    if (value < 256)
        return static_cast<std::uint16_t>(toUnicode(locale.page, value));
    const Bytes bytes = putWide(value);
    return unicodeOf(locale.page, Span(bytes), 2);
}

ToWide bytesToWide(const Locale& locale, bool withState, const Room& room, const Text& input,
                   std::uint32_t options)
{
    if (room.size <= 0 || input.length == 0)
        return {};
    const bool isTerminated = input.length < 0;
    const std::ptrdiff_t end =
        bytesOf(locale, input, options == kCharCount) + (isTerminated ? 1 : 0);
    ByteWalk walk(locale, withState, input, end);
    return toElements<std::uint32_t>(
        sizeOf(room), false, false,
        [&]() -> std::optional<std::uint32_t> {
            const std::optional<Span> character = walk.next();
            if (!character)
                return std::nullopt;
            return withState ? getWideEx(locale.page, *character, walk.state())
                             : getWide(locale.page, *character);
        },
        [] { return false; });
}

ToBytes wideToBytes(const Locale& locale, bool withState, const Room& room, const UnitText& input,
                    std::uint32_t options)
{
    if ((options & ~kCharCount) != 0)
        return {-1, kBadArgument, {}};
    // No size has no room for the element too many.
    if (input.length == 0 || room.size <= 0)
        return {};
    const std::int64_t size = sizeOf(room);
    const std::ptrdiff_t count = unitsOf(input) + (input.length < 0 ? 1 : 0);
    std::int32_t state = room.state;
    ToBytes converted;
    std::ptrdiff_t done = 0;
    for (; done < count; ++done) {
        Bytes bytes = putWide(unitAt(input, done));
        if (withState && bytes.size() == 1 && state == 1) {
            bytes.insert(bytes.begin(), static_cast<unsigned char>(shiftOut(locale.page)));
            state = 0;
        } else if (withState && bytes.size() > 1 && state == 0) {
            bytes.insert(bytes.begin(), static_cast<unsigned char>(shiftIn(locale.page)));
            state = 1;
        }
        // Deliberate: in characters the walk stops one element late.
        if (options == kCharCount ? done > size
                                  : std::ssize(converted.written) + std::ssize(bytes) > size)
            break;
        converted.written.insert(converted.written.end(), bytes.begin(), bytes.end());
    }
    converted.result = static_cast<std::int32_t>(
        options == kCharCount ? std::min<std::int64_t>(done, size) : std::ssize(converted.written));
    return converted;
}

} // namespace

std::uint16_t unicodeOf(const Page& page, Span character, std::ptrdiff_t length)
{
    if (length == 1)
        return static_cast<std::uint16_t>(toUnicode(page, character.at(0)));
    if (page.id != kUtf8Id && isEmpty(page.sections[1]))
        return kNoUnicode;
    return mbToUnicode(page, character);
}

ToWide convertStringW(const Locale& target, const Room& room, const Locale& source,
                      const UnitText& input, std::uint32_t options)
{
    return eachElement<std::uint32_t>(room, input, options, [&](std::uint32_t value) {
        return unicodeToWide(target.page, wideValue(source, value));
    });
}

ToUnicode stringToUnicode(const Room& room, const Locale& locale, const Text& input,
                          std::uint32_t options)
{
    return bytesToUnicode(room, locale, false, {input.bytes, 0, input.length}, options);
}

ToUnicode stringToUnicodeEx(const Room& room, const Locale& locale, const Text& input,
                            std::uint32_t options)
{
    return bytesToUnicode(room, locale, locale.stateful, input, options);
}

ToUnicode stringToUnicodeW(const Room& room, const Locale& locale, const UnitText& input,
                           std::uint32_t options)
{
    return eachElement<std::uint16_t>(
        room, input, options, [&](std::uint32_t value) { return wideValue(locale, value); });
}

ToWide unicodeToStringW(const Locale& locale, const Room& room, const UnitText& input,
                        std::uint32_t options)
{
    return eachElement<std::uint32_t>(room, input, options, [&](std::uint32_t value) {
        return unicodeToWide(locale.page, static_cast<std::uint16_t>(value));
    });
}

ToWide mbToWide(const Locale& locale, const Room& room, const Text& input, std::uint32_t options)
{
    return bytesToWide(locale, false, room, {input.bytes, 0, input.length}, options);
}

ToWide mbToWideEx(const Locale& locale, const Room& room, const Text& input, std::uint32_t options)
{
    if (!locale.stateful)
        return mbToWide(locale, room, input, options);
    return bytesToWide(locale, true, room, input, options);
}

ToBytes wideToMb(const Locale& locale, const Room& room, const UnitText& input,
                 std::uint32_t options)
{
    if (!locale.singleByte || (options & ~kCharCount) != 0 || input.length == 0)
        return wideToBytes(locale, false, {0, room.size}, input, options);
    // Deliberate: every value takes one place, and what a longer one writes behind it stays until
    // the next one is written over it.
    const std::ptrdiff_t count = unitsOf(input) + (input.length < 0 ? 1 : 0);
    const std::ptrdiff_t size = std::max(room.size, 0);
    ToBytes converted;
    converted.result = static_cast<std::int32_t>(std::min(count, size));
    for (std::ptrdiff_t i = 0; i < converted.result; ++i) {
        const Bytes bytes = putWide(unitAt(input, i));
        for (std::ptrdiff_t k = 0; k < std::ssize(bytes) && i + k < size; ++k) {
            const auto place = static_cast<std::size_t>(i + k);
            converted.written.resize(std::max(converted.written.size(), place + 1));
            converted.written[place] = bytes[static_cast<std::size_t>(k)];
        }
    }
    return converted;
}

ToBytes wideToMbEx(const Locale& locale, const Room& room, const UnitText& input,
                   std::uint32_t options)
{
    if (!locale.stateful)
        return wideToMb(locale, room, input, options);
    return wideToBytes(locale, true, room, input, options);
}

} // namespace vlx::oracle
