// What the members that find a character promise, one by one.
#include "strings/pages.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kNoState = 77;

class Find : public StringTest {
  protected:
    std::int32_t state_ = kNoState;
};

TEST_F(Find, ANegativeLengthFindsTheTerminator)
{
    const char text[] = "abc";
    for (TSLocale* locale : all_) {
        EXPECT_EQ(TSStrchr(locale, text, -1, "", 0), text + 3);
        EXPECT_EQ(TSStrchr(locale, text, -1, "", TS_OPT_LAST_MATCH), text + 3);
        EXPECT_EQ(TSStrchr(locale, text, 3, "", 0), nullptr);
        EXPECT_EQ(TSStrchrEx(locale, text, 0, -1, "", 0, &state_, 0), text + 3);
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
}

// Deliberate: the two searches read a negative length in two ways.
TEST_F(Find, TheLastMatchInUnitsIsNeverTheTerminator)
{
    const TSChar16 unicode[] = {'a', 'b', 0};
    const TSChar32 packed[] = {'a', 'b', 0};
    EXPECT_EQ(TSStrchrU(&single_, unicode, -1, 0, 0), unicode + 2);
    EXPECT_EQ(TSStrchrU(&single_, unicode, -1, 0, TS_OPT_LAST_MATCH), nullptr);
    EXPECT_EQ(TSStrchrU(&single_, unicode, 3, 0, TS_OPT_LAST_MATCH), unicode + 2);
    EXPECT_EQ(TSWcschr(&single_, packed, -1, 0, 0), packed + 2);
    EXPECT_EQ(TSWcschr(&single_, packed, -1, 0, TS_OPT_LAST_MATCH), nullptr);
    EXPECT_EQ(TSWcschr(&single_, packed, 3, 0, TS_OPT_LAST_MATCH), packed + 2);
}

TEST_F(Find, ALengthInCharactersIsNoLengthInBytes)
{
    const char text[] = "\x81\x40\x81\x41z";
    EXPECT_EQ(TSStrchr(&double_, text, 2, "\x81\x41", TS_OPT_CHAR_COUNT), text + 2);
    EXPECT_EQ(TSStrchr(&double_, text, 2, "\x81\x41", 0), nullptr);
    EXPECT_EQ(TSStrchr(&double_, text, 2, "z", TS_OPT_CHAR_COUNT), nullptr);
    EXPECT_EQ(TSStrchr(&double_, text, 3, "z", TS_OPT_CHAR_COUNT), text + 4);
}

TEST_F(Find, NoLengthFindsNothingWithoutAnError)
{
    const TSChar16 unicode[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    for (TSLocale* locale : all_) {
        EXPECT_EQ(TSStrchr(locale, "a", 0, "a", 0), nullptr);
        EXPECT_EQ(TSStrchrEx(locale, "a", 0, 0, "a", 0, &state_, 0), nullptr);
        EXPECT_EQ(TSStrchrU(locale, unicode, 0, 'a', 0), nullptr);
        EXPECT_EQ(TSWcschr(locale, packed, 0, 'a', TS_OPT_LAST_MATCH), nullptr);
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
    EXPECT_EQ(state_, kNoState);
}

TEST_F(Find, ATrailByteIsNoMatch)
{
    const char text[] = "\x81z\x81\x81z";
    EXPECT_EQ(TSStrchr(&double_, text, -1, "z", 0), text + 4);
    EXPECT_EQ(TSStrchr(&double_, text, -1, "\x81z", TS_OPT_LAST_MATCH), text);
}

TEST_F(Find, ACharacterThatTheLengthCutsEndsTheWalk)
{
    const char text[] = "a\x81\x40";
    EXPECT_EQ(TSStrchr(&double_, text, 2, "\x81\x40", 0), nullptr);
    EXPECT_EQ(TSStrchr(&double_, text, 3, "\x81\x40", 0), text + 1);
}

TEST_F(Find, ACharacterThatTheTerminatorCutsHidesTheTerminator)
{
    EXPECT_EQ(TSStrchr(&double_, "a\x81", -1, "", 0), nullptr);
}

TEST_F(Find, OtherOptionsAreRefused)
{
    const auto accepts = [](std::uint32_t options) {
        options &= ~TS_OPT_CHAR_COUNT;
        return options == 0 || options == TS_OPT_LAST_MATCH;
    };
    const TSChar16 unicode[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    forRefusedOptions(accepts, [&](std::uint32_t options) {
        for (TSLocale* locale : all_) {
            EXPECT_EQ(TSStrchr(locale, "a", -1, "a", options), nullptr) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            locale->lastError = kUntouchedError;
            EXPECT_EQ(TSStrchrEx(locale, "a", 0, -1, "a", 0, &state_, options), nullptr) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            locale->lastError = kUntouchedError;
            EXPECT_EQ(TSStrchrU(locale, unicode, -1, 'a', options), nullptr) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            locale->lastError = kUntouchedError;
            EXPECT_EQ(TSWcschr(locale, packed, -1, 'a', options), nullptr) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
        }
    });
    EXPECT_EQ(state_, kNoState);
}

TEST_F(Find, EveryAcceptedOptionIsAccepted)
{
    const char text[] = "aba";
    const TSChar16 unicode[] = {'a', 'b', 'a', 0};
    const TSChar32 packed[] = {'a', 'b', 'a', 0};
    for (const std::uint32_t options :
         {0U, TS_OPT_CHAR_COUNT, TS_OPT_LAST_MATCH, TS_OPT_LAST_MATCH | TS_OPT_CHAR_COUNT}) {
        const int wanted = (options & TS_OPT_LAST_MATCH) != 0 ? 2 : 0;
        for (TSLocale* locale : all_) {
            EXPECT_EQ(TSStrchr(locale, text, 3, "a", options), text + wanted);
            EXPECT_EQ(TSStrchrEx(locale, text, 0, 3, "a", 0, &state_, options), text + wanted);
            EXPECT_EQ(TSStrchrU(locale, unicode, 3, 'a', options), unicode + wanted);
            EXPECT_EQ(TSWcschr(locale, packed, 3, 'a', options), packed + wanted);
            EXPECT_EQ(locale->lastError, TS_ERR_NONE);
        }
    }
}

TEST_F(Find, NoLocaleIsTheDefaultLocale)
{
    tsDefaultLocale = &stateful_;
    const char text[] = "ab";
    const TSChar16 unicode[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    EXPECT_EQ(TSStrchr(nullptr, text, -1, "b", 0), text + 1);
    EXPECT_EQ(TSStrchrEx(nullptr, text, 0, -1, "b", 0, &state_, 0), text + 1);
    EXPECT_EQ(TSStrchrU(nullptr, unicode, -1, 'a', 0), unicode);
    EXPECT_EQ(TSWcschr(nullptr, packed, -1, 'a', 0), packed);
    EXPECT_EQ(stateful_.lastError, TS_ERR_NONE);
    EXPECT_EQ(TSWcschr(nullptr, packed, -1, 'a', 1), nullptr);
    EXPECT_EQ(stateful_.lastError, TS_ERR_ARGUMENT);
}

TEST_F(Find, ShiftBytesSetTheStateAndAreNoCandidates)
{
    const char text[] = "a\x0E\x42\x43\x0F\x42";
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 0, -1, "\x42", 0, &state_, 0), text + 5);
    EXPECT_EQ(state_, 0);
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 0, -1, "\x42\x43", 1, &state_, 0), text + 2);
    EXPECT_EQ(state_, 1);
    state_ = kNoState;
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 0, -1, "\x43", 0, &state_, 0), nullptr);
    EXPECT_EQ(state_, kNoState);
}

