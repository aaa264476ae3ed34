// The built-in maps of Unicode values: every value against the oracle, and what is told of single
// ones.
#include <gtest/gtest.h>

#include "frame/globals.hpp"
#include "mapping/oracle_maps.hpp"
#include "mapping/unimap.hpp"
#include "support/page_builder.hpp"
#include "support/test_locale.hpp"

namespace vlx::test {
namespace {

class UnicodeMaps : public testing::Test {
  protected:
    using Map = TSChar16 (*)(TSLocale*, TSChar16);
    using RawMap = TSChar16 (*)(TSChar16);
    using Reference = std::uint16_t (*)(std::uint16_t);

    // Compares all values and counts those that change.
    int compareAll(Map map, RawMap raw, Reference reference)
    {
        int changed = 0;
        for (std::uint32_t value = 0; value < 0x10000; ++value) {
            const auto value16 = static_cast<TSChar16>(value);
            const TSChar16 wanted = reference(value16);
            EXPECT_EQ(map(&locale_, value16), wanted) << std::hex << value;
            EXPECT_EQ(raw(value16), wanted) << std::hex << value;
            changed += wanted != value16;
        }
        return changed;
    }

    PageBuilder page_{PageShape::kSingleByte};
    TSLocale locale_ = localeOn(page_.build());
};

TEST_F(UnicodeMaps, LowerEveryValueAsTheOracleDoes)
{
    EXPECT_EQ(oracle::lowerTableSize(), 506u);
    // The ranges without a table: Latin-1, Armenian, Georgian, Roman numerals, circled and wide
    // letters.
    EXPECT_EQ(compareAll(TSUniToLower, uniToLower, oracle::toLower),
              506 + 26 + 30 + 38 + 38 + 16 + 26 + 26);
}

TEST_F(UnicodeMaps, UpperEveryValueAsTheOracleDoes)
{
    EXPECT_EQ(oracle::upperTableSize(), 508u);
    EXPECT_EQ(compareAll(TSUniToUpper, uniToUpper, oracle::toUpper),
              508 + 26 + 30 + 1 + 38 + 16 + 26 + 26);
}

TEST_F(UnicodeMaps, WidenEveryValueAsTheOracleDoes)
{
    EXPECT_EQ(compareAll(TSUniToFullWidth, uniToFullWidth, oracle::toFullWidth),
              94 + 6 + 2 + 63 + 59);
}

TEST_F(UnicodeMaps, NarrowEveryValueAsTheOracleDoes)
{
    EXPECT_EQ(compareAll(TSUniToHalfWidth, uniToHalfWidth, oracle::toHalfWidth),
              94 + 6 + 2 + 63 + 59);
}

TEST_F(UnicodeMaps, KnowTheDigitsThatTheOracleKnows)
{
    int digits = 0;
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const auto value16 = static_cast<TSChar16>(value);
        ASSERT_EQ(uniDigit(value16), oracle::digit(value16)) << std::hex << value;
        digits += uniDigit(value16) != 0;
    }
    EXPECT_EQ(digits, 179);
}

TEST_F(UnicodeMaps, SharpSStaysInBothDirections)
{
    EXPECT_EQ(TSUniToLower(&locale_, 0x00DF), 0x00DF);
    EXPECT_EQ(TSUniToUpper(&locale_, 0x00DF), 0x00DF);
}

TEST_F(UnicodeMaps, MultiplicationAndDivisionSignsAreNoLetters)
{
    EXPECT_EQ(TSUniToLower(&locale_, 0x00D7), 0x00D7);
    EXPECT_EQ(TSUniToUpper(&locale_, 0x00F7), 0x00F7);
}

TEST_F(UnicodeMaps, YWithDiaeresisGoesOutOfLatin1AndBack)
{
    EXPECT_EQ(TSUniToUpper(&locale_, 0x00FF), 0x0178);
    EXPECT_EQ(TSUniToLower(&locale_, 0x0178), 0x00FF);
}

TEST_F(UnicodeMaps, DotlessIHasAnUpperFormAlone)
{
    EXPECT_EQ(TSUniToLower(&locale_, 0x0131), 0x0131);
    EXPECT_EQ(TSUniToUpper(&locale_, 0x0131), 0x0049);
}

TEST_F(UnicodeMaps, DottedCapitalILowersToAscii)
{
    EXPECT_EQ(TSUniToLower(&locale_, 0x0130), 0x0069);
}

// Deliberate: the pair stands as the version of Unicode has it that the tables come from.
TEST_F(UnicodeMaps, BarredOLowersInACircle)
{
    EXPECT_EQ(TSUniToLower(&locale_, 0x0275), 0x019F);
    EXPECT_EQ(TSUniToLower(&locale_, 0x019F), 0x0275);
    EXPECT_EQ(TSUniToUpper(&locale_, 0x0275), 0x0275);
}

TEST_F(UnicodeMaps, LettersWithOneDirectionAlone)
{
    EXPECT_EQ(TSUniToUpper(&locale_, 0x017F), 0x0053);
    EXPECT_EQ(TSUniToUpper(&locale_, 0x03C2), 0x03A3);
    for (TSChar16 value = 0x10D0; value <= 0x10F5; ++value)
        EXPECT_EQ(TSUniToUpper(&locale_, value), value);
    EXPECT_EQ(TSUniToLower(&locale_, 0x10A0), 0x10D0);
    EXPECT_EQ(TSUniToLower(&locale_, 0x10C5), 0x10F5);
}

TEST_F(UnicodeMaps, TitlecaseLettersHaveALowerFormAlone)
{
    const TSChar16 pairs[][2] = {
        {0x01C5, 0x01C6}, {0x01C8, 0x01C9}, {0x01CB, 0x01CC}, {0x01F2, 0x01F3}};
    for (const auto& [title, lower] : pairs) {
        EXPECT_EQ(TSUniToUpper(&locale_, title), title);
        EXPECT_EQ(TSUniToLower(&locale_, title), lower);
    }
}

TEST_F(UnicodeMaps, TheBlankIsAsWideAsAnIdeograph)
{
    EXPECT_EQ(TSUniToFullWidth(&locale_, 0x0020), 0x3000);
    EXPECT_EQ(TSUniToHalfWidth(&locale_, 0x3000), 0x0020);
}

TEST_F(UnicodeMaps, SoundMarksWidenToTheSpacingOnes)
{
    EXPECT_EQ(TSUniToFullWidth(&locale_, 0xFF9E), 0x309B);
    EXPECT_EQ(TSUniToFullWidth(&locale_, 0xFF9F), 0x309C);
    EXPECT_EQ(TSUniToHalfWidth(&locale_, 0x309B), 0xFF9E);
    EXPECT_EQ(TSUniToHalfWidth(&locale_, 0x3099), 0x3099);
}

TEST_F(UnicodeMaps, VoicedKanaHaveNoNarrowForm)
{
    EXPECT_EQ(TSUniToHalfWidth(&locale_, 0x30AC), 0x30AC);
}

TEST_F(UnicodeMaps, HolesOfTheWidthFormsStay)
{
    for (const TSChar16 value :
         u"\uFF5F\uFF60\uFFBF\uFFC0\uFFC1\uFFC8\uFFC9\uFFD0\uFFD1\uFFD8\uFFD9"
         u"\uFFDD\uFFDE\uFFDF\uFFE0\uFFE6\uFFE7\uFFEF")
        EXPECT_EQ(TSUniToFullWidth(&locale_, value), value) << std::hex << value;
    EXPECT_EQ(TSUniToHalfWidth(&locale_, 0xFF5F), 0xFF5F);
    EXPECT_EQ(TSUniToHalfWidth(&locale_, 0xFF60), 0xFF60);
}

TEST_F(UnicodeMaps, TamilHasNoZero)
{
    EXPECT_EQ(uniDigit(0x0BE6), 0);
    EXPECT_EQ(uniDigit(0x0BE7), u'1');
}

TEST_F(UnicodeMaps, EachMapClearsTheError)
{
    for (const Map map : {TSUniToLower, TSUniToUpper, TSUniToFullWidth, TSUniToHalfWidth}) {
        for (const TSChar16 value : {u'A', u'a', u'0', u'\u30A2', u'\uFFFF'}) {
            locale_.lastError = kUntouchedError;
            map(&locale_, value);
            EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
        }
    }
}

TEST_F(UnicodeMaps, ANullLocaleIsTheDefaultOne)
{
    TSLocale* const before = tsDefaultLocale;
    tsDefaultLocale = &locale_;
    for (const Map map : {TSUniToLower, TSUniToUpper, TSUniToFullWidth, TSUniToHalfWidth}) {
        locale_.lastError = kUntouchedError;
        EXPECT_EQ(map(nullptr, u'Q'), map(&locale_, u'Q'));
        EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
    }
    locale_.lastError = kUntouchedError;
    EXPECT_EQ(TSUniToLower(nullptr, u'Q'), u'q');
    EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
    tsDefaultLocale = before;
}

} // namespace
} // namespace vlx::test
