// What the compiler says of bad sources, and that good ones always give the same bytes.
#include <filesystem>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "directory.hpp"
#include "page_reader.hpp"
#include "source_tree.hpp"

using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

// A source with one error: its line, 0 for the file as a whole, and words of the message.
struct BadSource {
    const char* title;
    std::string text;
    int line;
    const char* message;
};

class BadSources : public testing::TestWithParam<BadSource> {};

TEST_P(BadSources, AreReportedWithTheirLine)
{
    const SourceTree tree;
    tree.page("Page", GetParam().text);
    const std::string lines = linesOf(tree.build());
    const std::string place = tree.path("codepages/Page.cp") +
                              (GetParam().line > 0 ? ":" + std::to_string(GetParam().line) : "") +
                              ": ";
    EXPECT_THAT(lines, HasSubstr(place));
    EXPECT_THAT(lines, HasSubstr(GetParam().message));
    EXPECT_FALSE(fs::exists(tree.output())) << "nothing is written where there are errors";
}

// The settings of smallPage and doublePage end in line 9; the rows that a test adds begin in line
// 13 and 14.
const BadSource kSettings[] = {
    {"UnknownKey", smallPage("colour = red\n"), 10, "unknown key 'colour'"},
    {"KeyTwice", smallPage("lf = 0A\n"), 10, "'lf' is given twice"},
    {"NoEquals", smallPage("nonsense\n"), 10, "key = value"},
    {"BadValue", smallPage("shift = 0E\n"), 10, "bad value for 'shift'"},
    {"ShiftWithOneByte", smallPage("shift = 0E 0F\n"), 10, "characters of several bytes"},
    {"RuleOnAnotherId", smallPage("rule = utf8\n"), 1, "belongs to id 57352"},
    {"BaseMissing", "id = 9\nname = Small\nbased on = Other\n", 3, "'Other' cannot be read"},
    {"BaseIsItself", "id = 9\nname = Small\nbased on = Page\n", 3, "'Page' cannot be read"},
    {"BaseElsewhere", "id = 9\nname = Small\nbased on = ../Page\n", 3, "bad value for 'based on'"},
    {"HighShift", smallPage("shift = 0E 8F\n"), 10, "bad value for 'shift'"},
    {"MissingKeys", "id = 9\nname = Small\n[decode]\n30: 0030\n", 0, "'max bytes' is missing"},
    {"NoId", "name = Small\n", 0, "no good id and name"},
    {"LongName", "id = 9\nname = abcdefghijklmnopqrstuvwxyz01234567\n", 2, "bad value for 'name'"},
    {"BlankInName", "id = 9\nname = a b\n", 0, "no blank"},
    {"BadId", "id = 65536\nname = Small\n", 1, "bad value for 'id'"},
    {"UnknownSection", smallPage("", "[colours]\n"), 13, "unknown section [colours]"},
};
const BadSource kRows[] = {
    {"BadHex", smallPage("", "40: 0040 00G1\n"), 13, "'00G1' is no Unicode value"},
    {"ShortValue", smallPage("", "40: 40\n"), 13, "'40' is no Unicode value"},
    {"Surrogate", smallPage("", "40: D800\n"), 13, "'D800' is no Unicode value"},
    {"Replacement", smallPage("", "40: FFFD\n"), 13, "'FFFD' is no Unicode value"},
    {"BadRun", smallPage("", "40: 0050..0040\n"), 13, "is no run"},
    {"NoColon", smallPage("", "40 0040\n"), 13, "a row begins with"},
    {"BadLabel", smallPage("", "4: 0040\n"), 13, "a row begins with"},
    {"LongRow", smallPage("", "40: 0040..004F 0050\n"), 13, "1 to 16 characters"},
    {"RowPastTheByte", smallPage("", "F8: 0100..010F\n"), 13, "1 to 16 characters"},
    {"CellTwice", smallPage("", "30: 0050\n"), 13, "30 is defined twice"},
    {"TooLong", smallPage("", "8140: 4E00\n"), 13, "8140 is longer than 'max bytes'"},
    {"ZeroByte", doublePage("8100: 4E08\n"), 14, "a row begins with"},
    {"TwoLengths", doublePage("81: 0081\n"), 13, "different lengths begin with 81"},
    {"ShiftByte", doublePage("8E0E: 4E08\n", "shift = 0E 0F\n"), 15, "8E0E holds a shift byte"},
};
const BadSource kEncodes[] = {
    {"Ambiguous", smallPage("", "80: 0030\n"), 13, "0030 is decoded from 30 and 80"},
    {"Needless", smallPage("", "[encode]\n0030 = 30\n"), 14, "says so already"},
    {"NoCharacter", smallPage("", "[encode]\n0030 = 99\n"), 14, "no such character"},
    {"NothingToDrop", smallPage("", "[encode]\n1234 = none\n"), 14, "nothing decodes to this"},
    {"EncodeTwice", smallPage("", "[encode]\n00A0 = 30\n00A0 = 31\n"), 15, "encoded twice"},
    {"BadEncode", smallPage("", "[encode]\n00A0 = 3\n"), 14, "not of the form"},
    {"BadMapValue", smallPage("", "[map values]\n30 = 99\n"), 14, "99 is not in the decode"},
    {"NoSubstitution", smallPage("", "[encode]\n003F = none\n"), 0, "does not map back"},
};

