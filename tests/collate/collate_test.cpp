// The comparison by collation elements.
#include <gtest/gtest.h>

#include "collate/hand_sorts.hpp"

namespace vlx::test {
namespace {

constexpr std::uint8_t kBackward1 = 0x7;
constexpr std::uint8_t kBackward2 = 0xB;
constexpr std::uint8_t kBackward3 = 0xD;
constexpr std::uint8_t kBackward4 = 0xE;

TEST(Collation, EmptyStrings)
{
    SortedLatin latin;
    EXPECT_EQ(latin.compare("", ""), 0);
    EXPECT_EQ(latin.compare("", "a"), -1);
    EXPECT_EQ(latin.compare("a", ""), 1);
    EXPECT_EQ(latin.compare("", "_a"), -1) << "the tail has a letter";
}

TEST(Collation, WithoutLevel1WeightsTheStreamsDecideAgainstAnEmptyString)
{
    SortedLatin latin;
    EXPECT_EQ(latin.compare("-", ""), 1);
    EXPECT_EQ(latin.compare("", "-'"), -1);
    EXPECT_EQ(latin.compare("_", ""), 0) << "no weight at all";
    SortBuilder marks = latinSort();
    marks.letter('^', {0, 3, 0}).letter('~', {0, 0, 5});
    SortedLatin marked(std::move(marks));
    EXPECT_EQ(marked.compare("^", ""), 1) << "level 2 differs in length";
    EXPECT_EQ(marked.compare("", "~"), -1) << "level 3 differs in length";
    EXPECT_EQ(marked.compare("^", "~"), 1) << "level 2 is the first that differs";
}

TEST(Collation, AFirstDifferenceOnLevel1IsTheDifferenceOfTheWeights)
{
    SortedLatin latin;
    EXPECT_EQ(latin.compare("b", "e"), -step('b', 'e'));
    EXPECT_EQ(latin.compare("z", "abcdef"), step('a', 'z'));
    EXPECT_EQ(latin.compare("abz", "abc"), step('c', 'z'));
    EXPECT_EQ(latin.compare("Bz", "be"), step('e', 'z')) << "case counts for nothing yet";
}

TEST(Collation, OtherLevelsDecideWhatIsEqualOnLevel1)
{
    SortedLatin latin;
    EXPECT_EQ(latin.compare("ab", "\xE4"
                                  "b"),
              -1);
    EXPECT_EQ(latin.compare("aB", "\xE4"
                                  "b"),
              -1)
        << "accents come before case";
    EXPECT_EQ(latin.compare("aB", "ab"), 1);
    EXPECT_EQ(latin.compare("Ab", "aB"), 1) << "the first difference counts";
    EXPECT_LT(latin.compare("a-b", "ab-"), 0) << "the position comes before the weight";
    EXPECT_EQ(latin.compare("a-b", "a'b"), 1);
    EXPECT_EQ(latin.compare("a-b", "ab"), 1);
    EXPECT_EQ(latin.compare("a_bc", "abc"), 0);
}

TEST(Collation, ATextThatStandsOnALetterWaitsForTheOther)
{
    SortedLatin latin;
    EXPECT_EQ(latin.compare("_-_ab", "ab_"), 1);
    EXPECT_EQ(latin.compare("acx", "a---bx"), step('b', 'c'));
    EXPECT_EQ(latin.compare("a---cx", "abx"), step('b', 'c'));
    // Deliberate: the rest of the longer text decides where the other one is used up.
    EXPECT_EQ(latin.compare("s-ejd", "st"), 1);
    EXPECT_EQ(latin.compare("ac", "a---b"), -1);
    EXPECT_EQ(latin.compare("a_b", "ab"), 1);
}

TEST(Collation, APageWithoutWeightsIsSkipped)
{
    const WorkingMemory memory;
    SortBuilder order = latinSort();
    order.silentPage(0x20);
    SortLocale locale(latinPage(), std::move(order));
    const TSChar16 with[] = {'a', 0x2010, 0x2011, 'b', 'c', 'd'};
    const TSChar16 without[] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(TSStrcollU(locale.handle(), with, 6, without, 4, 0), 0);
}

TEST(Collation, AContractionThatBeginsWithACharacterWithoutWeightsIsFound)
{
    const WorkingMemory memory;
    SortBuilder order = latinSort();
    order.silentPage(0x20).contraction(0x2010, 'a', {letterWeight('c')});
    SortLocale locale(latinPage(), std::move(order));
    const TSChar16 pair[] = {0x2010, 'a'};
    const TSChar16 letter[] = {'c'};
    EXPECT_EQ(TSStrcollU(locale.handle(), pair, 2, letter, 1, 0), 0);
    EXPECT_EQ(TSStrcollU(locale.handle(), pair, 1, letter, 0, 0), 0);
}

TEST(Collation, AContractionIsOneLetter)
{
    SortBuilder order = latinSort();
    order.contraction('c', 'h', {static_cast<std::uint16_t>(letterWeight('c') + 1)});
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("ch", "cz"), 1);
    EXPECT_EQ(latin.compare("ch", "d"), letterWeight('c') + 1 - letterWeight('d'));
    EXPECT_EQ(latin.compare("cch", "ccz"), 1) << "the first c was read ahead";
    EXPECT_EQ(latin.compare("c", "ch"), -1);
    EXPECT_EQ(latin.compare("hch", "hch"), 0);
}

// Deliberate: a character that was read ahead does not move the position.
TEST(Collation, PositionsInASortWithContractionsCountFreshReads)
{
    SortBuilder order = latinSort();
    order.contraction('q', 'q', {letterWeight('q')});
    SortedLatin latin(std::move(order));
    // The positions are those of the first fresh read in both, so that the weights decide.
    EXPECT_EQ(latin.compare("ab-", "a'b"), 1);
    SortedLatin plain;
    EXPECT_GT(plain.compare("ab-", "a'b"), 1 - 1) << "position 3 comes behind position 2";
    EXPECT_LT(latin.compare("ab'", "a-b"), 0);
    EXPECT_GT(plain.compare("ab'", "a-b"), 0);
    EXPECT_EQ(latin.compare("qq-", "q-"), 3 - 1) << "a contraction counts for two";
}

TEST(Collation, AnExpansionIsTwoLetters)
{
    SortedLatin latin;
    EXPECT_EQ(latin.compare("a\xDFz", "assz"), 1) << "level 2 of the first element";
    EXPECT_EQ(latin.compare("a\xDFz", "asrz"), step('r', 's'));
    EXPECT_EQ(latin.compare("a\xDFz", "astz"), -step('s', 't'));
    EXPECT_EQ(latin.compare("\xDF\xDF", "\xDF\xDF"), 0);
}

// Deliberate: where both texts end together the second element of one of them is lost.
TEST(Collation, AnExpansionAtTheVeryEndCountsWithItsFirstElement)
{
    SortBuilder order = latinSort();
    order.expansion(0xB2, {letterWeight('s')}, {letterWeight('z')});
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("a\xB2", "as"), 0);
    EXPECT_EQ(latin.compare("as", "a\xB2"), 0);
    EXPECT_EQ(latin.compare("a\xB2", "asz"), 0);
    EXPECT_EQ(latin.compare("a\xB2", "asy"), step('y', 'z'));
    EXPECT_EQ(latin.compare("a\xB2", "a\xB2"), 0);
    EXPECT_EQ(latin.compare("a\xB2", "a\xB2z"), -1);
    EXPECT_EQ(latin.compare("a\xB2z", "asz"), 1);
}

