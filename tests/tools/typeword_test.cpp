// The type words that the rules make of the property table.
#include <gtest/gtest.h>

#include "characters.hpp"
#include "page_reader.hpp"
#include "shipped.hpp"
#include "typeword.hpp"
#include "width.hpp"

using namespace vlx::data;

namespace {

std::uint32_t wordOf(std::uint32_t value)
{
    static const CharacterData data = [] {
        Diagnostics diagnostics;
        auto loaded = CharacterData::load(VLX_DATA_DIRECTORY "/unicode", CharacterData::kLibrary,
                                          diagnostics);
        return loaded.value();
    }();
    return data.typeWord(static_cast<std::uint16_t>(value));
}

struct Words {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t word;
};

TEST(TypeWords, OfTellingCharacters)
{
    const Words rows[] = {
        {0x0000, 0x0000, 0x00000700}, {0x0009, 0x0009, 0x020803C0}, {0x0020, 0x0020, 0x121002C0},
        {0x0030, 0x0030, 0x10002218}, {0x0041, 0x0041, 0x10000A13}, {0x0061, 0x0061, 0x10000A15},
        {0x0080, 0x0080, 0x00000500}, {0x00C0, 0x00C0, 0x00C00803}, {0x05D0, 0x05D0, 0x00001001},
        {0x0640, 0x0640, 0x80401020}, {0x0660, 0x0660, 0x00010008}, {0x2028, 0x2028, 0x02040020},
        {0x3000, 0x3000, 0x221000C0}, {0x3041, 0x3041, 0x08000801}, {0x30A2, 0x30A2, 0x24000801},
        {0xFF21, 0xFF21, 0x20000813}, {0xFF71, 0xFF71, 0x14000801}, {0xFFFD, 0xFFFD, 0x00000400},
    };
    for (const Words& row : rows)
        EXPECT_EQ(wordOf(row.first), row.word) << std::hex << row.first;
}

TEST(TypeWords, OfRangesWithoutATable)
{
    const Words ranges[] = {
        {0x06FA, 0x0900, 0x00000400}, {0x0EDE, 0x109F, 0x00000400}, {0x11FA, 0x1DFF, 0x00000400},
        {0x2200, 0x2211, 0x02200020}, {0x2212, 0x2213, 0x02008020}, {0x2214, 0x221D, 0x02200020},
        {0x221E, 0x221E, 0x00200020}, {0x221F, 0x22F1, 0x02200020}, {0x27BF, 0x2FFF, 0x00000400},
        {0x33FF, 0x4DFF, 0x00000400}, {0x4E00, 0x9FA5, 0x40000801}, {0x9FA6, 0xABFF, 0x00000400},
        {0xAC00, 0xD7A3, 0x00000801}, {0xD7A4, 0xF8FF, 0x00000400}, {0xF900, 0xFA2D, 0x40000801},
        {0xFA2E, 0xFAFF, 0x00000400}, {0xFBD3, 0xFBE8, 0x00001001}, {0xFBE9, 0xFBE9, 0x00000400},
        {0xFBEA, 0xFCE0, 0x00001001}, {0xFCE1, 0xFCE1, 0x00000400}, {0xFCE2, 0xFD3D, 0x00001001},
    };
    for (const Words& range : ranges)
        for (std::uint32_t value = range.first; value <= range.last; ++value)
            ASSERT_EQ(wordOf(value), range.word) << std::hex << value;
}

// The table of the page that is built into the library, which differs from the Unicode words by the
// half-width bit alone.
TEST(TypeWords, OfTheAsciiPage)
{
    const Words bytes[] = {
        {0x00, 0x08, 0x10000700}, {0x09, 0x09, 0x120803C0}, {0x0A, 0x0D, 0x12000740},
        {0x0E, 0x1F, 0x10000700}, {0x20, 0x20, 0x121002C0}, {0x21, 0x22, 0x12200220},
        {0x23, 0x25, 0x12008220}, {0x26, 0x26, 0x12000A20}, {0x27, 0x27, 0x10200220},
        {0x28, 0x2A, 0x12200220}, {0x2B, 0x2B, 0x12008220}, {0x2C, 0x2C, 0x12020220},
        {0x2D, 0x2D, 0x10008220}, {0x2E, 0x2F, 0x12004220}, {0x30, 0x39, 0x10002218},
        {0x3A, 0x3A, 0x12020220}, {0x3B, 0x3F, 0x12200220}, {0x40, 0x40, 0x12000A20},
        {0x41, 0x46, 0x10000A13}, {0x47, 0x5A, 0x10000A03}, {0x5B, 0x60, 0x12200220},
        {0x61, 0x66, 0x10000A15}, {0x67, 0x7A, 0x10000A05}, {0x7B, 0x7E, 0x12200220},
        {0x7F, 0x7F, 0x10000700}, {0x80, 0xFF, 0x00000000},
    };
    for (const int id : {1, 367}) {
        const PageReader reader(compiledPath(id), id);
        for (const Words& range : bytes)
            for (std::uint32_t byte = range.first; byte <= range.last; ++byte)
                EXPECT_EQ(reader.type(static_cast<std::uint8_t>(byte)), range.word)
                    << std::hex << byte;
    }
}

// The words of the eight runs that have a table, held by their sum. They were compared word by word
// when the rules were written; whoever changes a rule on purpose compares them again.
TEST(TypeWords, OfAllTableRunsAsTheyWereReviewed)
{
    const Words runs[] = {
        {0x0000, 0x06F9, 0}, {0x0901, 0x0EDD, 0}, {0x10A0, 0x11F9, 0}, {0x1E00, 0x21FF, 0},
        {0x22F2, 0x27BE, 0}, {0x3000, 0x33FE, 0}, {0xFB00, 0xFBD2, 0}, {0xFD3E, 0xFFFF, 0},
    };
    std::uint64_t hash = 0xCBF29CE484222325;
    int count = 0;
    for (const Words& run : runs) {
        for (std::uint32_t value = run.first; value <= run.last; ++value, ++count)
            for (int shift = 0; shift < 32; shift += 8)
                hash = (hash ^ (wordOf(value) >> shift & 0xFF)) * 0x100000001B3;
    }
    EXPECT_EQ(count, 7826);
    EXPECT_EQ(hash, 0xFDABF394186C39E7u);
}

TEST(TypeWords, HaveExactlyOneDirection)
{
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const std::uint32_t direction = wordOf(value) >> 10 & 0xFFF;
        EXPECT_TRUE(direction != 0 && (direction & (direction - 1)) == 0) << std::hex << value;
    }
}