std::string titleOf(const testing::TestParamInfo<BadSource>& source)
{
    return source.param.title;
}
INSTANTIATE_TEST_SUITE_P(Settings, BadSources, testing::ValuesIn(kSettings), titleOf);
INSTANTIATE_TEST_SUITE_P(Rows, BadSources, testing::ValuesIn(kRows), titleOf);
INSTANTIATE_TEST_SUITE_P(Encodes, BadSources, testing::ValuesIn(kEncodes), titleOf);

// All trail bytes of 125 lead bytes: more values than section 2 can hold.
std::string hugePage()
{
    std::string rows;
    unsigned value = 0x4E10;
    for (unsigned start = 0x8200; start < 0xFF00; start += 0x10) {
        const unsigned first = (start & 0xF0) == 0 ? start + 1 : start;
        const unsigned last = value + (start + 15 - first);
        char row[32];
        std::snprintf(row, sizeof row, "%04X: %04X..%04X\n", first, value, last);
        rows += row;
        value = last + 1;
    }
    return doublePage(rows);
}

TEST(Compiler, RefusesAPageThatDoesNotFit)
{
    const SourceTree tree;
    tree.page("Page", hugePage());
    const std::string lines = linesOf(tree.build());
    EXPECT_THAT(lines, HasSubstr("the page is too large: section 2 has"));
}

TEST(Compiler, ReportsEveryErrorOfEverySource)
{
    const SourceTree tree;
    tree.page("A", smallPage("colour = red\n", "40: nonsense\n"));
    tree.page("B", doublePage("8140: 4E08\n"));
    const std::string lines = linesOf(tree.build());
    EXPECT_THAT(lines, HasSubstr("A.cp:10: unknown key"));
    EXPECT_THAT(lines, HasSubstr("A.cp:14: 'nonsense'"));
    EXPECT_THAT(lines, HasSubstr("B.cp:14: 8140 is defined twice"));
}

TEST(Compiler, RefusesAnIdOrANameThatIsTaken)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.page("B", "id = 9\nname = Other\nbased on = A\n");
    tree.page("C", "id = 11\nname = SMALL\nbased on = A\n");
    const std::string lines = linesOf(tree.build());
    EXPECT_THAT(lines, HasSubstr("B.cp: the id 9 or the name 'Other' is that of another"));
    EXPECT_THAT(lines, HasSubstr("C.cp: the id 11 or the name 'SMALL' is that of another"));
}

TEST(Compiler, RefusesASourceDirectoryWithoutSources)
{
    const SourceTree tree;
    EXPECT_THAT(linesOf(tree.build()), HasSubstr("holds no sources"));
}

TEST(Compiler, RefusesToCompileWhatIsNotThere)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    vlx::data::Diagnostics diagnostics;
    EXPECT_FALSE(
        vlx::data::build({tree.path("."), tree.output(), {"Small", "Large"}}, diagnostics));
    EXPECT_THAT(linesOf(diagnostics), HasSubstr("has no object 'Large'"));
}