TEST_F(Find, ALeadingShiftByteOfTheCharacterSoughtTellsItsState)
{
    const char text[] = "\x42\x43\x0E\x42\x43\x0F";
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 0, -1, "\x0E\x42\x43", 0, &state_, 0), text + 3);
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 0, -1, "\x0F\x43", 1, &state_, 0), text + 1);
    EXPECT_EQ(state_, 0);
}

TEST_F(Find, TheStateIsThatOfTheLastMatch)
{
    const char text[] = "\x41\x42\x0F\x42\x0E\x41\x42";
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 1, 7, "\x41\x42", 1, &state_, TS_OPT_LAST_MATCH),
              text + 5);
    EXPECT_EQ(state_, 1);
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 1, 7, "\x42", 0, &state_, TS_OPT_LAST_MATCH), text + 3);
    EXPECT_EQ(state_, 0);
}

TEST_F(Find, NobodyHasToTakeTheStateOfAMatch)
{
    const char text[] = "a\x0E\x42\x43\x0F\x42";
    EXPECT_EQ(TSStrchrEx(&stateful_, text, 0, -1, "\x42", 0, nullptr, 0), text + 5);
    EXPECT_EQ(TSStrchrEx(&single_, text, 0, -1, "a", 0, nullptr, 0), text);
}

TEST_F(Find, ALocaleThatIsNotStatefulStoresNoState)
{
    const char text[] = "a\x81\x40";
    EXPECT_EQ(TSStrchrEx(&double_, text, 1, -1, "\x81\x40", 0, &state_, 0), text + 1);
    EXPECT_EQ(TSStrchrEx(&single_, text, 1, -1, "a", 0, &state_, 0), text);
    EXPECT_EQ(state_, kNoState);
}

TEST_F(Find, TheFlagOfTheLocaleDecidesAndNotThePage)
{
    double_.flags = kLocaleSingleByte;
    const char text[] = "\x81z";
    EXPECT_EQ(TSStrchr(&double_, text, -1, "z", 0), text + 1);
}

} // namespace
} // namespace vlx::test
