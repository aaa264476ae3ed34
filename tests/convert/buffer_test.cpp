// What buffer conversion promises, one by one.
#include <cstring>

#include "convert/small_pages.hpp"
#include "support/allocator.hpp"
#include "support/recording_services.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kFull = TS_ERR_OUTPUT_FULL;
constexpr std::int32_t kPartial = TS_ERR_PARTIAL_CHAR;

class ConvertBuffer : public SmallPages {
  protected:
    ConvertBuffer()
    {
        Allocator::reset();
        TSInit(nullptr, Allocator::allocate, Allocator::free, Allocator::allocateObject,
               Allocator::freeObject, 7, 0);
    }
    ~ConvertBuffer() override
    {
        if (handle_ != nullptr) {
            EXPECT_EQ(TSCloseConversion(handle_), 0);
        }
        tsDefaultLocale = nullptr;
        EXPECT_EQ(TSTerm(), 0);
        EXPECT_TRUE(Allocator::sound());
        EXPECT_EQ(Allocator::liveBlocks(), 0);
    }

    void open(TSLocale& target, TSLocale& source)
    {
        handle_ = TSOpenConversion(&target, &source);
        ASSERT_NE(handle_, nullptr);
    }

    // One call; what it wrote is in `written_`, the input that it left in `inputLeft_`.
    template <std::size_t N>
    std::int32_t convert(const char (&input)[N], std::int32_t room)
    {
        return convert(input, static_cast<std::int32_t>(N - 1), room);
    }
    std::int32_t convert(const char* input, std::int32_t count, std::int32_t room)
    {
        Output output;
        char* outputAt = output.at();
        std::int32_t outputCount = room;
        const char* inputAt = input;
        inputLeft_ = count;
        const std::int32_t result =
            TSConvertBuffer(handle_, &outputAt, &outputCount, &inputAt, &inputLeft_);
        EXPECT_EQ(outputAt - output.at(), room - outputCount);
        EXPECT_EQ(inputAt - input, count - inputLeft_);
        written_.assign(output.at(), outputAt);
        EXPECT_TRUE(output.holds(written_));
        return result;
    }

    TSConversion* handle_ = nullptr;
    oracle::Bytes written_;
    std::int32_t inputLeft_ = 0;
};

using Bytes = oracle::Bytes;

TEST_F(ConvertBuffer, AShiftByteAloneSetsTheStateAndWritesNothing)
{
    open(onDouble_, onStateful_);
    EXPECT_EQ(convert("\x0E", 9), 0);
    EXPECT_EQ(written_, Bytes{});
    EXPECT_EQ(inputLeft_, 0);
    EXPECT_EQ(convert("\x42\x43", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x81, 0x40}));
    EXPECT_EQ(convert("\x0F", 9), 0);
    EXPECT_EQ(convert("\x42\x43", 9), 0);
    EXPECT_EQ(written_, (Bytes{'B', 'C'}));
}

TEST_F(ConvertBuffer, ACharacterMayBeSplitBetweenTwoCalls)
{
    open(onUtf8_, onDouble_);
    EXPECT_EQ(convert("a\x81", 9), kPartial);
    EXPECT_EQ(inputLeft_, 0);
    EXPECT_EQ(written_, (Bytes{'a'}));
    EXPECT_EQ(convert("", 9), kPartial);
    EXPECT_EQ(convert("\x40z", 9), 0);
    EXPECT_EQ(written_, (Bytes{0xE3, 0x80, 0x80, 'z'}));
}

TEST_F(ConvertBuffer, ACharacterMayBeSplitIntoItsBytes)
{
    open(onDouble_, onUtf8_);
    EXPECT_EQ(convert("\xE3", 9), kPartial);
    EXPECT_EQ(convert("\x80", 9), kPartial);
    EXPECT_EQ(convert("\x81", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x81, 0x41}));
}

