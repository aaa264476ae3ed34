// TSMapString.
#include <gtest/gtest.h>
#include <string>

#include "frame/globals.hpp"
#include "mapstr/hand_pages.hpp"
#include "strings/guarded_area.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kGoodMappings[] = {
    0,
    TS_MAP_DIGITS,
    TS_MAP_FULL_WIDTH,
    TS_MAP_HALF_WIDTH,
    TS_MAP_COPY,
    TS_MAP_LOWER,
    TS_MAP_UPPER,
    TS_MAP_LOWER | TS_MAP_SIMPLE,
    TS_MAP_UPPER | TS_MAP_SIMPLE,
};

constexpr std::uint32_t kBadMappings[] = {
    0x80000026,
    0x80000020,
    0x1,
    TS_MAP_SIMPLE,
    TS_MAP_FULL_WIDTH | TS_MAP_SIMPLE,
    TS_MAP_DIGITS | TS_MAP_SIMPLE,
    TS_MAP_COPY | TS_MAP_SIMPLE,
    0x00000024,
    0x00000025,
    TS_MAP_UPPER | TS_MAP_DIGITS,
    TS_MAP_UPPER | 0x8000,
    0xFFFFFFFF,
};

// What a call wrote into a large buffer, and its result.
struct Mapped {
    std::int32_t result;
    std::string written;

