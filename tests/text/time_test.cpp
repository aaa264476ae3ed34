// Times as text, case by case.
#include "strings/pages.hpp"
#include "text/formatted.hpp"

namespace vlx::test {
namespace {

// Monday, 7 March 2005, 13:05:09; the day of the year is 65.
constexpr TSTimeFields kTime{9, 5, 13, 7, 2, 105, 1, 65};

TSTimeFields withHours(std::int32_t hours)
{
    TSTimeFields time = kTime;
    time.hours = hours;
    return time;
}

std::string shown(const std::string& pattern, const TSTimeFields& time = kTime)
{
    const Written written = Formatted().time(time, pattern);
    EXPECT_EQ(written.code, TS_ERR_NONE) << pattern;
    EXPECT_EQ(written.result, static_cast<std::int32_t>(written.text.size())) << pattern;
    return written.text;
}

// A locale whose patterns are these: time, date, long date.
LocaleSpec withPatterns(const std::u16string& time, const std::u16string& date,
                        const std::u16string& longDate)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.texts[5] = time;
    spec.texts[6] = date;
    spec.texts[7] = longDate;
    return spec;
}

TEST(TimeToString, WritesTheTimeOfTheBuiltInLocale)
{
    EXPECT_EQ(shown("%#I:%M:%S %p"), "1:05:09 PM");
    EXPECT_EQ(shown("%#I:%M:%S %p", withHours(0)), "12:05:09 AM");
    EXPECT_EQ(shown("%X"), "1:05:09 PM");
}

TEST(TimeToString, WritesTheDatesOfTheBuiltInLocale)
{
    EXPECT_EQ(shown("%A, %B %d, %Y"), "Monday, March 07, 2005");
    EXPECT_EQ(shown("%x"), "3/7/05");
    EXPECT_EQ(shown("%#x"), "Monday, March 07, 2005");
    EXPECT_EQ(shown("%c"), "3/7/05 1:05:09 PM");
    EXPECT_EQ(shown("%#c"), "Monday, March 07, 2005 1:05:09 PM");
}

TEST(TimeToString, HasEveryDirective)
{
    EXPECT_EQ(shown("%a"), "Mon");
    EXPECT_EQ(shown("%b"), "Mar");
    EXPECT_EQ(shown("%d"), "07");
    EXPECT_EQ(shown("%j"), "065");
    EXPECT_EQ(shown("%m"), "03");
    EXPECT_EQ(shown("%p"), "PM");
    EXPECT_EQ(shown("%w"), "1");
    EXPECT_EQ(shown("%y"), "05");
    EXPECT_EQ(shown("%H"), "13");
    EXPECT_EQ(shown("%I"), "01");
    EXPECT_EQ(shown("%M"), "05");
    EXPECT_EQ(shown("%S"), "09");
    EXPECT_EQ(shown("%U"), "10");
    EXPECT_EQ(shown("%W"), "10");
    EXPECT_EQ(shown("%Y"), "2005");
}

TEST(TimeToString, CountsTheDayOfTheYearFromZero)
{
    TSTimeFields time = kTime;
    time.dayOfYear = 0;
    EXPECT_EQ(shown("%j", time), "000");
    EXPECT_EQ(shown("%#j", time), "0");
}

TEST(TimeToString, LeavesZerosOutWithTheFlag)
{
    TSTimeFields january = kTime;
    january.month = 0;
    january.dayOfMonth = 10;
    EXPECT_EQ(shown("%#m", january), "1");
    EXPECT_EQ(shown("%#d", january), "10");
    EXPECT_EQ(shown("%#S"), "9");
    // Two digits are made before the value reaches zero.
    EXPECT_EQ(shown("%#y"), "05");
    EXPECT_EQ(shown("%#Y"), "2005");
}

TEST(TimeToString, AcceptsTheFlagWhereItHasNoEffect)
{
    EXPECT_EQ(shown("%#A %#p %#%"), "Monday PM %");
}

TEST(TimeToString, WritesOneMarkForTwo)
{
    EXPECT_EQ(shown("100%%"), "100%");
}

TEST(TimeToString, CountsWeeksFromSundayOrMonday)
{
    TSTimeFields sunday = kTime;
    sunday.dayOfWeek = 0;
    sunday.dayOfYear = 6;
    EXPECT_EQ(shown("%U %W", sunday), "01 01");
    sunday.dayOfYear = 0;
    EXPECT_EQ(shown("%U %W", sunday), "01 00");
    TSTimeFields saturday = kTime;
    saturday.dayOfWeek = 6;
    saturday.dayOfYear = 0;
    EXPECT_EQ(shown("%U %W", saturday), "00 00");
}

TEST(TimeToString, YearsOfAnySizeDoNotOverflow)
{
    TSTimeFields time = kTime;
    time.year = INT32_MAX;
    EXPECT_EQ(shown("%Y %y", time), "5547 47");
    time.year = INT32_MIN;
    EXPECT_EQ(shown("%Y %y", time), "1748 48");
    time.year = -1898;
    EXPECT_EQ(shown("%Y %#Y", time), "0002 2");
}

TEST(TimeToString, RefusesFieldsOutOfRange)
{
    struct Row {
        std::int32_t TSTimeFields::*field;
        std::int32_t wrong;
        const char* pattern;
    };
    constexpr Row kRows[] = {
        {&TSTimeFields::seconds, 60, "%S"},    {&TSTimeFields::seconds, -1, "%S"},
        {&TSTimeFields::minutes, 60, "%M"},    {&TSTimeFields::hours, 24, "%H"},
        {&TSTimeFields::hours, -1, "%I"},      {&TSTimeFields::hours, 24, "%p"},
        {&TSTimeFields::dayOfMonth, 32, "%d"}, {&TSTimeFields::month, 12, "%m"},
        {&TSTimeFields::month, 12, "%b"},      {&TSTimeFields::month, -1, "%B"},
        {&TSTimeFields::dayOfWeek, 7, "%a"},   {&TSTimeFields::dayOfWeek, 7, "%A"},
        {&TSTimeFields::dayOfWeek, 7, "%w"},   {&TSTimeFields::dayOfWeek, 7, "%U"},
        {&TSTimeFields::dayOfYear, 366, "%j"}, {&TSTimeFields::dayOfYear, 366, "%W"}};
    for (const Row& row : kRows) {
        TSTimeFields time = kTime;
        time.*row.field = row.wrong;
        EXPECT_EQ(Formatted().time(time, std::string("<") + row.pattern + ">"),
                  (Written{"<", 1, TS_ERR_NOT_FOUND}))
            << row.pattern;
    }
}

TEST(TimeToString, RefusesUnknownDirectivesAndLoneMarks)
{
    for (const char* const pattern : {"%Z", "%z", "%q", "%", "%#", "%##", "% d", "%D"})
        EXPECT_EQ(Formatted().time(kTime, std::string("<") + pattern),
                  (Written{"<", 1, TS_ERR_DIRECTIVE}))
            << pattern;
    EXPECT_EQ(Formatted().time(kTime, "<%Z>", TS_OPT_TERMINATE),
              (Written{bytes("<\0"), 2, TS_ERR_DIRECTIVE}));
}

TEST(TimeToString, AnEmptyPatternGivesTheTerminator)
{
    EXPECT_EQ(Formatted().time(kTime, "", TS_OPT_TERMINATE), (Written{bytes("\0"), 1, 0}));
    EXPECT_EQ(Formatted().time(kTime, "", TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT),
              (Written{bytes("\0"), 1, 0}));
    EXPECT_EQ(Formatted().time(kTime, ""), (Written{"", 0, 0}));
}

TEST(TimeToString, ANumberThatFillsTheRoomIsReportedAsCut)
{
    EXPECT_EQ(Formatted().time(kTime, "%H:%M", 0, 5), (Written{"13:05", 5, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().time(kTime, "%H:%M", 0, 6), (Written{"13:05", 5, 0}));
    EXPECT_EQ(Formatted().time(kTime, "%H:%M", 0, 4), (Written{"13:0", 4, TS_ERR_BUFFER}));
}

TEST(TimeToString, ANameThatFillsTheRoomIsNot)
{
    EXPECT_EQ(Formatted().time(kTime, "%A", 0, 6), (Written{"Monday", 6, 0}));
    EXPECT_EQ(Formatted().time(kTime, "%A", 0, 5), (Written{"Monda", 5, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().time(kTime, "%A.", 0, 6), (Written{"Monday", 6, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().time(kTime, "abc", 0, 3), (Written{"abc", 3, 0}));
}

TEST(TimeToString, NoRoom)
{
    EXPECT_EQ(Formatted().time(kTime, "%H", 0, 0), (Written{"", 0, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().time(kTime, "%H", TS_OPT_CHAR_COUNT, 0), (Written{"", 0, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted().time(kTime, "%H", TS_OPT_TERMINATE, 1),
              (Written{bytes("\0"), 1, TS_ERR_BUFFER}));
}

TEST(TimeToString, ANestedPatternOverwritesTheTextBeforeIt)
{
    // What was written is at the start, and the position is behind the place of the directive.
    EXPECT_EQ(Formatted().time(kTime, "on %x!"), (Written{"3/7/05~~~!", 10, 0}));
    EXPECT_EQ(Formatted().time(kTime, "at %X"), (Written{"1:05:09 PM", 13, 0}));
    // The second half of c goes to its place.
    EXPECT_EQ(Formatted().time(kTime, "<%c"), (Written{"3/7/05~ 1:05:09 PM", 18, 0}));
}

TEST(TimeToString, BytesThatNoOneWroteAreZeroWhereCharactersAreCounted)
{
    EXPECT_EQ(Formatted().time(kTime, "on %x!", TS_OPT_CHAR_COUNT),
              (Written{bytes("3/7/05\0\0\0!"), 10, 0}));
}

TEST(TimeToString, AFailureInsideANestedPatternIsNotPassedOn)
{
    EXPECT_EQ(Formatted(withPatterns(u"%H%Z", u"", u"")).time(kTime, "%X."),
              (Written{"13.", 3, 0}));
    EXPECT_EQ(Formatted().time(kTime, "%x", 0, 3), (Written{"3/7", 3, 0}));
}

TEST(TimeToString, PatternsThatNameEachOtherEnd)
{
    for (const char16_t* const pattern : {u"%x", u"%c", u"%#x", u"%X"}) {
        Formatted locale(withPatterns(pattern, pattern, pattern));
        EXPECT_EQ(locale.time(kTime, "%x").code, TS_ERR_DIRECTIVE);
        EXPECT_EQ(locale.time(kTime, "%X").code, TS_ERR_DIRECTIVE);
        EXPECT_EQ(locale.time(kTime, "%c", TS_OPT_TERMINATE).code, TS_ERR_DIRECTIVE);
    }
    EXPECT_EQ(Formatted(withPatterns(u"%H", u"%#x", u"%X")).time(kTime, "%x"),
              (Written{"13", 2, 0}));
}

TEST(TimeToString, CutsStoredPatternsAtThirtyOneBytes)
{
    const std::u16string pattern = u"1234567890123456789012345678901234567890";
    EXPECT_EQ(Formatted(withPatterns(pattern, u"", u"")).time(kTime, "%X"),
              (Written{"1234567890123456789012345678901", 31, 0}));
}

TEST(TimeToString, CopiesLongCharactersWhole)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kDoubleByte;
    EXPECT_EQ(Formatted(spec).time(kTime, "\x81\x43%d"), (Written{"\x81\x43"
                                                                  "07",
                                                                  4, 0}));
    EXPECT_EQ(Formatted(spec).time(kTime, "a\x81\x43", 0, 2), (Written{"a", 1, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(spec).time(kTime, "a\x81"), (Written{"a", 1, TS_ERR_DIRECTIVE}));
}

// A name is copied as a string is, by the table of lengths alone.
TEST(TimeToString, ANameEndsBeforeACharacterThatItDoesNotHold)
{
    for (const PageShape shape : {PageShape::kDoubleByte, PageShape::kStateful2}) {
        LocaleSpec spec = LocaleSpec::builtin();
        spec.shape = shape;
        Formatted locale(spec);
        locale.locale.page.lead('y', 2).build();
        setCodePageFlags(locale.record());
        EXPECT_EQ(locale.time(kTime, "%A"), (Written{"Monda", 5, 0}));
        EXPECT_EQ(locale.time(kTime, "%A", 0, 6), (Written{"Monda", 5, 0}));
        EXPECT_EQ(locale.time(kTime, "%A.%A", TS_OPT_TERMINATE),
                  (Written{bytes("Monda.Monda\0"), 12, 0}));
    }
}

TEST(TimeToStringEx, FollowsStates)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    // Shift in is 0x0E, shift out 0x0F.
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%d\x0E\x41\x43\x0F", 0),
              (Written{"07\x0E\x41\x43", 5, 0}));
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%d\x0E\x41\x43\x0F", 0, TS_OPT_TERMINATE),
              (Written{bytes("07\x0E\x41\x43\x0F\0"), 7, 0}));
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%d", 1), (Written{"\x0F"
                                                               "07",
                                                               3, 0}));
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "x", 1, 0, 2), (Written{"", 0, TS_ERR_BUFFER}));
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "x", 1, 0, 3), (Written{"\x0Fx", 2, 0}));
}

TEST(TimeToStringEx, TakesTheLastCharacterBackForTheShiftByte)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    const Written written =
        Formatted(spec).timeEx(kTime, "a\x0E\x41\x43\x41\x44\x0F", 0, TS_OPT_TERMINATE, 7);
    EXPECT_EQ(written.result, 6);
    EXPECT_EQ(written.text.substr(0, 6), bytes("a\x0E\x41\x43\x0F\0"));
    const Written shorter =
        Formatted(spec).timeEx(kTime, "a\x0E\x41\x43\x0F", 0, TS_OPT_TERMINATE, 5);
    EXPECT_EQ(shorter.result, 2);
    EXPECT_EQ(shorter.text.substr(0, 2), bytes("a\0"));
}

TEST(TimeToStringEx, TakesACharacterOfANestedPatternBackWithItsShiftByte)
{
    LocaleSpec spec = withPatterns(u"\x6708", u"\x6708\x6708", u"");
    spec.shape = PageShape::kStateful2;
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%X", 0, TS_OPT_TERMINATE, 5),
              (Written{bytes("\x0E\x41\x43\x0F\0"), 5, 0}));
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%X", 0, TS_OPT_TERMINATE, 4).result, 1);
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%X", 0, TS_OPT_TERMINATE, 4).text[0], '\0');
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%x", 0, TS_OPT_TERMINATE, 6).text.substr(0, 5),
              bytes("\x0E\x41\x43\x0F\0"));
    // The date ends in the single-byte state, so that the time brings its own shift byte.
    EXPECT_EQ(Formatted(spec).timeEx(kTime, "%c", 0, TS_OPT_TERMINATE, 11).text.substr(0, 8),
              bytes("\x0E\x41\x43\x41\x43\x0F\x20\0"));
}

