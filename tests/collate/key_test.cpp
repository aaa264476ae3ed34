// Sort keys.
#include <gtest/gtest.h>

#include "collate/hand_sorts.hpp"

namespace vlx::test {
namespace {

// A buffer that shows what was written to it.
struct Buffer {
    explicit Buffer(std::size_t size) : bytes(size, '\xEE') {}

    std::string hex(std::size_t count) const
    {
        return SortedLatin::hex(bytes.data(), static_cast<std::int32_t>(count));
    }
    std::int32_t size() const { return static_cast<std::int32_t>(bytes.size()); }

    std::string bytes;
};

SortBuilder smallSort()
{
    SortBuilder sort;
    sort.letter('a', {0x1234}).letter('b', {0x0042}).special('-', 0x0102).special('+', 0x0101);
    sort.letter('A', {0x1234, 1, 2}).letter(0xE4, {0x1234, 2, 1}).letter('_', {0, 0, 0});
    sort.letter('^', {0, 1, 1}).silentPage(0x20);
    return sort;
}

TEST(Keys, AnEmptyStringHasThreeZeros)
{
    SortedLatin latin;
    for (const std::uint32_t options : {0u, std::uint32_t{TS_OPT_IGNORE_CASE}}) {
        Buffer buffer(4);
        EXPECT_EQ(TSStrxfrm(latin.locale.handle(), buffer.bytes.data(), 0, "", 0, options), 0);
        EXPECT_EQ(buffer.hex(4), "EE EE EE EE");
        EXPECT_EQ(TSStrxfrm(latin.locale.handle(), buffer.bytes.data(), 2, "", -1, options), 3);
        EXPECT_EQ(buffer.hex(4), "00 00 EE EE");
        EXPECT_EQ(TSStrxfrm(latin.locale.handle(), buffer.bytes.data(), 4, "", 0, options), 3);
        EXPECT_EQ(buffer.hex(4), "00 00 00 EE");
    }
    EXPECT_EQ(latin.key(""), "00 00 00");
}

TEST(Keys, OrdinaryTextHasTwoBytesACharacter)
{
    SortedLatin latin(smallSort());
    EXPECT_EQ(latin.key("ab"), "12 34 00 42 00 00 00");
}

TEST(Keys, DefaultWeightsAreDroppedFromTheEnd)
{
    SortedLatin latin(smallSort());
    EXPECT_EQ(latin.key("Ab"), "12 34 00 42 00 00 02 00");
    EXPECT_EQ(latin.key("bA"), "00 42 12 34 00 00 01 02 00");
    EXPECT_EQ(latin.key("\xE4"
                        "b"),
              "12 34 00 42 00 02 00 00");
    SortBuilder none = smallSort();
    none.defaults(0, 0);
    SortedLatin whole(std::move(none));
    EXPECT_EQ(whole.key("ab"), "12 34 00 42 00 01 01 00 01 01 00");
}

TEST(Keys, ASpecialCharacterStandsWithItsPosition)
{
    SortedLatin latin(smallSort());
    EXPECT_EQ(latin.key("b-"), "00 42 00 00 00 00 02 01 02");
    EXPECT_EQ(latin.key("-b+"), "00 42 00 00 00 00 01 01 02 00 03 01 01");
    EXPECT_EQ(latin.key("_b_-"), "00 42 00 00 00 00 04 01 02")
        << "a character without weights is counted";
}

// Deliberate: by themselves special characters have no positions.
TEST(Keys, WithoutOtherWeightsLevel4HasNoPositions)
{
    SortedLatin latin(smallSort());
    EXPECT_EQ(latin.key("-"), "00 00 00 01 02");
    EXPECT_EQ(latin.key("_-_+"), "00 00 00 01 02 01 01");
    EXPECT_EQ(latin.key("^-"), "00 00 00 01 02") << "what is dropped is nothing";
    SortBuilder marks = smallSort();
    marks.letter('~', {0, 2, 0}).letter('!', {0, 0, 2});
    SortedLatin marked(std::move(marks));
    EXPECT_EQ(marked.key("~-"), "00 02 00 00 00 02 01 02");
    EXPECT_EQ(marked.key("!-"), "00 00 02 00 00 02 01 02");
}

TEST(Keys, ACharacterWithoutWeightsLeavesNothing)
{
    SortedLatin latin(smallSort());
    EXPECT_EQ(latin.key("__"), "00 00 00");
    const TSChar16 silent[] = {0x2010, 'b'};
    char key[64];
    EXPECT_EQ(
        SortedLatin::hex(key, TSStrxfrmU(latin.locale.handle(), key, sizeof key, silent, 2, 0)),
        "00 42 00 00 00");
}

TEST(Keys, AContractionHasThePositionOfItsSecondCharacter)
{
    SortBuilder order = smallSort();
    order.contraction('a', 'b', {0x2345}).specialContraction('b', '-', 0x0201);
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.key("ab"), "23 45 00 00 00");
    EXPECT_EQ(latin.key("aab"), "12 34 23 45 00 00 00");
    EXPECT_EQ(latin.key("ab-"), "23 45 00 00 00 00 03 01 02") << "the b is taken";
    EXPECT_EQ(latin.key("ab+b-"), "23 45 00 00 00 00 03 01 01 00 05 02 01");
}

TEST(Keys, AnExpansionAtTheEndIsWhole)
{
    SortedLatin latin;
    EXPECT_EQ(latin.key("\xDF"), "03 20 03 20 00 02 00 00");
    EXPECT_EQ(latin.compare("\xDF", "s"), 1) << "level 2 of the first element";
}

TEST(Keys, BackwardRunsAreReversed)
{
    SortBuilder order = smallSort();
    order.letter('1', {0x0301, 2, 2}, 0x3).letter('2', {0x0302, 3, 3}, 0x3);
    order.letter('3', {0x0303, 4, 4}, 0x3);
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.key("123"), "03 03 03 02 03 01 00 04 03 02 00 02 03 04 00");
    EXPECT_EQ(latin.key("12a3"), "03 02 03 01 12 34 03 03 00 03 02 01 04 00 02 03 01 04 00");
}