TEST(TypeWords, CallDigitsWhatDigitMappingKnows)
{
    int digits = 0;
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        if (!isMappedDigit(static_cast<std::uint16_t>(value)))
            continue;
        ++digits;
        // Deliberate: Tibetan digits are mapped and yet belong to a range without words.
        const bool tibetan = value >= 0x0F20 && value <= 0x0F29;
        EXPECT_EQ((wordOf(value) & 0x008) != 0, !tibetan) << std::hex << value;
    }
    EXPECT_EQ(digits, 179);
}

TEST(Widths, LeadThereAndBack)
{
    int pairs = 0;
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const auto value16 = static_cast<std::uint16_t>(value);
        if (const std::uint16_t wide = toFullWidth(value16); wide != value16) {
            EXPECT_EQ(toHalfWidth(wide), value16) << std::hex << value;
            EXPECT_EQ(toFullWidth(wide), wide) << std::hex << value;
            ++pairs;
        }
    }
    EXPECT_EQ(pairs, 94 + 6 + 2 + 63 + 59);
    EXPECT_EQ(toFullWidth(0xFF9E), 0x309B);
    EXPECT_EQ(toHalfWidth(0x30AC), 0x30AC);
    EXPECT_EQ(toFullWidth(0xFFE7), 0xFFE7);
}

} // namespace
