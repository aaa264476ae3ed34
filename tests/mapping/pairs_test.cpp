// The map values of a code page and the pairs of a language.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "mapping/unimap.hpp"
#include "support/object_builder.hpp"
#include "support/page_builder.hpp"

namespace vlx::test {
namespace {

// The pairs of a page as they stand in its section 1.
struct PagePairs {
    explicit PagePairs(const PageBuilder& page)
    {
        const std::uint8_t* const section = page.sections()[0].data();
        const std::size_t from = get16(section, 0x1110);
        for (std::size_t i = 0; i < get16(section, 6); ++i)
            pairs.emplace_back(get32(section, from + 8 * i), get32(section, from + 8 * i + 4));
        for (std::size_t byte = 0; byte < 256; ++byte)
            values.push_back(get32(section, get16(section, 0x110E) + 4 * byte));
    }

    TSChar32 valueOf(TSChar32 key) const
    {
        for (const auto& [one, value] : pairs)
            if (one == key)
                return value;
        return 0;
    }

    TSChar32 characterOf(TSChar32 value) const
    {
        for (TSChar32 byte = 0; byte < 256; ++byte)
            if (values[byte] == value)
                return byte;
        for (const auto& [key, one] : pairs)
            if (one == value)
                return key;
        return 0;
    }

    std::vector<TSChar32> values;
    std::vector<std::pair<TSChar32, TSChar32>> pairs;
};

void compareOnPage(const PageBuilder& page, std::mt19937_64& random)
{
    const PagePairs wanted(page);
    std::vector<TSChar32> asked = {0, 1, 0xFF, 0x100, 0xFFFFFFFF};
    for (const auto& [key, value] : wanted.pairs)
        asked.insert(asked.end(), {key - 1, key, key + 1, value, value + 1});
    asked.insert(asked.end(), wanted.values.begin(), wanted.values.end());
    for (int i = 0; i < 100; ++i)
        asked.push_back(static_cast<TSChar32>(random()) >> 8 * (random() % 4));
    for (const TSChar32 value : asked) {
        ASSERT_EQ(TSCpMapValue(&page.object(), value), wanted.valueOf(value)) << value;
        ASSERT_EQ(TSCpUnmapValue(&page.object(), value), wanted.characterOf(value)) << value;
    }
}

TEST(MapValues, AreThoseOfTheTablesOnRandomPages)
{
    std::mt19937_64 random(72);
    std::size_t pairs = 0;
    for (int round = 0; round < 20; ++round) {
        for (const PageShape shape : kPageShapes) {
            const PageBuilder page = randomPage(random, shape);
            compareOnPage(page, random);
            pairs = std::max(pairs, PagePairs(page).pairs.size());
        }
    }
    EXPECT_GT(pairs, 20u);
}

TEST(MapValues, ManyPairsAreFoundOneByOne)
{
    std::mt19937_64 random(2048);
    for (const TSChar32 count : {1u, 2u, 3u, 7u, 8u, 9u, 1000u}) {
        PageBuilder page(PageShape::kDoubleByte);
        for (TSChar32 i = 0; i < count; ++i)
            page.mapValue(0x8140 + 3 * i, 0xA000 + 7 * i % 5);
        page.build();
        compareOnPage(page, random);
    }
}

TEST(MapValues, WithoutPairsThereIsNone)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.mapValue('A', 0x8260).build();
    EXPECT_EQ(TSCpMapValue(&page.object(), 0x8260), 0u);
    EXPECT_EQ(TSCpMapValue(&page.object(), 0), 0u);
    EXPECT_EQ(TSCpMapValue(&page.object(), 'A'), 0u) << "a byte's value is in the other table";
}

TEST(MapValues, WithoutPairsThePairsAreNotRead)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.build();
    Section section = page.sections()[0];
    put16(section, 0x1110, 0xFFFF);
    TSObject object = page.object();
    object.sections[0] = section.data();
    EXPECT_EQ(TSCpMapValue(&object, 0x8260), 0u);
    EXPECT_EQ(TSCpUnmapValue(&object, 0x8260), 0u);
}

TEST(UnmapValue, BytesComeBeforePairsAndTheFirstOneWins)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.mapValue('A', 0x8260).mapValue('B', 0x8260).mapValue(0x8140, 0x8260);
    page.mapValue(0x8142, 0x8261).mapValue(0x8141, 0x8261).build();
    EXPECT_EQ(TSCpUnmapValue(&page.object(), 0x8260), TSChar32{'A'});
    EXPECT_EQ(TSCpUnmapValue(&page.object(), 0x8261), 0x8141u);
    EXPECT_EQ(TSCpUnmapValue(&page.object(), 0x8262), 0u);
}

