// The builder against the oracle: what a page was told comes back from its sections. Both have to
// hold before either is worth a comparison with the library.
#include <set>

#include "chars/situations.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kUpperBit = 0x0001;

// The value that a page gives bytes, by the same test that every caller makes.
TSChar16 unicodeOf(const oracle::Page& page, const CharBytes& bytes)
{
    if (bytes.size() == 1)
        return static_cast<TSChar16>(oracle::toUnicode(page, bytes[0]));
    return oracle::mbToUnicode(page, oracle::Span(bytes));
}

std::uint32_t word16(const Section& section, std::size_t offset)
{
    return static_cast<std::uint32_t>(section.at(offset) | section.at(offset + 1) << 8);
}

std::uint32_t word32(const Section& section, std::size_t offset)
{
    return word16(section, offset) | word16(section, offset + 2) << 16;
}

std::uint32_t typeOf(const PageBuilder& page, const CharBytes& bytes)
{
    return word32(page.sections()[0],
                  oracle::charTypeRecord(oraclePage(page), oracle::Span(bytes)));
}

TEST(PageBuilder, DecodesWhatItWasTold)
{
    for (const PageBuilder& page : randomPages())
        for (const auto& [bytes, unicode] : page.decoded())
            ASSERT_EQ(unicodeOf(oraclePage(page), bytes), unicode);
}

TEST(PageBuilder, EncodesWhatItWasTold)
{
    for (const PageBuilder& page : randomPages())
        for (const auto& [unicode, character] : page.encoded()) {
            if (page.shape() == PageShape::kUtf8)
                continue;
            ASSERT_EQ(oracle::unicodeToWide(oraclePage(page), unicode), character);
            ASSERT_EQ(oracle::unicodeToMb(oraclePage(page), unicode), bytesOf(character));
        }
}

TEST(PageBuilder, GivesTheSubstituteForAllElse)
{
    for (const PageBuilder& page : randomPages())
        for (std::uint32_t value = 0; value < 0x10000; value += 7) {
            const auto unicode = static_cast<TSChar16>(value);
            if (page.shape() == PageShape::kUtf8 || page.encoded().count(unicode) != 0)
                continue;
            ASSERT_EQ(oracle::unicodeToWide(oraclePage(page), unicode),
                      oracle::substChar(oraclePage(page)));
        }
}

TEST(PageBuilder, HasNoUnicodeForOtherBytes)
{
    PageBuilder page(PageShape::kThreeByte);
    page.map(0x8F4142, 0x4E00).map(0x8F4144, 0x4E01).map(0x9141, 0x4E02).build();
    const oracle::Page built = oraclePage(page);
    EXPECT_EQ(unicodeOf(built, {0x8F, 0x41, 0x42}), 0x4E00);
    EXPECT_EQ(unicodeOf(built, {0x8F, 0x41, 0x43}), kNoUnicode);
    EXPECT_EQ(unicodeOf(built, {0x8F, 0x41, 0x45}), kNoUnicode);
    EXPECT_EQ(unicodeOf(built, {0x8F, 0x42, 0x42}), kNoUnicode);
    EXPECT_EQ(unicodeOf(built, {0x90, 0x41}), kNoUnicode);
    EXPECT_EQ(unicodeOf(built, {0x91, 0x41}), 0x4E02);
    EXPECT_EQ(oracle::charLength(built, 0x8F), 3U);
    EXPECT_EQ(oracle::charLength(built, 0x91), 2U);
    EXPECT_EQ(oracle::charLength(built, 0x90), 1U);
}

TEST(PageBuilder, KeepsTypesOfCharactersAndPrefixes)
{
    PageBuilder page(PageShape::kThreeByte);
    page.map(0x8F4142, 0x4E00).type(0x8F4142, kUpperBit, 2).type(0x9141, 0x80).type(0x41, 0x40);
    page.typeOfPrefix(0x8F50, 0x08).build();
    EXPECT_EQ(typeOf(page, {0x8F, 0x41, 0x42}), kUpperBit);
    EXPECT_EQ(typeOf(page, {0x8F, 0x41, 0x43}), 0U);
    EXPECT_EQ(typeOf(page, {0x8F, 0x50, 0x43}), 0x08U);
    EXPECT_EQ(typeOf(page, {0x91, 0x41}), 0x80U);
    EXPECT_EQ(typeOf(page, {0x92, 0x41}), 0U);
    EXPECT_EQ(oracle::mapChar(oraclePage(page), oracle::Span(CharBytes{0x8F, 0x41, 0x42}), 1),
              (oracle::Bytes{0x8F, 0x41, 0x44}));
}

TEST(PageBuilder, LaysMapValuesOutBehindTheHeader)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.mapValue(0x41, 0x8281).mapValue(0x8282, 0x42).mapValue(0x8140, 0x20).build();
    const Section& section = page.sections()[0];
    EXPECT_EQ(word16(section, 0x0006), 2U);
    EXPECT_EQ(word32(section, word16(section, 0x110E) + 4 * 0x41), 0x8281U);
    const std::uint32_t pairs = word16(section, 0x1110);
    EXPECT_EQ(word32(section, pairs), 0x8140U);
    EXPECT_EQ(word32(section, pairs + 4), 0x20U);
    EXPECT_EQ(word32(section, pairs + 8), 0x8282U);
}

TEST(PageBuilder, ASingleBytePageIsItsHeaderAlone)
{
    PageBuilder page(PageShape::kSingleByte);
    page.asciiHalf().build();
    EXPECT_EQ(page.sections()[0].size(), 4376U);
    EXPECT_EQ(page.object().sections[1], nullptr);
    EXPECT_EQ(page.object().sections[3], nullptr);
}

TEST(PageBuilder, NarrowRunsTakeAsManyElementsAsTheyHaveBytes)
{
    PageBuilder page(PageShape::kSingleByte);
    page.narrow().encodeOnly(0x2028, 0x0A).encodeOnly(0x2029, 0x0B).build();
    const Section& section = page.sections()[0];
    const std::size_t entry = 0x090C + 8 * 0x20;
    EXPECT_EQ(section[entry + 1], 0x01); // mask
    EXPECT_EQ(section[entry + 2], 0x28); // low
    EXPECT_EQ(section[entry + 3], 0x29); // high
    EXPECT_EQ(page.sections()[2].size(), 3U);
}

TEST(PageBuilder, RandomPagesReachEveryKindAndBothMasks)
{
    std::set<unsigned> kinds;
    std::set<bool> wholeMasks;
    for (const PageBuilder& page : randomPages()) {
        for (const auto& [unicode, character] : page.encoded()) {
            const std::size_t entry = 0x090C + 8U * (unicode >> 8);
            kinds.insert(page.sections()[0][entry]);
            wholeMasks.insert(page.sections()[0][entry + 1] == 0xFF);
        }
    }
    EXPECT_EQ(kinds, (std::set<unsigned>{0, 1, 2, 3, 4}));
    EXPECT_EQ(wholeMasks.size(), 2U);
}

TEST(PageBuilder, RefusesAKindThatCannotHoldThePage)
{
    PageBuilder page(PageShape::kThreeByte);
    page.map(0x8F4142, 0x4E00).pageKind(0x4E, kPageWord);
    EXPECT_THROW(page.build(), std::invalid_argument);
}

TEST(Oracle, ReportsAReadOutsideTheText)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.map(0x8140, 0x3000).build();
    const oracle::Bytes cut{0x81};
    EXPECT_THROW(oracle::getWide(oraclePage(page), oracle::Span(cut)), oracle::StrayRead);
}

} // namespace
} // namespace vlx::test
