// The start, the flush and the end of a stream, and its memory.
#include "streams/streams.hpp"

namespace vlx::test {
namespace {

class OpenStream : public Streams {};

TEST_F(OpenStream, RefusesAModeThatIsNone)
{
    const std::uint32_t calls = Allocator::calls(Slot::kAllocate);
    for (const std::uint32_t mode : {0u, 1u, 0x50u, 0x80000052u, TS_STREAM_READ | 1u << 8}) {
        EXPECT_EQ(TSOpenStream(&onSingle_, nullptr, 0, mode), nullptr);
        EXPECT_EQ(onSingle_.lastError, TS_ERR_ARGUMENT);
    }
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), calls);
}

TEST_F(OpenStream, BeginsInTheSingleByteStateWithNothingHeld)
{
    openReader(onStateful_, "BC");
    EXPECT_EQ(stream_->shiftState, 0);
    EXPECT_EQ(stream_->bufferState, 0);
    EXPECT_EQ(stream_->heldCount, 0);
    EXPECT_EQ(read(), 'B');
}

TEST_F(OpenStream, WithoutMemoryIsNull)
{
    Allocator::failAllocation(1);
    EXPECT_EQ(TSOpenStream(&onSingle_, nullptr, 0, TS_STREAM_READ), nullptr);
    EXPECT_EQ(onSingle_.lastError, TS_ERR_MEMORY);
}

TEST_F(OpenStream, TakesTheDefaultLocale)
{
    tsDefaultLocale = &onDouble_;
    openWriter(onDouble_);
    locale_ = nullptr;
    EXPECT_EQ(TSWriteChar(stream_, nullptr, "\x81\x40"), 1);
    EXPECT_EQ(TSFlushStream(stream_, nullptr), 1);
    EXPECT_EQ(close(), 1);
    EXPECT_EQ(written_, "\x81\x40");
}

class CloseStream : public Streams {};

TEST_F(CloseStream, OfAWriterInTheMultiByteStateWritesOneShiftByte)
{
    openWriter(onStateful_);
    EXPECT_EQ(TSWriteCharW(stream_, locale_, 0x4243), 1);
    EXPECT_EQ(close(), 1);
    EXPECT_EQ(written_, "\x0E\x42\x43\x0F");
}

TEST_F(CloseStream, OfAWriterInTheSingleByteStateWritesNothing)
{
    openWriter(onStateful_);
    EXPECT_EQ(TSWriteCharW(stream_, locale_, 0x4243), 1);
    EXPECT_EQ(TSWriteCharW(stream_, locale_, 'a'), 1);
    EXPECT_EQ(close(), 1);
    EXPECT_EQ(written_, "\x0E\x42\x43\x0F"
                        "a");
}

TEST_F(CloseStream, DisregardsAFailureOfTheShiftByte)
{
    openWriter(onStateful_, {1, 2, -1});
    EXPECT_EQ(TSWriteCharW(stream_, locale_, 0x4243), 1);
    EXPECT_EQ(close(), 1);
    EXPECT_EQ(onStateful_.lastError, TS_ERR_NONE);
    EXPECT_EQ(written_, "\x0E\x42\x43");
}

TEST_F(CloseStream, DeliversWhatIsHeldAndThenTheShiftByte)
{
    openWriter(onStateful_, {-1});
    EXPECT_EQ(TSWriteCharW(stream_, locale_, 0x4243), 0);
    EXPECT_EQ(close(), 1);
    EXPECT_EQ(written_, "\x0E\x42\x43\x0F");
}

TEST_F(CloseStream, WritesNoShiftByteBehindAFailedFlush)
{
    openWriter(onStateful_, {-1, 2, -1});
    EXPECT_EQ(TSWriteCharW(stream_, locale_, 0x4243), 0);
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(onStateful_.lastError, TS_ERR_STREAM_FLUSH);
    EXPECT_EQ(written_, "\x0E\x42");
}

TEST_F(CloseStream, TellsThatTheRecordWasNotFreed)
{
    openReader(onSingle_, "");
    TSStream* const stream = stream_;
    Allocator::failFree(1);
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(onSingle_.lastError, TS_ERR_FREE);
    EXPECT_EQ(TSCloseStream(stream, &onSingle_), 1);
}

