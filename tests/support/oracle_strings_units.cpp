// The members for 16-bit and 32-bit text.
#include "support/oracle_strings_walk.hpp"

#include <algorithm>

namespace vlx::oracle {

namespace {

std::uint32_t unitAt(const Units& text, std::ptrdiff_t position)
{
    if (position < 0 || position >= std::ssize(text))
        throw StrayRead();
    return text[static_cast<std::size_t>(position)];
}

void putUnit(Units& text, std::ptrdiff_t position, std::uint32_t unit)
{
    if (position < 0 || position >= std::ssize(text))
        throw StrayRead();
    text[static_cast<std::size_t>(position)] = unit;
}

bool isInSet(std::uint32_t unit, const Units& set, std::int32_t setLength)
{
    const std::int32_t length = setLength < 0 ? lengthUnits(set) : setLength;
    for (std::int32_t i = 0; i < length; ++i)
        if (unitAt(set, i) == unit)
            return true;
    return false;
}

std::int32_t spanFrom(Members members, const Units& string, std::ptrdiff_t begin,
                      std::int32_t length, const Units& set, std::int32_t setLength)
{
    std::int32_t span = 0;
    while (span < length &&
           isInSet(unitAt(string, begin + span), set, setLength) == (members == Members::kIn))
        ++span;
    return span;
}

} // namespace

std::int32_t lengthUnits(const Units& string)
{
    std::int32_t length = 0;
    while (unitAt(string, length) != 0)
        ++length;
    return length;
}

Outcome copyUnits(Units& destination, std::int32_t size, const Units& source, std::int32_t length)
{
    if (length == 0 || size <= 0)
        return {0, 0};
    if (length < 0)
        length = lengthUnits(source) + 1;
    const std::int32_t count = std::min(length, size);
    for (std::int32_t i = 0; i < count; ++i)
        putUnit(destination, i, unitAt(source, i));
    return {count, 0};
}

Outcome appendUnits(Units& destination, const Units& source, std::int32_t length,
                    std::uint32_t options)
{
    options &= ~kCharCount;
    if (options != 0 && options != kTerminate)
        return {-1, kBadArgument};
    std::int32_t total = lengthUnits(destination);
    if (length == 0)
        return {total + 1, 0};
    if (length < 0) {
        length = lengthUnits(source);
        options = kTerminate;
    }
    for (std::int32_t i = 0; i < length; ++i)
        putUnit(destination, total++, unitAt(source, i));
    if (options == kTerminate)
        putUnit(destination, total++, 0);
    return {total, 0};
}

Found findUnits(const Units& string, std::int32_t length, std::uint32_t value,
                std::uint32_t options)
{
    options &= ~kCharCount;
    if (options != 0 && options != kLastMatch)
        return {std::nullopt, std::nullopt, kBadArgument};
    Found found;
    if (options == kLastMatch) {
        // Deliberate: only the forward search takes the terminator in.
        const std::int32_t count = length < 0 ? lengthUnits(string) : length;
        for (std::int32_t i = count - 1; i >= 0; --i) {
            if (unitAt(string, i) == value) {
                found.position = i;
                break;
            }
        }
        return found;
    }
    const std::int32_t count = length < 0 ? lengthUnits(string) + 1 : length;
    for (std::int32_t i = 0; i < count; ++i) {
        if (unitAt(string, i) == value) {
            found.position = i;
            break;
        }
    }
    return found;
}

Outcome spanUnits(Members members, const Units& string, std::int32_t length, const Units& set,
                  std::int32_t setLength)
{
    if (length < 0)
        length = lengthUnits(string);
    return {spanFrom(members, string, 0, length, set, setLength), 0};
}

Token tokenUnits(Units* string, std::int32_t length, const Units& delimiters,
                 std::int32_t delimiterLength)
{
    Token result;
    if (string == nullptr)
        return result;
    if (length < 0)
        length = lengthUnits(*string);
    const auto span = [&](Members members, std::ptrdiff_t begin) {
        return spanFrom(members, *string, begin, length, delimiters, delimiterLength);
    };
    std::ptrdiff_t begin = 0;
    std::int32_t size = span(Members::kNotIn, begin);
    if (size == 0 && length > 0) {
        const std::int32_t leading = span(Members::kIn, begin);
        begin += leading;
        length -= leading;
        if (length <= 0)
            return result;
        size = span(Members::kNotIn, begin);
    }
    result.token = begin;
    if (size >= length)
        return result;
    putUnit(*string, begin + size, 0);
    result.length = length - size - 1;
    if (result.length > 0)
        result.next = begin + size + 1;
    return result;
}

} // namespace vlx::oracle
