// Times from text, case by case.
#include "strings/pages.hpp"
#include "text/formatted.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kOld = 555; // what a field has before
constexpr TSTimeFields kUntouched{kOld, kOld, kOld, kOld, kOld, kOld, kOld, kOld};

struct Read {
    std::int32_t result;
    std::int32_t code;
    TSTimeFields time;
};

Read read(Formatted& locale, const std::string& text, const std::string& pattern,
          std::uint32_t options = 0)
{
    Read read{0, 0, kUntouched};
    read.result = TSStringToTime(locale.handle(), &read.time, text.data(),
                                 static_cast<std::int32_t>(text.size()), pattern.data(),
                                 static_cast<std::int32_t>(pattern.size()), options);
    read.code = locale.record().lastError;
    return read;
}

Read read(const std::string& text, const std::string& pattern)
{
    Formatted locale;
    return read(locale, text, pattern);
}

TEST(StringToTime, AcceptsATextShorterThanItsPattern)
{
    const Read date = read("11/05/", "%m/%d/%y");
    EXPECT_EQ(date.result, 6);
    EXPECT_EQ(date.code, 0);
    EXPECT_EQ(date.time.month, 10);
    EXPECT_EQ(date.time.dayOfMonth, 5);
    EXPECT_EQ(date.time.year, kOld);
}

TEST(StringToTime, AcceptsATextLongerThanItsPattern)
{
    const Read date = read("3/7/05 and more words", "%#m/%#d/%y");
    EXPECT_EQ(date.result, 6);
    EXPECT_EQ(date.time.month, 2);
    EXPECT_EQ(date.time.dayOfMonth, 7);
    EXPECT_EQ(date.time.year, 5); // there is no rule for the century
}

TEST(StringToTime, ReadsTwelveByTheHalfOfTheDay)
{
    EXPECT_EQ(read("12 AM", "%I %p").time.hours, 0);
    EXPECT_EQ(read("12 PM", "%I %p").time.hours, 12);
    EXPECT_EQ(read("1 PM", "%I %p").time.hours, 13);
    EXPECT_EQ(read("PM 1", "%p %I").time.hours, 13);
    EXPECT_EQ(read("PM 1 AM", "%p %I %p").time.hours, 1); // a later one overrides
    EXPECT_EQ(read("13 PM", "%H %p").time.hours, 13);
}

TEST(StringToTime, RefusesNumbersOutOfRange)
{
    const Read hour = read("13", "%I");
    EXPECT_EQ(hour.result, -1);
    EXPECT_EQ(hour.code, TS_ERR_NOT_FOUND);
    EXPECT_EQ(hour.time.hours, 13);
    for (const auto& [text, pattern] : {std::pair{"32", "%d"},
                                        {"367", "%j"},
                                        {"13", "%m"},
                                        {"7", "%w"},
                                        {"24", "%H"},
                                        {"60", "%M"},
                                        {"60", "%S"}})
        EXPECT_EQ(read(text, pattern).code, TS_ERR_NOT_FOUND) << pattern;
    for (const auto& [text, pattern] : {std::pair{"31", "%d"},
                                        {"366", "%j"},
                                        {"12", "%m"},
                                        {"6", "%w"},
                                        {"23", "%H"},
                                        {"59", "%M"},
                                        {"59", "%S"},
                                        {"00", "%d"},
                                        {"0", "%m"},
                                        {"99", "%y"},
                                        {"9999", "%Y"}})
        EXPECT_EQ(read(text, pattern).code, 0) << pattern;
}

TEST(StringToTime, StoresWhatItReads)
{
    EXPECT_EQ(read("065", "%j").time.dayOfYear, 65); // as it stands, from 0 or 1
    EXPECT_EQ(read("0", "%m").time.month, -1);
    EXPECT_EQ(read("2005", "%Y").time.year, 105);
    EXPECT_EQ(read("0", "%Y").time.year, -1900);
    EXPECT_EQ(read("x", "%m").time.month, -2);
    EXPECT_EQ(read("x", "%Y").time.year, -1901);
    EXPECT_EQ(read("x", "%A").time.dayOfWeek, -1);
}

TEST(StringToTime, LeavesDigitsBehindTheWidthToTheNextDirective)
{
    const Read time = read("123456", "%H%M%S");
    EXPECT_EQ(time.result, 6);
    EXPECT_EQ(time.time.hours, 12);
    EXPECT_EQ(time.time.minutes, 34);
    EXPECT_EQ(time.time.seconds, 56);
}

TEST(StringToTime, ReadsTheShortNameAndStops)
{
    const Read day = read("Tuesday", "%a");
    EXPECT_EQ(day.result, 3);
    EXPECT_EQ(day.time.dayOfWeek, 2);
    EXPECT_EQ(read("Tuesday", "%A").result, 7);
    EXPECT_EQ(read("tuesday", "%A").code, TS_ERR_NOT_FOUND); // case counts
}

TEST(StringToTime, TakesTheLongerOfTwoNames)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.language.texts[2] = u"Su";
    spec.language.texts[3] = u"Sunny";
    spec.language.texts[4] = u"Sun";
    spec.language.texts[5] = u"Sunny"; // as long as an earlier one
    Formatted locale(spec);
    EXPECT_EQ(read(locale, "Sunny", "%A").time.dayOfWeek, 1);
    EXPECT_EQ(read(locale, "Sun", "%A").time.dayOfWeek, 2);
    EXPECT_EQ(read(locale, "Sux", "%A").time.dayOfWeek, 0);
}

