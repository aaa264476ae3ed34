// Amounts of money as text, case by case.
#include <limits>

#include "strings/pages.hpp"
#include "text/formatted.hpp"

namespace vlx::test {
namespace {

// Signs and a symbol that tell the pieces apart.
LocaleSpec pieces(std::uint8_t position, bool precedes, bool spaced)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.positions = {position, position};
    spec.texts[1] = u"CUR";
    spec.texts[3] = u"+";
    spec.texts[4] = u"-";
    spec.flags = static_cast<std::uint16_t>((precedes ? 5 : 0) | (spaced ? 10 : 0));
    return spec;
}

LocaleSpec withLong(PageShape shape)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = shape;
    spec.texts[1] = u"\x5186\x6708";
    return spec;
}

TEST(CurrencyToString, WritesAmountsOfTheBuiltInLocale)
{
    EXPECT_EQ(Formatted().money(1234.5), (Written{"$1,234.50", 9, 0}));
    EXPECT_EQ(Formatted().money(-1234.5), (Written{"($1,234.50)", 11, 0}));
    EXPECT_EQ(Formatted().money(1234.5, TS_OPT_INTERNATIONAL), (Written{"USD1,234.50", 11, 0}));
    EXPECT_EQ(Formatted().money(0), (Written{"$0.00", 5, 0}));
    EXPECT_EQ(Formatted().money(-123), (Written{"($123.00)", 9, 0}));
    EXPECT_EQ(Formatted().money(1234.5, TS_OPT_OBJECT_VALUE), (Written{"$1,234.50", 9, 0}));
}

TEST(CurrencyToString, CutsTheFractionAndDoesNotRound)
{
    EXPECT_EQ(Formatted().money(1.999), (Written{"$1.99", 5, 0}));
}

TEST(CurrencyToString, CutsWhatDoesNotFitOnTheRight)
{
    EXPECT_EQ(Formatted().money(1234.5, 0, 3), (Written{"$1,", 3, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().money(1.99, 0, 3), (Written{"$1.", 3, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().money(1.99, TS_OPT_TERMINATE, 3),
              (Written{bytes("$1\0"), 3, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().money(1.99, 0, 4), (Written{"$1.9", 4, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().money(1.99, 0, 5), (Written{"$1.99", 5, 0}));
}

TEST(CurrencyToString, WritesThePointWithoutDigits)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.digits[1] = 0;
    EXPECT_EQ(Formatted(spec).money(1234.5), (Written{"$1,234.", 7, 0}));
}

TEST(CurrencyToString, ShowsFiveDigitsAndZerosAboveSix)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.digits[1] = 8;
    EXPECT_EQ(Formatted(spec).money(1.123456), (Written{"$1.1234500", 10, 0}));
}

TEST(CurrencyToString, PlacesTheSignBeforeWithTheSymbolBehind)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.positions = {1, 1};
    spec.flags = 0;
    EXPECT_EQ(Formatted(spec).money(-1234.5), (Written{"-1,234.50$", 10, 0}));
}

TEST(CurrencyToString, LaysOutThePiecesBySignPosition)
{
    struct Row {
        std::uint8_t position;
        const char* before;
        const char* behind;
    };
    constexpr Row kRows[] = {{0, "(CUR 7.00)", "(7.00 CUR)"}, {1, "-CUR 7.00", "-7.00 CUR"},
                             {2, "CUR 7.00-", "7.00 CUR-"},   {3, "-CUR 7.00", "7.00 -CUR"},
                             {4, "CUR- 7.00", "7.00 CUR-"},   {5, "CUR- 7.00", "7.00 CUR-"},
                             {250, "CUR- 7.00", "7.00 CUR-"}};
    for (const Row& row : kRows) {
        const auto text = [](std::string pattern, char sign, bool spaced) {
            std::replace(pattern.begin(), pattern.end(), '-', sign);
            if (!spaced)
                std::erase(pattern, ' ');
            return pattern;
        };
        for (const bool spaced : {false, true}) {
            Formatted before(pieces(row.position, true, spaced));
            EXPECT_EQ(before.money(-7).text, text(row.before, '-', spaced)) << +row.position;
            EXPECT_EQ(before.money(7).text, text(row.before, '+', spaced)) << +row.position;
            Formatted behind(pieces(row.position, false, spaced));
            EXPECT_EQ(behind.money(-7).text, text(row.behind, '-', spaced)) << +row.position;
            EXPECT_EQ(behind.money(7).text, text(row.behind, '+', spaced)) << +row.position;
        }
    }
}

TEST(CurrencyToString, CutsANegativeSignAtThreeBytes)
{
    LocaleSpec spec = pieces(1, true, false);
    spec.texts[3] = u"<plus>";
    spec.texts[4] = u"<minus>";
    EXPECT_EQ(Formatted(spec).money(-7).text, "<miCUR7.00");
    EXPECT_EQ(Formatted(spec).money(7).text, "<plus>CUR7.00");
}

TEST(CurrencyToString, AHeadThatDoesNotFitEndsTheOutput)
{
    EXPECT_EQ(Formatted(withLong(PageShape::kDoubleByte)).money(7, 0, 3),
              (Written{"\x81\x42", 2, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(pieces(1, true, false)).money(7, TS_OPT_TERMINATE, 3),
              (Written{bytes("+C\0"), 3, TS_ERR_BUFFER}));
}

TEST(CurrencyToString, CutsAtAWholeCharacterBehindTheValue)
{
    LocaleSpec spec = withLong(PageShape::kDoubleByte);
    spec.flags = 0;
    EXPECT_EQ(Formatted(spec).money(7, 0, 7), (Written{"7.00\x81\x42", 6, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(spec).money(7, 0, 8), (Written{"7.00\x81\x42\x81\x43", 8, 0}));
}

TEST(CurrencyToString, CountsCharacters)
{
    const LocaleSpec spec = withLong(PageShape::kDoubleByte);
    EXPECT_EQ(Formatted(spec).money(7, TS_OPT_CHAR_COUNT, 6), (Written{"\x81\x42\x81\x43"
                                                                       "7.00",
                                                                       6, 0}));
    EXPECT_EQ(Formatted(spec).money(7, TS_OPT_CHAR_COUNT, 3), (Written{"\x81\x42\x81\x43"
                                                                       "7",
                                                                       3, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(spec).money(7, TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE, 3),
              (Written{bytes("\x81\x42\x81\x43\0"), 3, TS_ERR_BUFFER}));
}

TEST(CurrencyToString, LooksAtACountedSizeBeforeTheOptions)
{
    EXPECT_EQ(Formatted().money(7, TS_OPT_CHAR_COUNT | TS_OPT_UNSIGNED, 0),
              (Written{"", 0, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().money(7, TS_OPT_UNSIGNED, 0), (Written{"", -1, TS_ERR_ARGUMENT}));
}

TEST(CurrencyToString, ANegativeZeroIsNotNegative)
{
    EXPECT_EQ(Formatted().money(-0.0), (Written{"$-0.00", 6, 0}));
    LocaleSpec spec = LocaleSpec::builtin();
    spec.texts[2] = u"1;0";
    EXPECT_EQ(Formatted(spec).money(-0.0), (Written{"$-,0.00", 7, 0}));
}

TEST(CurrencyToString, ValuesThatAreNoNumbersAreTakenAsTheirText)
{
    EXPECT_EQ(Formatted().money(-std::numeric_limits<double>::infinity()),
              (Written{"($inf.)", 7, 0}));
}

TEST(CurrencyToStringEx, FollowsTheStatesOfThePieces)
{
    const LocaleSpec spec = withLong(PageShape::kStateful2);
    // Shift in is 0x0E, shift out 0x0F.
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0), (Written{"\x0E\x41\x42\x41\x43\x0F"
                                                      "7.00",
                                                      10, 0}));
    EXPECT_EQ(Formatted(spec).moneyEx(7, 1), (Written{"\x41\x42\x41\x43\x0F"
                                                      "7.00",
                                                      9, 0}));
    EXPECT_EQ(Formatted(spec).moneyEx(-7, 1), (Written{"\x0F(\x0E\x41\x42\x41\x43\x0F"
                                                       "7.00)",
                                                       13, 0}));
}

TEST(CurrencyToStringEx, ClosesWithTheTerminator)
{
    LocaleSpec spec = withLong(PageShape::kStateful2);
    spec.flags = 0;
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, 0), (Written{"7.00\x0E\x41\x42\x41\x43", 9, 0}));
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_TERMINATE, 11),
              (Written{bytes("7.00\x0E\x41\x42\x41\x43\x0F\0"), 11, 0}));
    // Without room for the shift byte the last character gives way.
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_TERMINATE, 10).text.substr(0, 9),
              bytes("7.00\x0E\x41\x42\x0F\0"));
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_TERMINATE, 10).code, TS_ERR_BUFFER);
    // A shift byte that no character follows goes, too.
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_TERMINATE, 8).result, 5);
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_TERMINATE, 8).text.substr(0, 5),
              bytes("7.00\0"));
}