TEST(Compiler, CompilesTheObjectsThatAreAskedFor)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.page("B", doublePage());
    vlx::data::Diagnostics diagnostics;
    ASSERT_TRUE(vlx::data::build({tree.path("."), tree.output(), {"Double"}}, diagnostics));
    EXPECT_TRUE(fs::exists(tree.path("out/cp_00010.nls")));
    EXPECT_FALSE(fs::exists(tree.path("out/cp_00009.nls")));
}

std::string listOf(const std::string& directory)
{
    std::ostringstream out;
    vlx::data::Diagnostics diagnostics;
    vlx::data::dumpFile(directory + "/control.nls", out, diagnostics);
    return out.str() + linesOf(diagnostics);
}

TEST(Compiler, AddsTheObjectsThatAreAskedForToADirectory)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    ASSERT_EQ(linesOf(tree.build()), "");
    const std::string before = contentOf(tree.path("out/cp_00009.nls"));
    tree.page("A", smallPage("", "40: 0040\n"));
    tree.page("B", doublePage());
    vlx::data::Diagnostics diagnostics;
    ASSERT_TRUE(vlx::data::build({tree.path("."), tree.output(), {"Double"}}, diagnostics));
    EXPECT_EQ(contentOf(tree.path("out/cp_00009.nls")), before);
    EXPECT_THAT(listOf(tree.output()), HasSubstr("codepage\t9\tSmall\ncodepage\t10\tDouble\n"));
    tree.page("B", "id = 11\nname = Double\nbased on = A\n");
    ASSERT_TRUE(vlx::data::build({tree.path("."), tree.output(), {"Double"}}, diagnostics));
    EXPECT_THAT(listOf(tree.output()), HasSubstr("codepage\t9\tSmall\ncodepage\t11\tDouble\n"));
}

TEST(Compiler, KeepsADirectoryWhoseControlFileIsDamaged)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.write("out/control.nls", "damaged");
    vlx::data::Diagnostics diagnostics;
    EXPECT_FALSE(vlx::data::build({tree.path("."), tree.output(), {"Small"}}, diagnostics));
    EXPECT_THAT(linesOf(diagnostics), HasSubstr("control.nls: "));
    EXPECT_EQ(contentOf(tree.path("out/control.nls")), "damaged");
}

TEST(Compiler, ChecksTheAliases)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.write("alias.txt", "  early\nSmall one ONE " + std::string(65, 'a') + "\nLarge two\n" +
                                "Small small\n" + std::string(33, 'n') + "\n");
    const std::string lines = linesOf(tree.build());
    EXPECT_THAT(lines, HasSubstr("alias.txt:1: an alias without a code page"));
    EXPECT_THAT(lines, HasSubstr("alias.txt:2: 'ONE' is an alias already, in line 2"));
    EXPECT_THAT(lines, HasSubstr("alias.txt:2: an alias has at most 64 characters"));
    EXPECT_THAT(lines, HasSubstr("alias.txt:3: there is no code page 'Large'"));
    EXPECT_THAT(lines, HasSubstr("alias.txt:4: 'small' is the name of a code page"));
    EXPECT_THAT(lines, HasSubstr("alias.txt:5: the name of a code page has at most 32"));
}

TEST(Compiler, ChecksTheUnicodeTables)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.write("unicode/properties-2.0.tsv", "0000\t0008\tCc\tXX\t-\n");
    tree.write("unicode/simple-case.tsv", "# ok\nsideways 0041 005A 1 +32\n");
    const std::string lines = linesOf(tree.build());
    EXPECT_THAT(lines, HasSubstr("properties-2.0.tsv:1: not a row"));
    EXPECT_THAT(lines, HasSubstr("simple-case.tsv:2: not a row"));
}

TEST(Compiler, GivesTheSameBytesEachTime)
{
    vlx::data::Diagnostics diagnostics;
    const SourceTree tree;
    ASSERT_TRUE(vlx::data::build({VLX_DATA_DIRECTORY, tree.output(), {}}, diagnostics));
    std::set<std::string> names;
    for (const auto& file : fs::directory_iterator(tree.output()))
        names.insert(file.path().filename().string());
    for (const auto& file : fs::directory_iterator(VLX_LOCALE)) {
        const std::string name = file.path().filename().string();
        EXPECT_EQ(names.erase(name), 1U) << name;
        EXPECT_EQ(contentOf(file.path().string()), contentOf(tree.path("out/" + name))) << name;
    }
    EXPECT_TRUE(names.empty()) << *names.begin();
}

