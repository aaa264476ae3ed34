#include "charwalk.hpp"

#include <cstring>
#include <string_view>

namespace vlx::cli {

namespace {

constexpr std::uint64_t kHighBits = 0x8080808080808080;

bool isAscii(const char* eight)
{
    std::uint64_t word = 0;
    std::memcpy(&word, eight, sizeof word);
    return (word & kHighBits) == 0;
}

bool continues(char byte)
{
    return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

// Whether two or three bytes are UTF-8, the shortest form of their value.
bool isWellFormed(const char* bytes, int size)
{
    constexpr std::uint8_t firstOfTwo = 0xC2;
    constexpr std::uint8_t firstOfThree = 0xE0;
    constexpr std::uint8_t shortestSecond = 0xA0;
    const auto lead = static_cast<std::uint8_t>(bytes[0]);
    if (!continues(bytes[1]))
        return false;
    if (size == 2)
        return lead >= firstOfTwo;
    return continues(bytes[2]) &&
           (lead != firstOfThree || static_cast<std::uint8_t>(bytes[1]) >= shortestSecond);
}

// Whether the locale's text is UTF-8, told by what it makes of the euro sign.
bool writesUtf8(TSLocale* locale)
{
    constexpr TSChar16 euro = 0x20AC;
    char bytes[4] = {};
    const std::int32_t size = TSUnicodeToString(locale, bytes, sizeof bytes, &euro, 1, 0);
    return std::string_view(bytes, static_cast<std::size_t>(size)) == "\xE2\x82\xAC";
}

} // namespace

CharacterWalk::CharacterWalk(TSLocale* locale) : facts_(locale, nullptr), utf8_(writesUtf8(locale))
{
    for (unsigned byte = 0; byte < lengths_.size(); ++byte) {
        const char text[1] = {static_cast<char>(byte)};
        lengths_[byte] = static_cast<std::uint8_t>(TSByteLength(locale, text));
        asciiIsSingle_ = asciiIsSingle_ && (byte >= 0x80 || lengths_[byte] == 1);
    }
}

const char* CharacterWalk::passWhole(const char* begin, const char* end)
{
    malformed_ = false;
    if (facts_.stateful())
        return passShifted(begin, end);
    return facts_.maxBytes() == 1 ? end : passPlain(begin, end);
}

Character CharacterWalk::next(const char*& at, const char* end, int& state) const
{
    Character character{at, 0, state};
    if (at != end && isShift(*at)) {
        character.state = facts_.isShiftIn(static_cast<std::uint8_t>(*at));
        ++character.bytes;
    }
    if (character.bytes == end)
        return character;
    const int size =
        facts_.stateful() ? (character.state ? facts_.maxBytes() : 1) : lengthOf(*character.bytes);
    if (size > end - character.bytes)
        return character;
    character.size = size;
    at = character.bytes + size;
    state = character.state;
    return character;
}

const char* CharacterWalk::passShifted(const char* at, const char* end)
{
    for (;;) {
        if (end - at >= 2 && isShift(at[0]) && isShift(at[1])) {
            state_ = facts_.isShiftIn(static_cast<std::uint8_t>(*at));
            return at + 1;
        }
        if (next(at, end, state_).size == 0)
            return at;
        const int step = state_ ? facts_.maxBytes() : 1; // until the next shift byte
        while (end - at >= step && !isShift(*at))
            at += step;
    }
}

const char* CharacterWalk::passPlain(const char* at, const char* end)
{
    while (at != end) {
        while (asciiIsSingle_ && end - at >= 8 && isAscii(at))
            at += 8;
        if (at == end)
            break;
        const int size = lengthOf(*at);
        if (size > end - at)
            break;
        if (utf8_ && size > 1 && !isWellFormed(at, size))
            malformed_ = true;
        at += size;
    }
    return at;
}

} // namespace vlx::cli
