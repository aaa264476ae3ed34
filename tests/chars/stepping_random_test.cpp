// Every stepping function against the oracle, on random pages and texts. A test compares the
// result, the bytes written, the states stored and those left alone, and the error code.
#include "chars/situations.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

// A state that no function stores.
constexpr std::int32_t kNoState = 77;

// Where a moving function went and what it stored, in the oracle's terms.
oracle::Stop stopOf(const char* string, const char* result, std::int32_t state)
{
    oracle::Stop stop{result - string, std::nullopt};
    if (state != kNoState)
        stop.state = state;
    return stop;
}

// For the functions that tell what they do with a state that is neither 0 nor 1.
std::int32_t anyState(Random& random)
{
    constexpr std::int32_t kStates[] = {0, 1, 2, -1};
    return kStates[random() % std::size(kStates)];
}

std::uint32_t anyOptions(Random& random)
{
    return random() % 4 == 0 ? static_cast<std::uint32_t>(random()) : 0;
}

std::uint32_t anyMoveOptions(Random& random)
{
    return random() % 2 == 0 ? 0 : TS_OPT_CHAR_COUNT;
}

TEST(SteppingAgainstOracle, TSByteLength)
{
    compareEverywhere([](const Situation& s) {
        return compare(
            s, [&] { return oracle::byteLength(s.reference, s.here()); },
            [&] { return TSByteLength(&s.locale, s.at()); });
    });
}

TEST(SteppingAgainstOracle, TSByteLengthEx)
{
    compareEverywhere([](const Situation& s) {
        return compare(
            s, [&] { return oracle::byteLengthEx(s.reference, s.here(), s.state); },
            [&] { return TSByteLengthEx(&s.locale, s.at(), s.state); });
    });
}

TEST(SteppingAgainstOracle, TSByteLengthW)
{
    compareEverywhere([](const Situation& s) {
        const TSChar32 value = randomValue(s.random);
        return compare(
            s, [&] { return oracle::byteLengthW(value); },
            [&] { return TSByteLengthW(&s.locale, value); });
    });
}

TEST(SteppingAgainstOracle, TSGetChar)
{
    compareEverywhere([](const Situation& s) {
        return compare(
            s, [&] { return oracle::getChar(s.reference, s.here()); },
            [&] { return TSGetChar(&s.locale, s.at()); });
    });
}

TEST(SteppingAgainstOracle, TSGetCharEx)
{
    compareEverywhere([](const Situation& s) {
        return compare(
            s, [&] { return oracle::getCharEx(s.reference, s.here(), s.state); },
            [&] { return TSGetCharEx(&s.locale, s.at(), s.state); });
    });
}

TEST(SteppingAgainstOracle, TSPutChar)
{
    compareEverywhere([](const Situation& s) {
        const TSChar32 value = randomValue(s.random);
        const oracle::Bytes wanted = oracle::putChar(value);
        Output output;
        EXPECT_EQ(TSPutChar(&s.locale, output.at(), value), std::ssize(wanted)) << value;
        EXPECT_TRUE(output.holds(wanted)) << value;
        EXPECT_EQ(s.locale.lastError, TS_ERR_NONE);
        return true;
    });
}

TEST(SteppingAgainstOracle, TSPutCharEx)
{
    compareEverywhere([](const Situation& s) {
        const TSChar32 value = randomValue(s.random);
        const std::int32_t state = anyState(s.random);
        const oracle::Bytes wanted = oracle::putCharEx(s.reference, state, value);
        Output output;
        EXPECT_EQ(TSPutCharEx(&s.locale, output.at(), state, value), std::ssize(wanted)) << value;
        EXPECT_TRUE(output.holds(wanted)) << value << " in state " << state;
        EXPECT_EQ(s.locale.lastError, TS_ERR_NONE);
        return true;
    });
}

TEST(SteppingAgainstOracle, TSNextChar)
{
    compareEverywhere([](const Situation& s) {
        return compare(
            s, [&] { return oracle::nextChar(s.reference, s.here()); },
            [&] { return TSNextChar(&s.locale, s.at()) - s.at(); });
    });
}

