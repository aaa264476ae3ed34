// What the comparisons with the oracle run over: random pages of every shape, random texts on them,
// and places in the texts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <random>
#include <vector>

#include "chars/guarded_text.hpp"
#include "support/oracle_chars.hpp"
#include "support/page_builder.hpp"
#include "support/test_locale.hpp"

namespace vlx::test {

// Each comparison covers at least so many well-defined calls.
inline constexpr int kWantedCalls = 100000;

using Random = std::mt19937_64;

// The same page for the library and for the oracle.
oracle::Page oraclePage(const PageBuilder& page);
oracle::Locale oracleLocale(const PageBuilder& page);

// Several random pages of each shape, made once.
std::vector<PageBuilder>& randomPages();

// A text of valid and broken characters: cut ones, stray shift bytes, bytes without a meaning; some
// are terminated.
oracle::Bytes randomText(Random& random, const PageBuilder& page);

// Bytes that are to be read as one character longer than one byte, some of them without a value.
oracle::Bytes randomLongCharacter(Random& random, const PageBuilder& page);

// A random integer from `first` to `last`.
std::int32_t pick(Random& random, std::int32_t first, std::int32_t last);

// A packed value of one to four bytes, the smallest and largest of each size among them, and some
// with zero bytes inside.
TSChar32 randomValue(Random& random);

// Bits of a mapping: often a single one.
std::uint32_t randomMapping(Random& random);

// A place in a text. The text ends where nobody may read.
struct Situation {
    Random& random;
    PageBuilder& page;
    const oracle::Locale& reference;
    TSLocale& locale;
    const oracle::Bytes& text;
    char* string; // the same text
    std::int32_t position;
    std::int32_t state; // 0 or 1

    oracle::Span whole() const { return oracle::Span(text); }
    oracle::Span here() const { return whole().from(position); }
    char* at() const { return string + position; }
    std::int32_t size() const { return static_cast<std::int32_t>(text.size()); }
};

std::ostream& operator<<(std::ostream& out, const Situation& situation);

// Runs `check` on one situation after another until it was told kWantedCalls times that the call
// was well defined, or a check has failed.
using Check = bool (*)(const Situation& situation);
void compareEverywhere(Check check);

// The oracle's answer; none if the call is not well defined.
template <class Call>
auto wellDefined(Call call) -> std::optional<decltype(call())>
{
    try {
        return call();
    } catch (const oracle::StrayRead&) {
        return std::nullopt;
    }
}

// Whether a call stays inside its texts, even if the oracle does not: the caller knows lengths in
// bytes, but those in characters can reach behind a text.
inline bool mustStayInside(std::uint32_t options, std::initializer_list<std::int32_t> lengths)
{
    return !(options & TS_OPT_CHAR_COUNT) || std::max(lengths) < 0;
}

// Compares the result of a call with the oracle's, if it is well defined, and looks for error 0.
template <class Reference, class Call>
bool compare(const Situation& situation, Reference reference, Call call)
{
    const auto wanted = wellDefined(reference);
    if (wanted) {
        EXPECT_EQ(call(), *wanted);
        EXPECT_EQ(situation.locale.lastError, TS_ERR_NONE);
    }
    return wanted.has_value();
}

// An output area with guard bytes on both sides.
class Output {
  public:
    Output() { std::fill(std::begin(area_), std::end(area_), kFill); }
    char* at() { return reinterpret_cast<char*>(area_ + kMargin); }

    // True if just these bytes were written.
    bool holds(const oracle::Bytes& bytes) const;

  private:
    static constexpr std::size_t kMargin = 8;
    static constexpr unsigned char kFill = 0xA5;
    unsigned char area_[4 * kMargin];
};

} // namespace vlx::test

namespace vlx::oracle {

inline std::ostream& operator<<(std::ostream& out, const Stop& stop)
{
    out << "position " << stop.position;
    return stop.state ? out << ", state " << *stop.state : out << ", no state";
}

} // namespace vlx::oracle