TEST(TimeToStringEx, CountedTextEndsBehindACharacter)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    Formatted locale(spec);
    const auto counted = [&](std::int32_t size, std::uint32_t options) {
        char text[20] = "~~~~~~~~~~";
        const std::int32_t result =
            TSTimeToStringEx(locale.handle(), &kTime, text, 0, size, "a\x0E\x41\x43\x0F", 0, -1,
                             options | TS_OPT_CHAR_COUNT);
        return std::pair(result, std::string(text, 6));
    };
    EXPECT_EQ(counted(1, 0), (std::pair(1, bytes("a~~~~~"))));
    EXPECT_EQ(counted(2, 0), (std::pair(2, bytes("a\x0E\x41\x43~~"))));
    EXPECT_EQ(counted(2, TS_OPT_TERMINATE), (std::pair(2, bytes("a\0~~~~"))));
    EXPECT_EQ(counted(3, TS_OPT_TERMINATE), (std::pair(3, bytes("a\x0E\x41\x43\x0F\0"))));
}

// The local buffer of 512 bytes is terminated before its characters are counted off.
TEST(TimeToStringEx, CountedTextThatFillsItsBufferLosesACharacterForTheShiftByte)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.shape = PageShape::kStateful2;
    Formatted locale(spec);
    std::string pattern = "\x0E";
    for (int i = 0; i < 300; ++i)
        pattern += "\x41\x43";
    const auto counted = [&](std::uint32_t options) {
        char text[600] = {};
        return TSTimeToStringEx(locale.handle(), &kTime, text, 0, 290, pattern.c_str(), 0, -1,
                                options | TS_OPT_CHAR_COUNT);
    };
    EXPECT_EQ(counted(0), 255);
    EXPECT_EQ(counted(TS_OPT_TERMINATE), 254 + 1);
    EXPECT_EQ(locale.record().lastError, TS_ERR_BUFFER);
}