TEST(Keys, ATooShortBufferIsLeftAsItIs)
{
    SortedLatin latin(smallSort());
    for (std::int32_t size = 0; size < 7; ++size) {
        Buffer buffer(8);
        latin.locale.record.lastError = kUntouchedError;
        EXPECT_EQ(TSStrxfrm(latin.locale.handle(), buffer.bytes.data(), size, "ab", -1, 0), 7);
        EXPECT_EQ(buffer.hex(8), "EE EE EE EE EE EE EE EE") << size;
        EXPECT_EQ(latin.locale.record.lastError, kUntouchedError);
    }
    EXPECT_EQ(TSStrxfrm(latin.locale.handle(), nullptr, 0, "ab", -1, 0), 7);
}

TEST(Keys, ALargeBufferIsWipedBehindTheKey)
{
    SortedLatin latin(smallSort());
    alignas(8) char area[48];
    for (const std::size_t past : {0u, 1u, 2u, 3u}) {
        std::fill(std::begin(area), std::end(area), '\xEE');
        Allocator::reset();
        // The streams of two characters need 36 bytes.
        const auto size = static_cast<std::int32_t>(36 + (4 - past) % 4);
        EXPECT_EQ(TSStrxfrm(latin.locale.handle(), area + past, size, "ab", -1, 0), 7);
        EXPECT_EQ(SortedLatin::hex(area + past, 9), "12 34 00 42 00 00 00 00 00");
        EXPECT_EQ(area[past + 35], 0) << past;
        EXPECT_EQ(area[past + 36], '\xEE') << past;
        EXPECT_EQ(Allocator::calls(Slot::kAllocate), 1u) << "the values";
    }
}

TEST(Keys, AnUnalignedBufferTakesAKeyThatLeavesRoomForTheStep)
{
    SortedLatin latin(smallSort());
    alignas(8) char area[16];
    for (const std::size_t past : {1u, 2u, 3u}) {
        const auto step = static_cast<std::int32_t>(4 - past);
        std::fill(std::begin(area), std::end(area), '\xEE');
        Allocator::reset();
        EXPECT_EQ(TSStrxfrm(latin.locale.handle(), area + past, 7 + step - 1, "ab", -1, 0), 7);
        EXPECT_EQ(area[past], '\xEE') << "it fits the size, but not behind the step";
        EXPECT_EQ(TSStrxfrm(latin.locale.handle(), area + past, 7 + step, "ab", -1, 0), 7);
        EXPECT_EQ(SortedLatin::hex(area + past, 7), "12 34 00 42 00 00 00");
        EXPECT_EQ(area[past + 7], '\xEE') << "a key that was made elsewhere wipes nothing";
        EXPECT_EQ(Allocator::calls(Slot::kAllocate), 4u) << "values and streams";
    }
}