    bool operator==(const Mapped&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Mapped& mapped)
{
    return out << mapped.result << " \"" << mapped.written << '"';
}

constexpr char kFill = '#';

Mapped call(TSLocale* locale, const std::string& source, std::int32_t length, std::int32_t size,
            std::uint32_t mapping)
{
    std::string buffer(1024, kFill);
    const std::int32_t result =
        TSMapString(locale, buffer.data(), size, source.data(), length, mapping);
    const std::size_t end = buffer.find_last_not_of(kFill);
    return {result, end == std::string::npos ? "" : buffer.substr(0, end + 1)};
}

Mapped call(TSLocale* locale, const std::string& source, std::uint32_t mapping)
{
    return call(locale, source, static_cast<std::int32_t>(source.size()), 512, mapping);
}

// All bytes written are counted.
Mapped bytes(const std::string& written)
{
    return {static_cast<std::int32_t>(written.size()), written};
}

TEST(MapString, EveryMappingOfTheListIsTaken)
{
    HandLocale latin(latinPage());
    HandLocale wide(widePage());
    for (const std::uint32_t mapping : kGoodMappings) {
        for (HandLocale* locale : {&latin, &wide}) {
            EXPECT_EQ(call(locale->handle(), "x", mapping).result, 1) << std::hex << mapping;
            EXPECT_EQ(locale->record.lastError, TS_ERR_NONE) << std::hex << mapping;
            EXPECT_EQ(call(locale->handle(), "x", mapping | TS_OPT_CHAR_COUNT).result, 1);
        }
    }
}

TEST(MapString, EveryOtherMappingIsRefused)
{
    HandLocale latin(latinPage());
    for (const std::uint32_t mapping : kBadMappings) {
        latin.record.lastError = kUntouchedError;
        EXPECT_EQ(call(latin.handle(), "x", mapping), (Mapped{-1, ""})) << std::hex << mapping;
        EXPECT_EQ(latin.record.lastError, TS_ERR_ARGUMENT) << std::hex << mapping;
        EXPECT_EQ(call(latin.handle(), "x", mapping | TS_OPT_CHAR_COUNT), (Mapped{-1, ""}));
    }
}

TEST(MapString, TheCountBitIsNoPartOfTheMapping)
{
    HandLocale latin(latinPage());
    EXPECT_EQ(call(latin.handle(), "ab", 0x80004025), bytes("AB"));
}

TEST(MapString, ANullLocaleIsTheDefaultOne)
{
    HandLocale latin(latinPage());
    tsDefaultLocale = latin.handle();
    EXPECT_EQ(call(nullptr, "ab", TS_MAP_UPPER), bytes("AB"));
    EXPECT_EQ(latin.record.lastError, TS_ERR_NONE);
    tsDefaultLocale = nullptr;
}

TEST(MapString, SingleByteCaseGoesByTheTables)
{
    HandLocale latin(latinPage());
    EXPECT_EQ(call(latin.handle(), "aZ1\xE4\xDF", TS_MAP_UPPER), bytes("AZ1\xC4\xDF"));
    EXPECT_EQ(call(latin.handle(), "aZ1\xC4\xDF", TS_MAP_LOWER), bytes("az1\xE4\xDF"));
}

TEST(MapString, ANegativeLengthTakesInTheTerminator)
{
    HandLocale latin(latinPage());
    HandLocale wide(widePage());
    for (const std::int32_t length : {-1, -2, INT32_MIN}) {
        EXPECT_EQ(call(latin.handle(), "ab", length, 512, TS_MAP_UPPER),
                  bytes(std::string("AB\0", 3)));
        EXPECT_EQ(call(wide.handle(), "ab", length, 512, TS_MAP_UPPER),
                  bytes(std::string("AB\0", 3)));
        EXPECT_EQ(call(wide.handle(), "ab", length, 512, TS_MAP_COPY),
                  bytes(std::string("ab\0", 3)));
        EXPECT_EQ(call(wide.handle(), "ab", length, 512, TS_MAP_UPPER | TS_OPT_CHAR_COUNT),
                  bytes(std::string("AB\0", 3)));
    }
}

TEST(MapString, NothingIsTerminatedOtherwise)
{
    HandLocale latin(latinPage());
    EXPECT_EQ(call(latin.handle(), "abc", 2, 512, TS_MAP_UPPER), bytes("AB"));
}

TEST(MapString, ASizeOfNothingWritesNothing)
{
    HandLocale latin(latinPage(), {{'x', 0, 'y', 0}});
    HandLocale wide(widePage());
    for (const std::int32_t size : {0, -1, INT32_MIN}) {
        for (const std::uint32_t mapping : kGoodMappings) {
            EXPECT_EQ(call(latin.handle(), "ab", 2, size, mapping), (Mapped{0, ""}));
            EXPECT_EQ(call(wide.handle(), "ab", 2, size, mapping), (Mapped{0, ""}));
            EXPECT_EQ(call(wide.handle(), "ab", 2, size, mapping | TS_OPT_CHAR_COUNT),
                      (Mapped{0, ""}));
        }
    }
}

TEST(MapString, AShortDestinationIsNoError)
{
    HandLocale latin(latinPage());
    EXPECT_EQ(call(latin.handle(), "abc", 3, 2, TS_MAP_UPPER), bytes("AB"));
    EXPECT_EQ(latin.record.lastError, TS_ERR_NONE);
}

TEST(MapString, ACharacterThatDoesNotFitWholeEndsThePass)
{
    HandLocale wide(widePage());
    EXPECT_EQ(call(wide.handle(), "\x82\x81\x82\x81", 4, 3, TS_MAP_UPPER), bytes("\x82\x60"));
    EXPECT_EQ(call(wide.handle(), "aab", 3, 3, TS_MAP_FULL_WIDTH), bytes("\x82\x81"));
    EXPECT_EQ(wide.record.lastError, TS_ERR_NONE);
}

TEST(MapString, ACharacterThatTheLengthCutsOffEndsThePass)
{
    HandLocale wide(widePage());
    EXPECT_EQ(call(wide.handle(), "a\x82\x81", 2, 512, TS_MAP_UPPER), bytes("A"));
    EXPECT_EQ(call(wide.handle(), "a\x82\x81", 2, 512, TS_MAP_COPY), bytes("a"));
    HandLocale withPairs(widePage(), {{'x', 'y', 'z', 0}});
    EXPECT_EQ(call(withPairs.handle(), "xa\x82\x81", 3, 512, TS_MAP_UPPER), bytes("XA"));
}

TEST(MapString, LongerCharactersGoByTheirRecords)
{
    HandLocale wide(widePage());
    EXPECT_EQ(call(wide.handle(), "b\x82\x81\x82\x60\x81\x40", TS_MAP_UPPER),
              bytes("B\x82\x60\x82\x60\x81\x40"));
    EXPECT_EQ(call(wide.handle(), "B\x82\x81\x82\x60\x81\x40", TS_MAP_LOWER),
              bytes("b\x82\x81\x82\x81\x81\x40"));
}

TEST(MapString, WidthInASingleByteLocaleIsACopy)
{
    HandLocale latin(latinPage());
    EXPECT_EQ(call(latin.handle(), "aA 1\xE4", TS_MAP_FULL_WIDTH), bytes("aA 1\xE4"));
    EXPECT_EQ(call(latin.handle(), "aA 1\xE4", TS_MAP_HALF_WIDTH), bytes("aA 1\xE4"));
    EXPECT_EQ(call(latin.handle(), "abc", 3, 2, TS_MAP_FULL_WIDTH), bytes("ab"));
}

TEST(MapString, WidthGoesByTheMapValuesAndBack)
{
    HandLocale wide(widePage());
    const std::string narrow = "A a1";
    const std::string full = "\x82\x60\x81\x40\x82\x81\x82\x50";
    EXPECT_EQ(call(wide.handle(), narrow, TS_MAP_FULL_WIDTH), bytes(full));
    EXPECT_EQ(call(wide.handle(), full, TS_MAP_HALF_WIDTH), bytes(narrow));
}

TEST(MapString, ACharacterWithoutAnotherWidthStays)
{
    HandLocale wide(widePage());
    EXPECT_EQ(call(wide.handle(), "Zz\x82\x60", TS_MAP_FULL_WIDTH), bytes("Zz\x82\x60"));
    EXPECT_EQ(call(wide.handle(), "Zz\x81\x99", TS_MAP_HALF_WIDTH), bytes("Zz\x81\x99"));
}

TEST(MapString, DigitsBecomeAsciiDigits)
{
    HandLocale latin(latinPage());
    HandLocale wide(widePage());
    EXPECT_EQ(call(latin.handle(), "a5\xB2", TS_MAP_DIGITS), bytes("a52"));
    EXPECT_EQ(call(latin.handle(), "a5\xB2", 3, 2, TS_MAP_DIGITS), bytes("a5"));
    EXPECT_EQ(call(wide.handle(), "a5\x82\x50\x82\x60", TS_MAP_DIGITS), bytes("a51\x82\x60"));
}

// The length table of such a page says nothing, whatever stands in it.
TEST(MapString, ADigitOfASingleByteLocaleIsAByte)
{
    PageBuilder page = latinPage();
    page.lead('5', 4).lead(0xB2, 4).build();
    HandLocale latin(std::move(page));
    GuardedArea source;
    char destination[3] = {};
    const char* const text =
        source.place(std::vector<char>{'a', '\xB2', '5'}, GuardedArea::Guard::kAbove);
    EXPECT_EQ(TSMapString(latin.handle(), destination, 3, text, 3, TS_MAP_DIGITS), 3);
    EXPECT_EQ(std::string(destination, 3), "a25");
}

TEST(MapString, ADigitNeedsItsTypeAndItsUnicodeValue)
{
    PageBuilder page = latinPage();
    page.map(0xB3, 0xB3); // three, but no digit to the page
    page.type('x', 0x008).build();
    HandLocale latin(std::move(page));
    EXPECT_EQ(call(latin.handle(), "\xB3x", TS_MAP_DIGITS), bytes("\xB3x"));
}

TEST(MapString, PairsReplaceOneByTwoAndTwoByOne)
{
    HandLocale latin(latinPage(), {{0xDF, 0, 'S', 'S'}, {'d', 'z', 'D', 0}, {'q', 'r', '1', '2'}},
                     {{'I', 0, 'j', 0}});
    EXPECT_EQ(call(latin.handle(),
                   "a\xDF"
                   "b",
                   TS_MAP_UPPER),
              bytes("ASSB"));
    EXPECT_EQ(call(latin.handle(), "adzd", TS_MAP_UPPER), bytes("ADD"));
    EXPECT_EQ(call(latin.handle(), "qrq", TS_MAP_UPPER), bytes("12Q"));
    EXPECT_EQ(call(latin.handle(), "IJ", TS_MAP_LOWER), bytes("jj"));
    EXPECT_EQ(call(latin.handle(), "ij", TS_MAP_UPPER), bytes("IJ"));
}

TEST(MapString, PairsWorkOnLongerCharacters)
{
    HandLocale wide(widePage(), {{0xFF41, 'x', 0x3000, 'y'}});
    EXPECT_EQ(call(wide.handle(), "\x82\x81x\x82\x81", TS_MAP_UPPER), bytes("\x81\x40y\x82\x60"));
}

TEST(MapString, SimpleMappingsIgnoreThePairs)
{
    HandLocale latin(latinPage(), {{'a', 0, 'b', 0}}, {{'A', 0, 'b', 0}});
    EXPECT_EQ(call(latin.handle(), "a", TS_MAP_UPPER), bytes("b"));
    EXPECT_EQ(call(latin.handle(), "a", TS_MAP_UPPER | TS_MAP_SIMPLE), bytes("A"));
    EXPECT_EQ(call(latin.handle(), "A", TS_MAP_LOWER), bytes("b"));
    EXPECT_EQ(call(latin.handle(), "A", TS_MAP_LOWER | TS_MAP_SIMPLE), bytes("a"));
}

TEST(MapString, AnImageOfTwoThatDoesNotFitIsLeftOut)
{
    HandLocale latin(latinPage(), {{0xDF, 0, 'S', 'S'}});
    EXPECT_EQ(call(latin.handle(), "\xDF", 1, 1, TS_MAP_UPPER), (Mapped{0, ""}));
    EXPECT_EQ(call(latin.handle(), "a\xDF", 2, 2, TS_MAP_UPPER), bytes("A"));
    EXPECT_EQ(latin.record.lastError, TS_ERR_NONE);
}

TEST(MapString, APairBehindTheLengthIsNone)
{
    HandLocale latin(latinPage(), {{'d', 'z', 'D', 0}});
    EXPECT_EQ(call(latin.handle(), "dz", 1, 512, TS_MAP_UPPER), bytes("D"));
    EXPECT_EQ(call(latin.handle(), "dz", 2, 512, TS_MAP_UPPER), bytes("D"));
    EXPECT_EQ(call(latin.handle(), "dx", 2, 512, TS_MAP_UPPER), bytes("DX"));
}

// Deliberate: lower case goes on too far behind a character that hits alone just after a miss.
TEST(MapString, InLowerCaseAHitBehindAMissLeaps)
{
    HandLocale latin(latinPage(), {{'I', 0, 'j', 0}}, {{'I', 0, 'j', 0}});
    EXPECT_EQ(call(latin.handle(), "AIBC", TS_MAP_LOWER), bytes("ajc"));
    EXPECT_EQ(call(latin.handle(), "IBC", TS_MAP_LOWER), bytes("jbc"));
    EXPECT_EQ(call(latin.handle(), "AIIB", TS_MAP_LOWER), bytes("ajb"));
    EXPECT_EQ(call(latin.handle(), "AI", TS_MAP_LOWER), bytes("aj"));
    EXPECT_EQ(call(latin.handle(), "aIbc", TS_MAP_UPPER), bytes("AjBC")) << "upper case does not";

    HandLocale wide(widePage(), {}, {{0xFF21, 0, 'j', 0}});
    EXPECT_EQ(call(wide.handle(),
                   "A\x82\x60"
                   "BCD",
                   TS_MAP_LOWER),
              bytes("ajd"));
}

TEST(MapString, ACountedCallCountsCharacters)
{
    HandLocale wide(widePage());
    const std::uint32_t mapping = TS_MAP_UPPER | TS_OPT_CHAR_COUNT;
    EXPECT_EQ(call(wide.handle(),
                   "a\x82\x81"
                   "b",
                   2, 512, mapping),
              (Mapped{2, "A\x82\x60"}));
    EXPECT_EQ(call(wide.handle(),
                   "a\x82\x81"
                   "b",
                   3, 2, mapping),
              (Mapped{2, "A\x82\x60"}));
    EXPECT_EQ(call(wide.handle(),
                   "a\x82\x81"
                   "b",
                   3, 512, mapping),
              (Mapped{3, "A\x82\x60"
                         "B"}));
    EXPECT_EQ(call(wide.handle(),
                   "a\x82\x81"
                   "b",
                   2, 1, TS_OPT_CHAR_COUNT),
              (Mapped{1, "a"}));
    EXPECT_EQ(call(wide.handle(), "ab", 0, 5, mapping), (Mapped{0, ""}));
}

TEST(MapString, ACountedSingleByteCallCountsBytes)
{
    HandLocale latin(latinPage(), {{0xDF, 0, 'S', 'S'}});
    const std::uint32_t mapping = TS_MAP_UPPER | TS_OPT_CHAR_COUNT;
    EXPECT_EQ(call(latin.handle(),
                   "a\xDF"
                   "b",
                   3, 3, mapping),
              (Mapped{3, "ASS"}));
    EXPECT_EQ(call(latin.handle(), "\xDF", 1, 1, mapping), (Mapped{1, "S"}))
        << "what is written first holds the image as a whole";
}

// The length table of such a page says nothing, whatever stands in it.
TEST(MapString, ACountedSingleByteCallDoesNotMeasureCharacters)
{
    PageBuilder page = latinPage();
    page.lead('A', 2).lead('B', 4).build();
    HandLocale latin(std::move(page));
    const std::uint32_t mapping = TS_MAP_UPPER | TS_OPT_CHAR_COUNT;
    EXPECT_EQ(call(latin.handle(), "abc", 3, 512, mapping), bytes("ABC"));
    EXPECT_EQ(call(latin.handle(), "abc", 3, 2, mapping), bytes("AB"));
    EXPECT_EQ(call(latin.handle(), "cb", 2, 512, mapping), bytes("CB"));
}

TEST(MapString, ACountedCallWritesNoMoreThanItsArea)
{
    HandLocale latin(latinPage());
    HandLocale wide(widePage());
    const std::string source(700, 'a');
    const std::uint32_t mapping = TS_MAP_UPPER | TS_OPT_CHAR_COUNT;
    EXPECT_EQ(call(latin.handle(), source, 700, 700, mapping), bytes(std::string(512, 'A')));
    EXPECT_EQ(call(wide.handle(), source, 700, 700, TS_MAP_FULL_WIDTH | TS_OPT_CHAR_COUNT).result,
              256);
    EXPECT_EQ(call(latin.handle(), source, 700, 700, TS_MAP_UPPER), bytes(std::string(700, 'A')));
}

TEST(MapString, EverySizeUpToTheImageKeepsWholeCharacters)
{
    HandLocale wide(widePage(), {{'x', 0, 0xFF21, 'S'}});
    const std::string image = "A\x82\x60S\x82\x60";
    const std::int32_t wanted[] = {0, 1, 1, 1, 4, 4, 6, 6};
    for (std::int32_t size = 0; size < 8; ++size)
        EXPECT_EQ(call(wide.handle(), "ax\x82\x81", 4, size, TS_MAP_UPPER),
                  bytes(image.substr(0, static_cast<std::size_t>(wanted[size]))))
            << size;
}

} // namespace
} // namespace vlx::test
