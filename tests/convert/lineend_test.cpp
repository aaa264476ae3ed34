// What the line ends promise, one by one.
#include "convert/small_pages.hpp"
#include "support/oracle_convert.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kNoState = 77;
constexpr std::uint32_t kAll = TS_EOL_LF | TS_EOL_CRLF | TS_EOL_3 | TS_EOL_4;

// The line ends of the double-byte page are 0x0A, 0x0D, 0x1E and 0x1F, those of the stateful page
// too; the single-byte page has the same byte for all but the carriage return.
class LineEnds : public SmallPages {
  protected:
    LineEnds()
    {
        onDouble_ = localeOn(doubleByte_.lineEnds(0x0A, 0x0D, 0x1E, 0x1F).build());
        onStateful_ = localeOn(stateful_.lineEnds(0x0A, 0x0D, 0x1E, 0x1F).build());
    }

    // Where the line end that is found ends; -1 for none.
    std::ptrdiff_t find(TSLocale* locale, const char* text, std::int32_t length,
                        std::uint32_t options)
    {
        const char* const behind = TSGetEol(locale, text, length, &type_, &length_, options);
        return behind == nullptr ? -1 : behind - text;
    }
    std::ptrdiff_t findEx(TSLocale* locale, const char* text, std::int32_t state,
                          std::int32_t length, std::uint32_t options)
    {
        newState_ = kNoState;
        const char* const behind =
            TSGetEolEx(locale, text, state, length, &type_, &length_, &newState_, options);
        return behind == nullptr ? -1 : behind - text;
    }
    std::ptrdiff_t findU(const Unicode& text, std::int32_t length, std::uint32_t options)
    {
        const TSChar16* const behind =
            TSGetEolU(&onDouble_, text.data(), length, &type_, &length_, options);
        return behind == nullptr ? -1 : behind - text.data();
    }
    std::ptrdiff_t findW(const Packed& text, std::int32_t length, std::uint32_t options)
    {
        const TSChar32* const behind =
            TSGetEolW(&onDouble_, text.data(), length, &type_, &length_, options);
        return behind == nullptr ? -1 : behind - text.data();
    }
    bool found(std::uint32_t type, std::int32_t length) const
    {
        return type_ == type && length_ == length;
    }

    std::uint32_t type_ = 0;
    std::int32_t length_ = 0;
    std::int32_t newState_ = kNoState;
};

TEST_F(LineEnds, WithoutOptionsAreCarriageReturnAndLineFeedAlone)
{
    EXPECT_EQ(find(&onDouble_, "a\nb", 3, 0), -1);
    EXPECT_TRUE(found(TS_EOL_NONE, 0));
    EXPECT_EQ(onDouble_.lastError, TS_ERR_NONE);
    EXPECT_EQ(find(&onDouble_, "a\nb\r\nc", -1, 0), 5);
    EXPECT_TRUE(found(TS_EOL_CRLF, 2));
    EXPECT_EQ(find(&onDouble_, "a\nb\r\nc", 6, TS_OPT_CHAR_COUNT), 5);
}

TEST_F(LineEnds, ALineFeedIsFoundBehindACarriageReturn)
{
    EXPECT_EQ(find(&onDouble_, "a\r\nb", 4, TS_EOL_LF), 3);
    EXPECT_TRUE(found(TS_EOL_LF, 1));
    EXPECT_EQ(find(&onDouble_, "a\r\nb", 4, TS_EOL_LF | TS_EOL_CRLF), 3);
    EXPECT_TRUE(found(TS_EOL_CRLF, 2));
}

TEST_F(LineEnds, ACarriageReturnAloneIsPassed)
{
    EXPECT_EQ(find(&onDouble_, "\ra\r\r\n", 5, TS_EOL_CRLF), 5);
    EXPECT_TRUE(found(TS_EOL_CRLF, 2));
    EXPECT_EQ(find(&onDouble_, "\r\x1E", 2, TS_EOL_CRLF | TS_EOL_3), 2);
    EXPECT_TRUE(found(TS_EOL_3, 1));
}

TEST_F(LineEnds, OneByteForThreeOfThemIsALineFeed)
{
    EXPECT_EQ(find(&onSingle_, "a\nb", 3, kAll), 2);
    EXPECT_TRUE(found(TS_EOL_LF, 1));
    EXPECT_EQ(find(&onSingle_, "a\nb", 3, TS_EOL_3 | TS_EOL_4), 2);
    EXPECT_TRUE(found(TS_EOL_3, 1));
    EXPECT_EQ(find(&onSingle_, "a\nb", 3, TS_EOL_4), 2);
    EXPECT_TRUE(found(TS_EOL_4, 1));
}

