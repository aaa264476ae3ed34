// The lint finds each kind of damage that is planted in a copy of the shipped directory, and the
// dump prints any of it without a stray read.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chars/cpfile.hpp"
#include "container.hpp"
#include "directory.hpp"
#include "source_tree.hpp"
#include "sourcefile.hpp"

using namespace vlx::data;
using testing::HasSubstr;
using vlx::kPageWordByte;

namespace {

namespace fs = std::filesystem;

// A file held as bytes, to be damaged.
struct File {
    Bytes bytes;

    TSObjHeader& header() { return *reinterpret_cast<TSObjHeader*>(bytes.data()); }
    std::uint8_t* section(int number) { return bytes.data() + header().sectionOffset(number - 1); }
    TSCodePageHeader& page() { return *reinterpret_cast<TSCodePageHeader*>(section(1)); }
    TSUnicodeNode& unicodeNode(std::size_t index)
    {
        return reinterpret_cast<TSUnicodeNode*>(section(2))[index];
    }
    TSTypeNode& typeNode(std::size_t index)
    {
        return reinterpret_cast<TSTypeNode*>(section(1) + page().typeTrieOffset)[index];
    }
    TSMapPair& mapPair(std::size_t index)
    {
        return reinterpret_cast<TSMapPair*>(section(1) + page().mapPairsOffset)[index];
    }
    TSObjDisk& entry(std::size_t index) { return reinterpret_cast<TSObjDisk*>(section(1))[index]; }
};

struct Damage {
    const char* title;
    const char* file;
    std::function<void(File&)> plant;
    const char* message;
};

class DamagedDirectory : public testing::Test {
  protected:
    // Damages the file in the copy of the directory, without the other code pages and the sorts:
    // that they are missing is told too, and their lint would take most of the time.
    void plant(const std::string& name, const std::function<void(File&)>& damage)
    {
        fs::create_directory(tree_.output());
        for (const fs::directory_entry& file : fs::directory_iterator(VLX_LOCALE))
            if (const std::string other = file.path().filename().string();
                other == name || !(other.starts_with("cp_") || other.starts_with("so_")))
                fs::copy(file.path(), tree_.output());
        const std::string text = contentOf(tree_.output() + "/" + name);
        File file{Bytes(text.begin(), text.end())};
        damage(file);
        tree_.write("out/" + name, std::string(file.bytes.begin(), file.bytes.end()));
    }
    std::string lint()
    {
        Diagnostics diagnostics;
        lintDirectory(tree_.output(), "", diagnostics);
        return linesOf(diagnostics);
    }

