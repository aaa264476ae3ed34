// What the functions may read and write, to the byte: texts end at memory that nobody may touch.
#include <cstring>
#include <gtest/gtest.h>

#include "chars/codepage.hpp"
#include "chars/situations.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

class Bounds : public testing::Test {
  protected:
    Bounds()
    {
        double_.asciiHalf().map(0x8140, 0x3000);
        stateful_.asciiHalf();
        onDouble_ = localeOn(double_.build());
        onStateful_ = localeOn(stateful_.build());
    }

    // A text of `size` bytes that ends at the guard.
    template <std::size_t N>
    char* atEnd(const char (&text)[N])
    {
        return room_.endingAtGuard(text, N - 1);
    }

    GuardedText room_;
    PageBuilder double_{PageShape::kDoubleByte};
    PageBuilder stateful_{PageShape::kStateful2};
    TSLocale onDouble_{};
    TSLocale onStateful_{};
    std::int32_t state_ = 0;
};

TEST_F(Bounds, ALengthIsReadFromTheFirstByteAlone)
{
    const char* text = atEnd("\x81");
    EXPECT_EQ(TSByteLength(&onDouble_, text), 2);
    EXPECT_EQ(TSByteLengthEx(&onStateful_, text, 1), 2);
    EXPECT_EQ(TSNextChar(&onDouble_, text) - text, 2);
}

TEST_F(Bounds, ACharacterIsReadAndNotTheByteBehindIt)
{
    EXPECT_EQ(TSGetChar(&onDouble_, atEnd("\x81\x40")), 0x8140U);
    EXPECT_EQ(TSGetCharEx(&onStateful_, atEnd("\x0E\x42\x43"), 0), 0x4243U);
    EXPECT_EQ(TSCpMbToUnicode(&double_.object(), atEnd("\x81\x40")), 0x3000);
}

TEST_F(Bounds, CountingEndsWithTheLength)
{
    EXPECT_EQ(TSNumChars(&onDouble_, atEnd("a\x81\x40"), 3, 0), 2);
    EXPECT_EQ(TSNumChars(&onDouble_, atEnd("a\x81"), 2, 0), 1);
    EXPECT_EQ(TSNumCharsEx(&onStateful_, atEnd("\x0E\x42\x43"), 0, 3, 0), 1);
    EXPECT_EQ(TSNumCharsEx(&onStateful_, atEnd("\x0E\x42\x43\x0F"), 0, 4, 0), 1);
    EXPECT_EQ(TSNumCharsEx(&onStateful_, atEnd("\x0E"), 0, 1, 0), 0);
}

TEST_F(Bounds, CountingOfNothingReadsNothing)
{
    EXPECT_EQ(TSNumChars(&onDouble_, atEnd(""), 0, 0), 0);
    EXPECT_EQ(TSNumCharsEx(&onStateful_, atEnd(""), 0, 0, 0), 0);
    EXPECT_EQ(TSCpCharsToBytes(&double_.object(), atEnd(""), 0, 0), 0);
    EXPECT_EQ(TSMoveStringPointer(&onDouble_, atEnd(""), 0, 0), atEnd(""));
}

TEST_F(Bounds, ATerminatorIsTheLastByteRead)
{
    EXPECT_EQ(TSNumChars(&onDouble_, room_.endingAtGuard("a\x81\x40", 4), -1, 0), 2);
    EXPECT_EQ(TSNumCharsEx(&onStateful_, room_.endingAtGuard("\x0E\x42\x43\x0F", 5), 0, -1, 0), 1);
}

TEST_F(Bounds, CharactersToBytesReadsTheCharactersAlone)
{
    EXPECT_EQ(TSCpCharsToBytes(&double_.object(), atEnd("a\x81\x40"), 0, 2), 3);
}

TEST_F(Bounds, CharactersToBytesOfStatefulTextReadsOneByteBehind)
{
    EXPECT_EQ(TSCpCharsToBytes(&stateful_.object(), atEnd("\x0E\x42\x43\x0F"), 0, 1), 4);
    EXPECT_EQ(TSCpCharsToBytes(&stateful_.object(), atEnd("\x0E\x42\x43x"), 0, 1), 3);
}

