// The lint finds each kind of damage planted in a sort object, and the dump shows any of it without
// a stray read.
#include <algorithm>
#include <functional>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "collate/sort.hpp"
#include "sort_compile.hpp"
#include "sort_reader.hpp"
#include "source_tree.hpp"
#include "sourcefile.hpp"

using namespace vlx::data;
using testing::HasSubstr;

namespace {

// Section 1 of a shipped sort, to be damaged: Croatian, which has contractions.
class Sort {
  public:
    Sort() : bytes_(SortReader::ofFile(VLX_LOCALE "/so_00007.nls").content()) {}

    Bytes& bytes() { return bytes_; }
    TSSortData& header() { return *reinterpret_cast<TSSortData*>(bytes_.data()); }
    TSSortChar& record(char16_t character)
    {
        return table<TSSortChar>(
            header()
                .charTableOffset)[header().sortPages[character >> 8].pageBase + (character & 0xFF)];
    }
    TSSortExpansion& expansion(std::size_t i)
    {
        return table<TSSortExpansion>(header().expansionTableOffset)[i];
    }
    TSSortContraction& contraction(std::size_t i)
    {
        return table<TSSortContraction>(header().contractionTableOffset)[i];
    }

  private:
    template <class Record>
    Record* table(unsigned offset)
    {
        return reinterpret_cast<Record*>(bytes_.data() + offset);
    }