// Deliberate: the byte behind the length decides whether a carriage return is a line end.
TEST_F(LineEnds, ACarriageReturnAtTheEndMatchesBeyondTheLength)
{
    EXPECT_EQ(find(&onDouble_, "a\r\nb", 2, TS_EOL_CRLF), 3);
    EXPECT_TRUE(found(TS_EOL_CRLF, 2));
    EXPECT_EQ(find(&onDouble_, "a\rxb", 2, TS_EOL_CRLF), -1);
    EXPECT_EQ(findU({'a', '\r', '\n'}, 2, TS_EOL_CRLF), 3);
    EXPECT_EQ(findW({'a', '\r', '\n'}, 2, TS_EOL_CRLF), 3);
    EXPECT_EQ(findEx(&onStateful_, "a\r\n", 0, 2, TS_EOL_CRLF), 3);
}

TEST_F(LineEnds, ATrailByteIsNoLineEnd)
{
    PageBuilder page(PageShape::kDoubleByte);
    TSLocale locale =
        localeOn(page.asciiHalf().map(0x810A, 0x3000).lineEnds(0x0A, 0x0D, 0x1E, 0x1F).build());
    EXPECT_EQ(find(&locale, "\x81\nb\n", 4, TS_EOL_LF), 4);
    EXPECT_EQ(find(&locale, "\x81\nb\n", -1, TS_EOL_LF), 4);
}

TEST_F(LineEnds, OfAnotherFamilyAreFoundLikeAny)
{
    PageBuilder page(PageShape::kSingleByte);
    TSLocale locale = localeOn(page.ebcdic().lineEnds(0x25, 0x0D, 0x15, 0x41).build());
    EXPECT_EQ(find(&locale, "\x0A\x0D\x25", 3, 0), 3);
    EXPECT_EQ(find(&locale, "\x0A\x15", 2, kAll), 2);
    EXPECT_TRUE(found(TS_EOL_3, 1));
}

TEST_F(LineEnds, TheLengthMayCountCharacters)
{
    EXPECT_EQ(find(&onDouble_, "\x81\x40\x81\x40\n", 2, TS_EOL_LF | TS_OPT_CHAR_COUNT), -1);
    EXPECT_EQ(find(&onDouble_, "\x81\x40\x81\x40\n", 3, TS_EOL_LF | TS_OPT_CHAR_COUNT), 5);
    EXPECT_EQ(find(&onDouble_, "\x81\x40\x81\x40\n", 3, TS_EOL_LF), -1);
    EXPECT_EQ(findEx(&onStateful_, "\x0E\x42\x43\x0F\nx", 0, 2, TS_EOL_LF | TS_OPT_CHAR_COUNT), 5);
    EXPECT_EQ(findU({'a', '\n'}, 1, TS_EOL_LF | TS_OPT_CHAR_COUNT), -1);
    EXPECT_EQ(findW({'a', '\n'}, 2, TS_EOL_LF | TS_OPT_CHAR_COUNT), 2);
}

TEST_F(LineEnds, OfNothingAreNone)
{
    EXPECT_EQ(find(&onDouble_, "\n", 0, kAll), -1);
    EXPECT_EQ(find(&onDouble_, "", -1, kAll), -1);
    EXPECT_TRUE(found(TS_EOL_NONE, 0));
    EXPECT_EQ(findU({'\n'}, 0, kAll), -1);
    EXPECT_TRUE(found(TS_EOL_NONE, 0));
}

TEST_F(LineEnds, OtherOptionsAreRefused)
{
    for (const std::uint32_t options :
         {1U, 8U, 0x1000U, 0x1100U, 0x101U, 0xE01U, 0x4008U, 0x80000200U}) {
        onDouble_.lastError = kUntouchedError;
        EXPECT_EQ(find(&onDouble_, "\r\n", 2, options), -1);
        EXPECT_TRUE(found(TS_EOL_BAD_OPTIONS, 0)) << options;
        EXPECT_EQ(onDouble_.lastError, TS_ERR_ARGUMENT);
        EXPECT_EQ(findU({'\r', '\n'}, 2, options), -1);
        EXPECT_TRUE(found(TS_EOL_BAD_OPTIONS, 0)) << options;
        EXPECT_EQ(findW({'\r', '\n'}, 2, options), -1);
        EXPECT_TRUE(found(TS_EOL_BAD_OPTIONS, 0)) << options;
        EXPECT_EQ(findEx(&onStateful_, "\r\n", 0, 2, options), -1);
        EXPECT_TRUE(found(TS_EOL_BAD_OPTIONS, 0)) << options;
        EXPECT_EQ(newState_, kNoState);
        EXPECT_EQ(onStateful_.lastError, TS_ERR_ARGUMENT);
    }
}

