// What the load of a sort looks at, and sorts that are not sound.
#include <gtest/gtest.h>

#include "collate/hand_sorts.hpp"
#include "collate/sort_world.hpp"
#include "frame/sections.hpp"

namespace vlx::test {
namespace {

vlx::Section sectionOf(const Bytes& bytes)
{
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size()), false};
}

constexpr std::size_t kCharTable = 1030;
constexpr std::size_t kExpansionTable = 1032;
constexpr std::size_t kContractionTable = 1034;

SortBuilder fullSort()
{
    SortBuilder sort = latinSort();
    sort.contraction('c', 'h', {0x0300});
    return sort;
}

TEST(SortCheck, ASortIsSoundUpToItsLastRecord)
{
    Bytes content = fullSort().bytes();
    EXPECT_TRUE(sortIsSound(sectionOf(content)));
    content.pop_back();
    EXPECT_FALSE(sortIsSound(sectionOf(content))) << "the contraction is cut off";
    EXPECT_FALSE(sortIsSound(sectionOf(Bytes(1035)))) << "the header is cut off";
    EXPECT_TRUE(sortIsSound({})) << "a section of size 0";
}

TEST(SortCheck, EveryOffsetAndCountIsLookedAt)
{
    const Bytes content = fullSort().bytes();
    for (const std::size_t field :
         {std::size_t{2}, std::size_t{4}, kCharTable, kExpansionTable, kContractionTable}) {
        Bytes changed = content;
        put16(changed, field, 0xFFF0);
        EXPECT_FALSE(sortIsSound(sectionOf(changed))) << field;
    }
    Bytes page = content;
    put16(page, 6 + 2, 1000); // the base of page 0
    EXPECT_FALSE(sortIsSound(sectionOf(page)));
    page[6] = 2; // by rule it is no index
    EXPECT_TRUE(sortIsSound(sectionOf(page)));
}

TEST(SortCheck, ASortThatIsNotSoundIsReadInsideItsCopy)
{
    const WorkingMemory memory;
    Random random(5);
    const Bytes content = fullSort().bytes();
    SortLocale locale(latinPage(), latinSort());
    for (int round = 0; round < 300; ++round) {
        Bytes changed = content;
        changed.resize(random() % 3 == 0 ? random() % changed.size() : changed.size());
        for (std::uint64_t changes = random() % 20; changes > 0 && !changed.empty(); --changes)
            changed[random() % changed.size()] = static_cast<std::uint8_t>(random());
        if (changed.size() >= 1036 && random() % 2 == 0)
            put16(changed, kCharTable + 2 * (random() % 3), static_cast<std::uint32_t>(random()));
        if (changed.empty() || sortIsSound(sectionOf(changed)))
            continue;
        vlx::Section copy;
        ASSERT_TRUE(padSort(sectionOf(changed), copy));
        EXPECT_TRUE(sortIsSound(copy));
        TSObject object{};
        object.type = TS_OBJ_SORT;
        object.sections[0] = copy.data;
        object.sortTraitsState = TSObject::kTraitsWanted;
        locale.record.sort = &object;
        for (TSChar16 value = 0; value < 0xFF00; value = static_cast<TSChar16>(value + 0x35)) {
            const TSChar16 text[] = {value, static_cast<TSChar16>(value + 1), 0x63, 0x68};
            char key[128];
            TSStrcollU(locale.handle(), text, 2, text + 1, 3, 0);
            EXPECT_GE(TSStrxfrmU(locale.handle(), key, sizeof key, text, 4, 0), 3);
        }
        release(const_cast<std::uint8_t*>(copy.data));
        EXPECT_TRUE(memory.allGivenBack());
    }
}

TEST(SortCheck, WithoutMemoryThereIsNoCopy)
{
    const WorkingMemory memory(true);
    vlx::Section copy;
    EXPECT_FALSE(padSort(sectionOf(Bytes(100, 7)), copy));
}

TSSortTraits traitsOf(const SortBuilder& sort)
{
    const Bytes content = sort.bytes();
    return sortTraitsOf(content.data());
}

// The levels that go one way, forward ones first.
std::pair<int, int> levelsOf(const SortBuilder& sort)
{
    const TSSortTraits traits = traitsOf(sort);
    return {traits.forwardLevels, traits.backwardLevels};
}

