// Tokens.
#include "support/oracle_strings_walk.hpp"

#include <algorithm>

namespace vlx::oracle {

namespace {

// A length as bytes, up to the terminator if it is negative.
std::ptrdiff_t knownLength(const Locale& locale, const Text& text, std::uint32_t options)
{
    return text.length < 0 ? terminatedLength(text.bytes) : lengthInBytes(locale, text, options);
}

Text withLength(const Text& text, std::ptrdiff_t length)
{
    return {text.bytes, text.state, static_cast<std::int32_t>(length)};
}

} // namespace

std::ostream& operator<<(std::ostream& out, const Token& token)
{
    constexpr std::ptrdiff_t kNone = -1;
    return out << "token " << token.token.value_or(kNone) << ", size " << token.size << ", length "
               << token.length << ", next " << token.next.value_or(kNone) << ", next state "
               << token.nextState.value_or(-1) << ", error " << token.error;
}

Token token(const Locale& locale, Bytes* string, std::int32_t length, const Text& delimiters,
            std::uint32_t options)
{
    Token result;
    if (string == nullptr)
        return result;
    options &= kCharCount;
    std::ptrdiff_t rest = knownLength(locale, {Span(*string), 0, length}, options);
    const Text set = withLength(delimiters, knownLength(locale, delimiters, options));
    std::ptrdiff_t begin = 0;
    const auto spanHere = [&](Members members) {
        return span(locale, members, withLength({Span(*string).from(begin), 0, 0}, rest), set, 0)
            .result;
    };
    std::ptrdiff_t size = spanHere(Members::kNotIn);
    if (size < rest && size == 0) {
        const std::ptrdiff_t leading = spanHere(Members::kIn);
        rest -= leading;
        begin += leading;
        if (rest <= 0)
            return result;
        size = spanHere(Members::kNotIn);
    }
    result.token = begin;
    if (size >= rest)
        return result;
    // A delimiter that the length cuts off is overwritten up to there.
    const std::ptrdiff_t end = begin + size;
    const std::ptrdiff_t delimiter =
        std::min(tableLength(locale, Span(*string).at(end)), rest - size);
    for (std::ptrdiff_t i = 0; i < delimiter; ++i)
        put(*string, end + i, 0);
    rest -= size + delimiter;
    if (rest > 0) {
        result.next = end + delimiter;
        result.length = static_cast<std::int32_t>(rest);
        if (options != 0)
            result.length = numChars(locale, Span(*string).from(*result.next), result.length);
    }
    return result;
}

namespace {

// A token in its buffer: where it ends and in which state.
struct TokenEnd {
    std::ptrdiff_t position = 0;
    std::int32_t state = 0;
};

// Closes and terminates a token; `size` is the room before the place of the terminator. A full
// buffer without a character to give up gets the terminator and no shift byte.
void closeToken(const Locale& locale, Bytes& buffer, std::ptrdiff_t size, TokenEnd& end)
{
    if (locale.stateful && end.state != 0) {
        bool room = end.position < size;
        if (!room && end.position >= stepOf(locale, 1)) {
            end.position -= stepOf(locale, 1);
            room = true;
            if (end.position > 0 && Span(buffer).at(end.position - 1) == shiftIn(locale.page)) {
                end.position -= 1;
                end.state = 0;
            }
        }
        if (room && end.state != 0)
            put(buffer, end.position++, shiftOut(locale.page));
    }
    put(buffer, end.position, 0);
}

} // namespace

Token tokenEx(const Locale& locale, Bytes& buffer, std::int32_t bufferState, std::int32_t size,
              const Text* string, const Text& delimiters, std::uint32_t options)
{
    Token result;
    if (string == nullptr)
        return result;
    options &= kCharCount;
    std::ptrdiff_t rest = knownLength(locale, *string, options);
    const Text set = withLength(delimiters, knownLength(locale, delimiters, options));
    std::ptrdiff_t room = std::max(size, 0);
    if (options != 0)
        room = charsToBytesWithin(locale.page, string->bytes, string->state,
                                  static_cast<std::int32_t>(room), rest);
    const bool keepsPlace = room != 0;
    if (keepsPlace)
        room -= 1;

    std::ptrdiff_t begin = 0;
    std::int32_t state = string->state;
    if (locale.stateful && rest > 0 && isShift(locale, string->bytes.at(0))) {
        state = stateBehind(locale, string->bytes.at(0));
        begin += 1;
        rest -= 1;
    }
    const auto here = [&] { return string->bytes.from(begin); };
    const auto spanHere = [&](Members members) {
        return spanEx(locale, members, withLength({here(), state, 0}, rest), set, 0).result;
    };
    std::ptrdiff_t span = spanHere(Members::kNotIn);
    if (span == 0) {
        const std::ptrdiff_t leading = spanHere(Members::kIn);
        rest -= leading;
        const Stop stop = moveWithin(locale, here(), state, leading);
        begin += stop.position;
        state = stop.state.value_or(state);
        if (rest > 0)
            span = spanHere(Members::kNotIn);
    }

    const std::int32_t copied = copyEx(locale, buffer, bufferState, static_cast<std::int32_t>(room),
                                       withLength({here(), state, 0}, span), 0)
                                    .result;
    const Stop stop = moveWithin(locale, Span(buffer), bufferState, copied);
    TokenEnd end{stop.position, stop.state.value_or(bufferState)};
    if (keepsPlace)
        closeToken(locale, buffer, room, end);

    if (span != 0 && span < rest) {
        const Stop next = moveWithin(locale, here(), state, span);
        result.next = begin + next.position;
        result.nextState = next.state;
        result.length = static_cast<std::int32_t>(rest - span);
        if (options != 0)
            result.length = numCharsEx(locale, here().from(next.position),
                                       next.state.value_or(state), result.length);
    }
    result.size = static_cast<std::int32_t>(end.position);
    if (options != 0)
        result.size = numCharsEx(locale, Span(buffer), bufferState, result.size);
    return result;
}

} // namespace vlx::oracle