TEST_F(LineEnds, OtherBitsBesideAllFourMasksAreIgnored)
{
    EXPECT_EQ(find(&onDouble_, "a\x1F", 2, kAll | 0x80000001U), 2);
    EXPECT_TRUE(found(TS_EOL_4, 1));
    EXPECT_EQ(onDouble_.lastError, TS_ERR_NONE);
}

TEST_F(LineEnds, LieInTheSingleByteState)
{
    EXPECT_EQ(findEx(&onStateful_, "\x0A\x0A\x0F\x0A", 1, 4, TS_EOL_LF), 4);
    EXPECT_EQ(newState_, 0);
    EXPECT_EQ(findEx(&onStateful_, "\x0E\x0A\x0A", 0, 3, TS_EOL_LF), -1);
    EXPECT_EQ(newState_, kNoState);
    EXPECT_EQ(findEx(&onDouble_, "\n", 1, 1, TS_EOL_LF), 1);
    EXPECT_EQ(newState_, kNoState);
}

TEST_F(LineEnds, OfArraysHaveFixedOrPageValues)
{
    EXPECT_EQ(findU({'a', 0x2029, 0x2028, 0}, -1, kAll), 2);
    EXPECT_TRUE(found(TS_EOL_4, 1));
    EXPECT_EQ(findU({'a', 0x2029, 0x2028, 0}, -1, TS_EOL_3), 3);
    EXPECT_TRUE(found(TS_EOL_3, 1));
    EXPECT_EQ(findU({0x1E, 0x1F, 0}, -1, kAll), -1);
    EXPECT_EQ(findW({0x2028, 0x1F, 0}, -1, kAll), 2);
    EXPECT_TRUE(found(TS_EOL_4, 1));
}

TEST_F(LineEnds, AHitBehindTheLengthOfAnArrayIsThrownAway)
{
    EXPECT_EQ(findU({'\r', 'a', 'b', '\n', '\r', '\n'}, 3, TS_EOL_CRLF | TS_EOL_LF), -1);
    EXPECT_TRUE(found(TS_EOL_NONE, 0));
    EXPECT_EQ(findW({'\r', 'a', 'b', '\n', '\r', '\n'}, 3, TS_EOL_CRLF | TS_EOL_LF), -1);
}

TEST_F(LineEnds, AreWrittenInAFixedOrder)
{
    const auto put = [&](std::uint32_t options) {
        const char* const behind = TSPutEol(&onDouble_, at(), options);
        return static_cast<std::int32_t>(behind - at());
    };
    EXPECT_TRUE(gave(put(0), 2, {'\r', '\n'}, onDouble_));
    EXPECT_TRUE(gave(put(0x1100), 3, {'\n', '\r', '\n'}, onDouble_));
    EXPECT_TRUE(gave(put(kAll), 5, {0x1F, 0x1E, '\n', '\r', '\n'}, onDouble_));
    EXPECT_TRUE(gave(put(TS_EOL_3), 1, {0x1E}, onDouble_));
}

// Deliberate: arrays get the third and the fourth line end in another order than bytes do.
TEST_F(LineEnds, AreWrittenToArraysInAnotherOrder)
{
    Elements<TSChar16> unicode;
    EXPECT_EQ(TSPutEolU(&onDouble_, unicode.at(), kAll | 0x1000), unicode.at() + 5);
    EXPECT_EQ(unicode.written(), (Unicode{'\n', 0x2028, 0x2029, '\r', '\n'}));
    Elements<TSChar32> packed;
    EXPECT_EQ(TSPutEolW(&onDouble_, packed.at(), kAll), packed.at() + 5);
    EXPECT_EQ(packed.written(), (Packed{'\n', 0x1E, 0x1F, '\r', '\n'}));
}

