// Numbers from text, case by case.
#include <charconv>
#include <cmath>
#include <limits>

#include "strings/pages.hpp"
#include "text/formatted.hpp"
#include "text/parse.hpp"

namespace vlx::test {
namespace {

// A number, where it ended, and the code.
template <class Value>
struct Read {
    Value value;
    std::ptrdiff_t end;
    std::int32_t code;

    bool operator==(const Read&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Read& read)
    {
        return out << read.value << ", end " << read.end << ", code " << read.code;
    }
};
using Long = Read<std::int32_t>;
using Double = Read<double>;

Long readLong(Formatted& locale, const std::string& text, std::int32_t base = 10,
              std::uint32_t options = 0)
{
    char* end = nullptr;
    const std::int32_t value =
        TSStringToLong(locale.handle(), text.c_str(), -1, &end, base, options);
    return {value, end - text.c_str(), locale.record().lastError};
}
Long readLong(const std::string& text, std::int32_t base = 10, std::uint32_t options = 0)
{
    Formatted locale;
    return readLong(locale, text, base, options);
}

Double readDouble(Formatted& locale, const std::string& text, std::uint32_t options = 0)
{
    char* end = nullptr;
    const double value = TSStringToDouble(locale.handle(), text.c_str(), -1, &end, options);
    return {value, end - text.c_str(), locale.record().lastError};
}
Double readDouble(const std::string& text, std::uint32_t options = 0)
{
    Formatted locale;
    return readDouble(locale, text, options);
}

// A locale with monetary values of its own.
LocaleSpec monetary()
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.separators = {u'.', u',', u';', u':', u'\''};
    spec.texts[3] = u"plus ";
    spec.texts[4] = u"minus ";
    return spec;
}

TEST(StringToDouble, SkipsBlanksBeforeTheNumberAndStopsAtThoseBehind)
{
    EXPECT_EQ(readDouble("  12"), (Double{12, 4, 0}));
    EXPECT_EQ(readDouble("12  "), (Double{12, 2, 0}));
    EXPECT_EQ(readDouble("- 12"), (Double{-0.0, 1, 0})); // a blank ends the sign
}

TEST(StringToDouble, TakesSeparatorsBetweenAnyDigits)
{
    EXPECT_EQ(readDouble("1,234,567"), (Double{1234567, 9, 0}));
    EXPECT_EQ(readDouble("1,2,3,4,5,6,7"), (Double{1234567, 13, 0}));
    EXPECT_EQ(readDouble("1,,2"), (Double{1, 2, 0})); // never two in a row
    EXPECT_EQ(readDouble(",1"), (Double{0, 0, 0}));
    EXPECT_EQ(readDouble("1."
                         "2,3"),
              (Double{1.2, 3, 0}));
}

TEST(StringToDouble, WhiteSpaceEndsANumberEvenIfItIsTheSeparator)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.separators[1] = u' ';
    Formatted locale(spec);
    EXPECT_EQ(locale.number(1234567.0).text, "1 234 567.00");
    EXPECT_EQ(readDouble(locale, "1 234 567.00"), (Double{1, 1, 0}));
}

TEST(StringToDouble, TakesAPointWithDigitsOnOneSide)
{
    EXPECT_EQ(readDouble(".5"), (Double{0.5, 2, 0}));
    EXPECT_EQ(readDouble("5."), (Double{5, 2, 0}));
    EXPECT_EQ(readDouble("."), (Double{0, 1, 0}));
    EXPECT_EQ(readDouble("-.5"), (Double{-0.5, 3, 0}));
    EXPECT_EQ(readDouble("-0"), (Double{-0.0, 2, 0}));
    EXPECT_TRUE(std::signbit(readDouble("-0").value));
}

TEST(StringToDouble, TakesAnExponentBehindAPointOnly)
{
    EXPECT_EQ(readDouble("1e5"), (Double{1, 1, 0}));
    EXPECT_EQ(readDouble("1.e5"), (Double{100000, 4, 0}));
    EXPECT_EQ(readDouble("1.5D-1"), (Double{0.15000000000000002, 6, 0}));
    EXPECT_EQ(readDouble("2.d+2"), (Double{200, 5, 0}));
    EXPECT_EQ(readDouble("2.E2"), (Double{200, 4, 0}));
}

TEST(StringToDouble, ConsumesAnExponentWithoutDigits)
{
    EXPECT_EQ(readDouble("1.e"), (Double{1, 3, 0}));
    EXPECT_EQ(readDouble("1.e-"), (Double{1, 4, 0}));
    EXPECT_EQ(readDouble("1.e-x"), (Double{1, 4, 0}));
}

