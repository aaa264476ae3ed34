// Random calls of the formatters and parsers, for the comparisons with the oracle: random locales
// on pages of every shape, random options and sizes, every buffer between guards.
#pragma once

#include <functional>

#include "frame/globals.hpp"
#include "strings/guarded_area.hpp"
#include "text/world.hpp"

namespace vlx::test {

using oracle::Member;

// Random texts of a locale: group sizes, time patterns, any characters.
std::u16string anyGrouping(Random& random);
std::u16string anyPattern(Random& random, int depth);
std::u16string anyCharacters(Random& random, bool isLongAllowed, int most);
LocaleSpec anySpec(Random& random, PageShape shape);

// Bits out of those that are accepted, and now and then one that is not.
std::uint32_t anyOptions(Random& random, std::uint32_t accepted);

// Doubles of every size, and those that are no numbers.
double anyDouble(Random& random);

// A call: a locale and random numbers.
struct TextCall {
    TextLocale& locale;
    Random& random;

    // The record, given itself or, now and then, as the default locale.
    TSLocale* handle();

    // A text in the units of a member, from a state, terminated.
    oracle::Units encode(Member member, std::u16string_view text, std::int32_t state) const;
};

// Runs `check` until it was told that enough calls were well defined, or one has failed.
using TextCheck = bool (*)(TextCall& call);
void callTexts(TextCheck check);

// Memory of the calls.
struct TextAreas {
    GuardedArea destination;
    GuardedArea text;
    GuardedArea pattern;
};
TextAreas& textAreas();

inline GuardedArea::Guard anyGuardOf(Random& random)
{
    return random() % 2 == 0 ? GuardedArea::Guard::kAbove : GuardedArea::Guard::kBelow;
}

template <class Unit>
std::vector<Unit> narrowUnits(const oracle::Units& units)
{
    std::vector<Unit> result;
    for (const std::uint32_t unit : units)
        result.push_back(static_cast<Unit>(unit));
    return result;
}

// What a formatter was given, and what became of it.
struct Writing {
    std::int32_t state;
    std::int32_t size;
    std::uint32_t options;
};
Writing anyWriting(Random& random, std::uint32_t accepted);
std::ostream& operator<<(std::ostream& out, const Writing& writing);

template <class Unit>
constexpr Member memberOf(bool withState)
{
    if (sizeof(Unit) == 1)
        return withState ? Member::kEx : Member::kPlain;
    return sizeof(Unit) == 2 ? Member::kUnicode : Member::kPacked;
}

// Compares a formatter: `reference(target)` is the oracle, `tested(destination)` the call.
template <class Unit, class Reference, class Tested>
bool compareWriting(TextCall& call, const Writing& writing, const Reference& reference,
                    const Tested& tested, const std::function<std::string()>& describe)
{
    constexpr std::uint32_t kFill = 0xCD;
    const std::size_t units = writing.size > 0 ? static_cast<std::size_t>(writing.size) : 0;
    const bool counted = sizeof(Unit) == 1 && (writing.options & TS_OPT_CHAR_COUNT);
    const oracle::Units before(counted ? 8 * units + 4 : units, kFill);
    oracle::Units after = before;
    const auto wanted = wellDefined([&] {
        return reference(oracle::Target{after, writing.state, writing.size});
    });
    if (!wanted)
        return false;
    Unit* const destination =
        textAreas().destination.place(narrowUnits<Unit>(before), anyGuardOf(call.random));
    const std::int32_t result = tested(destination);
    const bool same = result == wanted->result && call.locale.record.lastError == wanted->error &&
                      textAreas().destination.holds(narrowUnits<Unit>(after));
    if (same)
        return true;
    ADD_FAILURE() << describe() << ", " << writing << ": result " << result << ", wanted "
                  << wanted->result << "; code " << call.locale.record.lastError << ", wanted "
                  << wanted->error;
    std::string wantedText;
    std::string text;
    for (std::size_t i = 0; i < after.size() && i < 100; ++i) {
        wantedText += ::testing::PrintToString(after[i]) + ' ';
        text += ::testing::PrintToString(static_cast<std::uint32_t>(
                    static_cast<std::make_unsigned_t<Unit>>(destination[i]))) +
                ' ';
    }
    ADD_FAILURE() << text << "\nwanted\n" << wantedText;
    return true;
}

} // namespace vlx::test
