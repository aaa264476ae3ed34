#include "support/oracle_strings_walk.hpp"

namespace vlx::oracle {

bool isShift(const Locale& locale, unsigned byte)
{
    return byte == shiftIn(locale.page) || byte == shiftOut(locale.page);
}

std::int32_t stateBehind(const Locale& locale, unsigned shift)
{
    return shift == shiftIn(locale.page) ? 1 : 0;
}

std::ptrdiff_t stepOf(const Locale& locale, std::int32_t state)
{
    return state != 0 ? static_cast<std::ptrdiff_t>(maxCharBytes(locale.page)) : 1;
}

std::ptrdiff_t tableLength(const Locale& locale, unsigned byte)
{
    return locale.singleByte ? 1 : static_cast<std::ptrdiff_t>(charLength(locale.page, byte));
}

std::ptrdiff_t terminatedLength(Span text)
{
    std::ptrdiff_t length = 0;
    while (text.at(length) != 0)
        ++length;
    return length;
}

std::ptrdiff_t charsToBytesWithin(const Page& page, Span text, std::int32_t state,
                                  std::int32_t count, std::ptrdiff_t limit)
{
    const auto shiftAt = [&](std::ptrdiff_t offset) {
        if (!isStateful(page) || offset >= limit)
            return false;
        if (text.at(offset) != shiftIn(page) && text.at(offset) != shiftOut(page))
            return false;
        state = text.at(offset) == shiftIn(page) ? 1 : 0;
        return true;
    };
    std::ptrdiff_t offset = 0;
    for (std::int32_t done = 0; done < count; ++done) {
        if (shiftAt(offset))
            offset += 1;
        if (offset >= limit)
            offset += 1;
        else if (isStateful(page))
            offset += state != 0 ? static_cast<std::ptrdiff_t>(maxCharBytes(page)) : 1;
        else
            offset += static_cast<std::ptrdiff_t>(charLength(page, text.at(offset)));
        if (shiftAt(offset))
            offset += 1;
    }
    return offset;
}

std::ptrdiff_t lengthInBytes(const Locale& locale, const Text& text, std::uint32_t options)
{
    if (text.length <= 0 || (options & kCharCount) == 0)
        return text.length;
    const std::int32_t bytes = charsToBytes(locale.page, text.bytes, text.state, text.length);
    // The caller vouches for every byte of the length.
    static_cast<void>(text.bytes.from(bytes));
    return bytes;
}

Walk wholeCharacters(const Locale& locale, Span text, std::ptrdiff_t budget)
{
    Walk walk;
    while (walk.bytes < budget) {
        const std::ptrdiff_t length = tableLength(locale, text.at(walk.bytes));
        if (walk.bytes + length > budget)
            break;
        walk.bytes += length;
    }
    return walk;
}

Walk wholeCharactersEx(const Locale& locale, Span text, std::int32_t state, std::ptrdiff_t budget)
{
    Walk walk{0, state, false};
    while (walk.bytes < budget) {
        const unsigned byte = text.at(walk.bytes);
        if (isShift(locale, byte)) {
            walk.state = stateBehind(locale, byte);
            walk.bytes += 1;
            walk.endsOnShift = true;
            continue;
        }
        const std::ptrdiff_t length = stepOf(locale, walk.state);
        if (walk.bytes + length > budget)
            break;
        walk.bytes += length;
        walk.endsOnShift = false;
    }
    return walk;
}

Stop moveWithin(const Locale& locale, Span text, std::int32_t state, std::ptrdiff_t offset)
{
    Bytes known;
    for (std::ptrdiff_t i = 0; i < offset; ++i)
        known.push_back(static_cast<unsigned char>(text.at(i)));
    known.push_back(0);
    return moveStringPointerEx(locale, Span(known), state, static_cast<std::int32_t>(offset), 0);
}

void put(Bytes& memory, std::ptrdiff_t position, unsigned byte)
{
    if (position < 0 || position >= std::ssize(memory))
        throw StrayRead();
    memory[static_cast<std::size_t>(position)] = static_cast<unsigned char>(byte);
}

namespace {

bool refusesFindOptions(std::uint32_t options)
{
    options &= ~kCharCount;
    return options != 0 && options != kLastMatch;
}

bool equalBytes(Span first, Span second, std::ptrdiff_t length)
{
    for (std::ptrdiff_t i = 0; i < length; ++i)
        if (first.at(i) != second.at(i))
            return false;
    return true;
}

// The bytes to search: a negative length takes the terminator in.
std::ptrdiff_t searchedBytes(const Locale& locale, const Text& string, std::uint32_t options)
{
    if (string.length < 0)
        return terminatedLength(string.bytes) + 1;
    return lengthInBytes(locale, string, options);
}

// A character of a string or a set: where it begins, its length, none at the end.
struct Character {
    std::ptrdiff_t begin = 0;
    std::ptrdiff_t length = 0;
    std::int32_t state = 0;
    bool cut = false; // by the length of the text
};

// The length of a character in terminated text, cut at the first NUL.
std::ptrdiff_t cutAtNul(Span text, std::ptrdiff_t begin, std::ptrdiff_t length)
{
    for (std::ptrdiff_t i = 0; i < length; ++i)
        if (text.at(begin + i) == 0)
            return i;
    return length;
}

// The character at a position, or none. Shift bytes before it are consumed in the Ex form.
Character characterAt(const Locale& locale, bool withState, const Text& text, std::ptrdiff_t length,
                      Character at)
{
    const auto isEnd = [&](std::ptrdiff_t position) {
        return length < 0 ? text.bytes.at(position) == 0 : position >= length;
    };
    at.length = 0;
    at.cut = false;
    while (withState && !isEnd(at.begin) && isShift(locale, text.bytes.at(at.begin))) {
        at.state = stateBehind(locale, text.bytes.at(at.begin));
        at.begin += 1;
    }
    if (isEnd(at.begin))
        return at;
    at.length = withState ? stepOf(locale, at.state) : tableLength(locale, text.bytes.at(at.begin));
    if (length < 0) {
        at.length = cutAtNul(text.bytes, at.begin, at.length);
    } else if (at.begin + at.length > length) {
        at.length = length - at.begin;
        at.cut = true;
    }
    return at;
}

bool isInSet(const Locale& locale, bool withState, Span string, const Character& sought,
             const Text& set, std::ptrdiff_t setLength)
{
    Character member{0, 0, set.state, false};
    for (;;) {
        member = characterAt(locale, withState, set, setLength, member);
        if (member.length == 0)
            return false;
        if (member.length == sought.length &&
            equalBytes(set.bytes.from(member.begin), string.from(sought.begin), sought.length))
            return true;
        member.begin += member.length;
    }
}

std::ptrdiff_t spanInBytes(const Locale& locale, bool withState, Members members,
                           const Text& string, const Text& set, std::uint32_t options)
{
    const std::ptrdiff_t length = lengthInBytes(locale, string, options);
    const std::ptrdiff_t setLength = lengthInBytes(locale, set, options);
    Character character{0, 0, string.state, false};
    for (;;) {
        character = characterAt(locale, withState, string, length, character);
        if (character.length == 0 || character.cut)
            return character.begin;
        if (isInSet(locale, withState, string.bytes, character, set, setLength) !=
            (members == Members::kIn))
            return character.begin;
        character.begin += character.length;
    }
}

} // namespace

Found find(const Locale& locale, const Text& string, Span character, std::uint32_t options)
{
    if (refusesFindOptions(options))
        return {std::nullopt, std::nullopt, kBadArgument};
    Found found;
    if (string.length == 0)
        return found;
    const std::ptrdiff_t length = searchedBytes(locale, string, options);
    const std::ptrdiff_t soughtLength = tableLength(locale, character.at(0));
    character.at(soughtLength - 1);
    std::ptrdiff_t position = 0;
    while (position < length) {
        const std::ptrdiff_t here = tableLength(locale, string.bytes.at(position));
        if (position + here > length)
            break;
        if (here == soughtLength && equalBytes(string.bytes.from(position), character, here)) {
            found.position = position;
            if ((options & ~kCharCount) == 0)
                break;
        }
        position += here;
    }
    return found;
}

Found findEx(const Locale& locale, const Text& string, Span character, std::int32_t characterState,
             std::uint32_t options)
{
    if (!locale.stateful)
        return find(locale, {string.bytes, 0, string.length}, character, options);
    if (refusesFindOptions(options))
        return {std::nullopt, std::nullopt, kBadArgument};
    Found found;
    if (string.length == 0)
        return found;
    const std::ptrdiff_t length = searchedBytes(locale, string, options);
    if (isShift(locale, character.at(0))) {
        characterState = stateBehind(locale, character.at(0));
        character = character.from(1);
    }
    const std::ptrdiff_t soughtLength = stepOf(locale, characterState);
    character.at(soughtLength - 1);
    std::int32_t state = string.state;
    std::ptrdiff_t position = 0;
    while (position < length) {
        const unsigned byte = string.bytes.at(position);
        if (isShift(locale, byte)) {
            state = stateBehind(locale, byte);
            position += 1;
            continue;
        }
        const std::ptrdiff_t here = stepOf(locale, state);
        if (position + here > length)
            break;
        if (here == soughtLength && equalBytes(string.bytes.from(position), character, here)) {
            found.position = position;
            found.state = state;
            if ((options & ~kCharCount) == 0)
                break;
        }
        position += here;
    }
    return found;
}

Outcome span(const Locale& locale, Members members, const Text& string, const Text& set,
             std::uint32_t options)
{
    const std::ptrdiff_t bytes = spanInBytes(locale, false, members, string, set, options);
    const auto result = static_cast<std::int32_t>(bytes);
    if ((options & kCharCount) == 0)
        return {result, 0};
    return {numChars(locale, string.bytes, result), 0};
}

Outcome spanEx(const Locale& locale, Members members, const Text& string, const Text& set,
               std::uint32_t options)
{
    if (!locale.stateful)
        return span(locale, members, {string.bytes, 0, string.length}, {set.bytes, 0, set.length},
                    options);
    const std::ptrdiff_t bytes = spanInBytes(locale, true, members, string, set, options);
    const auto result = static_cast<std::int32_t>(bytes);
    if ((options & kCharCount) == 0)
        return {result, 0};
    return {numCharsEx(locale, string.bytes, string.state, result), 0};
}

} // namespace vlx::oracle
