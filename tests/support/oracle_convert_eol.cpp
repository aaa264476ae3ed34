// Line ends: their search and their writing.
#include "support/oracle_convert.hpp"
#include "support/oracle_strings_walk.hpp"

namespace vlx::oracle {

namespace {

constexpr std::uint32_t kLf = 0x100;
constexpr std::uint32_t kCrLf = 0x200;
constexpr std::uint32_t kThird = 0x400;
constexpr std::uint32_t kFourth = 0x800;
constexpr std::uint32_t kAll = kLf | kCrLf | kThird | kFourth;
constexpr std::uint32_t kPutDefault = 0x1000;
constexpr std::uint32_t kNone = 0x80000030;
constexpr std::uint32_t kBadOptions = 0x80000031;

struct LineEndChars {
    std::uint32_t lineFeed = 0x000A;
    std::uint32_t carriageReturn = 0x000D;
    std::uint32_t third = 0x2028;
    std::uint32_t fourth = 0x2029;
};

LineEndChars charsOf(const Locale& locale)
{
    const Span header = locale.page.sections[0];
    return {header.at(1), header.at(2), header.at(3), header.at(4)};
}

// The masks that are wanted, or none if the options are refused.
std::optional<std::uint32_t> wantedOf(std::uint32_t options)
{
    options &= ~kCharCount;
    if (options == 0)
        return kCrLf;
    if ((options & kAll) == kAll)
        return kAll;
    if ((options & ~kAll) != 0)
        return std::nullopt;
    return options;
}

// The characters to search for.
Units searchSet(std::uint32_t wanted, const LineEndChars& chars)
{
    Units set;
    if ((wanted & kCrLf) != 0)
        set.push_back(chars.carriageReturn);
    if ((wanted & (kCrLf | kLf)) != 0)
        set.push_back(chars.lineFeed);
    if ((wanted & kThird) != 0)
        set.push_back(chars.third);
    if ((wanted & kFourth) != 0)
        set.push_back(chars.fourth);
    return set;
}

// The walk of all members. `at` reads an element, and `spanFrom` gives the span up to the next
// element of the set.
template <class At, class SpanFrom>
LineEnd search(std::uint32_t wanted, const LineEndChars& chars, std::ptrdiff_t length, At at,
               SpanFrom spanFrom)
{
    const auto found = [](std::uint32_t type, std::ptrdiff_t offset, std::int32_t units) {
        return LineEnd{offset + units, type, units, std::nullopt, 0};
    };
    std::ptrdiff_t offset = 0;
    while (offset < length) {
        offset += spanFrom(offset);
        if (offset >= length)
            break;
        // Deliberate: the line feed behind a carriage return may stand behind the length.
        if ((wanted & kCrLf) != 0 && at(offset) == chars.carriageReturn &&
            at(offset + 1) == chars.lineFeed)
            return found(kCrLf, offset, 2);
        if ((wanted & kLf) != 0 && at(offset) == chars.lineFeed)
            return found(kLf, offset, 1);
        if ((wanted & kThird) != 0 && at(offset) == chars.third)
            return found(kThird, offset, 1);
        if ((wanted & kFourth) != 0 && at(offset) == chars.fourth)
            return found(kFourth, offset, 1);
        offset += 1;
    }
    return {std::nullopt, kNone, 0, std::nullopt, 0};
}

LineEnd refused()
{
    return {std::nullopt, kBadOptions, 0, std::nullopt, kBadArgument};
}

LineEnd searchBytes(const Locale& locale, bool withState, const Text& string, std::uint32_t options)
{
    const std::optional<std::uint32_t> wanted = wantedOf(options);
    if (!wanted)
        return refused();
    const LineEndChars chars = charsOf(locale);
    Bytes set;
    for (const std::uint32_t value : searchSet(*wanted, chars))
        set.push_back(static_cast<unsigned char>(value));
    const Text setText{Span(set), 0, static_cast<std::int32_t>(set.size())};
    const std::ptrdiff_t length =
        string.length < 0 ? terminatedLength(string.bytes) : lengthInBytes(locale, string, options);
    return search(
        *wanted, chars, length, [&](std::ptrdiff_t i) { return string.bytes.at(i); },
        [&](std::ptrdiff_t offset) {
            const Text rest{string.bytes.from(offset), offset == 0 ? string.state : 0,
                            static_cast<std::int32_t>(length - offset)};
            return withState ? spanEx(locale, Members::kNotIn, rest, setText, 0).result
                             : span(locale, Members::kNotIn, rest, setText, 0).result;
        });
}

LineEnd searchUnits(const LineEndChars& chars, const UnitText& string, std::uint32_t options)
{
    const std::optional<std::uint32_t> wanted = wantedOf(options);
    if (!wanted)
        return refused();
    const Units set = searchSet(*wanted, chars);
    const std::ptrdiff_t length = string.length < 0 ? lengthUnits(string.units) : string.length;
    const auto at = [&](std::ptrdiff_t i) {
        if (i >= std::ssize(string.units))
            throw StrayRead();
        return string.units[static_cast<std::size_t>(i)];
    };
    return search(*wanted, chars, length, at, [&](std::ptrdiff_t offset) {
        const Units rest(string.units.begin() + offset, string.units.end());
        return spanUnits(Members::kNotIn, rest, static_cast<std::int32_t>(length - offset), set,
                         static_cast<std::int32_t>(set.size()))
            .result;
    });
}

// The masks to write, or none.
std::optional<std::uint32_t> toPut(std::uint32_t options)
{
    if (options == 0)
        options = kPutDefault;
    if ((options & ~(kAll | kPutDefault)) != 0)
        return std::nullopt;
    if ((options & kPutDefault) != 0)
        options |= kCrLf;
    return options;
}

LineEndsPut putMasks(std::optional<std::uint32_t> wanted, const LineEndChars& chars,
                     const std::uint32_t (&order)[4])
{
    if (!wanted)
        return {true, {}, std::nullopt, kBadArgument};
    LineEndsPut put;
    for (const std::uint32_t mask : order) {
        if ((*wanted & mask) == 0)
            continue;
        if (mask == kCrLf)
            put.written.push_back(chars.carriageReturn);
        put.written.push_back(mask == kThird    ? chars.third
                              : mask == kFourth ? chars.fourth
                                                : chars.lineFeed);
    }
    return put;
}

constexpr std::uint32_t kByteOrder[4] = {kFourth, kThird, kLf, kCrLf};
// Deliberate: arrays get their line ends in another order.
constexpr std::uint32_t kUnitOrder[4] = {kLf, kThird, kFourth, kCrLf};

} // namespace

std::ostream& operator<<(std::ostream& out, const LineEnd& lineEnd)
{
    if (lineEnd.behind)
        out << "behind " << *lineEnd.behind;
    out << " type 0x" << std::hex << lineEnd.type << std::dec << " length " << lineEnd.length;
    if (lineEnd.state)
        out << " state " << *lineEnd.state;
    return out << " error " << lineEnd.error;
}

LineEnd getEol(const Locale& locale, const Text& string, std::uint32_t options)
{
    return searchBytes(locale, false, {string.bytes, 0, string.length}, options);
}

LineEnd getEolEx(const Locale& locale, const Text& string, std::uint32_t options)
{
    if (!locale.stateful)
        return getEol(locale, string, options);
    LineEnd lineEnd = searchBytes(locale, true, string, options);
    if (lineEnd.behind)
        lineEnd.state = 0;
    return lineEnd;
}

LineEnd getEolU(const UnitText& string, std::uint32_t options)
{
    return searchUnits({}, string, options);
}

LineEnd getEolW(const Locale& locale, const UnitText& string, std::uint32_t options)
{
    return searchUnits(charsOf(locale), string, options);
}

LineEndsPut putEol(const Locale& locale, std::uint32_t options)
{
    return putMasks(toPut(options), charsOf(locale), kByteOrder);
}

LineEndsPut putEolEx(const Locale& locale, std::int32_t state, std::uint32_t options)
{
    LineEndsPut put = putEol(locale, options);
    if (!locale.stateful)
        return put;
    if (!put.isNull && state == 1)
        put.written.insert(put.written.begin(), shiftOut(locale.page));
    put.state = 0;
    return put;
}

LineEndsPut putEolU(std::uint32_t options)
{
    return putMasks(toPut(options), {}, kUnitOrder);
}

LineEndsPut putEolW(const Locale& locale, std::uint32_t options)
{
    return putMasks(toPut(options), charsOf(locale), kUnitOrder);
}

} // namespace vlx::oracle