TEST(Keys, TheBinarySortHasTheTextItself)
{
    const WorkingMemory memory;
    HandLocale locale(latinPage());
    const TSChar16 units[] = {0x41, 0x1234, 0};
    const TSChar32 packed[] = {0x41, 0x81000203, 0};
    Buffer buffer(8);
    char* const bytes = buffer.bytes.data();
    EXPECT_EQ(TSStrxfrm(locale.handle(), bytes, 8, "aB", -1, 0), 2);
    EXPECT_EQ(buffer.hex(3), "61 42 EE");
    EXPECT_EQ(TSStrxfrm(locale.handle(), bytes, 1, "cd", -1, 0), 2);
    EXPECT_EQ(buffer.hex(3), "61 42 EE");
    EXPECT_EQ(TSStrxfrmU(locale.handle(), bytes, 8, units, 1, 0), 2);
    EXPECT_EQ(buffer.hex(3), "00 41 EE");
    EXPECT_EQ(TSStrxfrmU(locale.handle(), bytes, 1, units + 1, 1, 0), 2);
    EXPECT_EQ(buffer.hex(3), "00 41 EE");
    EXPECT_EQ(TSWcsxfrm(locale.handle(), bytes, 8, packed, -1, 0), 8);
    EXPECT_EQ(buffer.hex(8), "00 00 00 41 81 00 02 03");
    EXPECT_EQ(TSWcsxfrm(locale.handle(), bytes, 7, packed, -1, 0), 8);
    EXPECT_EQ(TSStrxfrm(locale.handle(), bytes, 8, "", 0, 0), 3) << "but for an empty string";
}

TEST(Keys, TheBinarySortHasTheFoldedText)
{
    const WorkingMemory memory;
    HandLocale locale(widePage());
    Buffer buffer(8);
    char* const bytes = buffer.bytes.data();
    EXPECT_EQ(TSStrxfrm(locale.handle(), bytes, 8, "a\x82\x81", -1, TS_OPT_IGNORE_CASE), 3);
    EXPECT_EQ(buffer.hex(4), "41 82 60 EE");
    EXPECT_EQ(TSStrxfrm(locale.handle(), bytes, 8, "a\x82\x81", -1, TS_OPT_IGNORE_WIDTH), 2);
    EXPECT_EQ(buffer.hex(4), "61 61 60 EE");
    const TSChar16 units[] = {0xFF41, 'b'};
    EXPECT_EQ(TSStrxfrmU(locale.handle(), bytes, 8, units, 2, TS_OPT_IGNORE_CASE), 4);
    EXPECT_EQ(buffer.hex(4), "FF 21 00 42");
    const TSChar32 packed[] = {0x8281, 'b'};
    EXPECT_EQ(TSWcsxfrm(locale.handle(), bytes, 8, packed, 2, TS_OPT_IGNORE_WIDTH), 8);
    EXPECT_EQ(buffer.hex(8), "00 00 00 61 00 00 00 62");
}

// Deliberate: a character that does not fit leaves a gap, and a shorter one stands behind it.
TEST(Keys, FoldedTextThatDoesNotFitHasGaps)
{
    const WorkingMemory memory;
    HandLocale locale(widePage());
    Buffer buffer(6);
    char* const bytes = buffer.bytes.data();
    EXPECT_EQ(TSStrxfrm(locale.handle(), bytes, 2, "a\x82\x81z", -1, TS_OPT_IGNORE_CASE), 4);
    EXPECT_EQ(buffer.hex(6), "41 EE EE EE EE EE") << "the Z would stand outside the buffer";
    EXPECT_EQ(TSStrxfrm(locale.handle(), bytes, 4, "abc\x82\x81z", -1, TS_OPT_IGNORE_CASE), 6);
    EXPECT_EQ(buffer.hex(6), "41 42 43 EE EE EE");
}