TEST_F(CloseStream, KeepsTheErrorOfTheFlushIfTheRecordIsNotFreedEither)
{
    openWriter(onSingle_, {-1, -1});
    TSStream* const stream = stream_;
    EXPECT_EQ(TSWriteChar(stream_, locale_, "a"), 0);
    Allocator::failFree(1);
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(onSingle_.lastError, TS_ERR_STREAM_FLUSH);
    EXPECT_EQ(TSCloseStream(stream, &onSingle_), 1);
}

TEST_F(CloseStream, OfAReaderJustFrees)
{
    openReader(onStateful_, "\x0E\x42\x43");
    EXPECT_EQ(read(), 0x4243);
    EXPECT_EQ(TSUngetCharW(stream_, locale_, 0x4243), 1);
    EXPECT_EQ(close(), 1);
    EXPECT_EQ(data_, "");
}

class FlushStream : public Streams {};

TEST_F(FlushStream, GoesOnOverShortWrites)
{
    openWriter(onDouble_, {-1, 1, 0, 1});
    EXPECT_EQ(TSWriteChar(stream_, locale_, "\x81\x40"), 0);
    EXPECT_EQ(TSFlushStream(stream_, locale_), 1);
    EXPECT_EQ(error(), TS_ERR_NONE);
    EXPECT_EQ(held(), "");
    EXPECT_EQ(written_, "\x81\x40");
    EXPECT_EQ(asked_, (Answers{2, 2, 1, 1}));
}

TEST_F(FlushStream, DropsWhatIsHeldIfTheWriteFails)
{
    for (const std::int32_t failure : {-1, -2}) {
        openWriter(onDouble_, {-1, 1, failure});
        EXPECT_EQ(TSWriteChar(stream_, locale_, "\x81\x40"), 0);
        EXPECT_EQ(TSFlushStream(stream_, locale_), 0);
        EXPECT_EQ(error(), TS_ERR_STREAM_FLUSH);
        EXPECT_EQ(held(), "");
        EXPECT_EQ(TSFlushStream(stream_, locale_), 1);
        EXPECT_EQ(error(), TS_ERR_NONE);
        EXPECT_EQ(close(), 1);
    }
}

TEST_F(FlushStream, OfAReaderDropsWhatWasPushedBack)
{
    openReader(onSingle_, "b");
    EXPECT_EQ(TSUngetChar(stream_, locale_, "a"), 1);
    EXPECT_EQ(TSFlushStream(stream_, locale_), 1);
    EXPECT_EQ(read(), 'b');
}

TEST_F(FlushStream, WithNothingHeldAsksForNothing)
{
    openWriter(onSingle_);
    EXPECT_EQ(TSFlushStream(stream_, locale_), 1);
    EXPECT_EQ(asked_, Answers{});
}

// Every function with memory of its own, with the first allocation failing, the second, and so on.
TEST_F(OpenStream, AndAllElseLoseNothingWhereverMemoryEnds)
{
    const int blocks = Allocator::liveBlocks();
    std::uint32_t n = 1;
    for (bool over = false; !over; ++n) {
        ASSERT_LT(n, 20U);
        data_ = utf16({'a', 'b', '\n', 'c'});
        onSingle_.lastError = TS_ERR_NONE;
        Allocator::failAllocation(n);
        TSStream* const stream = TSOpenStream(&onSingle_, io, context(), TS_STREAM_READ);
        if (!stream) {
            EXPECT_EQ(onSingle_.lastError, TS_ERR_MEMORY);
            continue;
        }
        TSChar16 area[8];
        const std::int32_t count = TSReadStringU(stream, &onSingle_, area, 8, TS_EOL_LF);
        over = Allocator::failurePending();
        if (over) {
            EXPECT_EQ(count, 3);
            EXPECT_EQ(onSingle_.lastError, TS_ERR_NONE);
        } else {
            EXPECT_EQ(onSingle_.lastError, TS_ERR_MEMORY);
            EXPECT_EQ(count, n == 2 ? -2 : static_cast<std::int32_t>(n) - 2);
        }
        Allocator::failAllocation(0);
        EXPECT_EQ(TSCloseStream(stream, &onSingle_), 1);
        EXPECT_EQ(Allocator::liveBlocks(), blocks);
    }
    EXPECT_EQ(n - 1, 5U) << "the record and one area for each value";
}

} // namespace
} // namespace vlx::test
