// The members of the search against the oracle: the place, its state and the error code.
#include "collate/random_texts.hpp"

namespace vlx::test {
namespace {

std::uint32_t anySearchOptions(Random& random)
{
    constexpr std::uint32_t kOptions[] = {0,
                                          0,
                                          0,
                                          TS_OPT_IGNORE_CASE,
                                          TS_OPT_IGNORE_CASE,
                                          TS_OPT_IGNORE_WIDTH,
                                          TS_OPT_IGNORE_WIDTH,
                                          0x40,
                                          0x80000000,
                                          0x1};
    std::uint32_t options = kOptions[random() % std::size(kOptions)];
    if (random() % 4 == 0)
        options |= TS_OPT_CHAR_COUNT;
    return random() % 32 == 0 ? options ^ 1u << random() % 32 : options;
}

// Part of a text, sometimes changed.
template <class Text>
Text partOf(Random& random, const Text& text)
{
    if (text.empty())
        return text;
    const auto begin = static_cast<std::ptrdiff_t>(random() % text.size());
    const auto count =
        static_cast<std::ptrdiff_t>(random() % (text.size() - static_cast<std::size_t>(begin)) % 5);
    Text part(text.begin() + begin, text.begin() + begin + count);
    if (!part.empty() && random() % 4 == 0)
        part[random() % part.size()] ^= 0x20;
    if (random() % 2 == 0)
        part.push_back(0);
    return part;
}

constexpr std::int32_t kNoState = -77;

template <class Reference, class Tested>
bool searchBytes(SortWorld& sorted, Random& random, Reference reference, Tested tested)
{
    BytePair pair(sorted, random);
    if (random() % 4 != 0) {
        pair.second = partOf(random, pair.first);
        pair.text2 = {oracle::Span(pair.second), pair.text2.state,
                      anyLength(random, pair.second.size(), isTerminated(pair.second))};
    }
    const std::uint32_t options = anySearchOptions(random);
    const WorkingMemory memory(failsNow(random));
    const oracle::Collation collation = sorted.oracle(!memory.fails());
    const auto wanted =
        wellDefined([&] { return reference(collation, pair.text1, pair.text2, options); });
    if (!wanted &&
        !(sorted.world.isSound && mustStayInside(options, {pair.text1.length, pair.text2.length})))
        return false;
    const char* const string1 = pair.placeFirst(random);
    const char* const string2 = pair.placeSecond(random);
    std::int32_t state = kNoState;
    const char* const found =
        tested(sorted.handle(random), string1, pair.text1, string2, pair.text2, &state, options);
    EXPECT_TRUE(memory.allGivenBack()) << pair;
    if (!wanted)
        return false;
    EXPECT_EQ(found != nullptr, wanted->position.has_value())
        << pair << ", options 0x" << std::hex << options;
    if (found && wanted->position) {
        EXPECT_EQ(found - string1, *wanted->position)
            << pair << ", options 0x" << std::hex << options;
    }
    EXPECT_EQ(state, wanted->state.value_or(kNoState)) << pair;
    EXPECT_EQ(sorted.world.locale.lastError, wanted->error) << pair;
    return true;
}

TEST(SearchAgainstOracle, TSStrstr)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return searchBytes(
            world, random,
            [](const oracle::Collation& collation, const oracle::Text& text,
               const oracle::Text& sought,
               std::uint32_t options) { return collation.plainSearch(text, sought, options); },
            [](TSLocale* handle, const char* string1, const oracle::Text& text1,
               const char* string2, const oracle::Text& text2, std::int32_t*,
               std::uint32_t options) {
                return TSStrstr(handle, string1, text1.length, string2, text2.length, options);
            });
    });
}

TEST(SearchAgainstOracle, TSStrstrEx)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return searchBytes(
            world, random,
            [](const oracle::Collation& collation, const oracle::Text& text,
               const oracle::Text& sought,
               std::uint32_t options) { return collation.shiftedSearch(text, sought, options); },
            [](TSLocale* handle, const char* string1, const oracle::Text& text1,
               const char* string2, const oracle::Text& text2, std::int32_t* state,
               std::uint32_t options) {
                return TSStrstrEx(handle, string1, text1.state, text1.length, string2, text2.state,
                                  text2.length, state, options);
            });
    });
}

template <class Unit, class Reference, class Tested>
bool searchUnits(SortWorld& sorted, Random& random, Reference reference, Tested tested)
{
    UnitPair<Unit> pair(sorted, random);
    if (random() % 4 != 0) {
        pair.second = partOf(random, pair.first);
        pair.length2 = anyLength(random, pair.second.size(), isTerminated(pair.second));
    }
    const std::uint32_t options = anySearchOptions(random);
    const WorkingMemory memory(failsNow(random));
    const oracle::Collation collation = sorted.oracle(!memory.fails());
    const auto wanted = wellDefined([&] {
        return reference(collation, pair.first, pair.length1, pair.second, pair.length2, options);
    });
    if (!wanted)
        return false;
    const Unit* const string1 = pair.placeFirst(random);
    const Unit* const string2 = pair.placeSecond(random);
    const Unit* const found =
        tested(sorted.handle(random), string1, pair.length1, string2, pair.length2, options);
    EXPECT_EQ(found != nullptr, wanted->position.has_value())
        << pair << ", options 0x" << std::hex << options;
    if (found && wanted->position) {
        EXPECT_EQ(found - string1, *wanted->position)
            << pair << ", options 0x" << std::hex << options;
    }
    EXPECT_EQ(sorted.world.locale.lastError, wanted->error) << pair;
    EXPECT_TRUE(memory.allGivenBack()) << pair;
    return true;
}

TEST(SearchAgainstOracle, TSStrstrU)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return searchUnits<TSChar16>(
            world, random,
            [](const oracle::Collation& collation, const oracle::Units& text, std::int32_t length1,
               const oracle::Units& sought, std::int32_t length2, std::uint32_t options) {
                return collation.unitsSearch(text, length1, sought, length2, options);
            },
            TSStrstrU);
    });
}

TEST(SearchAgainstOracle, TSWcsstr)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return searchUnits<TSChar32>(
            world, random,
            [](const oracle::Collation& collation, const oracle::Units& text, std::int32_t length1,
               const oracle::Units& sought, std::int32_t length2, std::uint32_t options) {
                return collation.packedSearch(text, length1, sought, length2, options);
            },
            TSWcsstr);
    });
}

} // namespace
} // namespace vlx::test