TEST(SteppingAgainstOracle, TSNextCharEx)
{
    compareEverywhere([](const Situation& s) {
        return compare(
            s, [&] { return oracle::nextCharEx(s.reference, s.here(), s.state); },
            [&] {
                std::int32_t state = kNoState;
                const char* result = TSNextCharEx(&s.locale, s.at(), s.state, &state);
                return stopOf(s.at(), result, state);
            });
    });
}

TEST(SteppingAgainstOracle, TSPrevChar)
{
    compareEverywhere([](const Situation& s) {
        const std::uint32_t options = anyOptions(s.random);
        return compare(
            s, [&] { return oracle::prevChar(s.reference, s.whole(), s.position); },
            [&] { return TSPrevChar(&s.locale, s.string, s.at(), options) - s.string; });
    });
}

TEST(SteppingAgainstOracle, TSPrevCharEx)
{
    compareEverywhere([](const Situation& s) {
        const std::uint32_t options = anyOptions(s.random);
        return compare(
            s, [&] { return oracle::prevCharEx(s.reference, s.whole(), s.position, s.state); },
            [&] {
                std::int32_t state = kNoState;
                const char* result =
                    TSPrevCharEx(&s.locale, s.string, s.at(), s.state, &state, options);
                return stopOf(s.string, result, state);
            });
    });
}

TEST(SteppingAgainstOracle, TSNumChars)
{
    compareEverywhere([](const Situation& s) {
        const std::int32_t length = pick(s.random, -1, s.size());
        const std::uint32_t options = anyOptions(s.random);
        return compare(
            s, [&] { return oracle::numChars(s.reference, s.whole(), length); },
            [&] { return TSNumChars(&s.locale, s.string, length, options); });
    });
}

TEST(SteppingAgainstOracle, TSNumCharsEx)
{
    compareEverywhere([](const Situation& s) {
        const std::int32_t length = pick(s.random, -1, s.size());
        const std::int32_t state = anyState(s.random);
        const std::uint32_t options = anyOptions(s.random);
        return compare(
            s, [&] { return oracle::numCharsEx(s.reference, s.whole(), state, length); },
            [&] { return TSNumCharsEx(&s.locale, s.string, state, length, options); });
    });
}

TEST(SteppingAgainstOracle, TSMoveStringPointer)
{
    compareEverywhere([](const Situation& s) {
        const std::int32_t offset = pick(s.random, -3, s.size());
        const std::uint32_t options = anyMoveOptions(s.random);
        return compare(
            s, [&] { return oracle::moveStringPointer(s.reference, s.whole(), offset, options); },
            [&] { return TSMoveStringPointer(&s.locale, s.string, offset, options) - s.string; });
    });
}

TEST(SteppingAgainstOracle, TSMoveStringPointerEx)
{
    compareEverywhere([](const Situation& s) {
        const std::int32_t offset = pick(s.random, -3, s.size());
        const std::uint32_t options = anyMoveOptions(s.random);
        return compare(
            s,
            [&] {
                return oracle::moveStringPointerEx(s.reference, s.whole(), s.state, offset,
                                                   options);
            },
            [&] {
                std::int32_t state = kNoState;
                const char* result =
                    TSMoveStringPointerEx(&s.locale, s.string, s.state, offset, &state, options);
                return stopOf(s.string, result, state);
            });
    });
}

TEST(SteppingAgainstOracle, TSTerminateStringEx)
{
    compareEverywhere([](const Situation& s) {
        const std::int32_t state = anyState(s.random);
        const std::uint32_t options =
            s.random() % 4 == 0 ? 1U << s.random() % 32 : anyOptions(s.random) & 0xF;
        const oracle::Ending wanted = oracle::terminateStringEx(s.reference, state, options);
        Output output;
        EXPECT_EQ(TSTerminateStringEx(&s.locale, output.at(), state, options), wanted.result);
        EXPECT_TRUE(output.holds(wanted.written)) << "state " << state << ", options " << options;
        EXPECT_EQ(s.locale.lastError, wanted.error);
        return true;
    });
}

} // namespace
} // namespace vlx::test
