// Numbers, written.
#include "support/oracle_strings_walk.hpp"
#include "text/oracle_write.hpp"

namespace vlx::oracle {

namespace {

// A size in characters as units of the reversed text.
std::int32_t sizeInUnits(const TextLocale& locale, const Units& reversed, std::int32_t size)
{
    const Bytes bytes = narrowBytes(reversed);
    const auto most = static_cast<std::int32_t>(reversed.size()) + 1;
    const auto units = charsToBytesWithin(locale.base.page, Span(bytes), 0, size,
                                          static_cast<std::ptrdiff_t>(reversed.size()));
    return std::min(static_cast<std::int32_t>(units), most);
}

// Characters of what was written.
std::int32_t countOf(const TextLocale& locale, const Units& memory, std::int32_t length)
{
    const Bytes bytes = narrowBytes(memory);
    return numChars(locale.base, Span(bytes), length);
}

} // namespace

Outcome longToString(const TextLocale& locale, Member member, std::int32_t value,
                     const Target& target, std::uint32_t options)
{
    if (member == Member::kEx && !locale.base.stateful)
        member = Member::kPlain;
    const Checked checked =
        checkedOptions(member, target.size, options, kObjectValue | kTerminated | kUnsigned);
    if (checked.failed)
        return *checked.failed;
    const Codes codes = codesOf(locale, member);
    std::int32_t size = target.size - (checked.terminated ? 1 : 0);
    std::int32_t count = 0;
    if (member == Member::kEx && target.state == 1) {
        if (!checked.counted && size < (checked.terminated ? 1 : 2))
            return {0, kTooSmall};
        put(target.memory, count++, shiftOut(locale.base.page));
        size -= checked.counted ? 0 : 1;
    }
    auto number = static_cast<std::uint32_t>(value);
    if ((options & kUnsigned) == 0 && value < 0) {
        number = ~number + 1;
        if (size > 0) {
            put(target.memory, count++, codes.minus);
            --size;
        }
    }
    const std::uint32_t thousands = separator(locale, member, 60, checked.ofObject, 5);
    Mark mark(groupText(locale, member, 62, checked.ofObject, 32), codes, thousands, 0);
    Units reversed;
    do {
        reversed.push_back(codes.zero + number % 10);
        number /= 10;
        mark.look(reversed);
    } while (number != 0 && reversed.size() < 512);
    if (mark.separates())
        reversed.pop_back();
    if (checked.counted)
        size = sizeInUnits(locale, reversed, size);
    std::size_t left = reversed.size();
    for (; size > 0 && left > 0; --size)
        put(target.memory, count++, reversed[--left]);
    if (checked.terminated)
        put(target.memory, count++, 0);
    std::int32_t result = count;
    if (checked.counted && member == Member::kEx) {
        const Bytes bytes = narrowBytes(target.memory);
        result = numCharsEx(locale.base, Span(bytes), target.state, count);
    }
    return {result, left > 0 ? kTooSmall : 0};
}

Outcome doubleToString(const TextLocale& locale, Member member, double value, const Target& target,
                       std::uint32_t options)
{
    if (member == Member::kEx && !locale.base.stateful)
        member = Member::kPlain;
    const Checked checked =
        checkedOptions(member, target.size, options, kObjectValue | kTerminated);
    if (checked.failed)
        return *checked.failed;
    const Codes codes = codesOf(locale, member);
    std::int32_t size = target.size - (checked.terminated ? 1 : 0);
    std::int32_t count = 0;
    if (member == Member::kEx && target.state == 1) {
        if (!checked.counted && size < (checked.terminated ? 1 : 2))
            return {0, kTooSmall};
        put(target.memory, 0, shiftOut(locale.base.page));
        count = checked.counted ? 0 : 1;
    }
    const std::uint32_t thousands = separator(locale, member, 60, checked.ofObject, 5);
    const Units list = groupText(locale, member, 62, checked.ofObject, 32);
    const std::string text = fixedText(value);
    Units reversed;
    putFraction(reversed, member, codes, text, numberItem(locale, 63, checked.ofObject),
                separator(locale, member, 59, checked.ofObject, 5));

    GroupList groups(list, codes);
    std::int32_t group = 512;
    std::int32_t saved = 512;
    bool repeats = false;
    if (!list.empty() && thousands != 0) {
        const std::int32_t first = groups.next();
        if (first > 0)
            group = saved = first;
    }
    std::size_t at = text.find('.') == std::string::npos ? text.size() : text.find('.');
    while (at > 1) {
        std::int32_t filled = 0;
        for (; filled < group && at > 1; ++filled)
            reversed.push_back(digitOf(member, codes, text[--at]));
        if (filled < group)
            break;
        if (at == 1) {
            if (value > 0)
                reversed.push_back(thousands);
            break;
        }
        reversed.push_back(thousands);
        if (repeats) {
            group = saved;
            continue;
        }
        const std::int32_t next = groups.next();
        if (next < 0) {
            group = 512;
        } else if (next == 0) {
            repeats = true;
            group = saved;
        } else {
            group = saved = next;
        }
    }
    if (!(value < 0))
        reversed.push_back(digitOf(member, codes, text[0]));
    if (checked.counted)
        size = sizeInUnits(locale, reversed, size);
    if (value < 0 && size > count)
        put(target.memory, count++, codes.minus);
    std::size_t left = reversed.size();
    while (count < size && left > 0)
        put(target.memory, count++, reversed[--left]);
    const std::int32_t error = left > 1 ? kTooSmall : 0;
    if (checked.terminated)
        put(target.memory, count++, 0);
    if (checked.counted && count > 0)
        return {countOf(locale, target.memory, count), error};
    return {count, error};
}

} // namespace vlx::oracle