TEST_F(ConvertBuffer, AShiftByteAndItsCharacterArePendingWithoutRoom)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40", 0), kFull);
    EXPECT_EQ(inputLeft_, 0);
    EXPECT_EQ(convert("", 0), kFull);
    EXPECT_EQ(convert("", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x0E, 0x42, 0x43}));
}

TEST_F(ConvertBuffer, ACharacterIsCutBetweenTwoOutputs)
{
    open(onDouble_, onUtf8_);
    EXPECT_EQ(convert("\xE3\x80\x80z", 1), kFull);
    EXPECT_EQ(written_, (Bytes{0x81}));
    EXPECT_EQ(inputLeft_, 1);
    EXPECT_EQ(convert("z", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x40, 'z'}));
}

TEST_F(ConvertBuffer, AShiftByteIsWrittenWhereItsCharacterHasNoRoom)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40\x81\x41", 1), kFull);
    EXPECT_EQ(written_, (Bytes{0x0E}));
    EXPECT_EQ(inputLeft_, 2);
    EXPECT_EQ(convert("\x81\x41z", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x42, 0x43, 0x42, 0x44, 0x0F, 'z'}));
}

// Deliberate: the state of the target has moved before the shift byte is written.
TEST_F(ConvertBuffer, TheShiftByteThatIsPendingIsNotWrittenAgain)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40", 0), kFull);
    EXPECT_EQ(convert("\x81\x41", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x0E, 0x42, 0x43, 0x42, 0x44}));
}

// Deliberate: the bytes moved down are fewer than those that are pending.
TEST_F(ConvertBuffer, TwoPendingBytesDrainedOneByOneGiveTheFirstTwice)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40", 1), kFull); // 42 43 are pending
    EXPECT_EQ(convert("", 1), kFull);
    EXPECT_EQ(written_, (Bytes{0x42}));
    EXPECT_EQ(convert("", 1), 0);
    EXPECT_EQ(written_, (Bytes{0x42}));
}

TEST_F(ConvertBuffer, ThreePendingBytesDrainedOneByOneComeInTheRequiredOrder)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40", 0), kFull); // 0E 42 43 are pending
    EXPECT_EQ(convert("", 1), kFull);         // of 42 43 one byte is moved down
    EXPECT_EQ(written_, (Bytes{0x0E}));
    EXPECT_EQ(convert("", 1), kFull);
    EXPECT_EQ(written_, (Bytes{0x42}));
    EXPECT_EQ(convert("", 1), 0);
    EXPECT_EQ(written_, (Bytes{0x42}));
}

TEST_F(ConvertBuffer, ANegativeMoveOfPendingBytesMovesNothing)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40", 0), kFull); // 0E 42 43 are pending
    EXPECT_EQ(convert("", 2), kFull);
    EXPECT_EQ(written_, (Bytes{0x0E, 0x42}));
    EXPECT_EQ(convert("", 2), 0);
    EXPECT_EQ(written_, (Bytes{0x0E}));
}

TEST_F(ConvertBuffer, TheSamePageGoesThroughUnicodeToo)
{
    open(onSingle_, onSingle_);
    EXPECT_EQ(convert("a\x80\x81", 9), 0);
    EXPECT_EQ(written_, (Bytes{'a', 0x80, '?'}));
}

TEST_F(ConvertBuffer, ATrailByteWithoutASenseIsConsumed)
{
    open(onSingle_, onDouble_);
    EXPECT_EQ(convert("\x81zb", 9), 0);
    EXPECT_EQ(written_, (Bytes{'?', 'b'}));
}

TEST_F(ConvertBuffer, NothingIsDoneWithNothing)
{
    open(onDouble_, onDouble_);
    EXPECT_EQ(convert("", 0), 0);
    EXPECT_EQ(convert("", 9), 0);
    EXPECT_EQ(convert("abc", 0), kFull);
    EXPECT_EQ(inputLeft_, 2);
}

TEST_F(ConvertBuffer, NoOutputIsClosedAtItsEnd)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x0E, 0x42, 0x43}));
    EXPECT_EQ(convert("", 9), 0);
    EXPECT_EQ(written_, Bytes{});
}

