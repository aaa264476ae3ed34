// What the members that take a token promise, one by one.
#include "strings/pages.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kNoState = 77;

class Token : public StringTest {
  protected:
    // TSStrtok on a string that is put into the area first.
    char* take(TSLocale& locale, std::string_view string, std::int32_t length, const char* set,
               std::uint32_t options = 0)
    {
        area_ = Area(string);
        length_ = length;
        next_ = area_.at() + 1;
        return TSStrtok(&locale, area_.at(), &length_, set, -1, &next_, options);
    }

    // TSStrtokEx from the state 0 into a buffer of some size in a state.
    std::int32_t takeEx(std::string_view string, const char* set, std::int32_t bufferState,
                        std::int32_t size, std::uint32_t options = 0)
    {
        area_ = Area(string);
        token_ = Area();
        length_ = -1;
        return TSStrtokEx(&stateful_, token_.at(), bufferState, size, area_.at(), 0, &length_, set,
                          0, -1, &next_, &nextState_, options);
    }

    Area area_;
    Area token_;
    std::int32_t length_ = 0;
    char* next_ = nullptr;
    std::int32_t nextState_ = kNoState;
};

TEST_F(Token, DelimitersAloneGiveNothing)
{
    for (TSLocale* locale : all_) {
        EXPECT_EQ(take(*locale, bytes(",;,\0"), -1, ";,"), nullptr);
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(next_, nullptr);
        EXPECT_EQ(area_.written(), bytes(",;,\0"));
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
}

TEST_F(Token, ADelimiterAsLastCharacterLeavesNoNext)
{
    for (TSLocale* locale : all_) {
        EXPECT_EQ(take(*locale, bytes("ab,\0"), -1, ","), area_.at());
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(next_, nullptr);
        EXPECT_EQ(area_.written(), bytes("ab\0\0"));
    }
}

TEST_F(Token, ATokenUpToTheEndIsTheRest)
{
    for (TSLocale* locale : all_) {
        EXPECT_EQ(take(*locale, bytes("ab\0"), -1, ","), area_.at());
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(next_, nullptr);
        EXPECT_EQ(take(*locale, bytes(",ab\0"), 3, ","), area_.at() + 1);
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(next_, nullptr);
    }
}

TEST_F(Token, AnEmptyStringIsItsOwnToken)
{
    for (TSLocale* locale : all_) {
        EXPECT_EQ(take(*locale, bytes("\0"), -1, ","), area_.at());
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(next_, nullptr);
        EXPECT_EQ(take(*locale, "a,", 0, ","), area_.at());
    }
}

TEST_F(Token, NextAndLengthAreWhatTheNextCallNeeds)
{
    for (TSLocale* locale : all_) {
        EXPECT_EQ(take(*locale, "a,bb;c", 6, ",;"), area_.at());
        EXPECT_EQ(length_, 4);
        ASSERT_EQ(next_, area_.at() + 2);
        EXPECT_EQ(TSStrtok(locale, next_, &length_, ",;", 2, &next_, 0), area_.at() + 2);
        EXPECT_EQ(length_, 1);
        ASSERT_EQ(next_, area_.at() + 5);
        EXPECT_EQ(TSStrtok(locale, next_, &length_, ",;", 2, &next_, 0), area_.at() + 5);
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(next_, nullptr);
        EXPECT_EQ(area_.written(), bytes("a\0bb\0c"));
    }
}

TEST_F(Token, AllBytesOfADelimiterAreOverwritten)
{
    EXPECT_EQ(take(double_,
                   "a\x81\x40"
                   "b",
                   4, "\x81\x40"),
              area_.at());
    EXPECT_EQ(area_.written(), bytes("a\0\0b"));
    EXPECT_EQ(length_, 1);
    EXPECT_EQ(next_, area_.at() + 3);
}

TEST_F(Token, ADelimiterThatTheLengthCutsIsOverwrittenUpToThere)
{
    EXPECT_EQ(take(double_, "a\x81\x40", 2, ","), area_.at());
    EXPECT_EQ(area_.written(), bytes("a\0\x40"));
    EXPECT_EQ(length_, 0);
    EXPECT_EQ(next_, nullptr);
}

TEST_F(Token, LengthsCountCharactersIfAskedFor)
{
    EXPECT_EQ(take(double_, "\x81\x41,\x81\x42\x81\x43z", 4, ",", TS_OPT_CHAR_COUNT), area_.at());
    EXPECT_EQ(length_, 2);
    EXPECT_EQ(next_, area_.at() + 3);
    EXPECT_EQ(take(double_, bytes("\x81\x41,\x81\x42\x81\x43z\0"), -1, ",", TS_OPT_CHAR_COUNT),
              area_.at());
    EXPECT_EQ(length_, 3);
}

TEST_F(Token, NoStringGivesNothing)
{
    for (TSLocale* locale : all_) {
        length_ = 5;
        next_ = area_.at();
        EXPECT_EQ(TSStrtok(locale, nullptr, &length_, ",", -1, &next_, 0), nullptr);
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(next_, nullptr);
        length_ = 5;
        EXPECT_EQ(TSStrtokEx(locale, token_.at(), 0, 9, nullptr, 0, &length_, ",", 0, -1, &next_,
                             &nextState_, 0),
                  0);
        EXPECT_EQ(length_, 0);
        EXPECT_EQ(token_.written(), "");
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
    TSChar16* unicode = nullptr;
    TSChar32* packed = nullptr;
    length_ = 5;
    EXPECT_EQ(TSStrtokU(&single_, nullptr, &length_, nullptr, 0, &unicode), nullptr);
    EXPECT_EQ(length_, 0);
    length_ = 5;
    EXPECT_EQ(TSWcstok(&single_, nullptr, &length_, nullptr, 0, &packed), nullptr);
    EXPECT_EQ(length_, 0);
}

TEST_F(Token, OtherOptionsAreIgnored)
{
    for (int bit = 0; bit < 32; ++bit) {
        for (TSLocale* locale : all_) {
            EXPECT_EQ(take(*locale, "a,b", 3, ",", 1U << bit), area_.at());
            EXPECT_EQ(locale->lastError, TS_ERR_NONE);
        }
        EXPECT_EQ(takeEx(bytes("a,b\0"), ",", 0, 9, 1U << bit), 1);
        EXPECT_EQ(stateful_.lastError, TS_ERR_NONE);
    }
}

TEST_F(Token, NoLocaleIsTheDefaultLocale)
{
    tsDefaultLocale = &double_;
    char text[] = "a,b";
    TSChar16 unicodeText[] = {'a', ',', 'b', 0};
    TSChar32 packedText[] = {'a', ',', 'b', 0};
    const TSChar16 unicodeSet[] = {',', 0};
    const TSChar32 packedSet[] = {',', 0};
    TSChar16* unicodeNext = nullptr;
    TSChar32* packedNext = nullptr;
    length_ = -1;
    EXPECT_EQ(TSStrtokEx(nullptr, token_.at(), 0, 9, text, 0, &length_, ",", 0, -1, &next_,
                         &nextState_, 0),
              1);
    length_ = -1;
    EXPECT_EQ(TSStrtok(nullptr, text, &length_, ",", -1, &next_, 0), text);
    length_ = -1;
    EXPECT_EQ(TSStrtokU(nullptr, unicodeText, &length_, unicodeSet, -1, &unicodeNext), unicodeText);
    EXPECT_EQ(unicodeNext, unicodeText + 2);
    length_ = -1;
    EXPECT_EQ(TSWcstok(nullptr, packedText, &length_, packedSet, -1, &packedNext), packedText);
    EXPECT_EQ(packedNext, packedText + 2);
    EXPECT_EQ(double_.lastError, TS_ERR_NONE);
}

TEST_F(Token, TheStatefulMemberCopiesAndLeavesTheStringAlone)
{
    const std::string text = bytes("\x0E\x42\x43\x0F,b\0");
    EXPECT_EQ(takeEx(text, ",", 0, 9), 4);
    EXPECT_EQ(token_.written(), bytes("\x0E\x42\x43\x0F\0"));
    EXPECT_EQ(area_.written(), text);
    EXPECT_EQ(length_, 2);
    EXPECT_EQ(next_, area_.at() + 4);
    EXPECT_EQ(nextState_, 0);
}

TEST_F(Token, TheStatefulMemberGoesOnInTheStateOfTheDelimiter)
{
    EXPECT_EQ(takeEx(bytes("a\x0E\x42\x43\x44\x45\0"), "\x0E\x42\x43", 0, 9), 1);
    EXPECT_EQ(token_.written(), bytes("a\0"));
    EXPECT_EQ(next_, area_.at() + 2);
    EXPECT_EQ(nextState_, 1);
    EXPECT_EQ(length_, 4);
    token_ = Area();
    EXPECT_EQ(TSStrtokEx(&stateful_, token_.at(), 0, 9, next_, nextState_, &length_, "\x0E\x42\x43",
                         0, -1, &next_, &nextState_, 0),
              4);
    EXPECT_EQ(token_.written(), bytes("\x0E\x44\x45\x0F\0"));
    EXPECT_EQ(length_, 0);
    EXPECT_EQ(next_, nullptr);
}

TEST_F(Token, NobodyHasToTakeTheStateOfWhatIsNext)
{
    char text[] = "a\x0E\x42\x43\x44\x45";
    char token[9];
    std::int32_t length = 3;
    char* next = nullptr;
    EXPECT_EQ(TSStrtokEx(&stateful_, token, 0, sizeof token, text, 0, &length, "\x0E\x42\x43", 0,
                         -1, &next, nullptr, TS_OPT_CHAR_COUNT),
              1);
    EXPECT_EQ(next, text + 2);
    EXPECT_EQ(length, 2) << "the delimiter and the character behind it";
}

TEST_F(Token, TheStatefulMemberSkipsLeadingDelimiters)
{
    EXPECT_EQ(takeEx(bytes(",,ab,c\0"), ",", 0, 9), 2);
    EXPECT_EQ(token_.written(), bytes("ab\0"));
    EXPECT_EQ(next_, area_.at() + 4);
    EXPECT_EQ(takeEx(bytes(",,\0"), ",", 0, 9), 0);
    EXPECT_EQ(token_.written(), bytes("\0"));
    EXPECT_EQ(length_, 0);
    EXPECT_EQ(next_, nullptr);
}

TEST_F(Token, ATokenThatFillsItsBufferGivesUpACharacterForItsEnd)
{
    const std::string text = bytes("\x0E\x42\x43\x44\x45\x0F,\0");
    EXPECT_EQ(takeEx(text, ",", 0, 6), 4); // room for five bytes, and five taken
    EXPECT_EQ(token_.written().substr(0, 5), bytes("\x0E\x42\x43\x0F\0"));
    EXPECT_EQ(takeEx(text, ",", 0, 7), 6);
    EXPECT_EQ(token_.written(), bytes("\x0E\x42\x43\x44\x45\x0F\0"));
}

TEST_F(Token, AShiftInGoesWithTheCharacterThatIsGivenUp)
{
    EXPECT_EQ(takeEx(bytes("a\x0E\x42\x43\x0F,\0"), ",", 0, 5), 1);
    EXPECT_EQ(token_.written().substr(0, 2), bytes("a\0"));
}

TEST_F(Token, NoBufferIsNotTouched)
{
    EXPECT_EQ(takeEx(bytes("ab,c\0"), ",", 0, 0), 0);
    EXPECT_EQ(takeEx(bytes("ab,c\0"), ",", 1, -1), 0);
    EXPECT_EQ(token_.written(), "");
    EXPECT_EQ(length_, 2);
    EXPECT_EQ(next_, area_.at() + 2);
}

TEST_F(Token, ABufferOfOneByteTakesTheTerminatorAndNothingElse)
{
    EXPECT_EQ(takeEx(bytes("ab,c\0"), ",", 0, 1), 0);
    EXPECT_EQ(token_.written(), bytes("\0"));
    EXPECT_EQ(takeEx(bytes("ab,c\0"), ",", 1, 1), 0);
    EXPECT_EQ(token_.written(), bytes("\0"));
}

TEST_F(Token, TheStatefulMemberCountsCharactersIfAskedFor)
{
    const std::string text = bytes("\x0E\x42\x43\x44\x45\x0F,abc\0");
    EXPECT_EQ(takeEx(text, ",", 0, 12, TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(token_.written(), bytes("\x0E\x42\x43\x44\x45\x0F\0"));
    EXPECT_EQ(length_, 4);
    EXPECT_EQ(next_, area_.at() + 6);
}

// Two calls in a row, with the length that the first one gave: it counts what the second one takes.
TEST_F(Token, ALengthInCharactersCanBePassedBackIn)
{
    EXPECT_EQ(takeEx(bytes("a,\x0E\x42\x43\x44\x45\x0F\0"), ",", 0, 20, TS_OPT_CHAR_COUNT), 1);
    EXPECT_EQ(length_, 3);
}

TEST_F(Token, TheExMemberOfALocaleThatIsNotStatefulCopiesToo)
{
    char text[] = "a\x81\x40,b";
    length_ = -1;
    EXPECT_EQ(TSStrtokEx(&double_, token_.at(), 1, 9, text, 1, &length_, ",", 1, -1, &next_,
                         &nextState_, 0),
              3);
    EXPECT_EQ(token_.written(), bytes("a\x81\x40\0"));
    EXPECT_EQ(text[3], ',');
    EXPECT_EQ(length_, 2);
    EXPECT_EQ(next_, text + 3);
    EXPECT_EQ(nextState_, kNoState);
}

TEST_F(Token, TheExMemberOfALocaleThatIsNotStatefulReadsNoState)
{
    char text[] = "a\x81\x40,b";
    length_ = -1;
    EXPECT_EQ(TSStrtokEx(&double_, token_.at(), 1, 9, text, 1, &length_, ",", 1, -1, &next_,
                         nullptr, TS_OPT_CHAR_COUNT),
              2);
    EXPECT_EQ(length_, 2);
    EXPECT_EQ(next_, text + 3);
}

} // namespace
} // namespace vlx::test