TEST(Keys, FoldedStatefulTextHasItsShiftBytes)
{
    const WorkingMemory memory;
    HandLocale locale(shiftPage());
    Buffer buffer(8);
    char* const bytes = buffer.bytes.data();
    EXPECT_EQ(
        TSStrxfrmEx(locale.handle(), bytes, 8, "a\x0E\x42\x81\x0Fz", 0, -1, TS_OPT_IGNORE_CASE), 6);
    EXPECT_EQ(buffer.hex(7), "41 0E 42 60 0F 5A EE");
    EXPECT_EQ(TSStrxfrmEx(locale.handle(), bytes, 8, "\x42\x81", 1, 2, TS_OPT_IGNORE_CASE), 3);
    EXPECT_EQ(buffer.hex(3), "0E 42 60");
    EXPECT_EQ(TSStrxfrmEx(locale.handle(), bytes, 8, "\x42\x81", 1, 2, TS_OPT_IGNORE_WIDTH), 1);
    EXPECT_EQ(buffer.hex(1), "61");
}

// Deliberate: without room there is no shift byte, and nothing moves for it.
TEST(Keys, FoldedStatefulTextLeavesOutShiftBytesThatDoNotFit)
{
    const WorkingMemory memory;
    HandLocale locale(shiftPage());
    const auto keyOf = [&](std::int32_t size, const char* text) {
        Buffer buffer(8);
        const std::int32_t length = TSStrxfrmEx(locale.handle(), buffer.bytes.data(), size, text, 0,
                                                -1, TS_OPT_IGNORE_CASE);
        return std::pair(length, buffer.hex(6));
    };
    const char* const text = "a\x0E\x42\x81\x0Fz";
    EXPECT_EQ(keyOf(6, text), std::pair(6, std::string("41 0E 42 60 0F 5A")));
    EXPECT_EQ(keyOf(5, text), std::pair(6, std::string("41 0E 42 60 0F EE")));
    EXPECT_EQ(keyOf(4, text), std::pair(5, std::string("41 0E 42 60 EE EE")));
    EXPECT_EQ(keyOf(3, text), std::pair(6, std::string("41 0E EE EE EE EE")))
        << "the wide letter leaves a gap, and room for the shift byte behind the buffer";
    EXPECT_EQ(keyOf(1, text), std::pair(4, std::string("41 EE EE EE EE EE")));
    EXPECT_EQ(keyOf(0, text), std::pair(4, std::string("EE EE EE EE EE EE")));
}

TEST(Keys, TextWithoutAWholeCharacterHasTheEmptyKeyIfItFits)
{
    const WorkingMemory memory;
    SortLocale wide(widePage(), smallSort());
    for (const std::int32_t size : {0, 2, 3, 4}) {
        Buffer buffer(4);
        EXPECT_EQ(TSStrxfrm(wide.handle(), buffer.bytes.data(), size, "\x82", 1, 0), 3);
        EXPECT_EQ(buffer.hex(4), size < 3 ? "EE EE EE EE" : "00 00 00 EE") << size;
    }
    HandLocale binary(widePage());
    Buffer buffer(4);
    EXPECT_EQ(TSStrxfrm(binary.handle(), buffer.bytes.data(), 4, "\x82", 1, TS_OPT_IGNORE_CASE), 0);
    EXPECT_EQ(buffer.hex(4), "EE EE EE EE");
}

TEST(Keys, CaseIsFoldedBeforeTheSort)
{
    SortedLatin latin(smallSort());
    EXPECT_EQ(latin.key("a", TS_OPT_IGNORE_CASE), latin.key("A"));
    EXPECT_EQ(latin.key("a-", TS_OPT_IGNORE_CASE), latin.key("A-"));
}

