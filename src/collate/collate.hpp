// What the members of collation share: the two routes of a comparison, and the strings they get.
#pragma once

#include "collate/compare.hpp"
#include "collate/quick.hpp"
#include "collate/workarea.hpp"
#include "frame/trace.hpp"

namespace vlx {

// Without streams if that can be, else with them; none without memory.
template <class Form>
[[gnu::noinline]] std::optional<std::int32_t>
compareFurther(const Form& form, const Sort& sort, const Text<Form>& text1, const Text<Form>& text2,
               const SameStart<Form>& same, WorkArea& area)
{
    CollationCursor<Form> cursor1{text1};
    CollationCursor<Form> cursor2{text2};
    if (QuickComparison<Form>::isFor(sort)) {
        QuickComparison<Form> quick(form, sort, text1, text2, same);
        const std::optional<std::int32_t> result = quick.run();
        if (result)
            return result;
        cursor1.text = quick.start1();
        cursor2.text = quick.start2();
    }
    if (!area.isTaken() && !area.take())
        return {};
    TSSortStreams streams1(area.first(), static_cast<std::uint64_t>(text1.left()));
    TSSortStreams streams2(area.second(), static_cast<std::uint64_t>(text2.left()));
    return Collation<Form>(form, sort, cursor1, streams1, cursor2, streams2).run();
}

// The route without options: by collation elements. None without memory, where it is needed or
// where the caller can see that it was asked for.
template <class Form>
[[gnu::noinline]] std::optional<std::int32_t>
compareElements(const TSLocale& locale, const Form& form, const Text<Form>& text1,
                const Text<Form>& text2, WorkArea& area)
{
    if (!area.canWait() && !area.take())
        return {};
    const Sort sort = sortOf(locale);
    SameStart<Form> same;
    if (QuickComparison<Form>::isFor(sort)) {
        same = sameStart(form, sort, text1, text2);
        const std::optional<std::int32_t> result = behindSameStart(
            form, sort, textBehind(text1, same.skipped), textBehind(text2, same.skipped));
        if (result)
            return result;
    } else if (const std::int32_t difference = firstLetters(form, sort, text1, text2)) {
        return difference;
    }
    return compareFurther(form, sort, text1, text2, same, area);
}

// Whether a string has a first unit, and surely not more units than there can be memory for.
template <class Unit>
bool beginsShort(const Unit* string, std::int32_t length)
{
    constexpr std::int32_t kShort = 1 << 24;
    return length < 0 ? *string != 0 : length > 0 && length < kShort;
}

// The difference of the first letters, before the strings are measured; 0 if it is not that easy,
// or if the caller could see that no memory was asked for.
template <class Form>
std::int32_t earlyDifference(const TSLocale& locale, const Form& form,
                             const typename Form::Unit* string1, std::int32_t length1,
                             const typename Form::Unit* string2, std::int32_t length2)
{
    if (tsSlots.allocate != host::allocate || !beginsShort(string1, length1) ||
        !beginsShort(string2, length2))
        return 0;
    return firstLetters(form, sortOf(locale), {string1, string1 + 1}, {string2, string2 + 1});
}

// The route with options: by keys. `keyOf1` and `keyOf2` make one in a buffer and give its length,
// or -1; that is 0 here. A key never needs more than the buffer: two values a unit give at most 16
// bytes and the separators.
template <class KeyOf1, class KeyOf2>
std::optional<std::int32_t> compareKeys(WorkArea& area, const KeyOf1& keyOf1, const KeyOf2& keyOf2)
{
    if (!area.take())
        return {};
    const std::int32_t size1 = keyOf1(reinterpret_cast<char*>(area.first()), area.size1());
    if (size1 < 0)
        return 0;
    const std::int32_t size2 = keyOf2(reinterpret_cast<char*>(area.second()), area.size2());
    if (size2 < 0)
        return 0;
    return compareRuns(area.first(), static_cast<std::uint32_t>(std::min(size1, area.size1())),
                       area.second(), static_cast<std::uint32_t>(std::min(size2, area.size2())));
}

inline constexpr std::uint32_t kWidthBit = TS_OPT_IGNORE_WIDTH & ~TS_OPT_IGNORE_CASE;

// The options that comparison by code takes over, where it is asked for by those of collation.
inline std::uint32_t codeOptions(std::uint32_t options)
{
    const bool width = (options & TS_OPT_IGNORE_WIDTH) == TS_OPT_IGNORE_WIDTH;
    return options & (TS_OPT_STRIP_BLANKS | (width ? TS_OPT_IGNORE_WIDTH : TS_OPT_IGNORE_CASE));
}

// A length that counts characters as bytes.
inline std::int32_t countedBytes(const TSLocale& locale, const char* string, std::int32_t state,
                                 std::int32_t length)
{
    return length > 0 ? TSCpCharsToBytes(locale.codePage, string, state, length) : length;
}

// Takes the blanks of any width off the ends of two texts: off a copy, of which the length is
// taken. `truncate` cuts the copy in place to a size and gives the bytes left, with the terminator.
// Without memory the blanks stay. Deliberate: of the second text no more is copied than is left of
// the first one.
template <class Truncate>
void stripWideBlanks(CompareText& first, CompareText& second, std::uint32_t onStack,
                     const Truncate& truncate)
{
    char stack[258]; // behind the terminator there is room for the shift byte of an empty text
    const auto longest = static_cast<std::uint32_t>(std::max(first.length, second.length));
    std::optional<Scratch> block;
    char* const copy = longest < onStack ? stack : block.emplace(longest + 1).as<char>();
    if (!copy)
        return;
    second.length = std::min(second.length, INT32_MAX - 1);
    // Gives what is left, with the shift byte that closes an empty text.
    const auto strip = [&](CompareText& text, std::int32_t length) {
        std::memcpy(copy, text.string, static_cast<std::size_t>(length));
        copy[length] = 0;
        const std::int32_t left = truncate(copy, text.state, length + 1) - 1;
        text.length = std::min(length, left);
        return left;
    };
    const std::int32_t left = strip(first, std::min(first.length, INT32_MAX - 1));
    strip(second, std::min(left, second.length));
}

// Takes blanks off the end of units. `second` is another blank, or none.
template <class Unit>
std::int32_t withoutBlanks(const Unit* string, std::int32_t length, Unit blank,
                           std::optional<Unit> second)
{
    // Deliberate: with a second blank all but that one go, and where both are the same, all.
    while (length > 0 && (string[length - 1] == blank || (second && string[length - 1] != *second)))
        --length;
    return length;
}

} // namespace vlx
