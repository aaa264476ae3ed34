// What the primitives of a code page promise, one by one.
#include <cstring>
#include <gtest/gtest.h>

#include "chars/codepage.hpp"
#include "chars/situations.hpp"

namespace vlx::test {
namespace {

using oracle::Bytes;

// What a primitive writes for a Unicode value.
Bytes encoded(const TSObject& page, TSChar16 value)
{
    char area[4] = {};
    const std::int32_t count = TSCpUnicodeToMb(&page, value, area);
    return Bytes(area, area + count);
}

TSChar16 decoded(const TSObject& page, const char* text)
{
    return TSCpMbToUnicode(&page, text);
}

Bytes laidOut(TSChar32 value)
{
    char area[4] = {};
    const std::int32_t count = TSCpPutWide(area, value);
    return Bytes(area, area + count);
}

class BuiltinCodePage : public testing::Test {
  protected:
    void SetUp() override
    {
        page_.id = 1;
        page_.type = TS_OBJ_CODEPAGE;
        TSObjManager manager{};
        ASSERT_EQ(TSInstallBuiltin(&manager, &page_), 0);
    }

    unsigned header(std::size_t offset) const { return page_.sections[0][offset]; }
    unsigned header16(std::size_t offset) const { return header(offset) | header(offset + 1) << 8; }

    TSObject page_{};
};

TEST(CodePage, PutWideOfZeroWritesOneZeroByte)
{
    EXPECT_EQ(laidOut(0), Bytes{0});
}

TEST(CodePage, PutWideDropsAZeroByteInsideAValue)
{
    EXPECT_EQ(laidOut(0x00120034), (Bytes{0x12, 0x34}));
    EXPECT_EQ(laidOut(0x12000034), (Bytes{0x12, 0x34}));
    EXPECT_EQ(laidOut(0x12340000), (Bytes{0x12, 0x34, 0x00}));
    EXPECT_EQ(laidOut(0x12345678), (Bytes{0x12, 0x34, 0x56, 0x78}));
}

TEST_F(BuiltinCodePage, ConvertsThroughItsHeader)
{
    EXPECT_EQ(encoded(page_, 0x0041), Bytes{0x01});
    EXPECT_EQ(encoded(page_, 0x0101), Bytes{'?'});
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0x0041), 0x01U);
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0x0101), TSChar32{'?'});
    for (unsigned value = 0; value < 0x100; ++value)
        EXPECT_EQ(TSCpUnicodeToWide(&page_, static_cast<TSChar16>(value)), header(value)) << value;
}

TEST_F(BuiltinCodePage, TakesThePagesAboveFromItsHeaderToo)
{
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0x2028), header(0x100));
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0x2029), header(0x101));
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0x0100), header(0x102));
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0x2027), TSChar32{'?'});
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0x202A), TSChar32{'?'});
    EXPECT_EQ(TSCpUnicodeToWide(&page_, 0xFFFD), TSChar32{'?'});
}

TEST_F(BuiltinCodePage, HasItsSectionThreeAtItsHeader)
{
    EXPECT_EQ(page_.sections[2], page_.sections[0]);
    EXPECT_EQ(page_.sections[1], nullptr);
    EXPECT_EQ(page_.sections[3], nullptr);
}

TEST_F(BuiltinCodePage, IsAsciiAtItsOffsets)
{
    const unsigned wantedStart[10] = {'?', '\n', '\r', '\n', '\n', 1, 0, 0, 0, 0};
    for (std::size_t i = 0; i < std::size(wantedStart); ++i)
        EXPECT_EQ(header(i), wantedStart[i]) << i;
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        const bool isUpper = byte >= 'A' && byte <= 'Z';
        const bool isLower = byte >= 'a' && byte <= 'z';
        EXPECT_EQ(header(0x000A + byte), 1U);
        EXPECT_EQ(header(0x010A + byte), isLower ? byte - 0x20 : byte);
        EXPECT_EQ(header(0x020A + byte), isUpper ? byte + 0x20 : byte);
        EXPECT_EQ(header16(0x030A + 2 * byte), byte < 0x80 ? byte : 0xFFFDU);
    }
    EXPECT_EQ(header16(0x050A), 0U);
    EXPECT_EQ(header16(0x110C), 1U);
    for (std::size_t offset = 0x110E; offset < 0x1118; offset += 2)
        EXPECT_EQ(header16(offset), 0U) << offset;
}