    SourceTree tree_;
};

class PlantedDamage : public DamagedDirectory, public testing::WithParamInterface<Damage> {};

TEST_P(PlantedDamage, IsFoundByLint)
{
    plant(GetParam().file, GetParam().plant);
    EXPECT_THAT(lint(), HasSubstr(std::string(GetParam().file) + ": " + GetParam().message));
}

TEST_P(PlantedDamage, IsDumpedAsFarAsItCanBeRead)
{
    plant(GetParam().file, GetParam().plant);
    std::ostringstream out;
    Diagnostics diagnostics;
    dumpFile(tree_.output() + "/" + GetParam().file, out, diagnostics);
    EXPECT_TRUE(hasErrors(diagnostics) || !out.str().empty());
}

const Damage kContainers[] = {
    {"Magic", "cp_01252.nls", [](File& f) { f.header().magic = 1; }, "the magic number"},
    {"Shortened", "cp_01252.nls", [](File& f) { f.bytes.resize(75); }, "shorter than a header"},
    {"CutSection", "cp_01252.nls", [](File& f) { f.bytes.resize(f.bytes.size() - 1); },
     "section 3 reaches outside"},
    {"FarSection", "cp_01252.nls", [](File& f) { f.header().sectionOffset1 = 0xFFFFFFF0; },
     "section 1 reaches outside"},
    {"NoSections", "cp_01252.nls", [](File& f) { f.header().sectionCount = 0; }, "the number of"},
    {"FiveSections", "cp_01252.nls", [](File& f) { f.header().sectionCount = 5; }, "the number of"},
    {"OlderFormat", "cp_01252.nls", [](File& f) { f.header().version = 1u << 28; },
     "is of the older format"},
    {"NoStamp", "cp_01252.nls", [](File& f) { f.header().reserved[0] = 0; }, "has no data stamp"},
    {"Fingerprint", "cp_01252.nls", [](File& f) { f.page().charType[0x41] = 0; },
     "the sections do not have the fingerprint"},
};
const Damage kControls[] = {
    {"Order", "control.nls", [](File& f) { std::swap(f.entry(0), f.entry(1)); },
     "entry 2: not above"},
    {"IdTwice", "control.nls", [](File& f) { f.entry(1).id = f.entry(0).id; },
     "entry 2: not above"},
    {"NameTwice", "control.nls",
     [](File& f) { std::memcpy(f.entry(1).name, f.entry(0).name, TSObjDisk::kNameSize); },
     "entry 2: the name"},
    {"NameWithoutEnd", "control.nls",
     [](File& f) { std::memset(f.entry(0).name, 'x', TSObjDisk::kNameSize); },
     "entry 1: the name is not terminated"},
    {"NoName", "control.nls", [](File& f) { f.entry(0).name[0] = '\0'; },
     "entry 1: the name is not terminated"},
    {"Type", "control.nls", [](File& f) { f.entry(0).type = 4; }, "entry 1: unknown type 4"},
    {"Flags", "control.nls", [](File& f) { f.entry(0).flags = 1; }, "entry 1: the flags"},
    {"TooMany", "control.nls",
     [](File& f) {
         f.bytes.resize(f.bytes.size() + 1093 * sizeof(TSObjDisk));
         f.header().sectionSize1 = 1093 * sizeof(TSObjDisk);
     },
     "more than 1,092 entries"},
};
const Damage kPages[] = {
    {"ShortHeader", "cp_01252.nls", [](File& f) { f.header().sectionSize1 = 4375; },
     "section 1 is shorter"},
    {"MaxBytes", "cp_01252.nls", [](File& f) { f.page().maxCharBytes = 0; }, "maxCharBytes"},
    {"LengthZero", "cp_01252.nls", [](File& f) { f.page().charLength[0x41] = 0; },
     "charLength of 41 is 0"},
    {"LengthTooLong", "cp_00932.nls", [](File& f) { f.page().charLength[0x81] = 3; },
     "charLength of 81 is 3"},
    {"LeadIsCharacter", "cp_00932.nls", [](File& f) { f.page().toUnicode[0x81] = 0x81; },
     "81 begins longer characters"},
    {"Substitution", "cp_01252.nls", [](File& f) { f.page().substChar = 0x81; },
     "substChar is no character"},
    {"SubstitutionBack", "cp_01252.nls",
     [](File& f) { f.section(3)[f.page().unicodePages[0].offset3 + '?'] = 'x'; },
     "substChar does not map back"},
    {"LineEnd", "cp_00932.nls", [](File& f) { f.page().lineEnd4Char = 0x81; },
     "lineEnd4Char is no character"},
    {"Case", "cp_00932.nls", [](File& f) { f.page().toUpper[0x61] = 0x81; },
     "the other case of 61"},
    {"Kind", "cp_01252.nls", [](File& f) { f.page().unicodePages[1].kind = 5; },
     "page 01 is of kind 5"},
    {"PageOutside", "cp_01252.nls", [](File& f) { f.page().unicodePages[1].offset3 = 499; },
     "page 01 reaches outside"},
    {"PageOutsideWords", "cp_00932.nls",
     [](File& f) { f.page().unicodePages[0x4E].offset3 = 0xFFFE; }, "page 4E reaches outside"},
    {"PageOutsideSectionFour", "cp_00932.nls",
     [](File& f) {
         f.page().unicodePages[0x4E].kind = kPageWordByte;
         f.page().unicodePages[0x4E].offset4 = 0xFFFE;
     },
     "page 4E reaches outside"},
    {"ShiftWithoutFlag", "cp_01252.nls", [](File& f) { f.page().shiftIn = 0x0E; },
     "has shift bytes, and cpFlags"},
    {"FlagWithoutShift", "cp_00930.nls", [](File& f) { f.page().shiftOut = 0; },
     "cpFlags says that it has states"},
    {"ShiftIsCharacter", "cp_00930.nls", [](File& f) { f.page().toUnicode[0x0E] = 0x0E; },
     "the shift byte 0E is a character"},
    {"ShiftLength", "cp_00930.nls", [](File& f) { f.page().charLength[0x44] = 2; },
     "charLength of 44 is not 1"},
    {"CellEncodesWrong", "cp_01252.nls",
     [](File& f) { f.section(3)[f.page().unicodePages[0].offset3 + 0x41] = 0x42; },
     "0041 becomes 42, which does not become it again"},
    {"CellDecodesWrong", "cp_01252.nls", [](File& f) { f.page().toUnicode[0x41] = 0x1234; },
     "41 becomes 1234, which does not come back"},
    {"ResultTooLong", "cp_00932.nls",
     [](File& f) {
         std::memset(f.section(3) + f.page().unicodePages[0].offset3 + 2 * 'A', 0x41, 2);
     },
     "0041 becomes 4141, which is not as long"},
};
const Damage kTries[] = {
    {"UnicodeRoot", "cp_00932.nls", [](File& f) { f.unicodeNode(0).isLeaf = 1; },
     "section 2: the root is a leaf"},
    {"UnicodeNode", "cp_00932.nls", [](File& f) { f.unicodeNode(0).base = 200; },
     "section 2: 81 leads to no node"},
    {"UnicodeLeaf", "cp_00932.nls", [](File& f) { f.unicodeNode(0x88).base = 0xFFFF; },
     "section 2: 889F leads to no value"},
    {"UnicodeDepth", "cp_00932.nls", [](File& f) { f.unicodeNode(0x88).isLeaf = 0; },
     "section 2: no leaf at the last byte behind 88"},
    {"LeafTable", "cp_00932.nls", [](File& f) { f.page().leafTableOffset = 0xFFFF; },
     "the leaf table is outside"},
    {"TypeNode", "cp_00932.nls", [](File& f) { f.typeNode(0).base = 0x4000; },
     "type trie: 81 leads to no node"},
    {"TypeSpan", "cp_00932.nls", [](File& f) { f.typeNode(1 + 0x88).base = 0x1FFF; },
     "type trie: the leaf behind 88 is not complete"},
    {"TypeDepth", "cp_00932.nls",
     [](File& f) {
         f.typeNode(1 + 0x88).isLeaf = 0;
         f.typeNode(1 + 0x88).base = 1 + 0x88;
     },
     "type trie: no leaf at the last byte behind"},
    {"TypeTrieOutside", "cp_00932.nls", [](File& f) { f.page().typeRecordsOffset = 0xFFFF; },
     "the type trie is outside"},
    {"OtherCase", "cp_00932.nls",
     [](File& f) {
         const std::size_t row = f.typeNode(1 + 0x82).base;
         reinterpret_cast<TSTypeRecord*>(f.section(1) + f.page().typeRecordsOffset)[row + 0x60]
             .delta = 0x4000;
     },
     "the other case of 8260 is no character"},
    {"MapValuesOutside", "cp_00932.nls", [](File& f) { f.page().mapValuesOffset = 0xFF00; },
     "the map values are outside"},
    {"MapPairsOutside", "cp_57352.nls", [](File& f) { f.page().mapPairCount = 0xFFFF; },
     "the map pairs are outside"},
    {"MapPairOrder", "cp_57352.nls", [](File& f) { std::swap(f.mapPair(3), f.mapPair(4)); },
     "the map pairs are not ascending"},
    {"MapPairLength", "cp_57352.nls", [](File& f) { f.mapPair(0).value = 0xEFBC; },
     "the map pair of"},
};

std::string titleOf(const testing::TestParamInfo<Damage>& damage)
{
    return damage.param.title;
}
INSTANTIATE_TEST_SUITE_P(Container, PlantedDamage, testing::ValuesIn(kContainers), titleOf);
INSTANTIATE_TEST_SUITE_P(Control, PlantedDamage, testing::ValuesIn(kControls), titleOf);
INSTANTIATE_TEST_SUITE_P(Page, PlantedDamage, testing::ValuesIn(kPages), titleOf);
INSTANTIATE_TEST_SUITE_P(Trie, PlantedDamage, testing::ValuesIn(kTries), titleOf);

// Nodes that lead back to themselves, in a page of four-byte characters: 256 to the power of four
// ways, of which neither the dump nor the lint may go more than a few.
TEST_F(DamagedDirectory, WithCirclesEndsSoon)
{
    plant("cp_00932.nls", [](File& file) {
        file.page().maxCharBytes = 4;
        for (std::size_t lead = 0x81; lead < 0xFD; ++lead) {
            if (file.page().charLength[lead] == 2)
                file.page().charLength[lead] = 4;
            file.unicodeNode(lead) = file.unicodeNode(0);
            file.typeNode(1 + lead) = file.typeNode(0);
        }
    });
    EXPECT_THAT(lint(), HasSubstr("no leaf at the last byte"));
    std::ostringstream out;
    Diagnostics diagnostics;
    dumpFile(tree_.output() + "/cp_00932.nls", out, diagnostics);
    EXPECT_EQ(linesOf(diagnostics), "");
}

TEST(ShippedDirectory, IsClean)
{
    Diagnostics diagnostics;
    lintDirectory(VLX_LOCALE, "", diagnostics);
    EXPECT_EQ(linesOf(diagnostics), "");
}

TEST(ShippedDirectory, MissingFilesAndStraysAreFound)
{
    const SourceTree tree;
    fs::copy(VLX_LOCALE, tree.output());
    fs::rename(tree.path("out/cp_01252.nls"), tree.path("out/cp_65000.nls"));
    Diagnostics diagnostics;
    lintDirectory(tree.output(), "", diagnostics);
    EXPECT_THAT(linesOf(diagnostics), HasSubstr("cp_01252.nls: cannot be read"));
    EXPECT_THAT(linesOf(diagnostics), HasSubstr("cp_65000.nls: warning: is not in control.nls"));
}

std::string dumpOf(const std::string& name)
{
    std::ostringstream out;
    Diagnostics diagnostics;
    dumpFile(std::string(VLX_LOCALE) + "/" + name, out, diagnostics);
    return out.str() + linesOf(diagnostics);
}

TEST(Dump, ShowsTheControlFile)
{
    EXPECT_THAT(dumpOf("control.nls"), HasSubstr("\ncodepage\t1252\tMS1252\n"));
}

TEST(Dump, ShowsWhatEachByteIs)
{
    const std::string text = dumpOf("cp_01252.nls");
    EXPECT_THAT(text, HasSubstr("section 1: offset 80, size 4376\n"));
    EXPECT_THAT(text, HasSubstr("\nE4\t1\t00E4\tC4\tE4\t10C00805\t-\n"));
    EXPECT_THAT(text, HasSubstr("\n81\t1\tFFFD\t81\t81\t00000000\t-\n"));
    EXPECT_THAT(text, HasSubstr("\n20AC\t80\n")) << "the way back";
}

TEST(Dump, ShowsTheTriesAsMappings)
{
    const std::string text = dumpOf("cp_00932.nls");
    EXPECT_THAT(text, HasSubstr("\n889F\t4E9C\t40000801\t-\n"));
    EXPECT_THAT(text, HasSubstr("\n8260\tFF21\t20000813\t8281\n"));
    EXPECT_THAT(text, HasSubstr("\n41\t1\t0041\t41\t61\t10000A13\t8260\n"));
}

TEST(Dump, TakesUtf8ByItsRule)
{
    EXPECT_THAT(dumpOf("cp_57352.nls"), HasSubstr("\nC3A4\t00E4\t00C00805\tC384\n"));
}

TEST(Dump, RefusesAFileOfAnotherName)
{
    EXPECT_THAT(dumpOf("alias.txt"), HasSubstr("is neither control.nls nor named like"));
}

TEST(List, HasALineForEachObject)
{
    std::ostringstream out;
    Diagnostics diagnostics;
    listDirectory(VLX_LOCALE, out, diagnostics);
    EXPECT_EQ(linesOf(diagnostics), "");
    EXPECT_THAT(out.str(), HasSubstr("codepage    1252  MS1252"));
}

} // namespace
