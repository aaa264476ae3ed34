// Numbers as text: what the formatters write, case by case.
#include <cmath>
#include <limits>

#include "strings/pages.hpp"
#include "text/formatted.hpp"

namespace vlx::test {
namespace {

// A locale with the built-in values and these group sizes.
LocaleSpec grouped(const std::u16string& sizes, char16_t separator = u',')
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.texts[0] = sizes;
    spec.separators[1] = separator;
    return spec;
}

LocaleSpec withDigits(std::uint16_t digits)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.digits[0] = digits;
    return spec;
}

LocaleSpec stateful()
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    return spec;
}

TEST(DoubleToString, WritesTheTrailingPointWithoutDigits)
{
    EXPECT_EQ(Formatted(withDigits(0)).number(1234.0), (Written{"1,234.", 6, 0}));
}

TEST(DoubleToString, ShowsFiveDigitsAndZerosAboveSix)
{
    EXPECT_EQ(Formatted(withDigits(8)).number(1.123456), (Written{"1.1234500", 9, 0}));
    EXPECT_EQ(Formatted(withDigits(7)).number(1.123456), (Written{"1.123450", 8, 0}));
    EXPECT_EQ(Formatted(withDigits(6)).number(1.123456), (Written{"1.123456", 8, 0}));
}

TEST(DoubleToString, TakesAnyNumberOfDigits)
{
    Formatted locale(withDigits(65535));
    std::string text(70000, '~');
    EXPECT_EQ(TSDoubleToString(locale.handle(), -1.123456, text.data(), 70000, 0), 65537);
    EXPECT_EQ(text.substr(0, 10), "-1.1234500");
    EXPECT_EQ(text.substr(65530, 10), "0000000~~~");
    EXPECT_EQ(locale.number(-1.123456, TS_OPT_TERMINATE, 12),
              (Written{bytes("-1.12345000\0"), 12, TS_ERR_BUFFER}));
    EXPECT_EQ(locale.number(-1.123456, TS_OPT_CHAR_COUNT, 11),
              (Written{"-1.12345000", 11, TS_ERR_BUFFER}));
}

TEST(DoubleToString, CutsTheFractionOfTheRoundedText)
{
    EXPECT_EQ(Formatted().number(1.999), (Written{"1.99", 4, 0}));
    EXPECT_EQ(Formatted().number(1.9999999), (Written{"2.00", 4, 0}));
}

TEST(DoubleToString, RoundsTiesToEven)
{
    EXPECT_EQ(Formatted(withDigits(6)).number(0.5 / 1048576 * 1.0), (Written{"0.000000", 8, 0}));
    EXPECT_EQ(Formatted(withDigits(6)).number(0.0000005), (Written{"0.000000", 8, 0}));
    EXPECT_EQ(Formatted(withDigits(6)).number(0.0000015), (Written{"0.000002", 8, 0}));
}

TEST(DoubleToString, GroupsOfThreeTwoAndZeroRepeatTheLastSize)
{
    EXPECT_EQ(Formatted(grouped(u"3;2;0")).number(1234567.0), (Written{"12,34,567.00", 12, 0}));
    EXPECT_EQ(Formatted(grouped(u"3;2;0")).number(123456789.0),
              (Written{"12,34,56,789.00", 15, 0}));
}

TEST(DoubleToString, OneSizeAloneGivesOneSeparator)
{
    EXPECT_EQ(Formatted(grouped(u"3")).number(1234567.0), (Written{"1234,567.00", 11, 0}));
}

TEST(DoubleToString, NoSeparatorNoGroups)
{
    EXPECT_EQ(Formatted(grouped(u"3;0", 0)).number(1234567.0), (Written{"1234567.00", 10, 0}));
    EXPECT_EQ(Formatted(grouped(u"")).number(1234567.0), (Written{"1234567.00", 10, 0}));
}

TEST(DoubleToString, AListThatCannotBeReadEndsTheGroups)
{
    EXPECT_EQ(Formatted(grouped(u"3;x;2")).number(1234567.0), (Written{"1234,567.00", 11, 0}));
    EXPECT_EQ(Formatted(grouped(u"x")).number(1234567.0), (Written{"1234567.00", 10, 0}));
    EXPECT_EQ(Formatted(grouped(u"0")).number(1234567.0), (Written{"1234567.00", 10, 0}));
    EXPECT_EQ(Formatted(grouped(u"-1")).number(1234567.0), (Written{"1234567.00", 10, 0}));
}

