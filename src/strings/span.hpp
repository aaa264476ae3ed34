// Spans: how far a string consists of characters of a set, or of none of them. One algorithm for
// the five forms; single-byte text, where a character is a byte, has a loop of its own.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "chars/byteset.hpp"
#include "chars/form.hpp"
#include "chars/runs.hpp"
#include "frame/globals.hpp"
#include "locale/locale.hpp"
#include "strings/length.hpp"

namespace vlx {

// A string argument of a span as the caller gave it.
template <class Form>
struct SpanText {
    const typename Form::Unit* string;
    std::int32_t length;
    std::int32_t state = 0;
};

// Lengths in characters are turned into bytes first; negative ones stay.
template <class Form>
SpanText<Form> spanText(const TSLocale& locale, const char* string, std::int32_t length,
                        std::uint32_t options, std::int32_t state = 0)
{
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale.codePage, string, state, length);
    return {string, length, state};
}

// The characters of a set, and a filter by their first units in front of them.
template <class Form>
class CharacterSet {
    using Unit = typename Form::Unit;

  public:
    CharacterSet(const Form& form, Text<Form> set) : form_(form), set_(set)
    {
        for (; form.settle(set); set.at += lengthAt(form, set))
            filter_[indexOf(*set.at)] = true;
    }

    // Whether the character at `text` is in the set: one of the same length and the same units.
    bool has(const Text<Form>& text) const
    {
        if (!filter_[indexOf(*text.at)])
            return false;
        const std::int32_t length = lengthAt(form_, text);
        Text<Form> set = set_;
        for (; form_.settle(set); set.at += lengthAt(form_, set))
            if (lengthAt(form_, set) == length && std::equal(set.at, set.at + length, text.at))
                return true;
        return false;
    }

    // A character's length, cut to what is left of its text.
    static std::int32_t lengthAt(const Form& form, const Text<Form>& text)
    {
        return std::min(form.length(text), text.left());
    }

  private:
    static std::uint8_t indexOf(Unit unit) { return static_cast<std::uint8_t>(unit); }

    const Form& form_;
    const Text<Form> set_;
    bool filter_[256] = {};
};

// Units from the start of `string` whose characters are in `set`, or are not, as `inSet` asks. A
// character that a given length cuts off ends the span; one that the terminator cuts off is
// shorter.
template <class Form>
std::int32_t spanOf(const Form& form, const SpanText<Form>& string, const SpanText<Form>& set,
                    bool inSet)
{
    const CharacterSet<Form> characters(form, textOf(form, set.string, set.length, set.state));
    Text<Form> text = textOf(form, string.string, string.length, string.state);
    while (form.settle(text)) {
        const std::int32_t length = CharacterSet<Form>::lengthAt(form, text);
        const bool isCut = string.length >= 0 && form.length(text) > length;
        if (isCut || characters.has(text) != inSet)
            break;
        text.at += length;
    }
    return static_cast<std::int32_t>(text.at - string.string);
}

// What ends a span of units below 256, in a table, and how far the span goes.
class SpanTable {
  public:
    explicit SpanTable(bool inSet) : inSet_(inSet) { std::fill(goesOn_, goesOn_ + 256, !inSet); }

    void add(std::uint8_t unit) { goesOn_[unit] = inSet_; }
    void stopAt(std::uint8_t unit) { goesOn_[unit] = false; }
    bool goesOn(std::uint8_t unit) const { return goesOn_[unit]; }

    // Whether a span goes on over eight bytes, and over eight 16-bit units below 256.
    bool goesOnOver(const std::uint8_t* bytes) const
    {
        const std::uint64_t word = wordAt(bytes);
        bool all = true;
        for (int shift = 0; shift < 64; shift += 8)
            all &= goesOn_[word >> shift & 0xFF];
        return all;
    }
    bool goesOnOver(const TSChar16* units) const
    {
        const std::uint64_t words[] = {wordAt(units), wordAt(units + 4)};
        bool all = ((words[0] | words[1]) & 0xFF00FF00FF00FF00) == 0;
        for (const std::uint64_t word : words)
            for (int shift = 0; shift < 64; shift += 16)
                all &= goesOn_[word >> shift & 0xFF];
        return all;
    }

    // How far a span surely goes on, in blocks.
    template <class Unit>
    std::int32_t blocksOver(const Unit* units, std::int32_t length) const
    {
        return length >= ByteSet::kWorthIt ? ByteSet(goesOn_).blocksIn(units, length) : 0;
    }

    static constexpr int kUnits = 8;

  private:
    const bool inSet_;
    bool goesOn_[256];
};

// The span of single-byte text: one look into a table for each byte, and no look for the end of a
// terminated string before it is reached.
inline std::int32_t spanOf(const SingleForm&, const SpanText<SingleForm>& string,
                           const SpanText<SingleForm>& set, bool inSet)
{
    SpanTable table(inSet);
    const std::int32_t setLength = set.length < 0 ? unitsOf(set.string) : set.length;
    for (std::int32_t i = 0; i < setLength; ++i)
        table.add(static_cast<std::uint8_t>(set.string[i]));
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(string.string);
    std::int32_t at = 0;
    if (string.length < 0) {
        table.stopAt(0);
        while (table.goesOn(bytes[at]))
            ++at;
    } else {
        at = table.blocksOver(bytes, string.length);
        while (string.length - at >= SpanTable::kUnits && table.goesOnOver(bytes + at))
            at += SpanTable::kUnits;
        while (at < string.length && table.goesOn(bytes[at]))
            ++at;
    }
    return at;
}

// The span of 16-bit text: by a table too, in which other units than Latin-1 are not.
inline std::int32_t spanOf(const UnicodeForm& form, const SpanText<UnicodeForm>& string,
                           const SpanText<UnicodeForm>& set, bool inSet)
{
    const CharacterSet<UnicodeForm> characters(form, textOf(form, set.string, set.length));
    SpanTable table(inSet);
    const std::int32_t setLength = set.length < 0 ? unitsOf(set.string) : set.length;
    for (std::int32_t i = 0; i < setLength; ++i)
        if (set.string[i] <= 0xFF)
            table.add(static_cast<std::uint8_t>(set.string[i]));
    const TSChar16* const units = string.string;
    const std::int32_t length = string.length < 0 ? unitsOf(units) : string.length;
    const auto goesOn = [&](std::int32_t at) {
        if (units[at] <= 0xFF)
            return table.goesOn(static_cast<std::uint8_t>(units[at]));
        return characters.has({units + at, units + length}) == inSet;
    };
    std::int32_t at = table.blocksOver(units, length);
    while (at < length) {
        if (length - at >= SpanTable::kUnits && table.goesOnOver(units + at))
            at += SpanTable::kUnits;
        else if (goesOn(at))
            ++at;
        else
            break;
    }
    return at;
}

} // namespace vlx
