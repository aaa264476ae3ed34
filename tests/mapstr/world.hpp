// Random calls of mapping, truncation and comparison, for the comparisons with their oracles: pages
// of every shape with digits, map values and blanks, languages with and without pairs, and texts
// over a few characters of them.
#pragma once

#include "chars/situations.hpp"
#include "mapstr/language.hpp"
#include "mapstr/oracle_mapstr.hpp"
#include "strings/guarded_area.hpp"
#include "tessera.h"

namespace vlx::test {

// A page, a language, and a locale of both. It stays where it is.
class World {
  public:
    World(Random& random, PageShape shape);
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // The record of a call: given itself or, now and then, as the default locale.
    TSLocale* handle(Random& random);

    // Whole characters in some states, now and then broken; with a terminator, or without.
    oracle::Bytes text(Random& random, std::int32_t state, std::int32_t tokens) const;
    oracle::Bytes terminated(Random& random, std::int32_t state, std::int32_t tokens) const;
    oracle::Units units(Random& random, std::int32_t count, bool packed) const;

    // The characters of texts, to vary a text.
    const oracle::Bytes& anyShort(Random& random) const
    {
        return shorts_[random() % shorts_.size()];
    }
    const oracle::Bytes& anyLong(Random& random) const { return longs_[random() % longs_.size()]; }

    PageBuilder page;
    bool isSound; // whether the page would pass the check at load
    oracle::Locale reference;
    oracle::Language pairs;
    TestLanguage language;
    TSLocale locale;

  private:
    void addDigitsAndBlanks(Random& random);
    void chooseCharacters(Random& random);
    void choosePairs(Random& random);
    void addToken(Random& random, oracle::Bytes& text, std::int32_t& state) const;
    void enter(oracle::Bytes& text, std::int32_t& state, std::int32_t wanted) const;

    std::vector<oracle::Bytes> shorts_;
    std::vector<oracle::Bytes> longs_;
    std::vector<std::uint16_t> unicodes_;
    std::vector<std::uint32_t> packed_;
};

// A negative length, a whole one, or any below. A negative one needs a terminator.
std::int32_t anyLength(Random& random, std::size_t size, bool isTerminated);

template <class Text>
bool isTerminated(const Text& text)
{
    return std::find(text.begin(), text.end(), typename Text::value_type{0}) != text.end();
}

void printBytes(std::ostream& out, const char* name, const oracle::Bytes& bytes);

inline GuardedArea::Guard anyGuard(Random& random)
{
    return random() % 2 == 0 ? GuardedArea::Guard::kAbove : GuardedArea::Guard::kBelow;
}

template <class Unit>
std::vector<Unit> narrowed(const oracle::Units& units)
{
    std::vector<Unit> result;
    for (const std::uint32_t unit : units)
        result.push_back(static_cast<Unit>(unit));
    return result;
}

// Runs `check` on one world after another until it was told kWantedCalls times that the call was
// well defined, or a check has failed.
using WorldCheck = bool (*)(World& world, Random& random);
void callInWorlds(WorldCheck check);

} // namespace vlx::test