TEST(Keys, APairMakesTheArrayLongerAndMovesThePositions)
{
    SortedLatin latin(smallSort(), {{0xDF, 0, 'A', 'A'}, {'a', 'b', 'b', 0}});
    char key[128];
    const auto keyOf = [&](const char* text) {
        return SortedLatin::hex(
            key, TSStrxfrm(latin.locale.handle(), key, sizeof key, text, -1, TS_OPT_IGNORE_CASE));
    };
    EXPECT_EQ(keyOf("\xDF-"), "12 34 12 34 00 00 02 02 00 00 03 01 02");
    EXPECT_EQ(keyOf("ab-"), "00 42 00 00 00 00 02 01 02") << "the results are not folded";
    EXPECT_EQ(keyOf("\xDF\xDF"), "12 34 12 34 12 34 12 34 00 00 02 02 02 02 00");
    EXPECT_EQ(keyOf("aab"), "12 34 00 42 00 00 02 00");
}

// Deliberate: the first value takes no part in the lookups.
TEST(Keys, TheFirstUnitOfPairsIsNotLookedUp)
{
    SortedLatin latin(smallSort(), {{0xDF, 0, 'A', 'A'}, {'a', 'b', 'b', 0}});
    const TSChar16 units[] = {'a', 'b', 'a', 'b', 0};
    char key[128];
    const auto keyOf = [&](const TSChar16* text, std::int32_t length) {
        return SortedLatin::hex(key, TSStrxfrmU(latin.locale.handle(), key, sizeof key, text,
                                                length, TS_OPT_IGNORE_CASE));
    };
    EXPECT_EQ(keyOf(units, 1), "12 34 00 00 02 00");
    EXPECT_EQ(keyOf(units, 2), "12 34 00 00 02 00") << "the b has no upper-case weights";
    EXPECT_EQ(keyOf(units, 4), "12 34 00 42 00 00 02 00") << "the second pair is one";
}

TEST(Keys, WidthInASingleByteCodePageIsNoFold)
{
    SortedLatin latin;
    for (const char* text : {"aB", "\xE4\xDF-x"}) {
        char folded[128];
        char plain[128];
        const std::int32_t size =
            TSStrxfrm(latin.locale.handle(), plain, sizeof plain, text, -1, 0);
        EXPECT_EQ(
            TSStrxfrm(latin.locale.handle(), folded, sizeof folded, text, -1, TS_OPT_IGNORE_WIDTH),
            size);
        EXPECT_EQ(std::memcmp(folded, plain, static_cast<std::size_t>(size)), 0);
    }
}

// Deliberate: where case is ignored the whole value is looked up, which is of no character there.
TEST(Keys, OfPackedValuesInASingleByteCodePageTheLowByteCounts)
{
    SortBuilder order = smallSort();
    order.letter(0xFFFD, {0x4321});
    SortedLatin latin(std::move(order));
    const auto keyOf = [&](TSChar32 value, std::uint32_t options) {
        char key[64];
        return SortedLatin::hex(
            key, TSWcsxfrm(latin.locale.handle(), key, sizeof key, &value, 1, options));
    };
    EXPECT_EQ(keyOf(0x4161, 0), "12 34 00 00 00");
    EXPECT_EQ(keyOf(0x4161, TS_OPT_IGNORE_WIDTH), "12 34 00 00 00");
    EXPECT_EQ(keyOf(0x4161, TS_OPT_IGNORE_CASE), "43 21 00 00 00");
    const TSChar32 values[] = {0x4161, 0xFFFF};
    EXPECT_EQ(TSWcscoll(latin.locale.handle(), values, 1, values + 1, 1, 0), 0)
        << "nor does the comparison look at the low byte alone";
}