    Bytes bytes_;
};

std::string lint(const Bytes& content)
{
    Diagnostics diagnostics;
    lintSort(content, "F", diagnostics);
    return linesOf(diagnostics);
}

std::string dump(const Bytes& content)
{
    std::ostringstream out;
    dumpSort(content, out);
    return out.str();
}

TEST(SortLint, FindsNothingInAGoodObject)
{
    EXPECT_EQ(lint(Sort().bytes()), "");
}

struct Damage {
    const char* title;
    std::function<void(Sort&)> plant;
    const char* message;
};

class DamagedSort : public testing::TestWithParam<Damage> {};

TEST_P(DamagedSort, IsFound)
{
    Sort sort;
    GetParam().plant(sort);
    EXPECT_THAT(lint(sort.bytes()), HasSubstr(GetParam().message));
    EXPECT_FALSE(dump(sort.bytes()).empty());
}

const Damage kDamages[] = {
    {"Header", [](Sort& sort) { sort.bytes().resize(1035); }, "shorter than the header"},
    {"CutOff", [](Sort& sort) { sort.bytes().pop_back(); }, "contractions: 9 at offset"},
    {"Expansions", [](Sort& sort) { sort.header().expansionTableOffset = 0xFFF0; },
     "reach outside the content"},
    {"TablesInTheHeader", [](Sort& sort) { sort.header().contractionTableOffset = 4; },
     "contractions: 9 at offset 4"},
    {"Records", [](Sort& sort) { sort.header().sortPages[4].pageBase = 0xFF00; },
     "page 04: its records reach outside"},
    {"Flags", [](Sort& sort) { sort.header().sortPages[0x4E].pageFlags = 0x0A; },
     "page 4E: unknown flags 0A"},
    {"LowRule", [](Sort& sort) { sort.header().sortPages[0x4E].pageBase = 0x00FF; },
     "page 4E: a level 1 weight below 0100"},
    {"HighRule", [](Sort& sort) { sort.header().sortPages[0x4E].pageBase = 0xFF01; },
     "page 4E: its weights go past FFFF"},
    {"Level4Rule",
     [](Sort& sort) {
         sort.header().sortPages[0x4E].pageFlags = vlx::kPageLevel4;
         sort.header().sortPages[0x4E].pageBase = 0;
     },
     "page 4E: a level 4 weight of 0"},
    {"SharedRule",
     [](Sort& sort) {
         sort.header().sortPages[0x4E].pageBase = sort.header().sortPages[0x4F].pageBase + 1;
     },
     "page 4F: has weights of another page"},
    {"RuleDirection", [](Sort& sort) { sort.header().sortPages[0x4E].pageDirection = 7; },
     "page 4E: backward on level 1"},
    {"RuleDirectionBits", [](Sort& sort) { sort.header().sortPages[0x4E].pageDirection = 0x1F; },
     "page 4E: directions above F"},
    {"LowWeight", [](Sort& sort) { sort.record(u'a').weight1 = 0xFF; },
     "0061: a level 1 weight below 0100"},
    {"Direction", [](Sort& sort) { sort.record(u'a').sortBits = 7 << 10; },
     "0061: backward on level 1"},
    {"Bits", [](Sort& sort) { sort.record(u'a').sortBits = 0x3C01; },
     "0061: bits that are not read are set"},
    {"Both", [](Sort& sort) { sort.record(u'\u00DF').sortBits = 0xFC00; },
     "00DF: a special character that is an expansion"},
    {"Special", [](Sort& sort) { sort.record(u'a').sortBits = 0xBC00; },
     "0061: a special character has a level 4 weight and no other"},
    {"Sign", [](Sort& sort) { sort.record(u'a').sortBits = 0x7C00; },
     "0061: the sign of an expansion, and none in the list"},
    {"NoSign", [](Sort& sort) { sort.record(u'\u00DF').sortBits = 0x3C00; },
     "expansion 00DF: the character does not have the sign"},
    {"Order", [](Sort& sort) { std::swap(sort.expansion(0), sort.expansion(1)); },
     "not above the one ahead of it"},
    {"LowSecond", [](Sort& sort) { sort.expansion(0).secondWeight1 = 1; },
     "a level 1 weight below 0100"},
    {"FirstElement",
     [](Sort& sort) {
         const TSSortChar plain = sort.record(u's');
         for (std::size_t i = 0; i < sort.header().expansionCount; ++i) {
             if (sort.expansion(i).character != u'\u00DF')
                 continue;
             sort.expansion(i).weight2 = plain.weight2;
             sort.expansion(i).weight3 = plain.weight3;
         }
     },
     "expansion 00DF: its first element is that of 0073"},
    {"Default2", [](Sort& sort) { sort.header().defaultWeight2 = 2; },
     "the default weight of level 2 is 02, and the smallest one 01"},
    {"KeysThatTrimTooMuch",
     [](Sort& sort) { sort.header().defaultWeight3 = sort.record(u'A').weight3; },
     "have different orders by comparison and by key"},
    {"Default3", [](Sort& sort) { sort.header().defaultWeight3 = 0; },
     "the default weight of level 3 is 00, and the smallest one 01"},
    {"Pairs", [](Sort& sort) { std::swap(sort.contraction(0), sort.contraction(1)); },
     "not above the one ahead of it"},
    {"PairTwice", [](Sort& sort) { sort.contraction(1) = sort.contraction(0); },
     "not above the one ahead of it"},
    {"PairExpansion", [](Sort& sort) { sort.contraction(0).sortBits = 0x7C00; },
     "cannot be an expansion"},
    {"PairDirection", [](Sort& sort) { sort.contraction(0).sortBits = 0; }, "backward on level 1"},
};

INSTANTIATE_TEST_SUITE_P(All, DamagedSort, testing::ValuesIn(kDamages),
                         [](const auto& test) { return test.param.title; });

TEST(SortLint, TellsManyErrorsInFewLines)
{
    Sort sort;
    for (char16_t c = 0; c < 0x100; ++c)
        sort.record(c).sortBits = 0;
    const std::string lines = lint(sort.bytes());
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 51);
    EXPECT_THAT(lines, HasSubstr("and more"));
}

TEST(SortDump, ShowsPagesCharactersAndContractions)
{
    const std::string text = dump(Sort().bytes());
    EXPECT_THAT(text, HasSubstr("default weights: level 2 01, level 3 01\n"));
    EXPECT_THAT(text, HasSubstr(", contractions 9\n"));
    EXPECT_THAT(text, HasSubstr("\n4E\tlevel 1 from "));
    EXPECT_THAT(text, testing::ContainsRegex("\n0061\t[0-9A-F]{4}\\.01\\.01\n"));
    EXPECT_THAT(text, testing::ContainsRegex("\n00DF\t[0-9A-F.]{10} [0-9A-F.]{10}\n"));
    EXPECT_THAT(text, testing::ContainsRegex("\n0064 017E\t[0-9A-F]{4}\\.01\\.01\n"));
}

TEST(SortDump, EndsWellWhereverTheContentIsCut)
{
    const Bytes whole = Sort().bytes();
    for (std::size_t size = 0; size < whole.size(); size += 997)
        EXPECT_FALSE(
            dump(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))).empty());
}

} // namespace