TEST_F(BuiltinCodePage, HasThreeKindsOfUnicodePages)
{
    for (std::size_t high = 0; high < 0x100; ++high) {
        const unsigned others[] = {0, 0, 0, 0, 0x102};
        const unsigned first[] = {0, 0xFF, 0, 0xFF, 0};
        const unsigned punctuation[] = {0, 1, 0x28, 0x29, 0x100};
        const unsigned* wanted = high == 0 ? first : high == 0x20 ? punctuation : others;
        const std::size_t entry = 0x090C + 8 * high;
        for (std::size_t field = 0; field < 4; ++field)
            EXPECT_EQ(header(entry + field), wanted[field]) << high;
        EXPECT_EQ(header16(entry + 4), wanted[4]) << high;
    }
}

// The array that the header's offsets are made for: 0x00 to 0x7F, then '?', then two line feeds for
// U+2028 and U+2029, and a last one for all other pages.
class TableOfAFile : public BuiltinCodePage {
  protected:
    static constexpr std::size_t kSize = 259;

    void SetUp() override
    {
        BuiltinCodePage::SetUp();
        for (std::size_t i = 0; i < kSize; ++i)
            array_[i] = static_cast<std::uint8_t>(i < 0x80 ? i : '?');
        array_[0x100] = array_[0x101] = '\n';
        page_.sections[2] = array_;
    }

    std::uint8_t array_[kSize];
};

TEST_F(TableOfAFile, ConvertsAsItsDesignSays)
{
    EXPECT_EQ(encoded(page_, 0x2028), Bytes{0x0A});
    EXPECT_EQ(encoded(page_, 0x2029), Bytes{0x0A});
    EXPECT_EQ(encoded(page_, 0x0100), Bytes{'?'});
    EXPECT_EQ(encoded(page_, 0x0101), Bytes{'?'});
    EXPECT_EQ(encoded(page_, 0x0041), Bytes{0x41});
    EXPECT_EQ(encoded(page_, 0x0080), Bytes{'?'});
}

TEST_F(TableOfAFile, TakesOneFromThePageAndTheOtherFromTheSubstitute)
{
    array_[0x102] = '!';
    EXPECT_EQ(encoded(page_, 0x0100), Bytes{'!'});
    EXPECT_EQ(encoded(page_, 0x0101), Bytes{'?'});
}

TEST(CodePage, ASecondByteOutsideTheLeafHasNoUnicode)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.map(0x8140, 0x3000).map(0x817E, 0x3001).map(0x8250, 0x3002).build();
    EXPECT_EQ(decoded(page.object(), "\x81\x40"), 0x3000);
    EXPECT_EQ(decoded(page.object(), "\x81\x7E"), 0x3001);
    EXPECT_EQ(decoded(page.object(), "\x81\x3F"), 0xFFFD);
    EXPECT_EQ(decoded(page.object(), "\x81\x7F"), 0xFFFD);
    EXPECT_EQ(decoded(page.object(), "\x82\x51"), 0xFFFD);
    EXPECT_EQ(TSCpWideToUnicode(&page.object(), 0x813F), 0xFFFD);
}

TEST(CodePage, TheSpanOfACharacterTakesInTheShiftBytesOnBothSides)
{
    PageBuilder page(PageShape::kStateful2);
    page.build();
    const char text[] = "\x0E\x42\x43\x0F\x81";
    EXPECT_EQ(TSCpCharsToBytes(&page.object(), text, 0, 0), 0);
    EXPECT_EQ(TSCpCharsToBytes(&page.object(), text, 0, 1), 4);
    EXPECT_EQ(TSCpCharsToBytes(&page.object(), text, 0, 2), 5);
}

