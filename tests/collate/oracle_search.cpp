// The members of the search.
#include "collate/oracle_collate.hpp"

#include "compare/oracle_compare_parts.hpp"

namespace vlx::oracle {

namespace {

constexpr std::uint32_t kRefusedHere = 0x7FFFFFBE;
constexpr std::uint32_t kIgnoreCase = 0x80000040;

std::int32_t asInt(std::ptrdiff_t value)
{
    return static_cast<std::int32_t>(value);
}

bool sameBytes(Span text, std::ptrdiff_t at, Span sought, std::int32_t count)
{
    for (std::int32_t i = 0; i < count; ++i)
        if (text.at(at + i) != sought.at(i))
            return false;
    return true;
}

// A string of the search: its length in what the search goes by, and in bytes what is known of it.
struct Part {
    Span bytes;
    std::int32_t length = 0;
    std::int32_t known = 0;
};

// The lengths of TSStrstr, and those of TSStrstrEx with a state.
Part sideOf(const Locale& locale, const Text& text, std::uint32_t options)
{
    const bool counted = (options & kCharCount) != 0;
    const std::int32_t state = locale.stateful ? text.state : 0;
    const auto whole = [&] { return asInt(terminatedLength(text.bytes)); };
    Part side{text.bytes, 0, 0};
    if (ignoresWidth(options)) {
        if (counted && text.length >= 0) {
            side.known = charsToBytes(locale.page, text.bytes, state, text.length);
            side.length = text.length;
        } else {
            side.known = text.length < 0 ? whole() : text.length;
            static_cast<void>(text.bytes.from(side.known));
            side.length = numCharsEx(locale, text.bytes, state, side.known);
        }
    } else if (counted) {
        side.length =
            text.length <= 0 ? whole() : charsToBytes(locale.page, text.bytes, state, text.length);
        side.known = side.length;
    } else {
        side.length = text.length < 0 ? whole() : text.length;
        side.known = side.length;
    }
    static_cast<void>(text.bytes.from(side.known));
    return side;
}

// As many characters as the sought string has, as far as the text is known.
std::int32_t countedBytes(const Locale& locale, const Part& side, std::ptrdiff_t at,
                          std::int32_t state, std::int32_t count)
{
    const std::int32_t left = side.known - asInt(at);
    return std::min(
        left, asInt(charsToBytesWithin(locale.page, side.bytes.from(at), state, count, left)));
}

// The image of a character, of which `n` bytes are there.
Bytes imageOf(const Collation& collation, Span text, std::int32_t n, std::uint32_t options)
{
    const Locale& locale = collation.locale;
    Bytes character;
    for (std::int32_t i = 0; i < n; ++i)
        character.push_back(static_cast<unsigned char>(text.at(i)));
    if (ignoresWidth(options)) {
        if (static_cast<std::int32_t>(charLength(locale.page, text.at(0))) > n)
            return character;
        Bytes image = putWide(unmapValue(locale.page, getWide(locale.page, text)));
        if (image[0] == 0)
            return character;
        image.resize(charLength(locale.page, image[0]), 0);
        return image;
    }
    if ((options & kIgnoreCase) == kIgnoreCase) {
        Bytes image(8, 0);
        const Outcome outcome =
            mapString(locale, collation.language, image, 8, {text, 0, n}, kUpper);
        image.resize(static_cast<std::size_t>(std::max(outcome.result, 0)));
        return image;
    }
    return character;
}

std::optional<std::ptrdiff_t> searchMulti(const Collation& collation, const Part& text,
                                          const Part& sought, std::uint32_t options)
{
    const Locale& locale = collation.locale;
    const std::int32_t d = text.length - sought.length;
    const auto lengthAt = [&](const Part& side, std::ptrdiff_t at) {
        return asInt(charLength(locale.page, side.bytes.at(at)));
    };
    const auto thereAt = [&](const Part& side, std::ptrdiff_t at) {
        return std::min(lengthAt(side, at), side.known - asInt(at));
    };
    if (options == 0) {
        std::int32_t k = 0;
        while (k < sought.length && k + lengthAt(sought, k) <= sought.length)
            k += lengthAt(sought, k);
        for (std::ptrdiff_t offset = 0; offset <= d; offset += lengthAt(text, offset))
            if (sameBytes(text.bytes, offset, sought.bytes, k))
                return offset;
        return {};
    }
    const bool width = ignoresWidth(options);
    const bool byCase = !width && (options & kIgnoreCase) == kIgnoreCase;
    const Bytes p = imageOf(collation, sought.bytes, thereAt(sought, 0), options);
    std::ptrdiff_t offset = 0;
    for (std::int32_t counter = 0; counter <= d && offset < text.known; ++counter) {
        Bytes q;
        if (width)
            q = imageOf(collation, text.bytes.from(offset), thereAt(text, offset), options);
        else if (byCase)
            q = imageOf(collation, text.bytes, thereAt(text, 0), options);
        else
            q = imageOf(collation, text.bytes.from(offset),
                        std::min(thereAt(text, 0), text.known - asInt(offset)), options);
        if (p == q) {
            const Text one{text.bytes.from(offset), 0,
                           countedBytes(locale, text, offset, 0, sought.length)};
            const Text two{sought.bytes, 0, countedBytes(locale, sought, 0, 0, sought.length)};
            if (collation.plain(one, two, options).result == 0)
                return offset;
        }
        offset += lengthAt(text, offset);
    }
    return {};
}

} // namespace

Found Collation::plainSearch(const Text& text1, const Text& text2, std::uint32_t options) const
{
    if ((options & ~kCharCount & kRefusedHere) != 0)
        return {{}, {}, kBadArgument};
    Locale plainLocale = locale;
    plainLocale.stateful = false;
    // Counting is by the code page, which can be stateful all the same.
    const Part text = sideOf(plainLocale, {text1.bytes, 0, text1.length}, options);
    const Part sought = sideOf(plainLocale, {text2.bytes, 0, text2.length}, options);
    options &= ~kCharCount;
    if (sought.length == 0)
        return {0, {}, 0};
    const std::int32_t d = text.length - sought.length;
    if (d < 0)
        return {{}, {}, 0};
    if (!locale.singleByte)
        return {searchMulti(*this, text, sought, options), {}, 0};
    for (std::ptrdiff_t offset = 0; offset <= d; ++offset) {
        bool match = false;
        if ((options & kIgnoreCase) == kIgnoreCase)
            match = Comparison{locale, language, memory}
                        .plain({text.bytes.from(offset), 0, sought.length},
                               {sought.bytes, 0, sought.length}, kIgnoreCase)
                        .result == 0;
        else
            match = sameBytes(text.bytes, offset, sought.bytes, sought.length);
        if (match)
            return {offset, {}, 0};
    }
    return {{}, {}, 0};
}

Found Collation::shiftedSearch(const Text& text1, const Text& text2, std::uint32_t options) const
{
    if (!locale.stateful)
        return plainSearch(text1, text2, options);
    const Part text = sideOf(locale, text1, options);
    Part sought = sideOf(locale, text2, options);
    options &= ~kCharCount;
    std::int32_t state1 = text1.state;
    std::int32_t state2 = text2.state;
    if (sought.length == 0)
        return {0, state1, 0};
    std::ptrdiff_t offset = 0;
    if (ignoresWidth(options)) {
        for (std::int32_t counter = 0;
             counter <= text.length - sought.length && offset < text.known;) {
            if (isShift(locale, text.bytes.at(offset))) {
                state1 = stateBehind(locale, text.bytes.at(offset));
                offset += 1;
                continue;
            }
            const Text one{text.bytes.from(offset), state1,
                           countedBytes(locale, text, offset, state1, sought.length)};
            const Text two{sought.bytes, state2,
                           countedBytes(locale, sought, 0, state2, sought.length)};
            if (shifted(one, two, options).result == 0)
                return {offset, state1, 0};
            offset += stepOf(locale, state1);
            ++counter;
        }
        return {{}, state1, 0};
    }
    if (text.length < sought.length)
        return {{}, state1, 0};
    if (isShift(locale, sought.bytes.at(0))) {
        state2 = stateBehind(locale, sought.bytes.at(0));
        sought = {sought.bytes.from(1), sought.length - 1, sought.known - 1};
    }
    // The bytes of whole characters, without a shift byte at the end.
    std::int32_t k = 0;
    std::int32_t state = state2;
    while (k < sought.length) {
        if (isShift(locale, sought.bytes.at(k))) {
            state = stateBehind(locale, sought.bytes.at(k));
            k += 1;
        }
        if (k + stepOf(locale, state) > sought.length)
            break;
        k += asInt(stepOf(locale, state));
    }
    if (k > 0 && isShift(locale, sought.bytes.at(k - 1)))
        k -= 1;
    if (k == 0)
        return {0, state1, 0};
    const std::int32_t last = text.length - k;
    for (; offset <= last; offset += stepOf(locale, state1)) {
        if (isShift(locale, text.bytes.at(offset))) {
            state1 = stateBehind(locale, text.bytes.at(offset));
            offset += 1;
            if (offset > last)
                break;
        }
        bool match = false;
        if ((options & kIgnoreCase) == kIgnoreCase) {
            const std::int32_t there = std::min(sought.length, text.known - asInt(offset));
            match = shifted({text.bytes.from(offset), state1, there},
                            {sought.bytes, state2, sought.length}, options)
                        .result == 0;
        } else {
            match = sameBytes(text.bytes, offset, sought.bytes, k);
        }
        if (match)
            return {offset, state1, 0};
    }
    return {{}, state1, 0};
}

namespace {

// `place` tries one place and gives the match, or none.
template <class Place>
Found searchUnits(const Units& text, std::int32_t length1, const Units& sought,
                  std::int32_t length2, std::uint32_t options, const Place& place)
{
    if ((options & kRefusedHere) != 0)
        return {{}, {}, kBadArgument};
    length1 = length1 < 0 ? lengthUnits(text) : length1;
    length2 = length2 < 0 ? lengthUnits(sought) : length2;
    if (static_cast<std::size_t>(length1) > text.size() ||
        static_cast<std::size_t>(length2) > sought.size())
        throw StrayRead();
    if (length2 == 0)
        return {0, {}, 0};
    for (std::int32_t at = 0; at <= length1 - length2; ++at) {
        std::optional<std::ptrdiff_t> match;
        if (options != 0)
            match = place(at, length2);
        else if (std::equal(sought.begin(), sought.begin() + length2, text.begin() + at))
            match = at;
        if (match)
            return {match, {}, 0};
    }
    return {{}, {}, 0};
}

} // namespace

Found Collation::unitsSearch(const Units& text, std::int32_t length1, const Units& sought,
                             std::int32_t length2, std::uint32_t options) const
{
    return searchUnits(text, length1, sought, length2, options,
                       [&](std::int32_t at, std::int32_t count) -> std::optional<std::ptrdiff_t> {
                           const Units here(text.begin() + at, text.end());
                           if (units(here, count, sought, count, options).result == 0)
                               return at;
                           return {};
                       });
}

Found Collation::packedSearch(const Units& text, std::int32_t length1, const Units& sought,
                              std::int32_t length2, std::uint32_t options) const
{
    return searchUnits(text, length1, sought, length2, options,
                       [&](std::int32_t, std::int32_t count) -> std::optional<std::ptrdiff_t> {
                           if (packed(text, count, sought, count, options | kCharCount).result == 0)
                               return 0;
                           return {};
                       });
}

} // namespace vlx::oracle