TEST(DoubleToString, GroupSizesSaturate)
{
    EXPECT_EQ(Formatted(grouped(u"2;99999999999999999999;1")).number(1234567.0),
              (Written{"12345,67.00", 11, 0}));
}

TEST(DoubleToString, NoSeparatorStandsFirstOrBehindTheSign)
{
    EXPECT_EQ(Formatted().number(1234.0), (Written{"1,234.00", 8, 0}));
    EXPECT_EQ(Formatted().number(123.0), (Written{"123.00", 6, 0}));
    EXPECT_EQ(Formatted().number(-123.0), (Written{"-123.00", 7, 0}));
    EXPECT_EQ(Formatted().number(-1234.0), (Written{"-1,234.00", 9, 0}));
}

TEST(DoubleToString, ANegativeZeroKeepsItsSignAsADigit)
{
    EXPECT_EQ(Formatted().number(-0.0), (Written{"-0.00", 5, 0}));
    EXPECT_EQ(Formatted(grouped(u"1;0")).number(-0.0), (Written{"-0.00", 5, 0}));
    LocaleSpec spec = LocaleSpec::builtin();
    spec.ebcdic = true;
    // As if it were a digit: three codes before the one of zero.
    EXPECT_EQ(Formatted(spec).number(-0.0), (Written{"\xED\xF0\x4B\xF0\xF0", 5, 0}));
    EXPECT_EQ(Formatted(spec).number(-1.0), (Written{"\x60\xF1\x4B\xF0\xF0", 5, 0}));
}

TEST(DoubleToString, ValuesThatAreNoNumbersAreTakenAsTheirText)
{
    EXPECT_EQ(Formatted().number(std::numeric_limits<double>::infinity()), (Written{"inf.", 4, 0}));
    EXPECT_EQ(Formatted().number(-std::numeric_limits<double>::infinity()),
              (Written{"-inf.", 5, 0}));
    EXPECT_EQ(Formatted().number(std::numeric_limits<double>::quiet_NaN()),
              (Written{"nan.", 4, 0}));
    EXPECT_EQ(Formatted(grouped(u"2;0")).number(std::numeric_limits<double>::quiet_NaN()),
              (Written{"nan.", 4, 0}));
}

