// Random calls of the string functions, for the comparisons with the oracle: random arguments over
// random and fixed pages of every shape, with every buffer between guards.
#pragma once

#include <array>
#include <gtest/gtest.h>
#include <ostream>

#include "chars/situations.hpp"
#include "strings/guarded_area.hpp"
#include "support/oracle_strings.hpp"
#include "tessera.h"

namespace vlx::test {

// A state that no function stores.
inline constexpr std::int32_t kNoState = 77;

// Arguments of all families; each call takes what it knows.
struct Arguments {
    oracle::Bytes string; // all that may be read, most often with a terminator
    std::int32_t state = 0;
    std::int32_t length = 0;
    oracle::Bytes set; // of a span, the delimiters of a token, the destination of an append
    std::int32_t setState = 0;
    std::int32_t setLength = 0;
    oracle::Bytes character; // to find
    std::int32_t characterState = 0;
    std::int32_t bufferState = 0;
    std::int32_t size = 0; // of a destination
    std::uint32_t options = 0;

    oracle::Text text() const { return {oracle::Span(string), state, length}; }
    oracle::Text setText() const { return {oracle::Span(set), setState, setLength}; }
};

std::ostream& operator<<(std::ostream& out, const Arguments& arguments);

// The same for 16-bit and 32-bit text.
template <class Unit>
struct UnitArguments {
    std::vector<Unit> string;
    std::int32_t length = 0;
    std::vector<Unit> set;
    std::int32_t setLength = 0;
    Unit value = 0;
    std::int32_t size = 0;
    std::uint32_t options = 0;
};

template <class Unit>
oracle::Units widen(const std::vector<Unit>& units)
{
    return {units.begin(), units.end()};
}

template <class Unit>
std::vector<Unit> narrow(const oracle::Units& units)
{
    std::vector<Unit> result;
    for (const std::uint32_t unit : units)
        result.push_back(static_cast<Unit>(unit));
    return result;
}

// Options that a family accepts, and now and then some that may be refused.
std::uint32_t anyOf(Random& random, std::initializer_list<std::uint32_t> accepted);

// Where a call happens: a page and its locale, and an area for each argument.
class Scene {
  public:
    static constexpr int kAreas = 3;
    using Areas = std::array<GuardedArea, kAreas>;

    Scene(Random& random, PageBuilder& page, Areas& areas);

    Random& random;
    PageBuilder& page;
    oracle::Locale reference;
    TSLocale locale;
    Areas& areas;

    // The record of the call: given itself or, now and then, as the default locale.
    TSLocale* handle();

    template <class Unit>
    Unit* place(std::size_t area, const std::vector<Unit>& units)
    {
        return areas[area].place(units, random() % 2 == 0 ? GuardedArea::Guard::kAbove
                                                          : GuardedArea::Guard::kBelow);
    }

    Arguments arguments();
    template <class Unit>
    UnitArguments<Unit> unitArguments();

  private:
    oracle::Bytes makeText(std::int32_t state, std::int32_t tokens);
    void addBroken(oracle::Bytes& text);
    void enter(oracle::Bytes& text, std::int32_t& state, std::int32_t wanted);
    // A negative length is a promise that the text is terminated.
    std::int32_t pickLength(std::size_t size, bool isTerminated);

    // Few characters, so that texts share them.
    oracle::Bytes shortOnes_;
    std::vector<oracle::Bytes> longOnes_;
    bool clean_; // texts without broken characters
};

// Pages made by hand, one of each shape.
std::vector<PageBuilder>& fixedPages();

// Runs `check` on one scene after another until it was told kWantedCalls times that the call was
// well defined, or a check has failed.
using SceneCheck = bool (*)(Scene& scene);
void callEverywhere(SceneCheck check);

} // namespace vlx::test
