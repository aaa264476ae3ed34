// What reading lines and stretches promises, one by one.
#include "streams/streams.hpp"

namespace vlx::test {
namespace {

using namespace std::string_literals;

class ReadLine : public Streams {};

TEST_F(ReadLine, OfAWriterIsOfTheWrongDirection)
{
    openWriter(onStateful_);
    line(9, 1);
    EXPECT_EQ(result_, -2);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    lineEx(0, 0, 0);
    EXPECT_EQ(result_, -2);
    units<TSChar16>(9, 0);
    EXPECT_EQ(result_, -2);
    units<TSChar32>(9, 0);
    EXPECT_EQ(result_, -2);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
}

TEST_F(ReadLine, RefusesOtherOptions)
{
    openReader(onStateful_, "a");
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        if (bit == 8 || (bit >= 0x100 && bit <= 0x800) || bit == 0x4000 || bit == 0x8000)
            continue;
        for (const std::int32_t size : {0, 9}) {
            line(size, bit | TS_EOL_LF);
            EXPECT_EQ(result_, -2);
            EXPECT_EQ(error(), TS_ERR_ARGUMENT);
            lineEx(0, size, bit);
            EXPECT_EQ(result_, -2);
            units<TSChar16>(size, bit);
            EXPECT_EQ(result_, -2);
            units<TSChar32>(size, bit);
            EXPECT_EQ(result_, -2);
            EXPECT_EQ(error(), TS_ERR_ARGUMENT);
        }
    }
    EXPECT_EQ(read(), 'a');
}

TEST_F(ReadLine, WithoutASizeReadsNothing)
{
    openReader(onSingle_, "a");
    for (const std::int32_t size : {0, -1}) {
        line(size, TS_OPT_TERMINATE);
        EXPECT_EQ(result_, 0);
        EXPECT_EQ(error(), TS_ERR_NONE);
    }
    EXPECT_EQ(line(1, TS_OPT_TERMINATE), "\0"s);
    EXPECT_EQ(asked_, Answers{});
}

TEST_F(ReadLine, StripsAndTerminates)
{
    openReader(onSingle_, "ab\nc");
    EXPECT_EQ(line(9, TS_EOL_LF | TS_OPT_TERMINATE | TS_EOL_STRIP), "ab\0"s);
    EXPECT_EQ(result_, 3);
    EXPECT_EQ(line(9, TS_EOL_LF | TS_OPT_TERMINATE | TS_EOL_STRIP), "c\0"s);
    line(9, TS_EOL_LF | TS_OPT_TERMINATE | TS_EOL_STRIP);
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(error(), TS_ERR_NONE);
}

TEST_F(ReadLine, TellsAnEmptyLineFromTheEnd)
{
    openReader(onSingle_, "\n\n");
    line(9, TS_EOL_LF | TS_EOL_STRIP);
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(line(9, TS_EOL_LF), "\n");
    line(9, TS_EOL_LF);
    EXPECT_EQ(result_, -1);
}

TEST_F(ReadLine, WithoutALineEndGoesToTheEnd)
{
    openReader(onSingle_, "ab\r\nc\n");
    EXPECT_EQ(line(9, 0), "ab\r\nc\n");
}

TEST_F(ReadLine, FindsTheFourLineEnds)
{
    doubleByte_.lineEnds('\n', '\r', '3', '4').build();
    openReader(onDouble_, "a\nb\r\nc3d4e");
    EXPECT_EQ(line(9, TS_EOL_CRLF | TS_EOL_STRIP), "a\nb");
    EXPECT_EQ(line(9, TS_EOL_3 | TS_EOL_STRIP), "c");
    EXPECT_EQ(line(9, TS_EOL_3 | TS_EOL_4), "d4");
    EXPECT_EQ(line(9, TS_EOL_3 | TS_EOL_4), "e");
}

TEST_F(ReadLine, TakesNoTrailByteForALineEnd)
{
    doubleByte_.lineEnds('\n', '\r', 0x40, 0x41).build();
    openReader(onDouble_, "\x81\x40\x81\x41@a");
    EXPECT_EQ(line(9, TS_EOL_3 | TS_EOL_4), "\x81\x40\x81\x41@");
}

TEST_F(ReadLine, WantsTheReturnRightBeforeTheLineFeed)
{
    openReader(onDouble_, "\r\x81\x40\n\ra\n\r\r\nz");
    EXPECT_EQ(line(20, TS_EOL_CRLF | TS_EOL_STRIP), "\r\x81\x40\n\ra\n\r");
    EXPECT_EQ(line(20, TS_EOL_CRLF | TS_EOL_STRIP), "z");
}

TEST_F(ReadLine, TriesTheLongLineEndFirst)
{
    openReader(onSingle_, "a\r\nb\nc");
    constexpr std::uint32_t kBoth = TS_EOL_CRLF | TS_EOL_LF | TS_EOL_STRIP;
    EXPECT_EQ(line(9, kBoth), "a");
    EXPECT_EQ(line(9, kBoth), "b");
    EXPECT_EQ(line(9, kBoth), "c");
}

TEST_F(ReadLine, PutsBackWhatDoesNotFit)
{
    openReader(onDouble_, "a\x81\x40"
                          "b");
    EXPECT_EQ(line(2, 0), "a");
    EXPECT_EQ(held(), "\x81\x40");
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(line(1, 0), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(line(2, TS_OPT_TERMINATE), "\0"s);
    EXPECT_EQ(line(3, TS_OPT_TERMINATE), "\x81\x40\0"s);
    EXPECT_EQ(line(3, TS_OPT_TERMINATE), "b\0"s);
}

TEST_F(ReadLine, CountsCharacters)
{
    openReader(onDouble_, "a\x81\x40\x81\x41z");
    char area[16] = {};
    EXPECT_EQ(TSReadString(stream_, locale_, area, 4, TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE), 4);
    EXPECT_STREQ(area, "a\x81\x40\x81\x41");
    EXPECT_EQ(read(), 'z');
}

TEST_F(ReadLine, GivesWhatItHasWhereTheDataEndInsideACharacter)
{
    openReader(onDouble_, "a\x81");
    EXPECT_EQ(line(9, TS_OPT_TERMINATE), "a");
    EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
    line(9, TS_OPT_TERMINATE);
    EXPECT_EQ(result_, -2);
    EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
}

class ReadLineEx : public Streams {};

TEST_F(ReadLineEx, OfOtherPagesIsThePlainMember)
{
    openReader(onDouble_, "\x81\x40\n");
    EXPECT_EQ(lineEx(1, 9, TS_OPT_TERMINATE), "\x81\x40\n\0"s);
}

TEST_F(ReadLineEx, WritesTheShiftBytesThatTheOutputNeeds)
{
    openReader(onStateful_, "a\x0E\x42\x43\x0F"
                            "b\x0E\x42\x43");
    EXPECT_EQ(lineEx(0, 5, 0), "a\x0E\x42\x43\x0F"
                               "b"s.substr(0, 4));
    EXPECT_EQ(lineEx(1, 9, 0), "\x0F"
                               "b\x0E\x42\x43");
}

TEST_F(ReadLineEx, NeedsNoShiftByteInTheStateOfTheOutput)
{
    openReader(onStateful_, "\x0E\x42\x43\x42\x44");
    EXPECT_EQ(lineEx(1, 2, 0), "\x42\x43");
    EXPECT_EQ(lineEx(0, 3, 0), "\x0E\x42\x44");
}

TEST_F(ReadLineEx, CountsTheShiftByteInTheRoom)
{
    openReader(onStateful_, "\x0E\x42\x43");
    EXPECT_EQ(lineEx(0, 2, 0), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(held(), "\x42\x43");
    EXPECT_EQ(lineEx(0, 3, 0), "\x0E\x42\x43");
}

TEST_F(ReadLineEx, ClosesAnOutputThatHasRoom)
{
    openReader(onStateful_, "\x0E\x42\x43");
    EXPECT_EQ(lineEx(0, 5, TS_OPT_TERMINATE), "\x0E\x42\x43\x0F\0"s);
    EXPECT_EQ(result_, 5);
}

TEST_F(ReadLineEx, PutsTheLastCharacterBackToCloseTheOutput)
{
    openReader(onStateful_, "\x0E\x42\x43\x42\x44\x0Fz");
    EXPECT_EQ(lineEx(0, 6, TS_OPT_TERMINATE), "\x0E\x42\x43\x0F\0"s);
    EXPECT_EQ(lineEx(0, 9, TS_OPT_TERMINATE), "\x0E\x42\x44\x0Fz\0"s);
}

TEST_F(ReadLineEx, TakesAShiftByteAwayWhoseOnlyCharacterWentBack)
{
    openReader(onStateful_, "a\x0E\x42\x43\x0Fz");
    EXPECT_EQ(lineEx(0, 5, TS_OPT_TERMINATE), "a\0"s);
    EXPECT_EQ(result_, 2);
    EXPECT_EQ(read(), 0x4243);
    EXPECT_EQ(read(), 'z');
}

TEST_F(ReadLineEx, WritesTheShiftByteWhereAllCharactersWentBack)
{
    openReader(onStateful_, "\x0E\x42\x43");
    EXPECT_EQ(lineEx(1, 3, TS_OPT_TERMINATE), "\x0F\0"s);
    EXPECT_EQ(read(), 0x4243);
}

TEST_F(ReadLineEx, WithoutRoomToCloseHasNoTerminator)
{
    openReader(onStateful_, "a");
    EXPECT_EQ(lineEx(1, 1, TS_OPT_TERMINATE), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(lineEx(1, 2, TS_OPT_TERMINATE), "\x0F\0"s); // one byte left, which "a" does not get
    EXPECT_EQ(read(), 'a');
}

TEST_F(ReadLineEx, PutsBackInFrontOfACharacterOfTheOtherState)
{
    openReader(onStateful_, "\x0E\x42\x43\x0F"
                            "bc");
    EXPECT_EQ(lineEx(1, 4, TS_OPT_TERMINATE), "\x42\x43\x0F\0"s);
    EXPECT_EQ(TSUngetCharW(stream_, locale_, 0x4244), 1);
    EXPECT_EQ(lineEx(0, 20, 0), "\x0E\x42\x44\x0F"
                                "bc");
}

TEST_F(ReadLineEx, ClosesInCharactersWithoutATestOfTheRoom)
{
    openReader(onStateful_, "\x0E\x42\x43\x42\x44");
    char area[16] = {};
    EXPECT_EQ(TSReadStringEx(stream_, locale_, area, 0, 2, TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE),
              2);
    EXPECT_STREQ(area, "\x0E\x42\x43\x0F");
}

TEST_F(ReadLineEx, StripsALineEndBehindAShiftByte)
{
    openReader(onStateful_, "\x0E\x42\x43\x0F\nb");
    EXPECT_EQ(lineEx(0, 9, TS_EOL_LF | TS_EOL_STRIP | TS_OPT_TERMINATE), "\x0E\x42\x43\x0F\0"s);
    EXPECT_EQ(lineEx(0, 9, TS_EOL_LF | TS_EOL_STRIP | TS_OPT_TERMINATE), "b\0"s);
}

TEST_F(ReadLineEx, WithAFailureIsNotClosed)
{
    openReader(onStateful_, "\x0E\x42\x43\x42");
    EXPECT_EQ(lineEx(0, 9, TS_OPT_TERMINATE), "\x0E\x42\x43");
    EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
}

class ReadLineU : public Streams {};

TEST_F(ReadLineU, FindsTheUnicodeLineEnds)
{
    openReader(onSingle_, utf16({'a', 0x2028, 'b', 0x2029, 'c', '\r', '\n', 'd', '\n'}));
    EXPECT_EQ(units<TSChar16>(9, TS_EOL_3 | TS_EOL_STRIP), (Unicode{'a'}));
    EXPECT_EQ(units<TSChar16>(9, TS_EOL_4), (Unicode{'b', 0x2029}));
    EXPECT_EQ(units<TSChar16>(9, TS_EOL_CRLF | TS_OPT_TERMINATE), (Unicode{'c', '\r', '\n', 0}));
    EXPECT_EQ(units<TSChar16>(9, TS_EOL_LF | TS_EOL_STRIP | TS_OPT_TERMINATE), (Unicode{'d', 0}));
    units<TSChar16>(9, TS_EOL_LF);
    EXPECT_EQ(result_, -1);
}

TEST_F(ReadLineU, CountsElementsWhateverTheOptions)
{
    openReader(onSingle_, utf16({'a', 'b', 'c'}));
    EXPECT_EQ(units<TSChar16>(2, TS_OPT_CHAR_COUNT), (Unicode{'a', 'b'}));
    EXPECT_EQ(units<TSChar16>(2, TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE), (Unicode{'c', 0}));
}

TEST_F(ReadLineU, GivesWhatItHasBeforeASingleByte)
{
    openReader(onSingle_, utf16({'a'}) + "b");
    EXPECT_EQ(units<TSChar16>(9, TS_OPT_TERMINATE), (Unicode{'a'}));
    EXPECT_EQ(error(), TS_ERR_STREAM_READ);
    units<TSChar16>(9, TS_OPT_TERMINATE);
    EXPECT_EQ(result_, -2);
    EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
}

class ReadLineW : public Streams {};

TEST_F(ReadLineW, GivesPackedValues)
{
    openReader(onStateful_, "a\x0E\x42\x43\x0F\nb");
    EXPECT_EQ(units<TSChar32>(9, TS_EOL_LF | TS_OPT_TERMINATE), (Packed{'a', 0x4243, '\n', 0}));
    EXPECT_EQ(units<TSChar32>(9, TS_EOL_LF | TS_OPT_CHAR_COUNT), (Packed{'b'}));
}

TEST_F(ReadLineW, DoesNotStopAtReturnAndLineFeedThatStay)
{
    openReader(onSingle_, "a\r\nx\r\ny");
    EXPECT_EQ(units<TSChar32>(9, TS_EOL_CRLF), (Packed{'a', '\r', '\n', 'x', '\r', '\n', 'y'}));
}

TEST_F(ReadLineW, StopsAtReturnAndLineFeedThatAreTakenAway)
{
    openReader(onSingle_, "a\r\nx");
    EXPECT_EQ(units<TSChar32>(9, TS_EOL_CRLF | TS_EOL_STRIP), (Packed{'a'}));
    EXPECT_EQ(units<TSChar32>(9, TS_EOL_CRLF | TS_EOL_STRIP), (Packed{'x'}));
}

TEST_F(ReadLineW, StopsAtTheLineFeedAlone)
{
    openReader(onSingle_, "a\r\nx");
    EXPECT_EQ(units<TSChar32>(9, TS_EOL_CRLF | TS_EOL_LF), (Packed{'a', '\r', '\n'}));
}

} // namespace
} // namespace vlx::test