// An expansion is one character, so that what follows it stands at another position than behind two
// letters, also where the rest of both texts is the same.
TEST(Collation, PositionsBehindAnExpansionAreThoseOfEachText)
{
    SortBuilder order = latinSort();
    order.expansion(0xB2, {letterWeight('s')}, {letterWeight('s')});
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("\xB2", "s"), 0);
    EXPECT_EQ(latin.compare("\xB2x", "ssx"), 0);
    EXPECT_EQ(latin.compare("\xB2-", "ss-"), 2 - 3);
    EXPECT_EQ(latin.compare("ss-x", "\xB2-x"), 3 - 2);
    EXPECT_EQ(latin.compare("x\xB2-ss", "xss-\xB2"), 3 - 4);
    EXPECT_EQ(latin.compare("\xB2ss-", "ss\xB2-"), 0) << "in step again";
}

// Deliberate: a text that is at its end loses against a letter, whatever it still holds.
TEST(Collation, AHeldSecondElementDoesNotSaveATextAtItsEnd)
{
    SortBuilder order = latinSort();
    order.expansion(0xB2, {0, 3, 1}, {letterWeight('a')});
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("a", "\xB2"), 1);
    EXPECT_EQ(latin.compare("\xB2", "a"), -1);
    EXPECT_EQ(latin.compare("ab", "\xB2"
                                  "b"),
              1 - 3)
        << "with a letter behind it, it counts";
}

TEST(Collation, AccentsThatAreBackwardAreComparedInReverse)
{
    SortBuilder order = latinSort();
    // Three letters that differ on level 2, backward there; a and b are forward.
    order.letter('1', {0x0300, 2, 1}, kBackward2).letter('2', {0x0300, 3, 1}, kBackward2);
    order.letter('3', {0x0300, 4, 1}, kBackward2);
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("a123b", "a321b"), 4 - 2) << "from the last accent on";
    EXPECT_EQ(latin.compare("a213b", "a123b"), 2 - 3);
    EXPECT_EQ(latin.compare("\xE4"
                            "123b",
                            "a321b"),
              2 - 1)
        << "the letters around them stay in place";
    EXPECT_EQ(latin.compare("123\xE4", "321a"), 4 - 2);
    EXPECT_EQ(latin.compare("1a3", "3a1"), 2 - 4) << "a letter closes the run";
}

