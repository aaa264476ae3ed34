// What writing characters promises, one by one.
#include "streams/streams.hpp"

namespace vlx::test {
namespace {

class WriteChar : public Streams {
  protected:
    std::int32_t write(const char* character) { return TSWriteChar(stream_, locale_, character); }
    std::int32_t write(const char* character, std::int32_t state)
    {
        return TSWriteCharEx(stream_, locale_, character, state);
    }
    std::int32_t write(TSChar32 value) { return TSWriteCharW(stream_, locale_, value); }
};

TEST_F(WriteChar, OnAReaderIsOfTheWrongDirection)
{
    openReader(onStateful_, "");
    EXPECT_EQ(write("a"), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    EXPECT_EQ(write("a", 0), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    EXPECT_EQ(write(0x61), 0);
    EXPECT_EQ(TSWriteCharU(stream_, locale_, 0x61), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    EXPECT_EQ(asked_, Answers{});
}

TEST_F(WriteChar, WritesTheBytesOfACharacter)
{
    openWriter(onDouble_);
    EXPECT_EQ(write("a"), 1);
    EXPECT_EQ(write("\x81\x40"), 1);
    EXPECT_EQ(write(0x8141), 1);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(written_, "a\x81\x40\x81\x41");
}

TEST_F(WriteChar, GoesOnOverShortWrites)
{
    openWriter(onUtf8_, {0, 1, 0, 1, 1});
    EXPECT_EQ(write("\xE3\x80\x80"), 1);
    EXPECT_EQ(written_, "\xE3\x80\x80");
    EXPECT_EQ(asked_, (Answers{3, 3, 2, 2, 1}));
}

TEST_F(WriteChar, TakesTooLargeACountForAllOfIt)
{
    openWriter(onDouble_, {9});
    EXPECT_EQ(write("\x81\x40"), 1);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(held(), "");
}

TEST_F(WriteChar, HoldsWhatWasNotTaken)
{
    for (const std::int32_t failure : {-1, -2}) {
        written_.clear();
        openWriter(onUtf8_, {1, failure, 1, 1});
        EXPECT_EQ(write("\xE3\x80\x80"), 0);
        EXPECT_EQ(error(), TS_ERR_STREAM_HELD);
        EXPECT_EQ(held(), "\x80\x80");
        EXPECT_EQ(write("z"), 1);
        EXPECT_EQ(error(), TS_ERR_NONE);
        EXPECT_EQ(held(), "");
        EXPECT_EQ(written_, "\xE3\x80\x80z");
        EXPECT_EQ(close(), 1);
    }
}

TEST_F(WriteChar, HoldsACharacterBehindWhatIsHeld)
{
    openWriter(onDouble_, {-1, 1, -1});
    EXPECT_EQ(write("\x81\x40"), 0);
    EXPECT_EQ(write("a"), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_HELD);
    EXPECT_EQ(held(), "\x40"
                      "a");
    EXPECT_EQ(TSFlushStream(stream_, locale_), 1);
    EXPECT_EQ(written_, "\x81\x40"
                        "a");
}

TEST_F(WriteChar, Holds80BytesAndNotOneMore)
{
    openWriter(onDouble_, Answers(82, -1));
    for (int i = 0; i < 80; ++i) {
        EXPECT_EQ(write("a"), 0);
        EXPECT_EQ(error(), TS_ERR_STREAM_HELD);
    }
    EXPECT_EQ(write("b"), 0);
    EXPECT_EQ(error(), TS_ERR_BUFFER);
    EXPECT_EQ(write("\x81\x40"), 0);
    EXPECT_EQ(error(), TS_ERR_BUFFER);
    const std::string many(80, 'a');
    EXPECT_EQ(held(), many);
    EXPECT_EQ(write("c"), 1);
    EXPECT_EQ(written_, many + "c");
}

TEST_F(WriteChar, ExOfAPageWithoutStatesIsThePlainMember)
{
    openWriter(onDouble_);
    EXPECT_EQ(write("\x81\x40", 0), 1);
    EXPECT_EQ(write("a", 1), 1);
    EXPECT_EQ(written_, "\x81\x40"
                        "a");
}

TEST_F(WriteChar, ExLeadsToTheStateOfTheCharacter)
{
    openWriter(onStateful_);
    EXPECT_EQ(write("a", 0), 1);
    EXPECT_EQ(write("\x42\x43", 1), 1);
    EXPECT_EQ(write("\x42\x44", 1), 1);
    EXPECT_EQ(write("b", 0), 1);
    EXPECT_EQ(written_, "a\x0E\x42\x43\x42\x44\x0F"
                        "b");
    EXPECT_EQ(asked_, (Answers{1, 1, 2, 2, 1, 1}));
}

TEST_F(WriteChar, ExHoldsTheShiftByteThatIsStillDue)
{
    openWriter(onStateful_, {-1});
    EXPECT_EQ(write("\x42\x43", 1), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_HELD);
    EXPECT_EQ(held(), "\x0E\x42\x43");
    EXPECT_EQ(stream_->shiftState, 1);
    EXPECT_EQ(write("\x42\x44", 1), 1);
    EXPECT_EQ(written_, "\x0E\x42\x43\x42\x44");
}

TEST_F(WriteChar, ExHoldsNoShiftByteThatWasWritten)
{
    openWriter(onStateful_, {1, 1, -1});
    EXPECT_EQ(write("\x42\x43", 1), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_HELD);
    EXPECT_EQ(held(), "\x43");
    EXPECT_EQ(stream_->shiftState, 1);
    EXPECT_EQ(write("b", 0), 1);
    EXPECT_EQ(written_, "\x0E\x42\x43\x0F"
                        "b");
}

TEST_F(WriteChar, ExHoldsBehindWhatIsHeld)
{
    openWriter(onStateful_, {-1, -1});
    EXPECT_EQ(write("a", 0), 0);
    EXPECT_EQ(write("\x42\x43", 1), 0);
    EXPECT_EQ(held(), "a\x0E\x42\x43");
    EXPECT_EQ(close(), 1);
    EXPECT_EQ(written_, "a\x0E\x42\x43\x0F");
}

TEST_F(WriteChar, ExThatCannotBeHeldLeavesTheState)
{
    openWriter(onStateful_, Answers(79, -1));
    for (int i = 0; i < 78; ++i)
        EXPECT_EQ(write("a", 0), 0);
    EXPECT_EQ(write("\x42\x43", 1), 0);
    EXPECT_EQ(error(), TS_ERR_BUFFER);
    EXPECT_EQ(stream_->shiftState, 0);
    EXPECT_EQ(write("b", 0), 1);
    const std::string many(78, 'a');
    EXPECT_EQ(written_, many + "b");
}

TEST_F(WriteChar, WChoosesTheStateByTheLength)
{
    openWriter(onStateful_);
    EXPECT_EQ(write(0x4243), 1);
    EXPECT_EQ(write(0x61), 1);
    EXPECT_EQ(written_, "\x0E\x42\x43\x0F"
                        "a");
}

// Deliberate: the length is told by the first byte, and zeros stand for what a value lacks.
TEST_F(WriteChar, WFillsAShortValueWithZeros)
{
    openWriter(onDouble_);
    EXPECT_EQ(write(0x81), 1);
    EXPECT_EQ(written_, std::string("\x81\0", 2));
}

TEST_F(WriteChar, UWritesTwoBytesAndHoldsThemAsOthers)
{
    openWriter(onStateful_, {2, 1, -1});
    EXPECT_EQ(TSWriteCharU(stream_, locale_, 0x3041), 1);
    EXPECT_EQ(TSWriteCharU(stream_, locale_, 0x3042), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_HELD);
    EXPECT_EQ(held().size(), 1U);
    EXPECT_EQ(TSFlushStream(stream_, locale_), 1);
    EXPECT_EQ(written_, utf16({0x3041, 0x3042}));
}

} // namespace
} // namespace vlx::test
