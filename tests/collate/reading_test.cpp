// How the comparison reads its texts: characters that are cut off, shift bytes, what is read ahead,
// and long texts.
#include <gtest/gtest.h>

#include "collate/hand_sorts.hpp"

namespace vlx::test {
namespace {

TEST(CollationReading, ACharacterThatIsCutOffEndsTheTextQuietly)
{
    const WorkingMemory memory;
    SortBuilder order = latinSort();
    order.level1Page(0xFF, 0x4000);
    SortLocale wide(widePage(), std::move(order));
    wide.record.lastError = kUntouchedError;
    EXPECT_EQ(TSStrcoll(wide.handle(), "ab\x82", 3, "ab", 2, 0), 0);
    EXPECT_EQ(TSStrcoll(wide.handle(), "ab\x82\x81", 3, "ab\x82\x60", 4, 0), -1);
    EXPECT_EQ(TSStrcoll(wide.handle(), "ab\x82\x81", -1, "ab\x82\x60", -1, 0), 0x20);
    EXPECT_EQ(wide.record.lastError, kUntouchedError);
}

TEST(CollationReading, ShiftBytesSetTheStateAndAreNoCharacters)
{
    const WorkingMemory memory;
    SortBuilder order = latinSort();
    order.level1Page(0xFF, 0x4000);
    SortLocale shifted(shiftPage(), std::move(order));
    const auto compare = [&](const std::string& first, std::int32_t state1,
                             const std::string& second, std::int32_t state2) {
        return TSStrcollEx(shifted.handle(), first.data(), state1,
                           static_cast<std::int32_t>(first.size()), second.data(), state2,
                           static_cast<std::int32_t>(second.size()), 0);
    };
    EXPECT_EQ(compare("a\x0E\x42\x81\x0F"
                      "b",
                      0,
                      "a\x0E\x42\x81\x0F"
                      "b",
                      0),
              0);
    EXPECT_EQ(compare("\x0E\x42\x81", 0, "\x42\x81", 1), 0) << "the states at the beginning";
    EXPECT_EQ(compare("\x42\x81", 1, "\x42\x60", 1), 0x20);
    EXPECT_EQ(compare("\x42\x81\x0F", 1, "\x42\x81", 1), 0);
    EXPECT_EQ(compare("\x42\x81\x42", 1, "\x42\x81", 1), 0) << "cut off";
}

// A locale of stateful text by a sort of letters alone, where '$' is two s, with a contraction or
// without.
struct ShiftedLetters : SortLocale {
    ShiftedLetters(PageBuilder built, bool hasContraction)
        : SortLocale(std::move(built), letters(hasContraction))
    {
    }

    static SortBuilder letters(bool hasContraction)
    {
        SortBuilder order;
        for (char letter = 'a'; letter <= 'z'; ++letter)
            order.letter(static_cast<TSChar16>(letter), {letterWeight(letter)});
        order.expansion('$', {letterWeight('s')}, {letterWeight('s')});
        if (hasContraction)
            order.contraction('q', 'q', {0x0700});
        return order;
    }

    std::int32_t compare(const std::string& first, const std::string& second)
    {
        return TSStrcollEx(handle(), first.data(), 0, SortedLatin::lengthOf(first), second.data(),
                           0, SortedLatin::lengthOf(second), 0);
    }