// Deliberate: 0 is no map value and is sought all the same.
TEST(UnmapValue, OfZeroIsTheFirstByteWithoutAValue)
{
    PageBuilder page(PageShape::kDoubleByte);
    for (TSChar32 byte = 0; byte < 0x30; ++byte)
        page.mapValue(byte, 0x8200 + byte);
    page.build();
    EXPECT_EQ(TSCpUnmapValue(&page.object(), 0), 0x30u);
}

// Deliberate: the offset of a page without map values is 0, which is the header itself.
TEST(UnmapValue, OfASingleBytePageReadsTheHeader)
{
    PageBuilder page(PageShape::kSingleByte);
    page.build();
    const std::uint8_t* const section = page.sections()[0].data();
    ASSERT_EQ(get16(section, 0x110E), 0u);
    EXPECT_EQ(TSCpUnmapValue(&page.object(), get32(section, 0)), 0u);
    EXPECT_EQ(TSCpUnmapValue(&page.object(), get32(section, 4)), 1u);
    EXPECT_EQ(TSCpMapValue(&page.object(), get32(section, 4)), 0u);
}

class LanguagePairs : public testing::Test {
  protected:
    LanguagePairs()
    {
        content_.upperPairs.clear();
        content_.lowerPairs.clear();
    }

    // The result of a lookup with what it hands back.
    struct Found {
        std::int32_t count;
        TSChar16 result1;
        TSChar16 result2;
        bool operator==(const Found&) const = default;
    };
    static constexpr TSChar16 kUntouched = 0xEEEE;
    static constexpr Found kMiss = {0, kUntouched, kUntouched};

    Found find(TSChar16 first, TSChar16 second, PairTable table)
    {
        bytes_ = content_.bytes();
        object_.sections[0] = bytes_.data();
        Found found = kMiss;
        found.count = TSLangMapPair(&object_, first, second, &found.result1, &found.result2, table);
        return found;
    }
    Found upper(TSChar16 first, TSChar16 second) { return find(first, second, PairTable::kUpper); }
    Found lower(TSChar16 first, TSChar16 second) { return find(first, second, PairTable::kLower); }

    LanguageContent content_ = LanguageContent::sample();
    Bytes bytes_;
    TSObject object_{};
};

TEST_F(LanguagePairs, GiveOneOrTwoResults)
{
    content_.upperPairs = {{0x00DF, 0, 'S', 'S'}, {'i', 0, 0x0130, 0}, {'d', 'z', 0x01F1, 0}};
    EXPECT_EQ(upper(0x00DF, 0), (Found{2, 'S', 'S'}));
    EXPECT_EQ(upper('i', 0), (Found{1, 0x0130, 0}));
    EXPECT_EQ(upper('d', 'z'), (Found{1, 0x01F1, 0}));
}

TEST_F(LanguagePairs, MissWhatIsNotThereAsAWhole)
{
    content_.upperPairs = {{'d', 'z', 0x01F1, 0}, {'i', 0, 0x0130, 0}};
    EXPECT_EQ(upper('d', 0), kMiss);
    EXPECT_EQ(upper('i', 'z'), kMiss);
    EXPECT_EQ(upper('z', 'd'), kMiss);
    EXPECT_EQ(upper('z', 0), kMiss);
}

TEST_F(LanguagePairs, KeepTheDirectionsApart)
{
    content_.upperPairs = {{'i', 0, 0x0130, 0}};
    content_.lowerPairs = {{'I', 0, 0x0131, 0}, {0x0130, 0, 'i', 0}};
    EXPECT_EQ(upper('i', 0), (Found{1, 0x0130, 0}));
    EXPECT_EQ(upper('I', 0), kMiss);
    EXPECT_EQ(lower('I', 0), (Found{1, 0x0131, 0}));
    EXPECT_EQ(lower(0x0130, 0), (Found{1, 'i', 0}));
    EXPECT_EQ(lower('i', 0), kMiss);
}

TEST_F(LanguagePairs, AreInNoOrderAndTheFirstMatchCounts)
{
    content_.lowerPairs = {{'Z', 0, 'z', 0}, {'A', 0, '1', 0}, {'A', 0, '2', '3'}};
    EXPECT_EQ(lower('A', 0), (Found{1, '1', 0}));
    EXPECT_EQ(lower('Z', 0), (Found{1, 'z', 0}));
}

TEST_F(LanguagePairs, OfALanguageWithNoneAreNotRead)
{
    EXPECT_EQ(upper('i', 0), kMiss);
    EXPECT_EQ(lower('I', 0), kMiss);
    ASSERT_EQ(get32(bytes_.data(), 6), 0u) << "both counts";
    put16(bytes_, 98, 0xFFFF);
    put16(bytes_, 100, 0xFFFF);
    TSChar16 result1 = kUntouched;
    TSChar16 result2 = kUntouched;
    for (const PairTable table : {PairTable::kLower, PairTable::kUpper})
        EXPECT_EQ(TSLangMapPair(&object_, 'i', 0, &result1, &result2, table), 0);
}

} // namespace
} // namespace vlx::test