TEST_F(ConvertBuffer, ErrorsOfTheLocalesAreLeftAlone)
{
    open(onDouble_, onUtf8_);
    onDouble_.lastError = onUtf8_.lastError = kUntouchedError;
    EXPECT_EQ(convert("\xE3", 9), kPartial);
    EXPECT_EQ(convert("\x80\x80", 0), kFull);
    EXPECT_EQ(onDouble_.lastError, kUntouchedError);
    EXPECT_EQ(onUtf8_.lastError, kUntouchedError);
}

// Deliberate: a character's length is compared with the low 16 bits of the count.
TEST_F(ConvertBuffer, ACountOf64KiBIsTheEndOfTheInput)
{
    open(onDouble_, onDouble_);
    const std::vector<char> input(0x10005, 'a');
    EXPECT_EQ(convert(input.data(), 0x10000, 9), kPartial);
    EXPECT_EQ(inputLeft_, 0);
    EXPECT_EQ(written_, Bytes{});
}

TEST_F(ConvertBuffer, ACountAbove64KiBGoesAsFarAsItsLowHalf)
{
    open(onDouble_, onDouble_);
    const std::vector<char> input(0x10005, 'a');
    EXPECT_EQ(convert(input.data(), 0x10005, 9), kPartial);
    EXPECT_EQ(inputLeft_, 0);
    EXPECT_EQ(written_, (Bytes{'a', 'a', 'a', 'a', 'a'}));
}

TEST_F(ConvertBuffer, ACutCharacterOfMoreThan64KiBKeepsItsLowHalfAlone)
{
    open(onDouble_, onUtf8_);
    std::vector<char> input(0x10002, '\x80');
    input[0] = '\xE3';
    EXPECT_EQ(convert(input.data(), 0x10002, 9), kPartial);
    EXPECT_EQ(inputLeft_, 0);
    EXPECT_EQ(convert("\x81z", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x81, 0x41, 'z'}));
}

TEST_F(ConvertBuffer, ASplitCharacterIsNotFinishedBy64KiB)
{
    open(onDouble_, onUtf8_);
    EXPECT_EQ(convert("\xE3", 9), kPartial);
    const std::vector<char> input(0x10001, '\x80');
    EXPECT_EQ(convert(input.data(), 0x10001, 9), kPartial);
    EXPECT_EQ(inputLeft_, 0);
    EXPECT_EQ(written_, Bytes{});
}

TEST_F(ConvertBuffer, NegativeCountsAreTakenForNone)
{
    open(onStateful_, onDouble_);
    Output output;
    char* outputAt = output.at();
    const char* inputAt = "\x81\x40";
    std::int32_t outputCount = -1;
    std::int32_t inputCount = 2;
    EXPECT_EQ(TSConvertBuffer(handle_, &outputAt, &outputCount, &inputAt, &inputCount), kFull);
    EXPECT_EQ(TSConvertBuffer(handle_, &outputAt, &outputCount, &inputAt, &inputCount), kFull);
    EXPECT_EQ(outputAt, output.at());
    EXPECT_TRUE(output.holds({}));
    EXPECT_EQ(convert("", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x0E, 0x42, 0x43}));
    inputCount = -5;
    outputCount = 9;
    EXPECT_EQ(TSConvertBuffer(handle_, &outputAt, &outputCount, &inputAt, &inputCount), 0);
    EXPECT_TRUE(output.holds({}));
}

TEST_F(ConvertBuffer, ANegativeCountDoesNotFinishASplitCharacter)
{
    open(onDouble_, onUtf8_);
    for (const std::int32_t count : {-1, -5, INT32_MIN}) {
        EXPECT_EQ(convert("\xE3", 9), kPartial);
        Output output;
        char* outputAt = output.at();
        const char* const input = "\x80\x80";
        const char* inputAt = input;
        std::int32_t outputCount = 9;
        std::int32_t inputCount = count;
        EXPECT_EQ(TSConvertBuffer(handle_, &outputAt, &outputCount, &inputAt, &inputCount),
                  kPartial);
        EXPECT_EQ(inputAt, input);
        EXPECT_LE(inputCount, 0);
        EXPECT_TRUE(output.holds({}));
        EXPECT_EQ(convert("\x80\x80", 9), 0);
        EXPECT_EQ(written_, (Bytes{0x81, 0x40}));
    }
}

