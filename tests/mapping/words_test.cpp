// The type words of Unicode values: all of them, as TSGetCharTypeU hands them out in its three
// fields.
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "chars/unitypes.hpp"
#include "support/page_builder.hpp"
#include "support/test_locale.hpp"

namespace vlx::test {
namespace {

struct Words {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t word;
};

// Answers that are fixed: what lies between the runs that have words of their own.
constexpr Words kFixed[] = {
    {0x06FA, 0x0900, 0x00000400}, {0x0EDE, 0x109F, 0x00000400}, {0x11FA, 0x1DFF, 0x00000400},
    {0x2200, 0x2211, 0x02200020}, {0x2212, 0x2213, 0x02008020}, {0x2214, 0x221D, 0x02200020},
    {0x221E, 0x221E, 0x00200020}, {0x221F, 0x22F1, 0x02200020}, {0x27BF, 0x2FFF, 0x00000400},
    {0x33FF, 0x4DFF, 0x00000400}, {0x4E00, 0x9FA5, 0x40000801}, {0x9FA6, 0xABFF, 0x00000400},
    {0xAC00, 0xD7A3, 0x00000801}, {0xD7A4, 0xF8FF, 0x00000400}, {0xF900, 0xFA2D, 0x40000801},
    {0xFA2E, 0xFAFF, 0x00000400}, {0xFBD3, 0xFBE8, 0x00001001}, {0xFBE9, 0xFBE9, 0x00000400},
    {0xFBEA, 0xFCE0, 0x00001001}, {0xFCE1, 0xFCE1, 0x00000400}, {0xFCE2, 0xFD3D, 0x00001001},
};

constexpr Words kTelling[] = {
    {0x0000, 0x0000, 0x00000700}, // control, ASCII, no direction
    {0x0009, 0x0009, 0x020803C0}, // control, space, blank; segment separator; symbol
    {0x0020, 0x0020, 0x121002C0}, // space, blank; white space; symbol, half-width
    {0x0030, 0x0030, 0x10002218}, // digit, hexadecimal; European number; half-width
    {0x0041, 0x0041, 0x10000A13}, // alphabetic, upper, hexadecimal; left to right; half-width
    {0x0061, 0x0061, 0x10000A15}, // the same, lower
    {0x0080, 0x0080, 0x00000500}, // control, no direction
    {0x00C0, 0x00C0, 0x00C00803}, // alphabetic, upper; left to right; nonspacing, diacritic
    {0x05D0, 0x05D0, 0x00001001}, // alphabetic; right to left
    {0x0640, 0x0640, 0x80401020}, // punctuation; right to left; nonspacing, kashida
    {0x0660, 0x0660, 0x00010008}, // digit; Arabic number
    {0x2028, 0x2028, 0x02040020}, // punctuation; block separator; symbol
    {0x3000, 0x3000, 0x221000C0}, // space, blank; white space; symbol, full-width
    {0x3041, 0x3041, 0x08000801}, // alphabetic; left to right; hiragana
    {0x30A2, 0x30A2, 0x24000801}, // alphabetic; left to right; katakana, full-width
    {0xFF21, 0xFF21, 0x20000813}, // as U+0041, full-width
    {0xFF71, 0xFF71, 0x14000801}, // alphabetic; left to right; katakana, half-width
    {0xFFFD, 0xFFFD, 0x00000400}, // nothing but the direction none
};

std::vector<Words> reviewedWords()
{
    std::vector<Words> words;
    std::ifstream in(VLX_EXPECTED_WORDS);
    for (std::string line; std::getline(in, line);) {
        Words row{};
        if (line.empty() || line[0] == '#')
            continue;
        if (std::istringstream(line) >> std::hex >> row.first >> row.last >> row.word)
            words.push_back(row);
        else
            ADD_FAILURE() << "not a row: " << line;
    }
    return words;
}

class TypeWordsOfUnicode : public testing::Test {
  protected:
    std::uint32_t wordOf(std::uint32_t value)
    {
        const auto value16 = static_cast<TSChar16>(value);
        locale_.lastError = kUntouchedError;
        const std::uint32_t word = TSGetCharTypeU(&locale_, value16, TS_CT_CLASS) |
                                   TSGetCharTypeU(&locale_, value16, TS_CT_DIRECTION) << 10 |
                                   TSGetCharTypeU(&locale_, value16, TS_CT_FORM) << 22;
        EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
        EXPECT_EQ(word, uniTypeWord(value16));
        return word;
    }

    int expectWords(const Words& row)
    {
        for (std::uint32_t value = row.first; value <= row.last; ++value)
            EXPECT_EQ(wordOf(value), row.word) << "U+" << std::hex << value;
        return static_cast<int>(row.last - row.first + 1);
    }

    PageBuilder page_{PageShape::kSingleByte};
    TSLocale locale_ = localeOn(page_.build());
};

TEST_F(TypeWordsOfUnicode, TellingOnes)
{
    for (const Words& row : kTelling)
        expectWords(row);
}

TEST_F(TypeWordsOfUnicode, AllAsReviewedAndFixedBetween)
{
    int reviewed = 0;
    int fixed = 0;
    for (const Words& row : reviewedWords())
        reviewed += expectWords(row);
    for (const Words& row : kFixed)
        fixed += expectWords(row);
    EXPECT_EQ(reviewed, 7826);
    EXPECT_EQ(reviewed + fixed, 0x10000) << "every value is in one of the two";
}

TEST_F(TypeWordsOfUnicode, HaveOneDirectionEach)
{
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const std::uint32_t direction = wordOf(value) >> 10 & 0xFFF;
        ASSERT_TRUE(direction != 0 && (direction & (direction - 1)) == 0) << std::hex << value;
    }
}

TEST_F(TypeWordsOfUnicode, HaveTheAsciiBitUpTo7F)
{
    for (std::uint32_t value = 0; value < 0x10000; ++value)
        ASSERT_EQ((wordOf(value) & 0x200) != 0, value <= 0x7F) << std::hex << value;
}

TEST_F(TypeWordsOfUnicode, OfTheIdeographicBlankIsSymbolAndFullWidth)
{
    EXPECT_EQ(TSGetCharTypeU(&locale_, 0x3000, TS_CT_FORM), 0x088u);
}

TEST_F(TypeWordsOfUnicode, OfIdeographsAndHangul)
{
    EXPECT_EQ(TSGetCharTypeU(&locale_, 0x4E00, TS_CT_CLASS), 0x001u);
    EXPECT_EQ(TSGetCharTypeU(&locale_, 0x4E00, TS_CT_FORM), 0x100u);
    EXPECT_EQ(TSGetCharTypeU(&locale_, 0xAC00, TS_CT_FORM), 0u);
}

} // namespace
} // namespace vlx::test
