// TSMapStringEx.
#include <gtest/gtest.h>
#include <string>

#include "frame/globals.hpp"
#include "mapstr/hand_pages.hpp"

namespace vlx::test {
namespace {

// In text: ( enters the multi-byte state, ) leaves it.
std::string shifted(std::string text)
{
    for (char& byte : text)
        byte = byte == '(' ? '\x0E' : byte == ')' ? '\x0F' : byte;
    return text;
}

struct Call {
    std::string source;
    std::int32_t sourceState = 0;
    std::int32_t state = 0;
    std::int32_t size = 512;
    std::int32_t length = -2; // all of the source
};

// The bytes written, by the result; in a counted call the area tells.
std::string mapped(TSLocale* locale, const Call& call, std::uint32_t mapping, std::int32_t* result)
{
    const std::string source = shifted(call.source);
    std::string buffer(1024, '#');
    *result = TSMapStringEx(
        locale, buffer.data(), call.state, call.size, source.data(), call.sourceState,
        call.length == -2 ? static_cast<std::int32_t>(source.size()) : call.length, mapping);
    const std::size_t end = buffer.find_last_not_of('#');
    return end == std::string::npos ? "" : buffer.substr(0, end + 1);
}

class MapStringEx : public testing::Test {
  protected:
    void expect(TSLocale* locale, const Call& call, std::uint32_t mapping,
                const std::string& wanted)
    {
        std::int32_t result = 0;
        EXPECT_EQ(mapped(locale, call, mapping, &result), shifted(wanted)) << call.source;
        EXPECT_EQ(result, static_cast<std::int32_t>(wanted.size())) << call.source;
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
    void expectCount(const Call& call, std::uint32_t mapping, const std::string& wanted,
                     std::int32_t count)
    {
        std::int32_t result = 0;
        EXPECT_EQ(mapped(plain_.handle(), call, mapping | TS_OPT_CHAR_COUNT, &result),
                  shifted(wanted))
            << call.source;
        EXPECT_EQ(result, count) << call.source;
    }

    HandLocale plain_{shiftPage()};
};

TEST_F(MapStringEx, InAnotherLocaleTheStatesDoNotCount)
{
    HandLocale wide(widePage());
    expect(wide.handle(), {"a\x82\x81", 1, 1}, TS_MAP_UPPER, "A\x82\x60");
    HandLocale latin(latinPage());
    expect(latin.handle(), {"ab", 1, 1}, TS_MAP_UPPER, "AB");
}

TEST_F(MapStringEx, AMappingThatIsNotInTheListIsRefused)
{
    std::int32_t result = 0;
    for (const std::uint32_t mapping : {0x80000026u, 0x1u, 0x00000025u}) {
        EXPECT_EQ(mapped(plain_.handle(), {"a"}, mapping, &result), "");
        EXPECT_EQ(result, -1);
        EXPECT_EQ(plain_.record.lastError, TS_ERR_ARGUMENT);
    }
}

TEST_F(MapStringEx, CaseFollowsTheStates)
{
    expect(plain_.handle(), {"ab(\x42\x81\x42\x81)c"}, TS_MAP_UPPER, "AB(B`B`)C");
    expect(plain_.handle(), {"AB(B`)C"}, TS_MAP_LOWER, "ab(\x42\x81)c");
    expect(plain_.handle(), {"\x42\x81)c", 1, 0}, TS_MAP_UPPER, "(B`)C");
    expect(plain_.handle(), {"\x42\x81)c", 1, 1}, TS_MAP_UPPER, "B`)C");
    expect(plain_.handle(), {"c", 0, 1}, TS_MAP_UPPER, ")C");
}

TEST_F(MapStringEx, ShiftBytesOfTheSourceAreNotCopied)
{
    expect(plain_.handle(), {"a(\x42\x81)b(\x42\x81"}, TS_MAP_UPPER, "A(B`)B(B`");
}

TEST_F(MapStringEx, AShiftByteBehindAnotherIsACharacter)
{
    expect(plain_.handle(), {")(ab"}, TS_MAP_UPPER, "(AB");
}

TEST_F(MapStringEx, NothingClosesTheText)
{
    expect(plain_.handle(), {"a(\x42\x81)"}, TS_MAP_UPPER, "A(B`");
    expect(plain_.handle(), {"a("}, TS_MAP_UPPER, "A");
}

TEST_F(MapStringEx, WidthChangesTheState)
{
    expect(plain_.handle(), {"A a"}, TS_MAP_FULL_WIDTH, "(\x42\x60\x41\x40\x42\x81");
    expect(plain_.handle(), {"(B`)z(A@)"}, TS_MAP_HALF_WIDTH, "Az ");
    expect(plain_.handle(), {"z(CC)A"}, TS_MAP_FULL_WIDTH, "z(CCB`");
}

TEST_F(MapStringEx, DigitsAskInTheStateOfTheSource)
{
    expect(plain_.handle(), {"5(BPB`)5"}, TS_MAP_DIGITS, "51(B`)5");
}

TEST_F(MapStringEx, TheShiftByteCountsInTheFit)
{
    const Call call{"a(\x42\x81\x42\x81)b"};
    const std::string whole = "A(B`B`)B";
    const std::size_t wanted[] = {0, 1, 1, 1, 4, 4, 6, 6, 8, 8};
    for (std::int32_t size = 0; size < 10; ++size) {
        Call sized = call;
        sized.size = size;
        expect(plain_.handle(), sized, TS_MAP_UPPER, whole.substr(0, wanted[size]));
    }
    for (const std::int32_t size : {-1, INT32_MIN}) {
        Call sized = call;
        sized.size = size;
        expect(plain_.handle(), sized, TS_MAP_UPPER, "");
    }
}

TEST_F(MapStringEx, ACutCharacterEndsThePass)
{
    expect(plain_.handle(), {std::string("a(\x42\x81\x42)").substr(0, 5)}, TS_MAP_UPPER, "A(B`");
    expect(plain_.handle(), {"B", 1}, TS_MAP_UPPER, "");
}

TEST_F(MapStringEx, ANegativeLengthTakesInTheTerminator)
{
    std::int32_t result = 0;
    EXPECT_EQ(mapped(plain_.handle(), {"ab(\x42\x81)", 0, 0, 512, -1}, TS_MAP_UPPER, &result),
              std::string("AB\x0E\x42\x60\x0F\0", 7));
    EXPECT_EQ(result, 7);
}

TEST_F(MapStringEx, CopyBringsTheStatesTogether)
{
    expect(plain_.handle(), {"\x42\x81)c", 1, 0}, TS_MAP_COPY, "(\x42\x81)c");
    expect(plain_.handle(), {"\x42\x81)c", 1, 0}, 0, "(\x42\x81)c");
}

TEST_F(MapStringEx, PairsReachThroughAShiftByte)
{
    HandLocale paired(shiftPage(), {{'d', 'z', 'D', 0}, {'x', 0xFF41, 0xFF21, 'y'}},
                      {{'I', 0, 'j', 0}});
    expect(paired.handle(), {"dzd"}, TS_MAP_UPPER, "DD");
    expect(paired.handle(), {"x(\x42\x81\x42\x81)x"}, TS_MAP_UPPER, "(B`)y(B`)X");
    expect(paired.handle(), {"AIBC"}, TS_MAP_LOWER, "ajbc");
}

TEST_F(MapStringEx, EachResultOfAPairGoesInItsState)
{
    HandLocale paired(shiftPage(), {{'s', 0, 'S', 'Z'}, {'w', 0, 0xFF21, 'W'}});
    expect(paired.handle(), {"as"}, TS_MAP_UPPER, "ASZ");
    expect(paired.handle(), {"s", 0, 1}, TS_MAP_UPPER, ")SZ");
    expect(paired.handle(), {"aw"}, TS_MAP_UPPER, "A(B`)W");
    expect(paired.handle(), {"aw", 0, 0, 5}, TS_MAP_UPPER, "A");
    expect(paired.handle(), {"aw", 0, 0, 6}, TS_MAP_UPPER, "A(B`)W");
}

TEST_F(MapStringEx, ACountedCallCountsCharactersAndTheirShiftBytes)
{
    const Call call{"ab(\x42\x81\x42\x81)c"};
    const std::string whole = "AB(B`B`)C";
    const std::size_t wanted[] = {0, 1, 2, 5, 7, 9, 9};
    for (std::int32_t size = 0; size < 7; ++size) {
        Call sized = call;
        sized.size = size;
        sized.length = 5;
        expectCount(sized, TS_MAP_UPPER, whole.substr(0, wanted[size]), std::min(size, 5));
    }
    expectCount({"ab(\x42\x81\x42\x81)c", 0, 0, 512, 3}, TS_MAP_UPPER, "AB(B`", 3);
    expectCount({"\x42\x81\x42\x81)c", 1, 1, 512, 2}, TS_MAP_UPPER, "B`B`", 2);
}

TEST_F(MapStringEx, ANullLocaleIsTheDefaultOne)
{
    tsDefaultLocale = plain_.handle();
    std::int32_t result = 0;
    EXPECT_EQ(mapped(nullptr, {"\x42\x81", 1}, TS_MAP_UPPER, &result), "\x0E\x42\x60");
    tsDefaultLocale = nullptr;
}

} // namespace
} // namespace vlx::test
