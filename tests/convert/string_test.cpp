// What the conversions of byte strings promise, one by one.
#include <limits>

#include "convert/small_pages.hpp"

namespace vlx::test {
namespace {

class ConvertString : public SmallPages {
  protected:
    // From the double-byte page to the stateful one.
    std::int32_t toStateful(std::int32_t state, std::int32_t size, const char* input,
                            std::int32_t length, std::uint32_t options)
    {
        return TSConvertStringEx(&onStateful_, at(), state, size, &onDouble_, input, 0, length,
                                 options);
    }
    std::int32_t toDouble(std::int32_t size, const char* input, std::int32_t length,
                          std::uint32_t options)
    {
        return TSConvertString(&onDouble_, at(), size, &onUtf8_, input, length, options);
    }
};

TEST_F(ConvertString, TerminatesATerminatedInputWhereThereIsRoom)
{
    EXPECT_TRUE(gave(toDouble(4, "abc", -1, 0), 4, {'a', 'b', 'c', 0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(9, "a\xE3\x80\x80", -7, 0), 4, {'a', 0x81, 0x40, 0}, onDouble_));
}

TEST_F(ConvertString, LeavesTheTerminatorAwayWithoutRoomAndWithoutAnError)
{
    EXPECT_TRUE(gave(toDouble(3, "abc", -1, 0), 3, {'a', 'b', 'c'}, onDouble_));
    EXPECT_TRUE(gave(toDouble(2, "abc", -1, 0), 2, {'a', 'b'}, onDouble_));
}

TEST_F(ConvertString, DoesNotTerminateAnInputWithALength)
{
    EXPECT_TRUE(gave(toDouble(9, "abc", 2, 0), 2, {'a', 'b'}, onDouble_));
    EXPECT_TRUE(gave(toDouble(9, "abc", 3, TS_OPT_TERMINATE), 4, {'a', 'b', 'c', 0}, onDouble_));
}

TEST_F(ConvertString, KeepsRoomForATerminatorThatIsAskedFor)
{
    EXPECT_TRUE(gave(toDouble(1, "abc", 3, TS_OPT_TERMINATE), 1, {0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(1, "abc", -1, TS_OPT_TERMINATE), 1, {0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(3, "abc", 3, TS_OPT_TERMINATE), 3, {'a', 'b', 0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(3, "\xE3\x80\x80\xE3\x80\x81", 6, TS_OPT_TERMINATE), 3,
                     {0x81, 0x40, 0}, onDouble_));
}

TEST_F(ConvertString, StopsBeforeACharacterThatDoesNotFit)
{
    EXPECT_TRUE(gave(toDouble(2, "a\xE3\x80\x80z", 5, 0), 1, {'a'}, onDouble_));
    EXPECT_TRUE(gave(toDouble(4, "\xE3\x80\x80", -1, 0), 3, {0x81, 0x40, 0}, onDouble_));
}

TEST_F(ConvertString, OfNothingWritesAtMostATerminator)
{
    EXPECT_TRUE(gave(toDouble(5, "abc", 0, 0), 0, {}, onDouble_));
    EXPECT_TRUE(gave(toDouble(5, "abc", 0, TS_OPT_TERMINATE), 1, {0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(0, "abc", 0, TS_OPT_TERMINATE), 0, {}, onDouble_));
    EXPECT_TRUE(gave(toDouble(0, "abc", 3, TS_OPT_TERMINATE), 0, {}, onDouble_));
    EXPECT_TRUE(gave(toDouble(5, "", -1, 0), 1, {0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(0, "", -1, 0), 0, {}, onDouble_));
}

TEST_F(ConvertString, TakesANegativeSizeForNone)
{
    EXPECT_TRUE(gave(toDouble(-1, "abc", 3, TS_OPT_TERMINATE), 0, {}, onDouble_));
    EXPECT_TRUE(gave(toDouble(std::numeric_limits<std::int32_t>::min(), "abc", -1,
                              TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT),
                     0, {}, onDouble_));
    EXPECT_TRUE(gave(toStateful(1, -3, "abc", -1, TS_OPT_TERMINATE), 0, {}, onStateful_));
}

TEST_F(ConvertString, TakesTheLargestSize)
{
    constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
    EXPECT_TRUE(gave(toDouble(kLargest, "ab", -1, 0), 3, {'a', 'b', 0}, onDouble_));
    EXPECT_TRUE(gave(toStateful(0, kLargest, "\x81\x40", -1, TS_OPT_TERMINATE), 5,
                     {0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
}

// More characters than bytes can be counted: the room does not turn around.
TEST_F(ConvertString, TakesTheLargestSizeInCharacters)
{
    constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t size : {kLargest, kLargest - 1}) {
        EXPECT_TRUE(gave(toDouble(size, "\xE3\x80\x80", -1, TS_OPT_CHAR_COUNT), 2, {0x81, 0x40, 0},
                         onDouble_));
        EXPECT_TRUE(gave(toStateful(0, size, "\x81\x40", -1, TS_OPT_CHAR_COUNT), 2,
                         {0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
        EXPECT_TRUE(gave(toStateful(0, size, "\x81\x40", -1, 0x4008), 2,
                         {0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
        EXPECT_TRUE(
            gave(toStateful(1, size, "", -1, TS_OPT_CHAR_COUNT), 1, {0x0F, 0}, onStateful_));
    }
}

TEST_F(ConvertString, DropsALeadByteAtTheEndAndItsTerminator)
{
    EXPECT_TRUE(
        gave(TSConvertString(&onUtf8_, at(), 9, &onDouble_, "a\x81", -1, 0), 1, {'a'}, onUtf8_));
    EXPECT_TRUE(
        gave(TSConvertString(&onUtf8_, at(), 9, &onDouble_, "a\x81\x40", 2, 0), 1, {'a'}, onUtf8_));
    EXPECT_TRUE(gave(TSConvertString(&onUtf8_, at(), 9, &onDouble_, "a\x81", -1, TS_OPT_TERMINATE),
                     2, {'a', 0}, onUtf8_));
}

TEST_F(ConvertString, WritesTheSubstitutionCharacterForWhatItCannotConvert)
{
    EXPECT_TRUE(gave(TSConvertString(&onSingle_, at(), 9, &onDouble_, "\x81\x40\x81\x7F", 4, 0), 2,
                     {'?', '?'}, onSingle_));
    EXPECT_TRUE(gave(TSConvertString(&onSingle_, at(), 9, &onSingle_, "\x80\x81", 2, 0), 2,
                     {0x80, '?'}, onSingle_));
}

TEST_F(ConvertString, CountsCharactersOfInputOutputAndResult)
{
    constexpr std::uint32_t kChars = TS_OPT_CHAR_COUNT;
    EXPECT_TRUE(gave(toDouble(2,
                              "\xE3\x80\x80"
                              "a\xE3\x80\x81",
                              3, kChars),
                     2, {0x81, 0x40, 'a'}, onDouble_));
    EXPECT_TRUE(gave(toDouble(9,
                              "\xE3\x80\x80"
                              "abc",
                              2, kChars),
                     2, {0x81, 0x40, 'a'}, onDouble_));
    EXPECT_TRUE(gave(toDouble(3, "\xE3\x80\x80", -1, kChars), 2, {0x81, 0x40, 0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(1, "\xE3\x80\x80", -1, kChars), 1, {0x81, 0x40}, onDouble_));
}

TEST_F(ConvertString, CountsTheTerminatorAmongTheCharacters)
{
    EXPECT_TRUE(gave(toDouble(2,
                              "\xE3\x80\x80"
                              "abc",
                              4, 0x4008),
                     2, {0x81, 0x40, 0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(5, "abc", 0, 0x4008), 1, {0}, onDouble_));
    EXPECT_TRUE(gave(toDouble(1, "abc", 3, 0x4008), 1, {0}, onDouble_));
}

TEST_F(ConvertString, RefusesOtherOptionsInTheTargetAlone)
{
    for (const std::uint32_t options : {1U, 0x10U, 0x9U, 0x4001U, 0x400CU, 0x80000000U}) {
        onDouble_.lastError = onUtf8_.lastError = kUntouchedError;
        EXPECT_EQ(toDouble(9, "abc", 3, options), -1);
        EXPECT_EQ(onDouble_.lastError, TS_ERR_ARGUMENT);
        EXPECT_EQ(onUtf8_.lastError, kUntouchedError);
        EXPECT_EQ(toStateful(0, 9, "abc", 3, options), -1);
        EXPECT_EQ(onStateful_.lastError, TS_ERR_ARGUMENT);
        EXPECT_TRUE(output_.holds({}));
    }
}

TEST_F(ConvertString, RefusesOtherOptionsForEmptyTextsToo)
{
    EXPECT_EQ(toDouble(9, "abc", 0, 1), -1);
    EXPECT_EQ(toDouble(0, "abc", 3, 1), -1);
    EXPECT_EQ(toStateful(1, 0, "", -1, 1), -1);
    EXPECT_TRUE(output_.holds({}));
}

TEST_F(ConvertString, LeavesTheErrorOfTheSourceAlone)
{
    onUtf8_.lastError = kUntouchedError;
    toDouble(9, "abc", 3, 0);
    EXPECT_EQ(onUtf8_.lastError, kUntouchedError);
    EXPECT_EQ(onDouble_.lastError, TS_ERR_NONE);
}

TEST_F(ConvertString, TakesTheDefaultLocaleForNull)
{
    tsDefaultLocale = &onDouble_;
    EXPECT_TRUE(gave(TSConvertString(nullptr, at(), 9, &onUtf8_, "\xE3\x80\x80", 3, 0), 2,
                     {0x81, 0x40}, onDouble_));
    EXPECT_TRUE(gave(TSConvertString(&onUtf8_, at(), 9, nullptr, "\x81\x40", 2, 0), 3,
                     {0xE3, 0x80, 0x80}, onUtf8_));
    EXPECT_TRUE(gave(TSConvertStringEx(nullptr, at(), 0, 9, nullptr, "\x81\x40", 0, 2, 0), 2,
                     {0x81, 0x40}, onDouble_));
}

TEST_F(ConvertString, TakesAByteThatLeadsNothingInASingleBytePageAsNoCharacter)
{
    PageBuilder page(PageShape::kSingleByte);
    TSLocale locale = localeOn(page.asciiHalf().map(0x81, 0x20AC).lead(0x81, 2).build());
    EXPECT_TRUE(gave(TSConvertString(&onSingle_, at(), 9, &locale, "\x81z", 2, 0), 2, {'?', 'z'},
                     onSingle_));
    EXPECT_TRUE(gave(TSConvertString(&onSingle_, at(), 9, &locale, "z\x81", 2, 0), 2, {'z', '?'},
                     onSingle_));
}

TEST_F(ConvertString, PlainMembersTakeAShiftByteForACharacter)
{
    PageBuilder page(PageShape::kSingleByte);
    TSLocale locale = localeOn(page.asciiHalf().map(0x90, 0x0E).build());
    EXPECT_TRUE(gave(TSConvertString(&onSingle_, at(), 9, &onStateful_, "\x0E\x42", 2, 0), 2,
                     {0x0E, 0x42}, onSingle_));
    EXPECT_TRUE(gave(TSConvertString(&locale, at(), 9, &onStateful_, "\x0E\x42", 2, 0), 2,
                     {0x90, 0x42}, locale));
    EXPECT_TRUE(gave(TSConvertString(&onStateful_, at(), 9, &onDouble_, "\x81\x40", 2, 0), 2,
                     {0x42, 0x43}, onStateful_));
}

TEST_F(ConvertString, ReadsTheShiftBytesOfTheSource)
{
    const auto toDoubleEx = [&](const char* input, std::int32_t state, std::int32_t length,
                                std::uint32_t options) {
        return TSConvertStringEx(&onDouble_, at(), 0, 9, &onStateful_, input, state, length,
                                 options);
    };
    EXPECT_TRUE(
        gave(toDoubleEx("a\x0E\x42\x43\x0F\x42", 0, 6, 0), 4, {'a', 0x81, 0x40, 'B'}, onDouble_));
    EXPECT_TRUE(gave(toDoubleEx("\x42\x43\x0F"
                                "a",
                                1, -1, 0),
                     4, {0x81, 0x40, 'a', 0}, onDouble_));
    EXPECT_TRUE(gave(toDoubleEx("a\x0E", 0, -1, 0), 2, {'a', 0}, onDouble_));
    EXPECT_TRUE(gave(toDoubleEx("a\x0E\x42", 0, -1, 0), 1, {'a'}, onDouble_));
    EXPECT_TRUE(gave(toDoubleEx("\x0E\x42\x43\x0Fxy", 0, 2, TS_OPT_CHAR_COUNT), 2,
                     {0x81, 0x40, 'x'}, onDouble_));
}

// Deliberate: one shift byte is read before a character, and a second one is a character.
TEST_F(ConvertString, TakesASecondShiftByteForACharacter)
{
    EXPECT_TRUE(
        gave(TSConvertStringEx(&onSingle_, at(), 0, 9, &onStateful_, "\x0F\x0F\x41", 0, 3, 0), 2,
             {0x0F, 'A'}, onSingle_));
    EXPECT_TRUE(
        gave(TSConvertStringEx(&onSingle_, at(), 0, 9, &onStateful_, "\x0E\x0E\x41", 0, 3, 0), 1,
             {'?'}, onSingle_));
}

TEST_F(ConvertString, WritesTheShiftBytesOfTheTarget)
{
    EXPECT_TRUE(gave(toStateful(0, 9, "a\x81\x40z", 4, 0), 6, {'a', 0x0E, 0x42, 0x43, 0x0F, 'z'},
                     onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 9, "\x81\x40", 2, 0), 2, {0x42, 0x43}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 9, "z", 1, 0), 2, {0x0F, 'z'}, onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 9, "\x81\x40\x81\x7F", 4, 0), 5, {0x0E, 0x42, 0x43, 0x0F, '?'},
                     onStateful_));
}

TEST_F(ConvertString, WritesNoShiftByteWithoutItsCharacter)
{
    EXPECT_TRUE(gave(toStateful(0, 3, "a\x81\x40", 3, 0), 1, {'a'}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 1, "z", 1, 0), 0, {}, onStateful_));
}

TEST_F(ConvertString, LeavesTheMultiByteStateForATerminator)
{
    EXPECT_TRUE(gave(toStateful(0, 5, "\x81\x40", 2, TS_OPT_TERMINATE), 5,
                     {0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
    EXPECT_TRUE(
        gave(toStateful(0, 5, "\x81\x40", -1, 0), 5, {0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 9, "\x81\x40", 2, 0), 3, {0x0E, 0x42, 0x43}, onStateful_));
}

TEST_F(ConvertString, TakesTheLastCharacterBackForTheTerminator)
{
    EXPECT_TRUE(gave(toStateful(0, 6, "\x81\x40\x81\x41", 4, TS_OPT_TERMINATE), 5,
                     {0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 6, "\x81\x40\x81\x41", -1, 0), 5, {0x0E, 0x42, 0x43, 0x0F, 0},
                     onStateful_));
}

TEST_F(ConvertString, TakesAPointlessShiftByteBackToo)
{
    // The bytes of the character that was taken back are still there, but the first.
    EXPECT_TRUE(
        gave(toStateful(0, 4, "\x81\x40", 2, TS_OPT_TERMINATE), 1, {0, 0x42, 0x43}, onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 5, "a\x81\x40", 3, TS_OPT_TERMINATE), 2, {'a', 0, 0x42, 0x43},
                     onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 4, "\x81\x40", -1, 0), 1, {0, 0x42, 0x43}, onStateful_));
}

TEST_F(ConvertString, LeavesTheTerminatorAwayWhereNothingCanBeTakenBack)
{
    EXPECT_TRUE(gave(toStateful(1, 1, "\x81\x40", 2, TS_OPT_TERMINATE), 0, {}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 2, "\x81\x40", 2, TS_OPT_TERMINATE), 2, {0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 3, "\x81\x40", 2, TS_OPT_TERMINATE), 2,
                     {
                         0x0F,
                         0,
                     },
                     onStateful_));
}

TEST_F(ConvertString, ClosesTheStateOfAnEmptyString)
{
    EXPECT_TRUE(gave(toStateful(1, 5, "", 0, TS_OPT_TERMINATE), 2, {0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 2, "", 0, TS_OPT_TERMINATE), 2, {0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 1, "", 0, TS_OPT_TERMINATE), 0, {}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 1, "", 0, 0x4008), 1, {0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 1, "", 0, TS_OPT_TERMINATE), 1, {0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 1, "", -1, 0), 0, {}, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 2, "", -1, 0), 2, {0x0F, 0}, onStateful_));
}

TEST_F(ConvertString, CountsCharactersAndNoShiftBytes)
{
    EXPECT_TRUE(gave(toStateful(0, 2, "\x81\x40z\x81\x41", 3, TS_OPT_CHAR_COUNT), 2,
                     {0x0E, 0x42, 0x43, 0x0F, 'z'}, onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 2, "\x81\x40\x81\x41", 2, 0x4008), 2,
                     {0x0E, 0x42, 0x43, 0x0F, 0}, onStateful_));
    EXPECT_TRUE(gave(toStateful(0, 3, "\x81\x40\x81\x41", -1, TS_OPT_CHAR_COUNT), 3,
                     {0x0E, 0x42, 0x43, 0x42, 0x44, 0x0F, 0}, onStateful_));
}

// Deliberate: the bytes of a size in characters are measured in the state at the end of the output,
// so an output that began in the other state seems to be full before it is.
TEST_F(ConvertString, MeasuresTheCharactersOfItsSizeInTheFinalState)
{
    const oracle::Bytes whole{0x42, 0x43, 0x42, 0x44, 0x0F, 'z'};
    oracle::Bytes terminated = whole;
    terminated.push_back(0);
    const char input[] = "\x81\x40\x81\x41z";
    EXPECT_TRUE(gave(toStateful(1, 4, input, -1, TS_OPT_CHAR_COUNT), 3, whole, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 5, input, -1, TS_OPT_CHAR_COUNT), 3, whole, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 6, input, -1, TS_OPT_CHAR_COUNT), 4, terminated, onStateful_));
    EXPECT_TRUE(gave(toStateful(1, 4, input, -1, 0x4008), 4, terminated, onStateful_));
}

} // namespace
} // namespace vlx::test
