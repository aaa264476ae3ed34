// What pushing characters back promises, one by one.
#include "streams/streams.hpp"

namespace vlx::test {
namespace {

class UngetChar : public Streams {
  protected:
    bool unget(const char* character) { return TSUngetChar(stream_, locale_, character) == 1; }
    bool unget(const char* character, std::int32_t state)
    {
        return TSUngetCharEx(stream_, locale_, character, state) == 1;
    }
    bool unget(TSChar32 value) { return TSUngetCharW(stream_, locale_, value) == 1; }
};

TEST_F(UngetChar, OnAWriterIsOfTheWrongDirection)
{
    openWriter(onStateful_);
    EXPECT_FALSE(unget("a"));
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    EXPECT_FALSE(unget("a", 0));
    EXPECT_FALSE(unget(0x61));
    EXPECT_EQ(TSUngetCharU(stream_, locale_, 0x61), 0);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    EXPECT_EQ(held(), "");
}

TEST_F(UngetChar, ComesBackInTheOtherOrder)
{
    openReader(onDouble_, "z");
    EXPECT_TRUE(unget("a"));
    EXPECT_TRUE(unget("\x81\x40"));
    EXPECT_TRUE(unget(0x8141));
    EXPECT_EQ(error(), TS_ERR_NONE);
    for (const std::int32_t value : {0x8141, 0x8140, 0x61, 0x7A, -1})
        EXPECT_EQ(read(), value);
}

TEST_F(UngetChar, Takes80BytesAndNotOneMore)
{
    openReader(onDouble_, "");
    for (int i = 0; i < 80; ++i)
        EXPECT_TRUE(unget("a"));
    EXPECT_FALSE(unget("a"));
    EXPECT_EQ(error(), TS_ERR_BUFFER);
    EXPECT_EQ(held(), std::string(80, 'a'));
    EXPECT_EQ(read(), 'a');
    EXPECT_FALSE(unget("\x81\x40"));
    EXPECT_EQ(error(), TS_ERR_BUFFER);
    EXPECT_FALSE(unget(0x8140));
    EXPECT_EQ(TSUngetCharU(stream_, locale_, 0x61), 0);
    EXPECT_TRUE(unget("b"));
}

TEST_F(UngetChar, CountsTheShiftByteInTheRoom)
{
    openReader(onStateful_, "");
    for (int i = 0; i < 39; ++i)
        EXPECT_TRUE(unget(0x4243));
    EXPECT_TRUE(unget(0x61)); // 80 bytes with the shift byte behind it
    EXPECT_EQ(read(), 0x61);
    EXPECT_EQ(held().size(), 78U);
    EXPECT_TRUE(unget(0x4243));
    EXPECT_FALSE(unget(0x61));
    EXPECT_EQ(error(), TS_ERR_BUFFER);
    EXPECT_EQ(stream_->bufferState, 1);
    EXPECT_EQ(read(), 0x4243);
}

TEST_F(UngetChar, PutsAShiftByteBetweenTheStates)
{
    openReader(onStateful_, "");
    EXPECT_TRUE(unget("a", 0));
    EXPECT_TRUE(unget("\x42\x43", 1));
    EXPECT_TRUE(unget("\x42\x44", 1));
    EXPECT_TRUE(unget("b", 0));
    EXPECT_EQ(held(), "b\x0E\x42\x44\x42\x43\x0F"
                      "a");
    EXPECT_EQ(stream_->bufferState, 0);
    for (const std::int32_t value : {0x62, 0x4244, 0x4243, 0x61, -1})
        EXPECT_EQ(read(), value);
}

TEST_F(UngetChar, TakesAShiftByteInFrontForTheState)
{
    openReader(onStateful_, "");
    EXPECT_TRUE(unget("\x0E\x42\x43", 0));
    EXPECT_TRUE(unget("\x0F"
                      "a",
                      1));
    EXPECT_EQ(held(), "a\x0E\x42\x43");
}

TEST_F(UngetChar, OfAPageWithoutStatesIsThePlainMember)
{
    openReader(onDouble_, "");
    EXPECT_TRUE(unget("\x81\x40", 0));
    EXPECT_TRUE(unget("\x0E\x81", 1));
    EXPECT_EQ(held(), "\x0E\x81\x40");
}

// Deliberate: a plain push back neither looks at the state of what is held nor changes it.
TEST_F(UngetChar, PlainLeavesTheStateOfTheBuffer)
{
    openReader(onStateful_, "");
    EXPECT_TRUE(unget(0x4243));
    EXPECT_TRUE(unget("a"));
    EXPECT_EQ(held(), "a\x42\x43");
    EXPECT_EQ(stream_->bufferState, 1);
    EXPECT_EQ(read(), 0x6142);
}

TEST_F(UngetChar, StandsInFrontOfACharacterThatWasCut)
{
    openReader(onStateful_, "\x0E\x42");
    EXPECT_EQ(read(), -1);
    EXPECT_TRUE(unget(0x61));
    EXPECT_EQ(held(), "a\x0E\x42");
    data_ = "\x43";
    EXPECT_EQ(read(), 0x61);
    EXPECT_EQ(read(), 0x4243);
}

TEST_F(UngetChar, UTakesTwoBytes)
{
    openReader(onSingle_, utf16({'b'}));
    EXPECT_EQ(TSUngetCharU(stream_, locale_, 0x3041), 1);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(held(), utf16({0x3041}));
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0x3041);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 'b');
}

} // namespace
} // namespace vlx::test