TEST(StringToDouble, SaturatesExponents)
{
    EXPECT_EQ(readDouble("1.e99999999999999999999").value, std::numeric_limits<double>::infinity());
    EXPECT_EQ(readDouble("1.e-99999999999999999999").value, 0);
    // Nothing times a power that is infinite.
    EXPECT_TRUE(std::isnan(readDouble("0.e99999999999999999999").value));
}

TEST(StringToDouble, TakesMonetarySeparatorsAndSigns)
{
    Formatted locale(monetary());
    EXPECT_EQ(readDouble(locale, "minus 1'234:5", TS_OPT_MONETARY), (Double{-1234.5, 13, 0}));
    EXPECT_EQ(readDouble(locale, "plus 7", TS_OPT_MONETARY), (Double{7, 6, 0}));
    EXPECT_EQ(readDouble(locale, "-7", TS_OPT_MONETARY), (Double{0, 0, 0}));
    // The sign of an exponent is never the monetary one.
    EXPECT_EQ(readDouble(locale, "7:e-1", TS_OPT_MONETARY), (Double{0.7000000000000001, 5, 0}));
    EXPECT_EQ(readDouble(locale, "7:eminus 1", TS_OPT_MONETARY), (Double{7, 3, 0}));
}

TEST(StringToDouble, LeavesTheEndAloneWhenItsOptionsAreRefused)
{
    Formatted locale;
    forRefusedOptions(
        [](std::uint32_t options) {
            return (options & ~(TS_OPT_OBJECT_VALUE | TS_OPT_MAP_DIGITS | TS_OPT_MONETARY |
                                TS_OPT_CHAR_COUNT)) == 0;
        },
        [&](std::uint32_t options) {
            char mark;
            char* end = &mark;
            EXPECT_EQ(TSStringToDouble(locale.handle(), "7", -1, &end, options), 0);
            EXPECT_EQ(end, &mark);
            EXPECT_EQ(locale.record().lastError, TS_ERR_ARGUMENT);
        });
}

TEST(StringToDouble, MapsDigitsOnRequest)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kDoubleByte;
    Formatted locale(spec);
    const std::string text = locale.locale.bytesOf(u"1\xFF15");
    ASSERT_EQ(text.size(), 3U);
    EXPECT_EQ(readDouble(locale, text), (Double{1, 1, 0}));
    EXPECT_EQ(readDouble(locale, text, TS_OPT_MAP_DIGITS), (Double{15, 3, 0}));
    EXPECT_EQ(readLong(locale, text, 10, TS_OPT_MAP_DIGITS), (Long{15, 3, 0}));
}

TEST(StringToDouble, CountsCharacters)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kDoubleByte;
    Formatted locale(spec);
    char* end = nullptr;
    const char text[] = "\x81\x41"
                        "12"; // U+3000, a blank
    EXPECT_EQ(TSStringToDouble(locale.handle(), text, 2, &end, TS_OPT_CHAR_COUNT), 1);
    EXPECT_EQ(end, text + 3);
}

TEST(StringToDoubleEx, TellsTheStateAtTheEnd)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    Formatted locale(spec);
    // Blanks in the multi-byte state, then the number, then a character of that state.
    const char text[] = "\x41\x41\x0F"
                        "12\x0E\x41\x43";
    char* end = nullptr;
    std::int32_t state = 77;
    EXPECT_EQ(TSStringToDoubleEx(locale.handle(), text, 1, -1, &end, &state, 0), 12);
    EXPECT_EQ(end, text + 5); // before the shift byte
    EXPECT_EQ(state, 0);
    EXPECT_EQ(TSStringToLongEx(locale.handle(), text, 1, -1, &end, &state, 10, 0), 12);
    EXPECT_EQ(end, text + 5);
    EXPECT_EQ(state, 0);
}

TEST(StringToDoubleEx, LeavesShiftBytesAroundASignOutOfTheComparison)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    spec.texts[4] = u"\x6708"; // fetched as shift in, 0x4143, shift out
    Formatted locale(spec);
    const char text[] = "\x0E\x41\x43\x0F"
                        "7";
    char* end = nullptr;
    std::int32_t state = 77;
    EXPECT_EQ(TSStringToDoubleEx(locale.handle(), text, 0, -1, &end, &state, TS_OPT_MONETARY), -7);
    EXPECT_EQ(end, text + 5);
    EXPECT_EQ(state, 0);
}