TEST(CurrencyToStringEx, CountedTextEndsBehindACharacter)
{
    LocaleSpec spec = withLong(PageShape::kStateful2);
    spec.flags = 0;
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_CHAR_COUNT, 4),
              (Written{"7.00", 4, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE, 5),
              (Written{bytes("7.00\0"), 5, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(spec).moneyEx(7, 0, TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE, 6),
              (Written{bytes("7.00\x0E\x41\x42\x0F\0"), 6, TS_ERR_BUFFER}));
}

TEST(CurrencyToStringEx, HasAllOfANegativeSign)
{
    LocaleSpec spec = pieces(1, true, false);
    spec.shape = PageShape::kStateful2;
    spec.texts[4] = u"<minus>";
    EXPECT_EQ(Formatted(spec).moneyEx(-7, 0).text, "<minus>CUR7.00");
}

TEST(CurrencyToStringUnits, CutPackedTextsAtThreeCharacters)
{
    LocaleSpec spec = pieces(1, true, true);
    spec.texts[1] = u"CURRENCY";
    spec.texts[4] = u"<minus>";
    Formatted locale(spec);
    TSChar32 values[40];
    EXPECT_EQ(textOf(values, TSCurrencyToStringW(locale.handle(), -1234, values, 40, 0)),
              U"<miCUR 1,234.00");
    TSChar16 units[40];
    EXPECT_EQ(textOf(units, TSCurrencyToStringU(locale.handle(), -1234, units, 40, 0)),
              u"<minus>CURRENCY 1,234.00");
    EXPECT_EQ(TSCurrencyToStringU(locale.handle(), -1234, units, 4, TS_OPT_CHAR_COUNT), 4);
    EXPECT_EQ(locale.record().lastError, TS_ERR_BUFFER);
}

} // namespace
} // namespace vlx::test