    WorkingMemory memory;
};

// Deliberate: where a sort has contractions, the shift byte behind a character is passed when the
// next character is looked for.
TEST(CollationReading, ReadingAheadPassesShiftBytes)
{
    ShiftedLetters plain(shiftPage(), false);
    ShiftedLetters pairs(shiftPage(), true);
    for (ShiftedLetters* letters : {&plain, &pairs}) {
        EXPECT_EQ(letters->compare("s", "$"), 0) << "both texts end together";
        EXPECT_EQ(letters->compare("$", "s"), 0);
        EXPECT_EQ(letters->compare("s\x0Fs", "$"), 0);
        EXPECT_EQ(letters->compare("sx", "$"), step('s', 'x'));
    }
    EXPECT_EQ(plain.compare("s\x0F", "$"), -1) << "the shift byte is still to come";
    EXPECT_EQ(plain.compare("$", "s\x0F"), 1);
    EXPECT_EQ(pairs.compare("s\x0F", "$"), 0) << "the shift byte is behind both";
    EXPECT_EQ(pairs.compare("$", "s\x0F"), 0);
    EXPECT_EQ(pairs.compare("qq\x0F", "qq"), 0);
}

// Deliberate: reading ahead passes one shift byte, and reading another.
TEST(CollationReading, ACharacterThatReadingAheadFindsCutOffIsLookedForAgain)
{
    const auto page = [] {
        PageBuilder built(PageShape::kStateful3);
        built.asciiHalf().shifts(0x0E, 0x0F).build();
        return built;
    };
    ShiftedLetters plain(page(), false);
    ShiftedLetters pairs(page(), true);
    const std::string shifted = "a\x0E\x0F" // behind the first of them three bytes are wanted
                                "b";
    EXPECT_EQ(plain.compare(shifted, "ab"), -1);
    EXPECT_EQ(plain.compare("ab", shifted), 1);
    EXPECT_EQ(pairs.compare(shifted, "ab"), 0);
    EXPECT_EQ(pairs.compare("ab", shifted), 0);
    EXPECT_EQ(pairs.compare(shifted, "ac"), -step('b', 'c'));
    EXPECT_EQ(pairs.compare(shifted.substr(1), "b"), -1) << "nothing was read before";
}

// Deliberate: the value stands for nothing read ahead, but the text is counted as if it went on.
TEST(CollationReading, AnUnpairedFFFFThatWasReadAheadIsLost)
{
    const WorkingMemory memory;
    const auto letters = [](bool hasContraction) {
        SortBuilder order;
        for (char letter = 'a'; letter <= 'z'; ++letter)
            order.letter(static_cast<TSChar16>(letter), {letterWeight(letter)});
        order.expansion('$', {letterWeight('s')}, {letterWeight('s')}).letter(0xFFFF, {0x0900});
        if (hasContraction)
            order.contraction('q', 'q', {0x0700}).contraction('p', 0xFFFF, {0x0800});
        return order;
    };
    SortLocale plain(latinPage(), letters(false));
    SortLocale pairs(latinPage(), letters(true));
    const auto compare = [](SortLocale& locale, const std::vector<TSChar16>& first,
                            const std::vector<TSChar16>& second) {
        return TSStrcollU(locale.handle(), first.data(), static_cast<int>(first.size()),
                          second.data(), static_cast<int>(second.size()), 0);
    };
    EXPECT_EQ(compare(plain, {'a', 0xFFFF, 'b'}, {'a', 'b'}), 0x0900 - letterWeight('b'));
    EXPECT_EQ(compare(pairs, {'a', 0xFFFF, 'b'}, {'a', 'b'}), 0);
    EXPECT_EQ(compare(pairs, {'a', 0xFFFF, 'b'}, {'a', 0xFFFF, 'c'}), -step('b', 'c'));
    EXPECT_EQ(compare(pairs, {0xFFFF, 'b'}, {'b'}), 0x0900 - letterWeight('b'))
        << "it was not read ahead";
    EXPECT_EQ(compare(pairs, {'q', 'q', 0xFFFF}, {'q', 'q', 'b'}), 0x0900 - letterWeight('b'));
    EXPECT_EQ(compare(pairs, {'p', 0xFFFF}, {'q', 'q'}), 0x0100) << "it is paired";
    // The loss lets the text with the letter go on, so that the second letter of the other counts.
    EXPECT_EQ(compare(pairs, {'a', 's'}, {'a', '$'}), 0);
    EXPECT_EQ(compare(pairs, {'a', 0xFFFF, 's'}, {'a', '$'}), -1);
    EXPECT_EQ(compare(pairs, {'a', 0xFFFF, 's'}, {'a', 0xFFFF, '$'}), -1);
    EXPECT_EQ(compare(pairs, {'a', 0xFFFF, '$'}, {'a', 0xFFFF, 's'}), 1);
    EXPECT_EQ(compare(plain, {'a', 0xFFFF, 's'}, {'a', 0xFFFF, '$'}), 0);
}

// Whatever is skipped or looked at again, the time grows with the length; otherwise this takes
// hours.
TEST(CollationReading, LongTextsTakeTimeByTheirLength)
{
    constexpr std::int32_t kLength = 1 << 18;
    const WorkingMemory memory;
    const auto letters = [] {
        SortBuilder order;
        for (char letter = 'a'; letter <= 'z'; ++letter)
            order.letter(static_cast<TSChar16>(letter), {letterWeight(letter)});
        order.contraction('c', 'h', {letterWeight('c') + 1});
        return order;
    };
    SortLocale latin(latinPage(), letters());
    SortLocale wide(widePage(), letters());
    SortLocale shifted(shiftPage(), letters());
    for (const char letter : {'c', 'x'}) {
        const std::string text(kLength, letter);
        const std::string other = text.substr(1) + 'd';
        const auto units = SortedLatin::unitsOf<TSChar16>(text);
        const auto packed = SortedLatin::unitsOf<TSChar32>(text);
        for (SortLocale* locale : {&latin, &wide}) {
            EXPECT_EQ(TSStrcoll(locale->handle(), text.data(), kLength, text.data(), kLength, 0),
                      0);
            EXPECT_EQ(TSStrcoll(locale->handle(), text.data(), kLength, other.data(), kLength, 0),
                      step('d', letter));
        }
        EXPECT_EQ(
            TSStrcollEx(shifted.handle(), text.data(), 0, kLength, text.data(), 0, kLength, 0), 0);
        EXPECT_EQ(TSStrcollU(latin.handle(), units.data(), kLength, units.data(), kLength, 0), 0);
        EXPECT_EQ(TSWcscoll(latin.handle(), packed.data(), kLength, packed.data(), kLength, 0), 0);
    }
}

} // namespace
} // namespace vlx::test