TEST(CodePage, Utf8TakesFormsThatAreNotTheShortest)
{
    PageBuilder page(PageShape::kUtf8);
    page.build();
    EXPECT_EQ(decoded(page.object(), "\xC1\x81"), 0x0041);
    EXPECT_EQ(decoded(page.object(), "\xE0\x81\x81"), 0x0041);
    EXPECT_EQ(decoded(page.object(), "\xE0\x9F\xBF"), 0x07FF);
    EXPECT_EQ(TSCpWideToUnicode(&page.object(), 0xC181), 0x0041);
    EXPECT_EQ(TSCpWideToUnicode(&page.object(), 0xE08181), 0x0041);
}

TEST(CodePage, Utf8DoesNotLookAtContinuationBytes)
{
    PageBuilder page(PageShape::kUtf8);
    page.build();
    EXPECT_EQ(decoded(page.object(), "\xC3\x29"), 0x00E9);
    EXPECT_EQ(decoded(page.object(), "\xE2\x42\xEC"), 0x20AC);
}

TEST(CodePage, Utf8ComesBackForEveryValue)
{
    PageBuilder page(PageShape::kUtf8);
    page.build();
    for (unsigned value = 0x80; value < 0x10000; ++value) {
        char area[5] = {};
        const auto unicode = static_cast<TSChar16>(value);
        ASSERT_EQ(TSCpUnicodeToMb(&page.object(), unicode, area), value < 0x800 ? 2 : 3);
        ASSERT_EQ(decoded(page.object(), area), unicode);
        ASSERT_EQ(TSCpWideToUnicode(&page.object(), TSCpUnicodeToWide(&page.object(), unicode)),
                  unicode);
    }
}

TEST(CodePage, AZeroByteOfAPageOfBytesIsACharacter)
{
    PageBuilder page(PageShape::kSingleByte);
    page.map(0x00, 0x2400).map(0x41, 0x2401).pageKind(0x24, kPageByte).build();
    EXPECT_EQ(encoded(page.object(), 0x2400), Bytes{0});
}

TEST(CodePage, EveryKindOfPageFormsItsResult)
{
    PageBuilder page(PageShape::kFourByte);
    page.encodeOnly(0x0141, 0x41).encodeOnly(0x0241, 0x8142).encodeOnly(0x0341, 0x8F4243);
    page.encodeOnly(0x0441, 0x90414243).encodeOnly(0x0541, 0x8243);
    page.pageKind(1, kPageByte).pageKind(2, kPageWord).pageKind(3, kPageWordByte);
    page.pageKind(4, kPageWordWord).pageKind(5, kPageByteByte).build();
    EXPECT_EQ(encoded(page.object(), 0x0141), Bytes{0x41});
    EXPECT_EQ(encoded(page.object(), 0x0241), (Bytes{0x81, 0x42}));
    EXPECT_EQ(encoded(page.object(), 0x0341), (Bytes{0x8F, 0x42, 0x43}));
    EXPECT_EQ(encoded(page.object(), 0x0441), (Bytes{0x90, 0x41, 0x42, 0x43}));
    EXPECT_EQ(encoded(page.object(), 0x0541), (Bytes{0x82, 0x43}));
    EXPECT_EQ(TSCpUnicodeToWide(&page.object(), 0x0441), 0x90414243U);
}

TEST(CodePage, TheUnicodeValueOfNoneGivesTheSubstitute)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.substitute(0x7F).map(0x8140, 0x3000).build();
    EXPECT_EQ(encoded(page.object(), 0xFFFD), Bytes{0x7F});
    EXPECT_EQ(TSCpUnicodeToWide(&page.object(), 0xFFFD), 0x7FU);
}

TEST(CodePage, AMappingAddsTheDeltaOfTheRecord)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.map(0x8281, 0xFF41).type(0x8281, 0x0002, 0xFFFFFFDFU).build();
    char area[4] = {};
    TSCpMapChar(&page.object(), "\x82\x81", area, 0x0002);
    EXPECT_EQ(std::memcmp(area, "\x82\x60\0\0", 4), 0);
    TSCpMapChar(&page.object(), "\x82\x81", area, 0x0001);
    EXPECT_EQ(std::memcmp(area, "\x82\x81\0\0", 4), 0);
    EXPECT_EQ(TSCpMapCharW(&page.object(), 0x8281, 0x0002), 0x8260U);
    EXPECT_EQ(TSCpMapCharW(&page.object(), 0x8281, 0x0001), 0x8281U);
}

} // namespace
} // namespace vlx::test