TEST(StringToTime, DoesNotLookAtTheThirteenthMonth)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.language.texts[28] = u"Undecimber";
    Formatted locale(spec);
    EXPECT_EQ(read(locale, "Undecimber", "%B").code, TS_ERR_NOT_FOUND);
    EXPECT_EQ(read(locale, "December", "%B").time.month, 11);
}

TEST(StringToTime, SkipsNoBlanksBeforeANumber)
{
    EXPECT_EQ(read(" 7", "%d").code, TS_ERR_NOT_FOUND);
}

TEST(StringToTime, GivesZeroForAnEmptyText)
{
    EXPECT_EQ(read("", "%d").result, 0);
    EXPECT_EQ(read("", "%d").code, 0);
    EXPECT_EQ(read("7", "").result, 0);
    EXPECT_EQ(read("", "%Z").code, 0);
}

TEST(StringToTime, ComparesLiteralsAndMarks)
{
    EXPECT_EQ(read("7.3", "%d/%m").code, TS_ERR_NOT_FOUND);
    EXPECT_EQ(read("7%", "%d%%").result, 2);
    EXPECT_EQ(read("7x", "%d%%").code, TS_ERR_NOT_FOUND);
}

TEST(StringToTime, RefusesUnknownDirectives)
{
    for (const char* const pattern : {"%U", "%W", "%Z", "%z", "%q", "%", "%#", "%##"})
        EXPECT_EQ(read("7", pattern).code, TS_ERR_DIRECTIVE) << pattern;
}

TEST(StringToTime, ReadsNestedPatterns)
{
    const Read time = read("1:05:09 PM", "%X");
    EXPECT_EQ(time.result, 10);
    EXPECT_EQ(time.time.hours, 13);
    EXPECT_EQ(time.time.seconds, 9);
    EXPECT_EQ(read("3/7/05", "%x").time.dayOfMonth, 7);
    EXPECT_EQ(read("Monday, March 07, 2005", "%#x").time.year, 105);
    const Read both = read("3/7/05T1:05:09 PM", "%c"); // any character may part them
    EXPECT_EQ(both.result, 17);
    EXPECT_EQ(both.time.hours, 13);
    EXPECT_EQ(read("3/7/05", "%c").code, TS_ERR_NOT_FOUND);
    EXPECT_EQ(read("3-7-05", "%x").code, TS_ERR_NOT_FOUND);
}

TEST(StringToTime, AppliesTheAfternoonInItsOwnCall)
{
    // The half of the day of a nested pattern is not that of the pattern around it.
    LocaleSpec spec = LocaleSpec::builtin();
    spec.texts[6] = u"%p";
    Formatted locale(spec);
    EXPECT_EQ(read(locale, "PM 1", "%x %I").time.hours, 1);
}

TEST(StringToTime, PatternsThatNameEachOtherEnd)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.texts[6] = u"%x";
    Formatted locale(spec);
    EXPECT_EQ(read(locale, "7", "%x").code, TS_ERR_DIRECTIVE);
}

TEST(StringToTime, EndsWellInsideALongCharacter)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kDoubleByte;
    Formatted locale(spec);
    EXPECT_EQ(read(locale, "7\x81", "%d\x81\x43").result, 1);
    EXPECT_EQ(read(locale, "7\x81\x43", "%d\x81\x43").result, 3);
    TSTimeFields time = kUntouched;
    EXPECT_EQ(
        TSStringToTime(locale.handle(), &time, "7\x81\x43", 2, "%d\x81\x43", 3, TS_OPT_CHAR_COUNT),
        2);
    EXPECT_EQ(read(locale, "7\x81\x44", "%d\x81\x43").code, TS_ERR_NOT_FOUND);
}

TEST(StringToTime, RefusesOptionsButItsOwn)
{
    Formatted locale;
    forRefusedOptions(
        [](std::uint32_t options) {
            return (options & ~(TS_OPT_OBJECT_VALUE | TS_OPT_CHAR_COUNT)) == 0;
        },
        [&](std::uint32_t options) {
            EXPECT_EQ(read(locale, "7", "%d", options).result, -1);
            EXPECT_EQ(read(locale, "7", "%d", options).code, TS_ERR_ARGUMENT);
        });
}

TEST(StringToTimeEx, NeedsTheStateOfEachDirective)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    spec.language.texts[30] = u"\x6708"; // the short name of February
    Formatted locale(spec);
    const auto readEx = [&](const std::string& text, std::int32_t state,
                            const std::string& pattern) {
        Read read{0, 0, kUntouched};
        read.result = TSStringToTimeEx(locale.handle(), &read.time, text.data(), state,
                                       static_cast<std::int32_t>(text.size()), pattern.data(), 0,
                                       static_cast<std::int32_t>(pattern.size()), 0);
        read.code = locale.record().lastError;
        return read;
    };
    // U+6708 is 0x4143; shift in is 0x0E, shift out 0x0F.
    const Read date = readEx("7\x0E\x41\x43\x0F"
                             "12",
                             0, "%d%b%m");
    EXPECT_EQ(date.code, 0);
    EXPECT_EQ(date.result, 7);
    EXPECT_EQ(date.time.dayOfMonth, 7);
    EXPECT_EQ(date.time.month, 11);
    EXPECT_EQ(readEx("\x41\x43", 1, "%b").time.month, 1);
    EXPECT_EQ(readEx("7", 1, "%d").code, TS_ERR_NOT_FOUND);
    EXPECT_EQ(readEx("ab", 0, "a\x0E\x41\x43").result, 1); // ends well
}

} // namespace
} // namespace vlx::test