TEST(Compiler, ReplacesAFileAsAWhole)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.write("out/cp_00009.nls", "old");
    ASSERT_EQ(linesOf(tree.build()), "");
    EXPECT_EQ(contentOf(tree.path("out/cp_00009.nls")).substr(0, 4), "\x17\x9E\x3C\x5A");
    for (const auto& file : fs::directory_iterator(tree.output()))
        EXPECT_NE(file.path().extension(), ".new");
}

// Only the section that is kept apart says it: a page with shift bytes has lengths of 1 alone.
TEST(Compiler, GivesAPageWithShiftBytesLengthsOfOne)
{
    const PageReader reader(std::string(VLX_LOCALE) + "/cp_00930.nls", 930);
    for (unsigned lead = 0; lead < 0x100; ++lead)
        EXPECT_EQ(reader.length(static_cast<std::uint8_t>(lead)), 1);
    EXPECT_EQ(reader.maxBytes(), 2);
    EXPECT_TRUE(reader.stateful());
}

TEST(Compiler, TakesMapValuesOfTheSourceFirst)
{
    const SourceTree tree;
    tree.page("A", doublePage("[map values]\n30 = 8140\n8141 = 8142\n"));
    ASSERT_EQ(linesOf(tree.build()), "");
    const PageReader reader(tree.path("out/cp_00010.nls"), 10);
    EXPECT_EQ(reader.mapValue(0x30), 0x8140u);
    EXPECT_EQ(reader.mapValue(0x8141), 0x8142u);
    EXPECT_EQ(reader.mapValue(0x31), 0u);
}

// The base of the test: 80 and 81 are one value, and 82 is decoded only.
std::string basePage()
{
    return smallPage("", "80: 00E4 00E4 00F6 00E5\n[encode]\n00E4 = 81\n00F6 = none\n");
}

TEST(BasedOn, TakesWhatTheSourceDoesNotSay)
{
    const SourceTree tree;
    tree.page("A", basePage());
    tree.page("B", "id = 11\nname = Own\nbased on = A\nlf = 0B\n[decode]\n30: 00E6 ----\n");
    ASSERT_EQ(linesOf(tree.build()), "");
    const PageReader base(tree.path("out/cp_00009.nls"), 9);
    const PageReader own(tree.path("out/cp_00011.nls"), 11);
    auto decoded = base.allDecoded();
    decoded[0x30] = 0x00E6;
    decoded.erase(0x31);
    EXPECT_EQ(own.allDecoded(), decoded);
    EXPECT_EQ(own.encode(0x00E6), 0x30U);
    EXPECT_EQ(own.encode(0x0030), own.substitution());
    EXPECT_EQ(own.encode(0x0031), own.substitution());
    EXPECT_EQ(own.encode(0x00E4), 0x81U) << "the choice of the base";
    EXPECT_EQ(own.encode(0x00F6), own.substitution()) << "decoded only, in the base";
    EXPECT_EQ(own.substitution(), base.substitution());
    EXPECT_EQ(own.lineFeed(), 0x0B);
}

TEST(BasedOn, DropsTheChoicesThatItsOwnCellsMakeNeedless)
{
    const SourceTree tree;
    tree.page("A", basePage());
    tree.page("B", "id = 11\nname = Own\nbased on = A\n[decode]\n81: 00E7\n82: ----\n");
    ASSERT_EQ(linesOf(tree.build()), "");
    const PageReader own(tree.path("out/cp_00011.nls"), 11);
    EXPECT_EQ(own.encode(0x00E4), 0x80U);
    EXPECT_EQ(own.encode(0x00E7), 0x81U);
    EXPECT_EQ(own.encode(0x00F6), own.substitution());
}

TEST(BasedOn, WantsAChoiceForAValueThatItHasTwice)
{
    const SourceTree tree;
    tree.page("A", basePage());
    tree.page("B", "id = 11\nname = Own\nbased on = A\n[decode]\n30: 00E5\n");
    EXPECT_THAT(linesOf(tree.build()), HasSubstr("B.cp:3: 00E5 is decoded from 30 and 83"));
}