TEST(StringToLong, TakesBlanksAndReportsThoseAtTheEndAsConsumed)
{
    EXPECT_EQ(readLong("  12"), (Long{12, 4, 0}));
    EXPECT_EQ(readLong("12  "), (Long{12, 4, 0}));
    EXPECT_EQ(readLong("12  x"), (Long{12, 2, 0}));
    EXPECT_EQ(readLong("12x"), (Long{12, 3, 0})); // a letter that is no digit, but read last
    EXPECT_EQ(readLong("12xy"), (Long{12, 2, 0}));
    EXPECT_EQ(readLong("12$"), (Long{12, 2, 0}));
    EXPECT_EQ(readLong(""), (Long{0, 0, 0}));
    EXPECT_EQ(readLong("  "), (Long{0, 2, 0}));
    EXPECT_EQ(readLong("$"), (Long{0, 0, 0}));
}

TEST(StringToLong, SkipsSeparatorsAnywhereBehindADigit)
{
    EXPECT_EQ(readLong("1,234,567"), (Long{1234567, 9, 0}));
    EXPECT_EQ(readLong("1,2,3,4,5,6,7"), (Long{1234567, 13, 0}));
    EXPECT_EQ(readLong("1,,2"), (Long{12, 4, 0}));
    EXPECT_EQ(readLong("1,"), (Long{1, 2, 0}));
    EXPECT_EQ(readLong(",1"), (Long{0, 0, 0}));
}

TEST(StringToLong, FindsTheBase)
{
    EXPECT_EQ(readLong("0x1F", 0), (Long{31, 4, 0}));
    EXPECT_EQ(readLong("0x1F", 16), (Long{31, 4, 0}));
    EXPECT_EQ(readLong("0X1f", 16), (Long{31, 4, 0}));
    EXPECT_EQ(readLong("x1F", 16), (Long{31, 3, 0}));
    EXPECT_EQ(readLong("1F", 16), (Long{31, 2, 0}));
    EXPECT_EQ(readLong("017", 0), (Long{15, 3, 0}));
    EXPECT_EQ(readLong("0", 0), (Long{0, 1, 0}));
    EXPECT_EQ(readLong("0", 16), (Long{0, 1, 0}));
    EXPECT_EQ(readLong("019", 0), (Long{1, 3, 0}));
    EXPECT_EQ(readLong("12", 0), (Long{12, 2, 0}));
    EXPECT_EQ(readLong("zz", 36), (Long{1295, 2, 0}));
    EXPECT_EQ(readLong("102", 2), (Long{2, 3, 0}));
}

TEST(StringToLong, SaturatesSignedNumbers)
{
    EXPECT_EQ(readLong("2147483647").value, INT32_MAX);
    EXPECT_EQ(readLong("2147483648").value, INT32_MAX);
    EXPECT_EQ(readLong("-2147483648").value, INT32_MIN);
    EXPECT_EQ(readLong("-2147483649").value, INT32_MIN);
    EXPECT_EQ(readLong("99999999999").value, INT32_MAX);
    EXPECT_EQ(readLong("-99999999999").value, INT32_MIN);
    EXPECT_EQ(readLong("2147483648").code, 0);
}

TEST(StringToLong, SaturatesOrWrapsUnsignedNumbers)
{
    constexpr std::uint32_t kOption = TS_OPT_UNSIGNED;
    EXPECT_EQ(readLong("4294967295", 10, kOption).value, -1);
    // The step that reaches the limit from below goes unseen when it wraps.
    EXPECT_EQ(readLong("4294967296", 10, kOption).value, 0);
    EXPECT_EQ(readLong("4294967299", 10, kOption).value, 3);
    EXPECT_EQ(readLong("4294967300", 10, kOption).value, -1);
    EXPECT_EQ(readLong("42949672960", 10, kOption).value, 0);
    EXPECT_EQ(readLong("9999999999", 10, kOption).value, -1);
}

TEST(StringToLong, ReadsNoMinusSignOfAnUnsignedNumber)
{
    EXPECT_EQ(readLong("-5", 10, TS_OPT_UNSIGNED), (Long{0, 0, 0}));
    EXPECT_EQ(readLong("+5", 10, TS_OPT_UNSIGNED), (Long{5, 2, 0}));
}

TEST(StringToLong, TakesWhatIsNoTokenBehindASignForTheLargestDigit)
{
    EXPECT_EQ(readLong("-$5"), (Long{1, 1, 0}));
    EXPECT_EQ(readLong("+$5"), (Long{-1, 1, 0}));
    EXPECT_EQ(readLong("0$5", 0), (Long{-1, 1, 0}));
    EXPECT_EQ(readLong("- 5"), (Long{0, 1, 0}));
    EXPECT_EQ(readLong("-"), (Long{0, 1, 0}));
}

