// What the conversions from and to 16-bit Unicode promise, one by one.
#include "convert/small_pages.hpp"

namespace vlx::test {
namespace {

class UnicodeConversion : public SmallPages {
  protected:
    Unicode toUnicode(TSLocale* locale, std::int32_t count, const char* input, std::int32_t length,
                      std::uint32_t options)
    {
        Elements<TSChar16> output;
        result_ = TSStringToUnicode(output.at(), count, locale, input, length, options);
        return output.written();
    }
    Unicode toUnicodeEx(std::int32_t count, const char* input, std::int32_t state,
                        std::int32_t length, std::uint32_t options)
    {
        Elements<TSChar16> output;
        result_ =
            TSStringToUnicodeEx(output.at(), count, &onStateful_, input, state, length, options);
        return output.written();
    }
    Unicode toUnicodeW(TSLocale* locale, std::int32_t count, const Packed& input,
                       std::int32_t length, std::uint32_t options)
    {
        Elements<TSChar16> output;
        result_ = TSStringToUnicodeW(output.at(), count, locale, input.data(), length, options);
        return output.written();
    }

    std::int32_t result_ = 0;
};

TEST_F(UnicodeConversion, TerminatesATerminatedInputWhereThereIsRoom)
{
    EXPECT_EQ(toUnicode(&onSingle_, 4, "a\x80z", -1, 0), (Unicode{'a', 0x20AC, 'z', 0}));
    EXPECT_EQ(result_, 4);
    EXPECT_EQ(toUnicode(&onSingle_, 3, "a\x80z", -1, 0), (Unicode{'a', 0x20AC, 'z'}));
    EXPECT_EQ(result_, 3);
    EXPECT_EQ(toUnicode(&onSingle_, 2, "a\x80z", -1, 0), (Unicode{'a', 0x20AC}));
    EXPECT_EQ(onSingle_.lastError, TS_ERR_NONE);
}

TEST_F(UnicodeConversion, KeepsRoomForATerminatorThatIsAskedFor)
{
    EXPECT_EQ(toUnicode(&onDouble_, 2, "\x81\x40z", 3, TS_OPT_TERMINATE), (Unicode{0x3000, 0}));
    EXPECT_EQ(toUnicode(&onDouble_, 1, "\x81\x40z", 3, TS_OPT_TERMINATE), (Unicode{0}));
    EXPECT_EQ(result_, 1);
    EXPECT_EQ(toUnicode(&onDouble_, 9, "", 0, TS_OPT_TERMINATE), (Unicode{0}));
    EXPECT_EQ(toUnicode(&onDouble_, 9, "", 0, 0), Unicode{});
}

TEST_F(UnicodeConversion, GivesNothingForNoRoomAndNoError)
{
    onDouble_.lastError = kUntouchedError;
    EXPECT_EQ(toUnicode(&onDouble_, 0, "abc", 3, TS_OPT_TERMINATE), Unicode{});
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(onDouble_.lastError, TS_ERR_NONE);
    EXPECT_EQ(toUnicode(&onDouble_, -5, "abc", -1, TS_OPT_TERMINATE), Unicode{});
    EXPECT_EQ(result_, 0);
}

TEST_F(UnicodeConversion, CutsNoCharacter)
{
    EXPECT_EQ(toUnicode(&onDouble_, 9, "a\x81", -1, 0), (Unicode{'a'}));
    EXPECT_EQ(toUnicode(&onDouble_, 9, "a\x81\x40", 2, 0), (Unicode{'a'}));
    EXPECT_EQ(onDouble_.lastError, TS_ERR_NONE);
}

TEST_F(UnicodeConversion, CountsTheCharactersOfTheInputAlone)
{
    EXPECT_EQ(toUnicode(&onDouble_, 9, "\x81\x40z!", 2, TS_OPT_CHAR_COUNT), (Unicode{0x3000, 'z'}));
    EXPECT_EQ(toUnicode(&onDouble_, 9, "\x81\x40z!", 2, 0x4008), (Unicode{0x3000, 'z', 0}));
    EXPECT_EQ(toUnicodeEx(9, "\x0E\x42\x43\x0Fz!", 0, 2, TS_OPT_CHAR_COUNT),
              (Unicode{0x3000, 'z'}));
}

TEST_F(UnicodeConversion, GivesAByteThatLeadsNothingInASingleBytePageNoValue)
{
    PageBuilder page(PageShape::kSingleByte);
    TSLocale locale = localeOn(page.asciiHalf().map(0x81, 0x20AC).lead(0x81, 2).build());
    EXPECT_EQ(toUnicode(&locale, 9, "\x81z\x81", 3, 0), (Unicode{0xFFFD, 'z', 0xFFFD}));
}

TEST_F(UnicodeConversion, ReadsShiftBytes)
{
    EXPECT_EQ(toUnicodeEx(9, "a\x0E\x42\x43\x0F\x42", 0, -1, 0), (Unicode{'a', 0x3000, 'B', 0}));
    EXPECT_EQ(toUnicodeEx(9, "\x42\x43\x42", 1, 3, 0), (Unicode{0x3000}));
    EXPECT_EQ(toUnicodeEx(9, "a\x0E", 0, -1, 0), (Unicode{'a', 0}));
    EXPECT_EQ(toUnicodeEx(9, "\x0E\x7F\x7F", 0, 3, 0), (Unicode{0xFFFD}));
}

TEST_F(UnicodeConversion, PlainMemberTakesAShiftByteForACharacter)
{
    EXPECT_EQ(toUnicode(&onStateful_, 9, "\x0E\x0F", 2, 0), (Unicode{0x0E, 0x0F}));
}

TEST_F(UnicodeConversion, ReadsPackedValues)
{
    EXPECT_EQ(toUnicodeW(&onDouble_, 9, {'a', 0x8140, 0x8199, 0}, -1, 0),
              (Unicode{'a', 0x3000, 0xFFFD, 0}));
    EXPECT_EQ(toUnicodeW(&onDouble_, 2, {'a', 0x8140, 0}, -1, 0), (Unicode{'a', 0x3000}));
    EXPECT_EQ(toUnicodeW(&onDouble_, 2, {'a', 0x8140}, 2, TS_OPT_TERMINATE), (Unicode{'a', 0}));
    EXPECT_EQ(toUnicodeW(&onDouble_, 9, {'a', 0x8140}, 1, TS_OPT_CHAR_COUNT), (Unicode{'a'}));
    EXPECT_EQ(toUnicodeW(&onDouble_, 9, {}, 0, TS_OPT_TERMINATE), (Unicode{0}));
    EXPECT_EQ(toUnicodeW(&onDouble_, 0, {'a'}, 1, TS_OPT_TERMINATE), Unicode{});
    EXPECT_EQ(toUnicodeW(&onSingle_, 9, {0x4241}, 1, 0), (Unicode{0xFFFD}));
}

TEST_F(UnicodeConversion, WritesBytes)
{
    const Unicode text{'a', 0x3000, 0x4E00, 0};
    EXPECT_TRUE(gave(TSUnicodeToString(&onDouble_, at(), 9, text.data(), -1, 0), 5,
                     {'a', 0x81, 0x40, '?', 0}, onDouble_));
    EXPECT_TRUE(gave(TSUnicodeToString(&onDouble_, at(), 4, text.data(), -1, 0), 4,
                     {'a', 0x81, 0x40, '?'}, onDouble_));
    EXPECT_TRUE(gave(TSUnicodeToString(&onDouble_, at(), 3, text.data(), 3, TS_OPT_TERMINATE), 2,
                     {'a', 0}, onDouble_));
    EXPECT_TRUE(gave(TSUnicodeToString(&onDouble_, at(), 2, text.data(), 3, TS_OPT_CHAR_COUNT), 2,
                     {'a', 0x81, 0x40}, onDouble_));
    EXPECT_TRUE(gave(TSUnicodeToString(&onDouble_, at(), 0, text.data(), -1, TS_OPT_TERMINATE), 0,
                     {}, onDouble_));
    EXPECT_TRUE(gave(TSUnicodeToString(&onDouble_, at(), 9, text.data(), 0, TS_OPT_TERMINATE), 1,
                     {0}, onDouble_));
}

TEST_F(UnicodeConversion, KeepsTheFirstByteInASingleBytePage)
{
    PageBuilder page(PageShape::kSingleByte);
    TSLocale locale = localeOn(page.asciiHalf().encodeOnly(0x3000, 0x8140).build());
    const Unicode text{'a', 0x3000, 'z', 0};
    EXPECT_TRUE(
        gave(TSUnicodeToString(&locale, at(), 9, text.data(), 3, 0), 3, {'a', 0x81, 'z'}, locale));
    EXPECT_TRUE(
        gave(TSUnicodeToString(&locale, at(), 2, text.data(), -1, 0), 2, {'a', 0x81}, locale));
    EXPECT_TRUE(gave(TSUnicodeToStringEx(&locale, at(), 1, 4, text.data(), -1, 0), 4,
                     {'a', 0x81, 'z', 0}, locale));
}

TEST_F(UnicodeConversion, WritesShiftBytesAndClosesTheString)
{
    const Unicode text{'a', 0x3000, 0x3001, 0};
    const auto write = [&](std::int32_t state, std::int32_t size, std::int32_t count,
                           std::uint32_t options) {
        return TSUnicodeToStringEx(&onStateful_, at(), state, size, text.data(), count, options);
    };
    EXPECT_TRUE(gave(write(0, 9, 3, 0), 6, {'a', 0x0E, 0x42, 0x43, 0x42, 0x44}, onStateful_));
    EXPECT_TRUE(gave(write(1, 9, 1, 0), 2, {0x0F, 'a'}, onStateful_));
    EXPECT_TRUE(
        gave(write(0, 8, -1, 0), 8, {'a', 0x0E, 0x42, 0x43, 0x42, 0x44, 0x0F, 0}, onStateful_));
    EXPECT_TRUE(
        gave(write(0, 7, 3, TS_OPT_TERMINATE), 6, {'a', 0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(write(0, 5, 2, TS_OPT_TERMINATE), 2, {'a', 0, 0x42, 0x43}, onStateful_));
    EXPECT_TRUE(gave(write(0, 3, 3, 0x4008), 3, {'a', 0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(write(1, 9, 0, TS_OPT_TERMINATE), 2, {0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(write(1, 1, 0, TS_OPT_TERMINATE), 0, {}, onStateful_));
}

TEST_F(UnicodeConversion, PlainMemberWritesNoShiftBytes)
{
    const Unicode text{'a', 0x3000, 0};
    EXPECT_TRUE(gave(TSUnicodeToString(&onStateful_, at(), 9, text.data(), -1, 0), 4,
                     {'a', 0x42, 0x43, 0}, onStateful_));
}

TEST_F(UnicodeConversion, GivesPackedValues)
{
    const Unicode text{'a', 0x3000, 0x4E00, 0};
    Elements<TSChar32> output;
    EXPECT_EQ(TSUnicodeToStringW(&onDouble_, output.at(), 9, text.data(), -1, 0), 4);
    EXPECT_EQ(output.written(), (Packed{'a', 0x8140, '?', 0}));
    Elements<TSChar32> cut;
    EXPECT_EQ(TSUnicodeToStringW(&onUtf8_, cut.at(), 2, text.data() + 1, 2, TS_OPT_TERMINATE), 2);
    EXPECT_EQ(cut.written(), (Packed{0xE38080, 0}));
    Elements<TSChar32> none;
    EXPECT_EQ(TSUnicodeToStringW(&onUtf8_, none.at(), 0, text.data(), -1, TS_OPT_TERMINATE), 0);
    EXPECT_EQ(TSUnicodeToStringW(&onUtf8_, none.at(), -1, text.data(), -1, TS_OPT_CHAR_COUNT), 0);
    EXPECT_EQ(none.written(), Packed{});
}

TEST_F(UnicodeConversion, ConvertsPackedValuesBetweenPages)
{
    const Packed text{'a', 0x8140, 0x8199, 0};
    const auto convert = [&](Elements<TSChar32>& output, std::int32_t count, std::int32_t length,
                             std::uint32_t options) {
        return TSConvertStringW(&onStateful_, output.at(), count, &onDouble_, text.data(), length,
                                options);
    };
    Elements<TSChar32> whole;
    EXPECT_EQ(convert(whole, 9, -1, 0), 4);
    EXPECT_EQ(whole.written(), (Packed{'a', 0x4243, '?', 0}));
    Elements<TSChar32> full;
    EXPECT_EQ(convert(full, 3, -1, TS_OPT_CHAR_COUNT), 3);
    EXPECT_EQ(full.written(), (Packed{'a', 0x4243, '?'}));
    Elements<TSChar32> cut;
    EXPECT_EQ(convert(cut, 2, 3, 0x4008), 2);
    EXPECT_EQ(cut.written(), (Packed{'a', 0}));
    Elements<TSChar32> empty;
    EXPECT_EQ(convert(empty, 9, 0, TS_OPT_TERMINATE), 1);
    EXPECT_EQ(empty.written(), (Packed{0}));
    EXPECT_EQ(onStateful_.lastError, TS_ERR_NONE);
    EXPECT_EQ(onDouble_.lastError, kUntouchedError);
}

TEST_F(UnicodeConversion, RefusesOtherOptions)
{
    const Packed packed{'a', 0};
    const Unicode unicode{'a', 0};
    Elements<TSChar32> wide;
    for (const std::uint32_t options : {1U, 0x10U, 0x9U, 0x4001U, 0x80000000U}) {
        const auto refuses = [](std::int32_t result, TSLocale& locale) {
            const bool refused = result == -1 && locale.lastError == TS_ERR_ARGUMENT;
            locale.lastError = kUntouchedError;
            return refused;
        };
        EXPECT_EQ(toUnicode(&onDouble_, 9, "a", 1, options), Unicode{});
        EXPECT_TRUE(refuses(result_, onDouble_));
        EXPECT_EQ(toUnicodeEx(9, "a", 0, 1, options), Unicode{});
        EXPECT_TRUE(refuses(result_, onStateful_));
        EXPECT_EQ(toUnicodeW(&onDouble_, 9, packed, 1, options), Unicode{});
        EXPECT_TRUE(refuses(result_, onDouble_));
        EXPECT_TRUE(
            refuses(TSUnicodeToString(&onDouble_, at(), 9, unicode.data(), 1, options), onDouble_));
        EXPECT_TRUE(
            refuses(TSUnicodeToStringEx(&onStateful_, at(), 0, 9, unicode.data(), 1, options),
                    onStateful_));
        EXPECT_TRUE(refuses(
            TSUnicodeToStringW(&onDouble_, wide.at(), 9, unicode.data(), 1, options), onDouble_));
        EXPECT_TRUE(
            refuses(TSConvertStringW(&onDouble_, wide.at(), 9, &onUtf8_, packed.data(), 1, options),
                    onDouble_));
        EXPECT_EQ(onUtf8_.lastError, kUntouchedError);
    }
    EXPECT_TRUE(output_.holds({}));
    EXPECT_EQ(wide.written(), Packed{});
}

TEST_F(UnicodeConversion, TakesTheDefaultLocaleForNull)
{
    tsDefaultLocale = &onDouble_;
    const Unicode text{0x3000, 0};
    const Packed packed{0x8140, 0};
    EXPECT_EQ(toUnicode(nullptr, 9, "\x81\x40", 2, 0), (Unicode{0x3000}));
    EXPECT_EQ(toUnicodeW(nullptr, 9, packed, 1, 0), (Unicode{0x3000}));
    EXPECT_TRUE(
        gave(TSUnicodeToString(nullptr, at(), 9, text.data(), 1, 0), 2, {0x81, 0x40}, onDouble_));
    Elements<TSChar32> wide;
    EXPECT_EQ(TSUnicodeToStringW(nullptr, wide.at(), 9, text.data(), 1, 0), 1);
    EXPECT_EQ(TSConvertStringW(nullptr, wide.at() + 1, 9, nullptr, packed.data(), 1, 0), 1);
    EXPECT_EQ(wide.written(), (Packed{0x8140, 0x8140}));
    tsDefaultLocale = &onStateful_;
    Elements<TSChar16> unicode;
    EXPECT_EQ(TSStringToUnicodeEx(unicode.at(), 9, nullptr, "\x42\x43", 1, 2, 0), 1);
    EXPECT_EQ(unicode.written(), (Unicode{0x3000}));
    EXPECT_TRUE(gave(TSUnicodeToStringEx(nullptr, at(), 0, 9, text.data(), 1, 0), 3,
                     {0x0E, 0x42, 0x43}, onStateful_));
}

} // namespace
} // namespace vlx::test