TEST(Collation, ALevelCanBeBackwardThroughout)
{
    SortBuilder order;
    for (char letter = 'a'; letter <= 'z'; ++letter)
        order.letter(static_cast<TSChar16>(letter), {letterWeight(letter)}, kBackward2);
    order.letter(0xE4, {letterWeight('a'), 2}, kBackward2)
        .letter(0xC4, {letterWeight('o'), 3}, kBackward2);
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("\xE4to", "at\xC4"), 1 - 3) << "the last accent counts";
    EXPECT_EQ(latin.compare("at\xC4", "\xE4to"), 3 - 1);
    EXPECT_EQ(latin.compare("\xE4to", "ato"), 2 - 1);
    EXPECT_EQ(latin.compare("x\xE4\xE4x", "xa\xE4x"), 2 - 1);
    EXPECT_EQ(latin.compare("\xE4to", "atp"), -step('o', 'p'));
}

TEST(Collation, EachLevelHasADirectionOfItsOwn)
{
    SortBuilder order = latinSort();
    order.letter('1', {0x0300, 1, 2}, kBackward3).letter('2', {0x0300, 1, 3}, kBackward3);
    order.special('3', 0x0202, kBackward4).special('4', 0x0203, kBackward4);
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("12", "21"), 3 - 2);
    EXPECT_EQ(latin.compare("a12", "a21"), 3 - 2);
    EXPECT_EQ(latin.compare("34", "43"), 3 - 2) << "the second position first, with its weight";
}

// Deliberate: also if the strings differ earlier.
TEST(Collation, OneBackwardLetterStopsAllEarlyResults)
{
    SortBuilder order = latinSort();
    order.letter('1', {0x0300, 1, 1}, kBackward1);
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("ab", "ac1"), -step('b', 'c')) << "before it is seen";
    EXPECT_EQ(latin.compare("1b", "az"), 3 - 2) << "the high bytes of the weights";
    EXPECT_EQ(latin.compare("a1", "b1"), -step('a', 'b')) << "ended before";
    EXPECT_EQ(latin.compare("1a", "1b"), letterWeight('a') - letterWeight('b'));
    SortBuilder two = latinSort();
    two.letter('1', {0x0300, 1, 1}, kBackward1).letter('2', {0x0401, 1, 1}, kBackward1);
    SortedLatin reversed(std::move(two));
    EXPECT_EQ(reversed.compare("12", "21"), 4 - 3);
}

// Deliberate: of level 1 runs where one begins the other, level 2 decides.
TEST(Collation, BackwardLevel1RunsOfUnequalLengthDoNotDecide)
{
    SortBuilder order = latinSort();
    order.letter('1', {0x0300, 0, 1}, kBackward1).letter('2', {0x0300, 0, 0}, kBackward1);
    order.letter('3', {0x0300, 5, 0}, kBackward1);
    SortedLatin latin(std::move(order));
    EXPECT_EQ(latin.compare("22", "2"), 0) << "nothing on the other levels";
    EXPECT_EQ(latin.compare("2", "13"), -1);
    EXPECT_EQ(latin.compare("3", "222"), 1) << "the shorter run has the accent";
}

TEST(Collation, WeightsByRule)
{
    const WorkingMemory memory;
    SortBuilder order = latinSort();
    order.level1Page(0x4E, 0x3000).level4Page(0x20, 0x0100).page(0x30, 6, 0x0400);
    order.level1Page(0x4F, 0xFFFF).page(0x31, 3, 0x0400).page(0x32, 5, 0x0400).page(0x33, 7);
    SortLocale locale(latinPage(), std::move(order));
    const auto compare = [&](std::vector<TSChar16> first, std::vector<TSChar16> second) {
        return TSStrcollU(locale.handle(), first.data(), static_cast<int>(first.size()),
                          second.data(), static_cast<int>(second.size()), 0);
    };
    EXPECT_EQ(compare({0x4E05}, {0x4E01}), 4);
    EXPECT_EQ(compare({0x4E00}, {'a'}), 0x3000 - letterWeight('a'));
    EXPECT_EQ(compare({'a', 0x2015}, {'a', 0x2010}), 5) << "level 4, at one position";
    EXPECT_EQ(compare({0x3001}, {'a'}), 0x0401 - letterWeight('a')) << "level 1 comes first";
    EXPECT_EQ(compare({0x4F00}, {'a'}), 0xFFFF - letterWeight('a'));
    EXPECT_EQ(compare({0x4F01}, {}), 0) << "the weight after 0xFFFF is none";
    for (const TSChar16 silent : std::vector<TSChar16>{0x3101, 0x3201, 0x3301})
        EXPECT_EQ(compare({silent, 'a', 'b'}, {'a', 'b'}), 0)
            << "no weights, whatever the other bits say";
}

