// The built-in objects byte for byte, against expectations that share no structure with the
// library.
#include "chars/codepage.hpp"
#include "frame/builtin.hpp"
#include "frame/store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

class Builtin : public StoreTest {
  protected:
    Builtin() { start("/nowhere"); }

    static const std::uint8_t* section(int object) { return manager().objects[object].sections[0]; }
    static std::u16string text(const std::uint8_t* content, std::size_t offset)
    {
        std::u16string found;
        for (; get16(content, offset) != 0; offset += 2)
            found += static_cast<char16_t>(get16(content, offset));
        return found;
    }
};

constexpr std::size_t kPageSize = 4376;
constexpr std::size_t kArraySize = 259;

// Ranges of bytes and their type word, to the last byte of the range.
struct TypeRange {
    int first;
    int last;
    std::uint32_t word;
};
constexpr TypeRange kTypes[] = {
    {0x00, 0x08, 0x10000700}, {0x09, 0x09, 0x120803C0}, {0x0A, 0x0D, 0x12000740},
    {0x0E, 0x1F, 0x10000700}, {0x20, 0x20, 0x121002C0}, {0x21, 0x22, 0x12200220},
    {0x23, 0x25, 0x12008220}, {0x26, 0x26, 0x12000A20}, {0x27, 0x27, 0x10200220},
    {0x28, 0x2A, 0x12200220}, {0x2B, 0x2B, 0x12008220}, {0x2C, 0x2C, 0x12020220},
    {0x2D, 0x2D, 0x10008220}, {0x2E, 0x2F, 0x12004220}, {0x30, 0x39, 0x10002218},
    {0x3A, 0x3A, 0x12020220}, {0x3B, 0x3F, 0x12200220}, {0x40, 0x40, 0x12000A20},
    {0x41, 0x46, 0x10000A13}, {0x47, 0x5A, 0x10000A03}, {0x5B, 0x60, 0x12200220},
    {0x61, 0x66, 0x10000A15}, {0x67, 0x7A, 0x10000A05}, {0x7B, 0x7E, 0x12200220},
    {0x7F, 0x7F, 0x10000700}, {0x80, 0xFF, 0x00000000},
};

Bytes expectedPage()
{
    Bytes page(kPageSize, 0);
    page[0] = '?';
    page[1] = page[3] = page[4] = 0x0A;
    page[2] = 0x0D;
    page[5] = 1;
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        page[0x000A + byte] = 1;
        page[0x010A + byte] = static_cast<std::uint8_t>(byte);
        page[0x020A + byte] = static_cast<std::uint8_t>(byte);
        put16(page, 0x030A + 2 * byte, byte < 0x80 ? byte : 0xFFFD);
        put16(page, 0x090C + 8 * byte + 4, 0x102);
    }
    for (std::uint8_t letter = 0; letter < 26; ++letter) {
        page[0x010Au + 'a' + letter] = static_cast<std::uint8_t>('A' + letter);
        page[0x020Au + 'A' + letter] = static_cast<std::uint8_t>('a' + letter);
    }
    for (const TypeRange& range : kTypes)
        for (int byte = range.first; byte <= range.last; ++byte)
            put32(page, 0x050C + 4 * static_cast<std::size_t>(byte), range.word);
    put32(page, 0x090C, 0xFF00FF00); // kind 0, mask 0xFF, low 0, high 0xFF
    put32(page, 0x0910, 0);
    put32(page, 0x090C + 8 * 0x20, 0x29280100); // kind 0, mask 1, low 0x28, high 0x29
    put32(page, 0x0910 + 8 * 0x20, 0x100);
    put16(page, 0x110C, 1);
    return page;
}

TEST_F(Builtin, TheCodePageHeaderIsAsToldByteForByte)
{
    const Bytes expected = expectedPage();
    const std::uint8_t* const page = section(2);
    for (std::size_t at = 0; at < kPageSize; ++at)
        ASSERT_EQ(page[at], expected[at]) << std::hex << at;
}

TEST_F(Builtin, TheArrayBesideTheHeaderIsAsToldByteForByte)
{
    ASSERT_EQ(kAsciiFromUnicode.size(), kArraySize);
    for (std::size_t at = 0; at < 0x80; ++at)
        EXPECT_EQ(kAsciiFromUnicode[at], at);
    for (std::size_t at = 0x80; at < 0x100; ++at)
        EXPECT_EQ(kAsciiFromUnicode[at], '?');
    EXPECT_EQ(kAsciiFromUnicode[0x100], 0x0A);
    EXPECT_EQ(kAsciiFromUnicode[0x101], 0x0A);
    EXPECT_EQ(kAsciiFromUnicode[0x102], 0x3F);
}

