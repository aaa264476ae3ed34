// What reading single characters promises, one by one.
#include "streams/streams.hpp"

namespace vlx::test {
namespace {

using namespace std::string_literals;

class ReadChar : public Streams {};

TEST_F(ReadChar, OfAWriterIsOfTheWrongDirection)
{
    openWriter(onSingle_);
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
    EXPECT_EQ(error(), TS_ERR_STREAM_DIRECTION);
    EXPECT_EQ(asked_, Answers{});
}

TEST_F(ReadChar, GivesPackedValuesAndThenTheEndWithoutAnError)
{
    openReader(onDouble_, "a\x81\x40");
    EXPECT_EQ(read(), 'a');
    EXPECT_EQ(read(), 0x8140);
    onDouble_.lastError = kUntouchedError;
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(asked_, (Answers{1, 1, 1, 1}));
}

TEST_F(ReadChar, FollowsTheShiftBytes)
{
    openReader(onStateful_, "a\x0E\x42\x43\x42\x44\x0F"
                            "b");
    for (const std::int32_t value : {0x61, 0x4243, 0x4244, 0x62, -1})
        EXPECT_EQ(read(), value);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(stream_->shiftState, 0);
}

// Deliberate: behind a shift byte a whole character is read, whatever its bytes are.
TEST_F(ReadChar, TakesAShiftByteBehindAShiftByteForACharacter)
{
    openReader(onStateful_, "\x0E\x0F\x42\x43"s);
    EXPECT_EQ(read(), 0x0F42);
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
}

TEST_F(ReadChar, OfAShiftInAtTheVeryEndIsCut)
{
    openReader(onStateful_, "a\x0E");
    EXPECT_EQ(read(), 'a');
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
    EXPECT_EQ(held(), "");
}

TEST_F(ReadChar, OfAShiftOutAtTheVeryEndIsTheEnd)
{
    openReader(onStateful_, "\x0E\x42\x43\x0F");
    EXPECT_EQ(read(), 0x4243);
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_NONE);
}

TEST_F(ReadChar, HoldsTheFirstByteWhereTheDataEndInside)
{
    for (TSLocale* const locale : {&onDouble_, &onStateful_}) {
        const bool shifts = locale == &onStateful_;
        openReader(*locale, shifts ? "\x0E\x42" : "\x81");
        EXPECT_EQ(read(), -1);
        EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
        EXPECT_EQ(held(), shifts ? "\x42" : "\x81");
        data_ = "\x40"; // more data after all
        EXPECT_EQ(read(), shifts ? 0x4240 : 0x8140);
        EXPECT_EQ(error(), TS_ERR_NONE);
        EXPECT_EQ(close(), 1);
    }
}

TEST_F(ReadChar, HoldsTheFirstByteWhereTheReadFails)
{
    openReader(onDouble_, "\x81\x40", {1, -2, -1, -7, 0, 1});
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_STREAM_READ);
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_STREAM_CUT);
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_STREAM_READ);
    EXPECT_EQ(read(), 0x8140);
    EXPECT_EQ(error(), TS_ERR_NONE);
}

TEST_F(ReadChar, TellsAFailureInFrontOfACharacterAsASenselessCount)
{
    openReader(onSingle_, "a", {-2, 0, 2, 1});
    for (int i = 0; i < 3; ++i) {
        onSingle_.lastError = TS_ERR_NONE;
        EXPECT_EQ(read(), -1);
        EXPECT_EQ(error(), TS_ERR_STREAM_COUNT);
    }
}

TEST_F(ReadChar, TellsAFailureBehindAShiftByte)
{
    for (const char* const shift : {"\x0E", "\x0F"}) {
        openReader(onStateful_, shift, {1, -2});
        EXPECT_EQ(read(), -1);
        EXPECT_EQ(error(), TS_ERR_STREAM_COUNT);
        EXPECT_EQ(held(), "");
        EXPECT_EQ(close(), 1);
    }
}

TEST_F(ReadChar, TellsACountThatWasNotAskedForAndKeepsWhatCameBefore)
{
    openReader(onDouble_, "\x81\x40z", {1, 2});
    EXPECT_EQ(read(), -1);
    EXPECT_EQ(error(), TS_ERR_STREAM_COUNT);
    EXPECT_EQ(held(), "\x81");
}

TEST_F(ReadChar, GathersACharacterOverShortReads)
{
    openReader(onUtf8_, "\xE3\x80\x80z", {1, 0, 1, 0, 0, 1});
    EXPECT_EQ(read(), 0xE38080);
    EXPECT_EQ(read(), 'z');
    EXPECT_EQ(asked_, (Answers{1, 2, 2, 1, 1, 1, 1}));
}

TEST_F(ReadChar, ReadsOnInTheStateOfTheStreamBehindWhatWasPushedBack)
{
    openReader(onStateful_, "\x0E\x42\x43\x42\x44");
    EXPECT_EQ(read(), 0x4243);
    EXPECT_EQ(TSUngetCharW(stream_, locale_, 'a'), 1);
    EXPECT_EQ(read(), 'a');
    EXPECT_EQ(read(), 0x4244);
}

class ReadUnicode : public Streams {};

TEST_F(ReadUnicode, GivesTwoBytesAtATime)
{
    openReader(onSingle_, utf16({0x3000, 0x61}));
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0x3000);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0x61);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(asked_, (Answers{2, 2, 2}));
}

TEST_F(ReadUnicode, HoldsASingleByte)
{
    openReader(onSingle_, utf16({0x3041, 0x61}), {1, -1, -2, 0, 2, 1, 2});
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
    EXPECT_EQ(error(), TS_ERR_STREAM_READ);
    for (const std::int32_t code : {TS_ERR_STREAM_CUT, TS_ERR_STREAM_READ, TS_ERR_STREAM_READ}) {
        EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
        EXPECT_EQ(error(), code);
        EXPECT_EQ(held().size(), 1U);
    }
}

TEST_F(ReadUnicode, GoesOnBehindASingleByte)
{
    openReader(onSingle_, utf16({0x3041, 0x61}), {1, 1, 2});
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0x3041);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0x61);
}

TEST_F(ReadUnicode, RefusesCountsThatMakeNoSense)
{
    openReader(onSingle_, utf16({0x61}), {0, 3, -2});
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
        EXPECT_EQ(error(), TS_ERR_STREAM_COUNT);
    }
}

TEST_F(ReadUnicode, GivesTheValueOfFailureForItsOwnCharacter)
{
    openReader(onSingle_, utf16({0xFFFF, 0x61}));
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0x61);
}

TEST_F(ReadUnicode, WithoutMemoryReadsNothing)
{
    openReader(onSingle_, utf16({0x61}));
    Allocator::failAllocation(1);
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0xFFFF);
    EXPECT_EQ(error(), TS_ERR_MEMORY);
    EXPECT_EQ(asked_, Answers{});
    EXPECT_EQ(TSReadCharU(stream_, locale_), 0x61);
}

} // namespace
} // namespace vlx::test