TEST(StringToLongEx, EndsThereInstead)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    Formatted locale(spec);
    char* end = nullptr;
    std::int32_t state = 77;
    const char text[] = "-$5";
    EXPECT_EQ(TSStringToLongEx(locale.handle(), text, 0, -1, &end, &state, 10, 0), 0);
    EXPECT_EQ(end, text + 1);
    EXPECT_EQ(state, 0);
}

TEST(StringToLong, LooksAtTheBaseBeforeTheOptions)
{
    for (const std::int32_t base : {1, -1, 37, INT32_MIN}) {
        EXPECT_EQ(readLong("7", base), (Long{0, 0, TS_ERR_BASE}));
        EXPECT_EQ(readLong("7", base, TS_OPT_TERMINATE), (Long{0, 0, TS_ERR_BASE}));
    }
    EXPECT_EQ(readLong("7", 10, TS_OPT_TERMINATE), (Long{0, 0, TS_ERR_ARGUMENT}));
}

TEST(StringToLong, ReadsEbcdic)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.ebcdic = true;
    Formatted locale(spec);
    EXPECT_EQ(readLong(locale, locale.locale.bytesOf(u"-1,234")), (Long{-1234, 6, 0}));
    EXPECT_EQ(readLong(locale, locale.locale.bytesOf(u"aZ"), 36), (Long{395, 2, 0}));
}

TEST(StringToLong, KnowsTheSmallLettersOfCodePage930WithStatesOnly)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.ebcdic = true;
    spec.shape = PageShape::kStateful2;
    spec.id = 930;
    Formatted locale(spec);
    const std::string text = locale.locale.bytesOf(u"a");
    EXPECT_EQ(readLong(locale, text, 36).value, 0);
    EXPECT_EQ(TSStringToLongEx(locale.handle(), text.c_str(), 0, -1, nullptr, nullptr, 36, 0), 10);
    const TSChar32 value[] = {0x62, 0};
    EXPECT_EQ(TSStringToLongW(locale.handle(), value, -1, nullptr, 36, 0), 10);
}

TEST(StringToLong, AnEmptySeparatorIsTheByteZeroOfAText)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.separators[1] = 0;
    Formatted locale(spec);
    EXPECT_EQ(TSStringToLong(locale.handle(),
                             bytes("1\0"
                                   "2")
                                 .c_str(),
                             3, nullptr, 10, 0),
              12);
    const TSChar16 units[] = {'1', 0, '2'};
    EXPECT_EQ(TSStringToLongU(locale.handle(), units, 3, nullptr, 10, 0), 1);
}

TEST(PowerOfTen, IsTheNearestDoubleButForTwo)
{
    std::vector<std::int32_t> others;
    for (std::int32_t exponent = -323; exponent <= 308; ++exponent) {
        const std::string text = "1e" + std::to_string(exponent);
        double nearest = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), nearest);
        ASSERT_EQ(read.ec, std::errc()) << exponent;
        if (powerOfTen(exponent) == nearest)
            continue;
        others.push_back(exponent);
        EXPECT_EQ(powerOfTen(exponent), std::nextafter(nearest, 1e300)) << exponent;
    }
    EXPECT_EQ(others, (std::vector<std::int32_t>{23, 210}));
}

TEST(PowerOfTen, IsZeroOrInfiniteBeyond)
{
    for (const std::int32_t exponent : {-324, -325, -100000, INT32_MIN})
        EXPECT_EQ(powerOfTen(exponent), 0) << exponent;
    for (const std::int32_t exponent : {309, 310, 100000, INT32_MAX})
        EXPECT_EQ(powerOfTen(exponent), std::numeric_limits<double>::infinity()) << exponent;
}

#ifdef __GLIBC__
TEST(PowerOfTen, IsThatOfPow)
{
    for (std::int32_t exponent = -400; exponent <= 400; ++exponent) {
        const double pow = std::pow(10.0, exponent);
        // A processor that does not multiply and add in one step rounds this one up, too.
        if (exponent == 126 && pow != powerOfTen(exponent))
            EXPECT_EQ(pow, std::nextafter(powerOfTen(exponent), 1e300));
        else
            EXPECT_EQ(powerOfTen(exponent), pow) << exponent;
    }
}
#endif

TEST(StringToDouble, TakesThePowersOfPow)
{
    EXPECT_EQ(readDouble("1.e23").value, 1.0000000000000001e23); // the nearest is below
    EXPECT_EQ(readDouble("3.e-22").value, 3e-22);
    EXPECT_EQ(readDouble("1.e308").value, 1e308);
    EXPECT_EQ(readDouble("1.e-323").value, 1e-323);
    EXPECT_EQ(readDouble("1.e-324").value, 0);
    EXPECT_EQ(readDouble("0.e308").value, 0);
}

} // namespace
} // namespace vlx::test