TEST(BasedOn, GoesOverSeveralSources)
{
    const SourceTree tree;
    tree.page("A", basePage());
    tree.page("B", "id = 11\nname = Own\nbased on = A\n[decode]\n84: 00E8\n");
    tree.page("C", "id = 12\nname = Third\nbased on = B\n");
    ASSERT_EQ(linesOf(tree.build()), "");
    EXPECT_EQ(PageReader(tree.path("out/cp_00011.nls"), 11).allDecoded(),
              PageReader(tree.path("out/cp_00012.nls"), 12).allDecoded());
}

TEST(BasedOn, TellsTheErrorsOfTheBaseWhereTheyAre)
{
    const SourceTree tree;
    tree.page("A", smallPage("", "40: nonsense\n"));
    tree.page("B", "id = 11\nname = Own\nbased on = A\n");
    const std::string lines = linesOf(tree.build());
    EXPECT_THAT(lines, HasSubstr("A.cp:13: 'nonsense'"));
    EXPECT_THAT(lines, HasSubstr("B.cp:3: 'A' cannot be read as the base"));
}

// Characters in code order have low bytes that come again on every page of Unicode.
TEST(Compiler, SharesTheBytesOfPagesThatRepeat)
{
    std::string rows;
    char row[40];
    unsigned value = 0xE000;
    for (unsigned lead = 0x90; lead < 0xA0; ++lead)
        for (unsigned trail = 0x40; trail < 0xF0; trail += 0x10, value += 0x10) {
            std::snprintf(row, sizeof row, "%02X%02X: %04X..%04X\n", lead, trail, value,
                          value + 15);
            rows += row;
        }
    const SourceTree tree;
    tree.page("A", doublePage(rows));
    ASSERT_EQ(linesOf(tree.build()), "");
    const PageReader reader(tree.path("out/cp_00010.nls"), 10);
    for (unsigned at = 0xE000; at < value; ++at)
        ASSERT_EQ(reader.decode(reader.encode(static_cast<std::uint16_t>(at))), at);
    // A row has 0xB0 low bytes, which repeat; the high bytes are one for each character.
    EXPECT_LT(reader.sectionSize(3), 0xB0U + 0x200U);
    EXPECT_LT(reader.sectionSize(4), value - 0xE000U + 0x200U);
}

// A page whose section 3 would be too long parts pages between sections 3 and 4.
TEST(Compiler, PartsPagesWhenSectionThreeIsFull)
{
    std::string rows;
    char row[40];
    unsigned character = 0x8210;
    // One value at the beginning and one at the end of each of 130 pages.
    for (unsigned high = 0x50; high < 0x50 + 130; ++high) {
        std::snprintf(row, sizeof row, "%04X: %02X00 %02XFF\n", character, high, high);
        rows += row;
        character += (character & 0xF0) == 0xF0 ? 0x20 : 0x10;
    }
    const SourceTree tree;
    tree.page("A", doublePage(rows));
    ASSERT_EQ(linesOf(tree.build()), "");
    const PageReader reader(tree.path("out/cp_00010.nls"), 10);
    const auto encoded = reader.allEncoded();
    EXPECT_EQ(encoded.size(), 14u + 16u + 4u + 260u);
    for (const auto& [value, at] : encoded)
        EXPECT_EQ(reader.decode(at), value);
    vlx::data::Diagnostics diagnostics;
    vlx::data::lintDirectory(tree.output(), "", diagnostics);
    EXPECT_EQ(linesOf(diagnostics), "");
}

TEST(Compiler, AllowsAValueThatIsOneWayAndLintWantsItListed)
{
    const SourceTree tree;
    tree.page("A", smallPage("", "[encode]\n00B2 = 32\n"));
    ASSERT_EQ(linesOf(tree.build()), "");
    vlx::data::Diagnostics unlisted;
    vlx::data::lintDirectory(tree.output(), "", unlisted);
    EXPECT_THAT(linesOf(unlisted), HasSubstr("00B2 becomes 32, which does not become it again"));
    tree.write("one-way", "# raised two\ncp_00009.nls 00B2 32\n");
    vlx::data::Diagnostics listed;
    vlx::data::lintDirectory(tree.output(), tree.path("one-way"), listed);
    EXPECT_EQ(linesOf(listed), "");
}

} // namespace