TEST_F(ConvertBuffer, NullLocalesAreTheDefaultLocale)
{
    tsDefaultLocale = &onDouble_;
    handle_ = TSOpenConversion(nullptr, &onUtf8_);
    tsDefaultLocale = nullptr;
    ASSERT_NE(handle_, nullptr);
    EXPECT_EQ(convert("\xE3\x80\x80", 9), 0);
    EXPECT_EQ(written_, (Bytes{0x81, 0x40}));
    EXPECT_EQ(TSCloseConversion(handle_), 0);
    tsDefaultLocale = &onDouble_;
    handle_ = TSOpenConversion(&onUtf8_, nullptr);
    tsDefaultLocale = nullptr;
    ASSERT_NE(handle_, nullptr);
    EXPECT_EQ(convert("\x81\x40", 9), 0);
    EXPECT_EQ(written_, (Bytes{0xE3, 0x80, 0x80}));
}

TEST_F(ConvertBuffer, AHandleWithoutMemoryIsErrorTwentyInTheTarget)
{
    Allocator::failAllocation(1);
    onUtf8_.lastError = kUntouchedError;
    EXPECT_EQ(TSOpenConversion(&onDouble_, &onUtf8_), nullptr);
    EXPECT_FALSE(Allocator::failurePending());
    EXPECT_EQ(onDouble_.lastError, TS_ERR_MEMORY);
    EXPECT_EQ(onUtf8_.lastError, kUntouchedError);
}

TEST_F(ConvertBuffer, AHandleThatCannotBeReleasedIsErrorTwentyOne)
{
    open(onDouble_, onUtf8_);
    Allocator::failFree(1);
    Trace::clear();
    Trace::setMask(0x80);
    EXPECT_EQ(TSCloseConversion(handle_), TS_ERR_FREE);
    EXPECT_EQ(Trace::count("TSCloseConversion", TraceKind::kPrint), 1);
    Trace::setMask(0);
    Trace::clear();
}

TEST_F(ConvertBuffer, ClosingDropsWhatIsPending)
{
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("\x81\x40", 0), kFull);
    EXPECT_EQ(TSCloseConversion(handle_), 0);
    open(onStateful_, onDouble_);
    EXPECT_EQ(convert("z", 9), 0);
    EXPECT_EQ(written_, (Bytes{'z'}));
}

TEST_F(ConvertBuffer, TheRatioCountsAShiftByteAndIsOneForTheSamePage)
{
    onStateful_.lastError = onDouble_.lastError = kUntouchedError;
    EXPECT_EQ(TSConversionRatio(&onStateful_, &onDouble_), 3);
    EXPECT_EQ(onStateful_.lastError, TS_ERR_NONE);
    EXPECT_EQ(onDouble_.lastError, kUntouchedError);
    EXPECT_EQ(TSConversionRatio(&onStateful_, &onStateful_), 1);
    EXPECT_EQ(TSConversionRatio(&onUtf8_, &onDouble_), 3);
    EXPECT_EQ(TSConversionRatio(&onSingle_, &onDouble_), 1);
    EXPECT_EQ(TSConversionRatio(&onDouble_, &onSingle_), 2);
    tsDefaultLocale = &onDouble_;
    EXPECT_EQ(TSConversionRatio(nullptr, &onSingle_), 2);
    EXPECT_EQ(TSConversionRatio(&onStateful_, nullptr), 3);
    EXPECT_EQ(TSConversionRatio(nullptr, nullptr), 1);
}

} // namespace
} // namespace vlx::test