TEST_F(LineEnds, LeaveTheMultiByteStateWhenTheyAreWritten)
{
    const auto put = [&](std::int32_t state, std::uint32_t options) {
        newState_ = kNoState;
        const char* const behind = TSPutEolEx(&onStateful_, at(), state, &newState_, options);
        return static_cast<std::int32_t>(behind - at());
    };
    EXPECT_TRUE(gave(put(1, 0), 3, {0x0F, '\r', '\n'}, onStateful_));
    EXPECT_EQ(newState_, 0);
    EXPECT_TRUE(gave(put(0, TS_EOL_LF), 1, {'\n'}, onStateful_));
    EXPECT_EQ(newState_, 0);
    EXPECT_TRUE(gave(put(2, TS_EOL_LF), 1, {'\n'}, onStateful_));
    EXPECT_EQ(newState_, 0);
    EXPECT_NE(TSPutEolEx(&onDouble_, at(), 1, &(newState_ = kNoState), TS_EOL_LF), nullptr);
    EXPECT_EQ(newState_, kNoState);
}

TEST_F(LineEnds, NeedNoPlaceForTheState)
{
    EXPECT_TRUE(
        gave(static_cast<std::int32_t>(TSPutEolEx(&onStateful_, at(), 1, nullptr, 0) - at()), 3,
             {0x0F, '\r', '\n'}, onStateful_));
    EXPECT_EQ(TSPutEolEx(&onStateful_, at(), 1, nullptr, 1), nullptr);
    EXPECT_EQ(onStateful_.lastError, TS_ERR_ARGUMENT);
    const char* const text = "\x0F\n";
    EXPECT_EQ(TSGetEolEx(&onStateful_, text, 1, 2, &type_, &length_, nullptr, TS_EOL_LF), text + 2);
    EXPECT_TRUE(found(TS_EOL_LF, 1));
}

TEST_F(LineEnds, AreNotWrittenWithOtherOptions)
{
    Elements<TSChar16> unicode;
    Elements<TSChar32> packed;
    for (const std::uint32_t options : {1U, 0x4100U, 0x101U, 0x80000100U}) {
        onDouble_.lastError = kUntouchedError;
        EXPECT_EQ(TSPutEol(&onDouble_, at(), options), nullptr);
        EXPECT_EQ(onDouble_.lastError, TS_ERR_ARGUMENT);
        EXPECT_EQ(TSPutEolU(&onDouble_, unicode.at(), options), nullptr);
        EXPECT_EQ(TSPutEolW(&onDouble_, packed.at(), options), nullptr);
        newState_ = kNoState;
        EXPECT_EQ(TSPutEolEx(&onStateful_, at(), 1, &newState_, options), nullptr);
        EXPECT_EQ(newState_, 0);
        EXPECT_EQ(onStateful_.lastError, TS_ERR_ARGUMENT);
    }
    EXPECT_TRUE(output_.holds({}));
    EXPECT_EQ(unicode.written(), Unicode{});
    EXPECT_EQ(packed.written(), Packed{});
}

TEST_F(LineEnds, TakeTheDefaultLocaleForNull)
{
    tsDefaultLocale = &onStateful_;
    EXPECT_EQ(find(nullptr, "\x1E", 1, kAll), 1);
    EXPECT_EQ(findEx(nullptr, "\x0F\x1E", 1, 2, kAll), 2);
    EXPECT_EQ(newState_, 0);
    const Unicode unicode{0x2028, 0};
    EXPECT_EQ(TSGetEolU(nullptr, unicode.data(), -1, &type_, &length_, kAll), unicode.data() + 1);
    const Packed packed{0x1E, 0};
    EXPECT_EQ(TSGetEolW(nullptr, packed.data(), -1, &type_, &length_, kAll), packed.data() + 1);
    EXPECT_EQ(TSPutEol(nullptr, at(), TS_EOL_3), at() + 1);
    EXPECT_EQ(TSPutEolEx(nullptr, at() + 1, 1, &newState_, TS_EOL_4), at() + 3);
    EXPECT_TRUE(output_.holds({0x1E, 0x0F, 0x1F}));
    Elements<TSChar16> outU;
    EXPECT_EQ(TSPutEolU(nullptr, outU.at(), TS_EOL_3), outU.at() + 1);
    Elements<TSChar32> outW;
    EXPECT_EQ(TSPutEolW(nullptr, outW.at(), TS_EOL_3), outW.at() + 1);
    EXPECT_EQ(outW.written(), (Packed{0x1E}));
}

} // namespace
} // namespace vlx::test