TEST(DoubleToString, OneMissingCharacterIsNoError)
{
    EXPECT_EQ(Formatted().number(1234.5, 0, 8), (Written{"1,234.50", 8, 0}));
    EXPECT_EQ(Formatted().number(1234.5, 0, 7), (Written{"1,234.5", 7, 0}));
    EXPECT_EQ(Formatted().number(1234.5, 0, 6), (Written{"1,234.", 6, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().number(1234.5, TS_OPT_TERMINATE, 3),
              (Written{bytes("1,\0"), 3, TS_ERR_BUFFER}));
}

TEST(DoubleToString, RefusesOptionsAndNoRoom)
{
    EXPECT_EQ(Formatted().number(1.0, TS_OPT_UNSIGNED), (Written{"", -1, TS_ERR_ARGUMENT}));
    EXPECT_EQ(Formatted().number(1.0, 0, 0), (Written{"", 0, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().number(1.0, TS_OPT_CHAR_COUNT, 0), (Written{"", 0, TS_ERR_BUFFER}));
}

TEST(DoubleToString, AnEmptyPointIsATerminator)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.separators[0] = 0;
    EXPECT_EQ(Formatted(spec).number(1.5), (Written{bytes("1\0"
                                                          "50"),
                                                    4, 0}));
}

TEST(DoubleToString, TakesTheValuesOfTheObject)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.territory.words[0] = u':';
    spec.territory.words[1] = u'\'';
    spec.territory.words[5] = 1;
    spec.territory.texts[2] = u"2;0";
    EXPECT_EQ(Formatted(spec).number(1234.5, TS_OPT_OBJECT_VALUE), (Written{"12'34:5", 7, 0}));
    EXPECT_EQ(Formatted(spec).number(1234.5), (Written{"1,234.50", 8, 0}));
}

TEST(DoubleToString, ASeparatorLongerThanAByteIsNone)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kDoubleByte;
    spec.territory.words[1] = 0x3000;
    spec.territory.texts[2] = u"3;0";
    EXPECT_EQ(Formatted(spec).number(1234.5, TS_OPT_OBJECT_VALUE), (Written{"1234.50", 7, 0}));
}

TEST(DoubleToStringEx, OpensWithAShiftByteInTheMultiByteState)
{
    EXPECT_EQ(Formatted(stateful()).numberEx(1.5, 1), (Written{"\x0F"
                                                               "1.50",
                                                               5, 0}));
    EXPECT_EQ(Formatted(stateful()).numberEx(1.5, 0), (Written{"1.50", 4, 0}));
}

TEST(DoubleToStringEx, LosesTheShiftByteWhereCharactersAreCounted)
{
    // In text of that state the digits then stand in pairs; they are counted one by one.
    EXPECT_EQ(Formatted(stateful()).numberEx(1.5, 1, TS_OPT_CHAR_COUNT), (Written{"1.50", 4, 0}));
    EXPECT_EQ(Formatted(stateful()).numberEx(-1.5, 1, TS_OPT_CHAR_COUNT), (Written{"-1.50", 5, 0}));
}

TEST(DoubleToStringEx, NeedsAPlaceBesideTheShiftByte)
{
    EXPECT_EQ(Formatted(stateful()).numberEx(1.5, 1, 0, 1), (Written{"", 0, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(stateful()).numberEx(1.5, 1, TS_OPT_TERMINATE, 1),
              (Written{"", 0, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(stateful()).numberEx(1.5, 1, TS_OPT_TERMINATE, 2),
              (Written{bytes("\x0F\0"), 2, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(stateful()).numberEx(-1.5, 1, TS_OPT_TERMINATE, 2),
              (Written{bytes("\x0F\0"), 2, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(stateful()).numberEx(1.5, 1, 0, 2), (Written{"\x0F"
                                                                     "1",
                                                                     2, TS_ERR_BUFFER}));
}

TEST(LongToStringEx, KeepsTheShiftByteWhereCharactersAreCounted)
{
    EXPECT_EQ(Formatted(stateful()).numberEx(1234, 1, TS_OPT_CHAR_COUNT), (Written{"\x0F"
                                                                                   "1,234",
                                                                                   5, 0}));
    EXPECT_EQ(Formatted(stateful()).numberEx(1234, 1, TS_OPT_CHAR_COUNT, 2),
              (Written{"\x0F"
                       "1,",
                       2, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(stateful()).numberEx(1234, 1, 0, 2), (Written{"\x0F"
                                                                      "1",
                                                                      2, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(stateful()).numberEx(1234, 1, 0, 1), (Written{"", 0, TS_ERR_BUFFER}));
}

TEST(LongToStringEx, PassesOnWithoutShiftStates)
{
    EXPECT_EQ(Formatted().numberEx(1234, 1), (Written{"1,234", 5, 0}));
    EXPECT_EQ(Formatted().numberEx(1234.0, 1), (Written{"1,234.00", 8, 0}));
}

TEST(LongToString, WritesGroups)
{
    EXPECT_EQ(Formatted().number(1234567), (Written{"1,234,567", 9, 0}));
    EXPECT_EQ(Formatted().number(123), (Written{"123", 3, 0}));
    EXPECT_EQ(Formatted().number(-123), (Written{"-123", 4, 0}));
    EXPECT_EQ(Formatted().number(0), (Written{"0", 1, 0}));
    EXPECT_EQ(Formatted(grouped(u"3;2;0")).number(1234567), (Written{"12,34,567", 9, 0}));
    EXPECT_EQ(Formatted(grouped(u"3")).number(1234567), (Written{"1234,567", 8, 0}));
    EXPECT_EQ(Formatted(grouped(u"1;0")).number(-123), (Written{"-1,2,3", 6, 0}));
    EXPECT_EQ(Formatted(grouped(u"3;0", 0)).number(1234567), (Written{"1234567", 7, 0}));
}

TEST(LongToString, MinusOneIsTheLargestUnsignedNumber)
{
    EXPECT_EQ(Formatted(grouped(u"")).number(-1, TS_OPT_UNSIGNED), (Written{"4294967295", 10, 0}));
}

TEST(LongToString, TheLargestNegativeNumberHasAllItsDigits)
{
    EXPECT_EQ(Formatted().number(INT32_MIN), (Written{"-2,147,483,648", 14, 0}));
}

TEST(LongToString, KeepsTheHighDigitsWhereRoomEnds)
{
    EXPECT_EQ(Formatted().number(1234567, 0, 4), (Written{"1,23", 4, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().number(1234567, TS_OPT_TERMINATE, 4),
              (Written{bytes("1,2\0"), 4, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().number(-1234567, 0, 1), (Written{"-", 1, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().number(-1, TS_OPT_TERMINATE, 1),
              (Written{bytes("\0"), 1, TS_ERR_BUFFER}));
    // One missing place is an error here.
    EXPECT_EQ(Formatted().number(12, 0, 1), (Written{"1", 1, TS_ERR_BUFFER}));
}

TEST(LongToString, CountsCharactersThatAreBytes)
{
    EXPECT_EQ(Formatted().number(-1234, TS_OPT_CHAR_COUNT, 100), (Written{"-1,234", 6, 0}));
    EXPECT_EQ(Formatted().number(-1234, TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE, 3),
              (Written{bytes("-1\0"), 3, TS_ERR_BUFFER}));
}

TEST(LongToString, WritesTheDigitsOfEbcdic)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.ebcdic = true;
    EXPECT_EQ(Formatted(spec).number(-1234), (Written{"\x60\xF1\x6B\xF2\xF3\xF4", 6, 0}));
}

TEST(LongToStringUnits, WriteAsciiInUnicodeAndTheCodePageInPackedText)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.ebcdic = true;
    Formatted locale(spec);
    TSChar16 units[20];
    EXPECT_EQ(textOf(units, TSLongToStringU(locale.handle(), -1234, units, 20, TS_OPT_CHAR_COUNT)),
              u"-1,234");
    EXPECT_EQ(textOf(units, TSDoubleToStringU(locale.handle(), -1234.5, units, 20, 0)),
              u"-1,234.50");
    TSChar32 values[20];
    EXPECT_EQ(textOf(values, TSLongToStringW(locale.handle(), -1234, values, 20, 0)),
              (std::u32string{0x60, 0xF1, 0x6B, 0xF2, 0xF3, 0xF4}));
    EXPECT_EQ(textOf(values, TSDoubleToStringW(locale.handle(), -12.5, values, 20, 0)),
              (std::u32string{0x60, 0xF1, 0xF2, 0x4B, 0xF5, 0xF0}));
    EXPECT_EQ(locale.record().lastError, 0);
}

TEST(LongToString, UsesTheDefaultLocale)
{
    Formatted locale;
    tsDefaultLocale = locale.handle();
    char text[10];
    EXPECT_EQ(TSLongToString(nullptr, 7, text, 10, 0), 1);
    EXPECT_EQ(text[0], '7');
    tsDefaultLocale = nullptr;
}

TEST(FormatOptions, AreRefusedButForTheirOwn)
{
    Formatted locale;
    constexpr std::uint32_t kDouble = TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT;
    const auto refuses = [&](std::uint32_t own, auto call) {
        forRefusedOptions([&](std::uint32_t options) { return (options & ~own) == 0; },
                          [&](std::uint32_t options) {
                              EXPECT_EQ(call(options), (Written{"", -1, TS_ERR_ARGUMENT}));
                          });
    };
    refuses(kDouble | TS_OPT_UNSIGNED, [&](std::uint32_t o) { return locale.number(1, o); });
    refuses(kDouble, [&](std::uint32_t o) { return locale.number(1.0, o); });
    refuses(kDouble | TS_OPT_INTERNATIONAL, [&](std::uint32_t o) { return locale.money(1.0, o); });
    refuses(kDouble, [&](std::uint32_t o) { return locale.time(TSTimeFields{}, "%H", o); });
}

} // namespace
} // namespace vlx::test