TEST_F(Bounds, NextCharExReadsOneByteBehindTheCharacter)
{
    const char* text = atEnd("\x0E\x42\x43\x0F");
    EXPECT_EQ(TSNextCharEx(&onStateful_, text, 0, &state_) - text, 4);
    text = atEnd("\x42\x43x");
    EXPECT_EQ(TSNextCharEx(&onStateful_, text, 1, &state_) - text, 2);
}

TEST_F(Bounds, PrevCharDoesNotReadAtThePosition)
{
    const char* text = atEnd("a\x81\x40");
    EXPECT_EQ(TSPrevChar(&onDouble_, text, text + 3, 0) - text, 1);
    text = atEnd("\x0E\x42\x43");
    EXPECT_EQ(TSPrevCharEx(&onStateful_, text, text + 3, 1, &state_, 0) - text, 1);
}

TEST_F(Bounds, PrevCharExDoesNotReadBeforeTheStart)
{
    const char* text = room_.beginningAtGuard("ab", 3);
    EXPECT_EQ(TSPrevCharEx(&onStateful_, text, text, 0, &state_, 0), text);
    EXPECT_EQ(TSPrevCharEx(&onStateful_, text, text + 1, 0, &state_, 0), text);
}

TEST_F(Bounds, MoveStringPointerReadsNothingBehindTheTarget)
{
    const char* text = atEnd("a\x81\x40");
    EXPECT_EQ(TSMoveStringPointer(&onDouble_, text, 2, 0) - text, 1);
    text = atEnd("\x0E\x42\x43\x0F");
    EXPECT_EQ(TSMoveStringPointerEx(&onStateful_, text, 0, 3, &state_, 0) - text, 3);
}

TEST_F(Bounds, NoMoreIsWrittenThanIsTold)
{
    const char* const guard = atEnd("");
    EXPECT_EQ(TSTerminateStringEx(&onStateful_, const_cast<char*>(guard), 0, 0), 0);
    EXPECT_EQ(TSTerminateStringEx(&onStateful_, atEnd("x"), 1, 0), 1);
    EXPECT_EQ(TSTerminateStringEx(&onStateful_, atEnd("xx"), 1, TS_OPT_TERMINATE), 2);
    TSPutChar(&onDouble_, atEnd("x"), 0x41);
    TSPutChar(&onDouble_, atEnd("xx"), 0x8140);
    char* const output = atEnd("xxx");
    TSPutCharEx(&onStateful_, output, 0, 0x4243);
    EXPECT_EQ(std::memcmp(output, "\x0E\x42\x43", 3), 0);
}

// Pages whose sections end at a guard: no valid page leads the primitives out of them.
TEST(SectionBounds, ArePageByPageKept)
{
    constexpr int kCharacters = 2000;
    GuardedText rooms[4];
    Random random(4096);
    for (const PageBuilder& page : randomPages()) {
        TSObject object = page.object();
        for (std::size_t i = 0; i < 4; ++i) {
            const Section& section = page.sections()[i];
            if (!section.empty())
                object.sections[i] = reinterpret_cast<const std::uint8_t*>(
                    rooms[i].endingAtGuard(section.data(), section.size()));
        }
        const oracle::Page reference = oraclePage(page);
        for (unsigned value = 0; value < 0x10000; value += 5) {
            const auto unicode = static_cast<TSChar16>(value);
            ASSERT_EQ(TSCpUnicodeToWide(&object, unicode),
                      oracle::unicodeToWide(reference, unicode));
        }
        for (int i = 0; i < kCharacters && page.shape() != PageShape::kSingleByte; ++i) {
            oracle::Bytes text = randomLongCharacter(random, page);
            text.resize(4);
            const auto* bytes = reinterpret_cast<const char*>(text.data());
            ASSERT_EQ(TSCpMbToUnicode(&object, bytes),
                      oracle::mbToUnicode(reference, oracle::Span(text)));
            ASSERT_EQ(static_cast<std::size_t>(reinterpret_cast<const std::uint8_t*>(
                                                   TSCpCharTypeRecord(&object, bytes)) -
                                               object.sections[0]),
                      oracle::charTypeRecord(reference, oracle::Span(text)));
        }
    }
}

} // namespace
} // namespace vlx::test