TEST(TimeToStringUnits, ClassPackedValuesByTheirLowByte)
{
    Formatted locale;
    const TSChar32 pattern[] = {0x8125, 'd', 0x8164, '%', 0x8164};
    TSChar32 values[20];
    EXPECT_EQ(textOf(values, TSTimeToStringW(locale.handle(), &kTime, values, 20, pattern, 5, 0)),
              (std::u32string{'0', '7', 0x8164, '0', '7'}));
    const TSChar16 wide[] = {0x8125, 'd', '%', 'd'};
    TSChar16 units[20];
    EXPECT_EQ(textOf(units, TSTimeToStringU(locale.handle(), &kTime, units, 20, wide, 4, 0)),
              (std::u16string{0x8125, 'd', '0', '7'}));
}

TEST(TimeToStringTables, KnowTheLettersOfCodePage930)
{
    LocaleSpec spec = LocaleSpec::builtin();
    spec.ebcdic = true;
    spec.shape = PageShape::kStateful2;
    spec.id = 930;
    Formatted locale(spec);
    const std::string small = locale.locale.bytesOf(u"%d");
    ASSERT_EQ(small, "\x6C\x65");
    EXPECT_EQ(locale.timeEx(kTime, small, 0), (Written{"\xF0\xF7", 2, 0}));
    // The plain member knows the common letters alone.
    EXPECT_EQ(locale.time(kTime, small), (Written{"", 0, TS_ERR_DIRECTIVE}));
    EXPECT_EQ(locale.time(kTime, "\x6C\x84"), (Written{"\xF0\xF7", 2, 0}));
    EXPECT_EQ(locale.timeEx(kTime, "\x6C\x84", 0), (Written{"", 0, TS_ERR_DIRECTIVE}));
}

} // namespace
} // namespace vlx::test