TEST(Collation, LengthsCanCountCharacters)
{
    const WorkingMemory memory;
    SortBuilder order = latinSort();
    order.level1Page(0xFF, 0x4000);
    SortLocale wide(widePage(), std::move(order));
    EXPECT_EQ(TSStrcoll(wide.handle(),
                        "\x82\x81"
                        "bc",
                        2,
                        "\x82\x81"
                        "bd",
                        2, TS_OPT_CHAR_COUNT),
              0);
    EXPECT_EQ(TSStrcoll(wide.handle(),
                        "\x82\x81"
                        "bc",
                        3,
                        "\x82\x81"
                        "bd",
                        3, TS_OPT_CHAR_COUNT),
              -step('c', 'd'));
    const TSChar32 packed[] = {'a', 'b', 0};
    EXPECT_EQ(TSWcscoll(wide.handle(), packed, 1, packed, 2, TS_OPT_CHAR_COUNT), -1);
    const TSChar16 units[] = {'a', 'b', 0};
    EXPECT_EQ(TSStrcollU(wide.handle(), units, 1, units, 2, TS_OPT_CHAR_COUNT), 0);
    EXPECT_EQ(wide.record.lastError, TS_ERR_ARGUMENT);
}

TEST(Collation, EveryNegativeLengthIsUpToTheTerminator)
{
    SortedLatin latin;
    for (const std::int32_t length : {-1, -2, INT32_MIN})
        EXPECT_EQ(TSStrcoll(latin.locale.handle(), "abc", length, "abd", length, 0),
                  -step('c', 'd'));
}

TEST(Collation, ANullLocaleIsTheDefaultOne)
{
    SortedLatin latin;
    tsDefaultLocale = latin.locale.handle();
    EXPECT_EQ(TSStrcoll(nullptr, "a", -1, "b", -1, 0), -step('a', 'b'));
    tsDefaultLocale = nullptr;
}

TEST(Collation, TheBinarySortComparesByCode)
{
    const WorkingMemory memory;
    HandLocale locale(latinPage());
    const TSChar16 units[] = {'a', 'B', 0};
    const TSChar32 packed[] = {'a', 'B', 0};
    EXPECT_EQ(TSStrcoll(locale.handle(), "a", -1, "B", -1, 0), 'a' - 'B');
    EXPECT_EQ(TSStrcoll(locale.handle(), "a", -1, "B", -1, TS_OPT_IGNORE_CASE), -1);
    EXPECT_EQ(TSStrcoll(locale.handle(), "a ", -1, "a", -1, TS_OPT_STRIP_BLANKS), 0);
    EXPECT_EQ(locale.record.lastError, TS_ERR_NONE);
    EXPECT_EQ(TSStrcollU(locale.handle(), units, 1, units + 1, 1, 0), 'a' - 'B');
    EXPECT_EQ(TSWcscoll(locale.handle(), packed, 1, packed + 1, 1, 0), 'a' - 'B');
    // Deliberate: what the comparison by code does not know is taken away, width among it.
    EXPECT_EQ(TSWcscoll(locale.handle(), packed, 1, packed + 1, 1, TS_OPT_IGNORE_WIDTH), -1);
    EXPECT_EQ(locale.record.lastError, TS_ERR_NONE);
}

TEST(Collation, AnObjectOfAnotherTypeOrdersByCode)
{
    const WorkingMemory memory;
    HandLocale locale(latinPage());
    locale.record.flags = static_cast<std::uint16_t>(locale.record.flags & ~kLocaleBinarySort);
    TSObject object = locale.page.object();
    object.type = TS_OBJ_CODEPAGE;
    locale.record.sort = &object;
    EXPECT_EQ(TSStrcoll(locale.handle(), "a\xE4", -1, "aB", -1, 0), 0xE4 - 'B');
    TSObject empty{};
    empty.type = TS_OBJ_SORT;
    locale.record.sort = &empty;
    EXPECT_EQ(TSStrcoll(locale.handle(), "ab", -1, "abc", -1, 0), -1);
    char key[8];
    EXPECT_EQ(SortedLatin::hex(key, TSStrxfrm(locale.handle(), key, sizeof key, "ab", -1, 0)),
              "00 61 00 62 00 00 00");
}

} // namespace
} // namespace vlx::test
