// The members of the comparison against the oracle: result and error code, in working memory that
// watches its blocks and now and then fails.
#include <sstream>

#include "collate/random_texts.hpp"
#include "collate/sort_world.hpp"
#include "host/host.hpp"

namespace vlx::test {
namespace {

// Now and then the memory is the host's, of which nobody sees how much is taken.
void useHostMemory(Random& random, const WorkingMemory& memory)
{
    if (!memory.fails() && random() % 2 == 0)
        tsSlots = {host::allocate, host::free, host::allocate, host::free};
}

template <class Reference, class Tested>
bool compareBytes(SortWorld& sorted, Random& random, Reference reference, Tested tested)
{
    const BytePair pair(sorted, random);
    const std::uint32_t options = anyCollationOptions(random);
    const WorkingMemory memory(failsNow(random));
    useHostMemory(random, memory);
    const oracle::Collation collation = sorted.oracle(!memory.fails());
    const auto wanted =
        wellDefined([&] { return reference(collation, pair.text1, pair.text2, options); });
    if (!wanted &&
        !(sorted.world.isSound && mustStayInside(options, {pair.text1.length, pair.text2.length})))
        return false;
    const char* const string1 = pair.placeFirst(random);
    const char* const string2 = pair.placeSecond(random);
    const std::int32_t result =
        tested(sorted.handle(random), string1, pair.text1, string2, pair.text2, options);
    EXPECT_TRUE(memory.allGivenBack()) << pair;
    if (!wanted)
        return false;
    EXPECT_EQ(result, wanted->result) << pair << ", options 0x" << std::hex << options;
    EXPECT_EQ(sorted.world.locale.lastError, wanted->error)
        << pair << ", options 0x" << std::hex << options;
    return true;
}

TEST(CollationAgainstOracle, TSStrcoll)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return compareBytes(
            world, random,
            [](const oracle::Collation& collation, const oracle::Text& text1,
               const oracle::Text& text2,
               std::uint32_t options) { return collation.plain(text1, text2, options); },
            [](TSLocale* handle, const char* string1, const oracle::Text& text1,
               const char* string2, const oracle::Text& text2, std::uint32_t options) {
                return TSStrcoll(handle, string1, text1.length, string2, text2.length, options);
            });
    });
}

TEST(CollationAgainstOracle, TSStrcollEx)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return compareBytes(
            world, random,
            [](const oracle::Collation& collation, const oracle::Text& text1,
               const oracle::Text& text2,
               std::uint32_t options) { return collation.shifted(text1, text2, options); },
            [](TSLocale* handle, const char* string1, const oracle::Text& text1,
               const char* string2, const oracle::Text& text2, std::uint32_t options) {
                return TSStrcollEx(handle, string1, text1.state, text1.length, string2, text2.state,
                                   text2.length, options);
            });
    });
}

template <class Unit, class Reference, class Tested>
bool compareUnits(SortWorld& sorted, Random& random, Reference reference, Tested tested)
{
    const UnitPair<Unit> pair(sorted, random);
    const std::uint32_t options = anyCollationOptions(random);
    const WorkingMemory memory(failsNow(random));
    useHostMemory(random, memory);
    const oracle::Collation collation = sorted.oracle(!memory.fails());
    const auto wanted = wellDefined([&] {
        return reference(collation, pair.first, pair.length1, pair.second, pair.length2, options);
    });
    if (!wanted)
        return false;
    const Unit* const string1 = pair.placeFirst(random);
    const Unit* const string2 = pair.placeSecond(random);
    const std::int32_t result =
        tested(sorted.handle(random), string1, pair.length1, string2, pair.length2, options);
    EXPECT_EQ(result, wanted->result) << pair << ", options 0x" << std::hex << options;
    EXPECT_EQ(sorted.world.locale.lastError, wanted->error)
        << pair << ", options 0x" << std::hex << options;
    EXPECT_TRUE(memory.allGivenBack()) << pair;
    return true;
}

TEST(CollationAgainstOracle, TSStrcollU)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return compareUnits<TSChar16>(
            world, random,
            [](const oracle::Collation& collation, const oracle::Units& first, std::int32_t length1,
               const oracle::Units& second, std::int32_t length2, std::uint32_t options) {
                return collation.units(first, length1, second, length2, options);
            },
            TSStrcollU);
    });
}

TEST(CollationAgainstOracle, TSWcscoll)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return compareUnits<TSChar32>(
            world, random,
            [](const oracle::Collation& collation, const oracle::Units& first, std::int32_t length1,
               const oracle::Units& second, std::int32_t length2, std::uint32_t options) {
                return collation.packed(first, length1, second, length2, options);
            },
            TSWcscoll);
    });
}

} // namespace
} // namespace vlx::test