TEST(Keys, OtherOptionsAreRefused)
{
    SortedLatin latin;
    Buffer buffer(8);
    const TSChar16 units[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    for (const std::uint32_t options :
         {0x40u, 0x80000000u, 0x1u, 0x00200000u, 0x80200041u, 0x80000042u}) {
        TSLocale* const locale = latin.locale.handle();
        char* const bytes = buffer.bytes.data();
        for (const std::int32_t result : {TSStrxfrm(locale, bytes, 8, "a", -1, options),
                                          TSStrxfrmEx(locale, bytes, 8, "a", 0, -1, options),
                                          TSStrxfrmU(locale, bytes, 8, units, -1, options),
                                          TSWcsxfrm(locale, bytes, 8, packed, -1, options)})
            EXPECT_EQ(result, -1) << std::hex << options;
        EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
        EXPECT_EQ(buffer.hex(8), "EE EE EE EE EE EE EE EE");
    }
}

TEST(Keys, CountedLengthsAreCharacters)
{
    const WorkingMemory memory;
    SortLocale wide(widePage(), smallSort());
    char key[64];
    EXPECT_EQ(TSStrxfrm(wide.handle(), key, sizeof key,
                        "a\x82\x81"
                        "b",
                        3, TS_OPT_CHAR_COUNT),
              7);
    EXPECT_EQ(TSStrxfrm(wide.handle(), key, sizeof key,
                        "a\x82\x81"
                        "b",
                        3, 0),
              5);
}

TEST(Keys, WithoutMemoryThereIsNoKey)
{
    SortedLatin latin(smallSort());
    Buffer buffer(8);
    const TSChar16 units[] = {'a', 'b', 0};
    for (const std::uint32_t n : {1u, 2u}) {
        Allocator::reset();
        Allocator::failAllocation(Slot::kAllocate, n);
        EXPECT_EQ(
            TSStrxfrmU(latin.locale.handle(), buffer.bytes.data(), buffer.size(), units, -1, 0),
            -1);
        EXPECT_EQ(latin.locale.record.lastError, TS_ERR_MEMORY);
        EXPECT_EQ(buffer.hex(8), "EE EE EE EE EE EE EE EE");
        EXPECT_TRUE(latin.memory.allGivenBack());
    }
}

// What a call has asked the slot for, and the blocks that were out then.
struct Request {
    std::uint32_t bytes;
    int liveBlocks;

    bool operator==(const Request&) const = default;
};

std::vector<Request>& requests()
{
    static std::vector<Request> all;
    return all;
}

void* request(TSContext context, std::uint32_t bytes)
{
    requests().push_back({bytes, Allocator::liveBlocks()});
    return Allocator::allocate(context, bytes);
}

// Units that are not folded are the array themselves: its memory is asked for and given back before
// the streams take theirs.
TEST(Keys, MemoryIsTakenAndGivenBackInTheirOrder)
{
    using Requests = std::vector<Request>;
    SortedLatin latin(smallSort());
    TSLocale* const locale = latin.locale.handle();
    tsSlots.allocate = request;
    const TSChar16 units[] = {'a', 'b', 'a', 0};
    const TSChar32 packed[] = {'a', 'b', 'a', 0};
    char buffer[64] = {};
    const auto requested = [](auto call) {
        requests().clear();
        call();
        return requests();
    };
    EXPECT_EQ(requested([&] { TSStrxfrmU(locale, buffer, 10, units, -1, 0); }),
              (Requests{{12, 0}, {52, 0}}));
    EXPECT_EQ(requested([&] { TSStrxfrmU(locale, buffer, 10, units, -1, TS_OPT_IGNORE_CASE); }),
              (Requests{{12, 0}, {52, 1}}));
    EXPECT_EQ(requested([&] { TSStrxfrm(locale, buffer, 10, "aba", -1, 0); }),
              (Requests{{12, 0}, {52, 1}}));
    EXPECT_EQ(requested([&] { TSWcsxfrm(locale, buffer, 10, packed, -1, 0); }),
              (Requests{{12, 0}, {52, 1}}));
    EXPECT_EQ(requested([&] { TSStrxfrmU(locale, buffer, sizeof buffer, units, -1, 0); }),
              (Requests{{12, 0}}))
        << "the streams are in the buffer";
    EXPECT_TRUE(latin.memory.allGivenBack());
}

// What keys and the comparison do not agree on, and are not meant to.
TEST(Keys, DifferFromTheComparisonWhereTheyAreMeantTo)
{
    SortBuilder order = smallSort();
    order.letter('~', {0, 1, 0}).expansion(0xDF, {0x1234}, {0x0042});
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.key("a~"), latin.key("a"));
    EXPECT_EQ(latin.compare("a~", "a"), 1) << "a trailing default weight";
    EXPECT_EQ(latin.key("_-"), latin.key("-"));
    EXPECT_EQ(latin.compare("_-", "-"), 1) << "the position of a lone special character";
    EXPECT_NE(latin.key("\xDF"), latin.key("a"));
    EXPECT_EQ(latin.compare("\xDF", "a"), 0) << "the end of an expansion";
}

} // namespace
} // namespace vlx::test