// Deliberate: section 3 of the installed object is its header, so that Unicode values below U+0100
// give bytes of the header.
TEST_F(Builtin, UnicodeBelow0100GivesTheHeadersByteAtThatOffset)
{
    const TSObject* const page = &manager().objects[2];
    const Bytes header = expectedPage();
    for (std::uint32_t unicode = 0; unicode < 0x100; ++unicode) {
        EXPECT_EQ(TSCpUnicodeToWide(page, static_cast<TSChar16>(unicode)), header[unicode]);
        char bytes[4];
        EXPECT_EQ(TSCpUnicodeToMb(page, static_cast<TSChar16>(unicode), bytes), 1);
        EXPECT_EQ(static_cast<std::uint8_t>(bytes[0]), header[unicode]);
    }
    EXPECT_EQ(TSCpUnicodeToWide(page, 0x41), 0x01u);
}

TEST_F(Builtin, UnicodeAbove0100GivesTheHeadersBytesOrTheSubstitute)
{
    const TSObject* const page = &manager().objects[2];
    const Bytes header = expectedPage();
    EXPECT_EQ(TSCpUnicodeToWide(page, 0x0100), header[0x102]);
    EXPECT_EQ(TSCpUnicodeToWide(page, 0x0101), static_cast<TSChar32>('?'));
    EXPECT_EQ(TSCpUnicodeToWide(page, 0x2028), header[0x100]);
    EXPECT_EQ(TSCpUnicodeToWide(page, 0x2029), header[0x101]);
    EXPECT_EQ(TSCpUnicodeToWide(page, 0x2027), static_cast<TSChar32>('?'));
    EXPECT_EQ(TSCpUnicodeToWide(page, 0xFFFD), static_cast<TSChar32>('?'));
}

// Deliberate: the byte forms of a locale on the built-in table come out as runs of 0x01, and the
// Unicode forms are right.
TEST_F(Builtin, ALocaleHasByteFormsOfHeaderBytesAndRightUnicodeForms)
{
    TSLocale* const locale = goodLocale("");
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(locale->decimalPoint, 0x01);
    EXPECT_EQ(locale->decimalPointU, u'.');
    EXPECT_STREQ(locale->timeFormat, std::string(12, '\x01').c_str());
    const std::u16string expected = u"%#I:%M:%S %p";
    EXPECT_EQ(std::u16string(locale->timeFormatU, locale->timeFormatU + 12), expected);
    EXPECT_EQ(locale->timeFormatU[12], 0);
    EXPECT_EQ(TSReleaseLocale(locale), 0);
}

TEST_F(Builtin, TheLanguageContentIs578BytesWithItsTextsInOrder)
{
    constexpr std::size_t kSize = 578;
    ASSERT_EQ(std::size_t{kBuiltinLanguageSize}, kSize);
    LanguageContent expected;
    expected.territory = 1;
    expected.codePage = 1;
    expected.sort = 0;
    expected.texts = {u"EN",        u"English", u"Sunday",   u"Monday",   u"Tuesday", u"Wednesday",
                      u"Thursday",  u"Friday",  u"Saturday", u"Sun",      u"Mon",     u"Tue",
                      u"Wed",       u"Thu",     u"Fri",      u"Sat",      u"January", u"February",
                      u"March",     u"April",   u"May",      u"June",     u"July",    u"August",
                      u"September", u"October", u"November", u"December", u"",        u"Jan",
                      u"Feb",       u"Mar",     u"Apr",      u"May",      u"Jun",     u"Jul",
                      u"Aug",       u"Sep",     u"Oct",      u"Nov",      u"Dec",     u"",
                      u"AM",        u"PM"};
    const Bytes bytes = expected.bytes();
    ASSERT_EQ(bytes.size(), kSize);
    EXPECT_EQ(Bytes(section(0), section(0) + kSize), bytes);
}

TEST_F(Builtin, TheTerritoryContentIsAsToldByteForByte)
{
    TerritoryContent expected;
    expected.words = {u'.', u',', u',', u'.', u',', 2, 2, 2, 0x0003, 0, 0x006B};
    expected.texts = {u"USA", u"United States", u"3;0",        u"3;0",          u"$", u"USD", u"",
                      u"-",   u"%#I:%M:%S %p",  u"%#m/%#d/%y", u"%A, %B %d, %Y"};
    const Bytes bytes = expected.bytes();
    EXPECT_EQ(Bytes(section(1), section(1) + bytes.size()), bytes);
}

TEST_F(Builtin, TheFlagsAndPositionsStandAtTheirBytes)
{
    const std::uint8_t* const territory = section(1);
    EXPECT_EQ(territory[16], 3);
    EXPECT_EQ(territory[17], 0);
    EXPECT_EQ(get16(territory, 20), 0x6B);
    EXPECT_EQ(text(territory, get16(territory, 22)), u"USA");
    EXPECT_EQ(text(territory, get16(territory, 42)), u"%A, %B %d, %Y");
}

} // namespace
} // namespace vlx::test