TEST(SortCheck, DirectionsCountWhereThereIsAWeight)
{
    using Levels = std::pair<int, int>;
    EXPECT_EQ(levelsOf(SortBuilder()), Levels(0xF, 0xF)) << "no weight at all";
    EXPECT_EQ(levelsOf(latinSort()), Levels(0xF, 0x0));
    EXPECT_EQ(levelsOf(SortBuilder().letter('a', {0, 1, 0}, 0x4)), Levels(0xF, 0xB));
    EXPECT_EQ(levelsOf(SortBuilder().letter('a', {0x101, 0, 0}, 0x7)), Levels(0x7, 0xF));
    EXPECT_EQ(levelsOf(SortBuilder().letter('a', {0, 1, 0}, 0xB)), Levels(0xB, 0xF));
    EXPECT_EQ(levelsOf(SortBuilder().letter('a', {0, 0, 1}, 0xD)), Levels(0xD, 0xF));
    EXPECT_EQ(levelsOf(SortBuilder().special('a', 1, 0xE)), Levels(0xE, 0xF));
    EXPECT_EQ(levelsOf(SortBuilder().special('a', 1, 0x1)), Levels(0xF, 0xE));
    EXPECT_EQ(levelsOf(SortBuilder().markExpansion('a', 0xB)), Levels(0xB, 0x5));
    EXPECT_EQ(levelsOf(SortBuilder().contraction('a', 'b', {1, 0, 0}, 0x7)), Levels(0x7, 0xF));
    EXPECT_EQ(levelsOf(SortBuilder().level1Page(3, 0, 0x7)), Levels(0x7, 0xF));
    EXPECT_EQ(levelsOf(SortBuilder().level1Page(3, 0, 0x8)), Levels(0xF, 0x7));
    EXPECT_EQ(levelsOf(SortBuilder().level4Page(3, 0, 0xE)), Levels(0xE, 0xF));
    EXPECT_EQ(levelsOf(SortBuilder().page(3, 7, 0, 0)), Levels(0xF, 0xF))
        << "a page without weights";
    EXPECT_EQ(levelsOf(SortBuilder().letter('a', {0, 1, 0}).letter('b', {0, 1, 0}, 0xB)),
              Levels(0xB, 0xB))
        << "both ways";
}

TEST(SortCheck, Level4IsSeenWhereverItIs)
{
    EXPECT_TRUE(traitsOf(SortBuilder().letter('a', {1})).isWithout4);
    EXPECT_FALSE(traitsOf(latinSort()).isWithout4);
    EXPECT_FALSE(traitsOf(SortBuilder().level4Page(3, 0)).isWithout4);
    EXPECT_FALSE(traitsOf(SortBuilder().specialContraction('a', 'b', 1)).isWithout4);
    EXPECT_TRUE(traitsOf(SortBuilder().specialContraction('a', 'b', 0)).isWithout4);
}

TEST(SortCheck, ListsAreOrderedIfNoneIsTwice)
{
    const auto pairs = [](std::vector<std::pair<TSChar16, TSChar16>> list) {
        SortBuilder sort;
        for (const auto& [first, second] : list)
            sort.contraction(first, second, {1});
        return traitsOf(sort).isOrdered;
    };
    EXPECT_TRUE(pairs({{'a', 'b'}, {'a', 'c'}, {'b', 'a'}}));
    EXPECT_FALSE(pairs({{'a', 'c'}, {'a', 'b'}}));
    EXPECT_FALSE(pairs({{'a', 'c'}, {'a', 'c'}}));
    EXPECT_FALSE(pairs({{'b', 'a'}, {'a', 'b'}}));
    EXPECT_TRUE(
        traitsOf(SortBuilder().expansion('a', {1}, {2}).expansion('b', {1}, {2})).isOrdered);
    EXPECT_FALSE(
        traitsOf(SortBuilder().expansion('b', {1}, {2}).expansion('a', {1}, {2})).isOrdered);
    EXPECT_FALSE(
        traitsOf(SortBuilder().expansion('a', {1}, {2}).expansionRecord('a', {3}, {4})).isOrdered);
}

TEST(SortCheck, TheFirstCharactersOfContractionsAreKnown)
{
    const TSSortTraits traits = traitsOf(SortBuilder().contraction('c', 'h', {1}));
    EXPECT_EQ(traits.alone, ~(std::uint64_t{1} << ('c' & 63)));
    EXPECT_EQ(traitsOf(SortBuilder()).alone, ~std::uint64_t{0});
}

} // namespace
} // namespace vlx::test
