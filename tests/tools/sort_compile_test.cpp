// What the sort compiler makes of small sources, in which each rule can be followed, and what it
// says of bad ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sort_reader.hpp"
#include "source_tree.hpp"
#include "sourcefile.hpp"

using testing::HasSubstr;

namespace {

// Letters a to i and A to I, marks, a hyphen; an ideograph and Hangul; one expansion, one character
// of three elements, a contraction, decompositions.
constexpr const char* kRoot = R"([pages]
00 03 04

[groups]
space	0100
punct	0200
digit	0300
Latn	1000
Grek	2000
Hang	2800
Hira	3000
Hani	10000
Zzzz	30000

[elements]
0300	0.25.2
0301	0.24.2
0323	0.30.2
0001	-
0020	0100
002D	0201
0031	0301
0032	0302
00B9	0301.20.14
00BD	0301.20.1E 0201.20.1E 0302.20.1E
0061	1000
0041	1000.20.8
00E1	1000 0.24.2
00E0	1000 0.25.2
00C1	1000.20.8 0.24.2
0062	1010
0042	1010.20.8
0063	1020
0043	1020.20.8
0064	1030
0044	1030.20.8
0065	1040
0045	1040.20.8
00E9	1040 0.24.2
00E6	1000.20.4 0.118.4 1040.20.4
0068	1050
0048	1050.20.8
0069	1060
0069 0301	1065
00ED	1065
03B1	2000
0391	2000.20.8

[decompositions]
00E1	0061 0301
00E0	0061 0300
00C1	0041 0301
00E9	0065 0301
00ED	0069 0301

[classes]
0300-0301	230
0323	220
)";

// The table with further characters of no weights, so that there are level 1 weights for all
// others.
std::string smallRoot()
{
    std::string root = kRoot;
    std::string others;
    for (unsigned value = 0x0302; value < 0x0391; ++value)
        if (value != 0x0323)
            others += vlx::data::hexText(value, 4) + "\t-\n";
    for (unsigned value = 0x03B2; value < 0x0400; ++value)
        others += vlx::data::hexText(value, 4) + "\t-\n";
    for (unsigned value = 0x0080; value < 0x00B0; ++value)
        others += vlx::data::hexText(value, 4) + "\t-\n";
    return root.insert(root.find("0020\t"), others);
}

class SortCompiler : public testing::Test {
  protected:
    SortCompiler() { tree_.write("sorts/root.keys", smallRoot()); }

    // The lines of the diagnostics for a sort of these rules and further keys.
    std::string build(const std::string& rules, const std::string& keys = "")
    {
        tree_.write("sorts/S.toml",
                    "id = 7\nname = \"S\"\nrules = '''\n" + rules + "\n'''\n" + keys);
        return linesOf(tree_.build());
    }
    void make(const std::string& rules, const std::string& keys = "")
    {
        ASSERT_EQ(build(rules, keys), "");
        sort_ = SortReader::ofFile(tree_.path("out/so_00007.nls"));
    }
    // Whether each text sorts ahead of the one behind it, by comparison and by key.
    void expectAscending(const std::vector<std::u16string>& texts) const
    {
        for (std::size_t i = 1; i < texts.size(); ++i) {
            EXPECT_LT(sort_.compare(texts[i - 1], texts[i]), 0) << i;
            EXPECT_GT(sort_.compare(texts[i], texts[i - 1]), 0) << i;
            EXPECT_LT(sort_.key(texts[i - 1]), sort_.key(texts[i])) << i;
        }
    }
    unsigned weight1(char16_t character) const { return sort_.lookUp(character).first.weight1; }
    unsigned weight2(char16_t character) const { return sort_.lookUp(character).first.weight2; }
    unsigned weight3(char16_t character) const { return sort_.lookUp(character).first.weight3; }

    SourceTree tree_;
    SortReader sort_{{}};
};

TEST_F(SortCompiler, TheRootOrderStandsWithoutRules)
{
    make("");
    expectAscending({u" ",      u"-",      u"1",      u"\u00B9", u"2",       u"a",      u"A",
                     u"\u00E1", u"\u00C1", u"\u00E0", u"ab",     u"\u00E1b", u"\u00E6", u"b",
                     u"B",      u"c",      u"d",      u"e",      u"h",       u"i",      u"\u00ED",
                     u"\u03B1", u"\u0391", u"\uAC00", u"\u4E00", u"\u4E01"});
    EXPECT_EQ(sort_.lookUp(u'\x01').first.weight1, 0U);
    EXPECT_EQ(sort_.lookUp(u'\x01').first.weight3, 0U);
    EXPECT_EQ(weight1(u'-'), 0x102U) << "numbers have no gaps and begin at 0101";
}

TEST_F(SortCompiler, ALetterWithMarksIsOneElement)
{
    make("");
    EXPECT_EQ(sort_.lookUp(u'\u00E1').count, 1);
    EXPECT_EQ(weight1(u'\u00E1'), weight1(u'a'));
    EXPECT_GT(weight2(u'\u00E1'), weight2(u'a'));
    EXPECT_EQ(weight2(u'a'), 1U);
    EXPECT_EQ(weight3(u'a'), 1U);
    EXPECT_EQ(weight1(u'\u0301'), 0U);
}

TEST_F(SortCompiler, TwoLettersAreAnExpansionAndThreeHaveAWeightOfTheirOwnForTheLastTwo)
{
    make("");
    const SortReader::Found two = sort_.lookUp(u'\u00E6');
    ASSERT_EQ(two.count, 2);
    EXPECT_EQ(two.first.weight1, weight1(u'a'));
    EXPECT_EQ(two.second.weight1, weight1(u'e'));
    const SortReader::Found three = sort_.lookUp(u'\u00BD');
    ASSERT_EQ(three.count, 2);
    EXPECT_EQ(three.first.weight1, weight1(u'1'));
    EXPECT_EQ(three.second.weight1, weight1(u'-') + 1);
    EXPECT_EQ(weight1(u'1'), weight1(u'-') + 2);
}

TEST_F(SortCompiler, WhatHasNoRecordHasAWeightByRule)
{
    make("");
    EXPECT_EQ(sort_.pageFlags(0x4E), 2U);
    EXPECT_EQ(weight1(u'\u4E01'), weight1(u'\u4E00') + 1);
    EXPECT_GT(weight1(0xD800), weight1(u'\u9FFF')) << "unlisted characters come last";
    EXPECT_GT(weight1(u'\x02'), weight1(u'\u9FFF')) << "those of a page with records too";
    EXPECT_LT(weight1(u'\x02'), weight1(u'\u0100'));
}

TEST_F(SortCompiler, APrimaryRelationMakesALetter)
{
    make("&a<b");
    expectAscending({u"a", u"\u00E1", u"az", u"b", u"c"});
    make("&a<e<h&a<d");
    expectAscending({u"a", u"d", u"e", u"h", u"b"});
    EXPECT_GT(sort_.compare(u"\u00E9", u"e"), 0) << "with the letter, its precomposed forms move";
    EXPECT_LT(sort_.compare(u"\u00E9", u"b"), 0);
}

TEST_F(SortCompiler, ASecondaryRelationMakesAnAccent)
{
    make("&a<<b<<<B");
    EXPECT_EQ(weight1(u'b'), weight1(u'a'));
    expectAscending({u"a", u"\u00E1", u"b", u"B", u"ab", u"ac", u"c"});
}

TEST_F(SortCompiler, ATertiaryRelationMakesAVariant)
{
    make("&a<<<b");
    EXPECT_EQ(weight2(u'b'), weight2(u'a'));
    expectAscending({u"a", u"b", u"A", u"\u00E1"});
}

TEST_F(SortCompiler, AnIdenticalRelationMakesTheSame)
{
    make("&\u00E1=b");
    EXPECT_EQ(sort_.compare(u"b", u"\u00E1"), 0);
    EXPECT_EQ(sort_.key(u"b"), sort_.key(u"\u00E1"));
}

TEST_F(SortCompiler, AnExtensionFollowsInTheWeights)
{
    make("&a<<<b/h");
    EXPECT_EQ(sort_.lookUp(u'b').count, 2);
    expectAscending({u"ae", u"ah", u"b", u"ahd", u"bd", u"ai"});
}

TEST_F(SortCompiler, ARelationToSeveralLettersIsAnExpansion)
{
    make("&ae<<b<<<B");
    expectAscending({u"ad", u"ae", u"b", u"B", u"aeh", u"bh"});
    expectAscending({u"a", u"b"}); // although the second element is lost at the end of both
}

TEST_F(SortCompiler, BeforePutsALetterAhead)
{
    make("&[before 1]c<h<i");
    expectAscending({u"b", u"h", u"i", u"c", u"d"});
    make("&[before 1]c<h&[before 1]c<i");
    expectAscending({u"b", u"h", u"i", u"c", u"d"});
}

TEST_F(SortCompiler, ARelationToMarksOrdersMarks)
{
    make("&\\u0300<<\\u0301");
    expectAscending({u"a", u"\u00E0", u"\u00E1", u"b"});
}

TEST_F(SortCompiler, TwoCharactersAreAContraction)
{
    make("&c<ch<<<Ch<<<CH");
    EXPECT_EQ(sort_.contractionCount(), 3U);
    expectAscending({u"c", u"ci", u"ch", u"Ch", u"CH", u"cha", u"d"});
    make("&i<ih=ia"); // one of two that begin alike
    EXPECT_EQ(sort_.contractionCount(), 2U);
    EXPECT_LT(sort_.compare(u"ib", u"ia"), 0);
}

TEST_F(SortCompiler, PrecomposedLettersFollowTheirPartsInRules)
{
    make("&b<a"); // the letter has moved
    EXPECT_GT(sort_.compare(u"\u00E1", u"b"), 0);
    EXPECT_LT(sort_.compare(u"\u00E1", u"c"), 0);
    make("&b<\u00E1"); // this precomposed one alone has
    EXPECT_LT(sort_.compare(u"\u00E0", u"b"), 0);
    EXPECT_GT(sort_.compare(u"\u00E1", u"b"), 0);
}

TEST_F(SortCompiler, UpperCaseFirst)
{
    make("[caseFirst upper]");
    expectAscending({u"A", u"a", u"\u00C1", u"\u00E1", u"Ab", u"ab", u"B", u"b"});
    expectAscending({u"1", u"A", u"a", u"AB", u"aB", u"ab"});
    EXPECT_EQ(weight3(u'A'), 1U) << "the smallest weight is the default one";
    make("[caseFirst upper]&b<ch<<<Ch<<<CH");
    expectAscending({u"B", u"CH", u"Ch", u"ch", u"C"});
}

TEST_F(SortCompiler, ReorderMovesScriptsButNoDigits)
{
    make("[reorder Grek]");
    expectAscending({u"-", u"1", u"\u03B1", u"a", u"i", u"\u4E00"});
    make("[reorder Hani Grek]");
    expectAscending({u"-", u"1", u"\u4E00", u"\u03B1", u"a"});
}

TEST_F(SortCompiler, SuppressedContractionsFallApart)
{
    make("");
    EXPECT_GT(weight1(u'\u00ED'), weight1(u'i'));
    make("[suppressContractions [i]]");
    EXPECT_EQ(weight1(u'\u00ED'), weight1(u'i'));
}

TEST_F(SortCompiler, BackwardsTurnsLevel2)
{
    make("[backwards 2]");
    EXPECT_EQ(sort_.lookUp(u'a').directions, 0xBU);
    EXPECT_EQ(sort_.lookUp(u'\u4E00').directions, 0xBU);
    EXPECT_LT(sort_.compare(u"\u00E1a", u"a\u00E1"), 0);
    make("");
    EXPECT_GT(sort_.compare(u"\u00E1a", u"a\u00E1"), 0);
}

TEST_F(SortCompiler, ShiftedPunctuationIsSpecial)
{
    make("[alternate shifted]");
    EXPECT_EQ(weight1(u'-'), 0U);
    EXPECT_GT(sort_.lookUp(u'-').first.weight4, sort_.lookUp(u' ').first.weight4);
    EXPECT_EQ(sort_.lookUp(u'\u00BD').first.weight1, weight1(u'1')) << "mixed ones keep the rest";
    expectAscending({u"ab", u"a b", u"a-b"});
    EXPECT_LT(sort_.key(u"a-b"), sort_.key(u"\u00E1b")) << "punctuation is the last to decide";
    EXPECT_LT(sort_.key(u"a-b"), sort_.key(u"ac"));
}

TEST_F(SortCompiler, CombinationsAreContractions)
{
    make("", "[[combine]]\nfirst = \"ab\"\nsecond = \"\\u0301\\u0300\"\n");
    EXPECT_EQ(sort_.contractionCount(), 4U);
    EXPECT_EQ(sort_.compare(u"a\u0301", u"\u00E1"), 0);
    EXPECT_EQ(sort_.lookUpPair(u'b', u'\u0301').first.weight1, weight1(u'b'));
    make("", "[[combine]]\nfirst = \"a\"\nsecond = \"b\"\n");
    EXPECT_EQ(sort_.contractionCount(), 0U) << "two letters are no more than their sequence";
}

TEST_F(SortCompiler, PagesOfTheSourceReplaceThoseOfTheTable)
{
    make("", "pages = \"00 03\"\n");
    EXPECT_EQ(sort_.pageFlags(0x03), 0U);
    EXPECT_EQ(sort_.pageFlags(0x04), 2U);
    expectAscending({u"a", u"i", u"\u03B1", u"\u4E00", u"\u0400", u"\u0401"});
}

TEST_F(SortCompiler, TheSameSourcesGiveTheSameBytes)
{
    make("&c<ch<<<Ch&a<<b[caseFirst upper]");
    const auto first = sort_.content();
    make("&c<ch<<<Ch&a<<b[caseFirst upper]");
    EXPECT_EQ(sort_.content(), first);
}

TEST_F(SortCompiler, ASourceWithErrorsGivesNothing)
{
    EXPECT_NE(build("&a<*b"), "");
    EXPECT_FALSE(std::filesystem::exists(tree_.output()));
}

struct BadSort {
    const char* title;
    const char* rules; // they begin in line 4
    const char* keys;
    int line;
    const char* message;
};

class BadSorts : public SortCompiler, public testing::WithParamInterface<BadSort> {};

TEST_P(BadSorts, AreReportedWithTheirLine)
{
    const std::string lines = build(GetParam().rules, GetParam().keys);
    EXPECT_THAT(lines, HasSubstr(tree_.path("sorts/S.toml") + ":" +
                                 std::to_string(GetParam().line) + ": "));
    EXPECT_THAT(lines, HasSubstr(GetParam().message));
    EXPECT_FALSE(std::filesystem::exists(tree_.output()));
}

const BadSort kBadSorts[] = {
    {"Rule", "&a<b\n&c<*d", "", 5, "write the relations out"},
    {"ThreeCharacters", "&a<b\n&c\n<abc", "", 6, "\"abc\" cannot be held: a contraction has two"},
    {"NoRecord", "&a<\\u0510", "", 4, "it is on a page without records"},
    {"NoPrimaryPlace", "&\\u0301<b", "", 4, "no weight on that level"},
    {"BeforeSecondary", "&[before 1]b<<c", "", 4, "the first relation is <"},
    {"UnknownSetting", "\n[hiraganaQ on]", "", 5, "the setting [hiraganaQ on] is not taken"},
    {"UnknownGroup", "[reorder Latn Xxxx]", "", 4, "[reorder Latn Xxxx] is not taken"},
    {"ReorderedDigits", "[reorder digit]", "", 4, "[reorder digit] is not taken"},
    {"BadSet", "[suppressContractions [z-a]]", "", 4, "is not taken"},
    {"HeldAfterAll", "&a<b", "not_held = [\"b\"]\n", 6, "\"b\" is held"},
    {"BadPages", "", "pages = \"0-x\"\n", 6, "pages: is not of the form"},
    {"BadCombine", "", "[[combine]]\nfirst = \"a\"\n", 6, "combine[0].second: missing"},
    {"UnknownKey", "", "colour = 1\n", 6, "colour: unknown key"},
};

INSTANTIATE_TEST_SUITE_P(All, BadSorts, testing::ValuesIn(kBadSorts),
                         [](const auto& test) { return test.param.title; });

TEST_F(SortCompiler, WhatCannotBeHeldIsFineIfTheSourceNamesIt)
{
    make("&a<b\n&c<abc", "not_held = [\"abc\"]\n");
    EXPECT_EQ(sort_.contractionCount(), 0U);
}

TEST_F(SortCompiler, TellsOfTooManyLevel1Weights)
{
    tree_.write("sorts/root.keys", kRoot); // hardly any character shares its weight with another
    EXPECT_THAT(build(""), HasSubstr("S.toml: needs level 1 weights up to "));
}

TEST_F(SortCompiler, NamesWhatASectionDoesNotHold)
{
    EXPECT_THAT(build("", "pages = \"00-2A\"\n"), HasSubstr(" bytes: 43 pages, 2 expansions"));
}

TEST_F(SortCompiler, ReportsBadLinesOfTheRootTable)
{
    tree_.write("sorts/root.keys", "[pages]\n00\n[elements]\n0061\t1000\n0061\t1001\n0062\tx\n"
                                   "[colours]\n[groups]\nLatn\t2\nGrek\t1\n");
    const std::string lines = build("");
    for (const char* const line : {":5: ", ":6: '0062\tx' is no line of its section",
                                   ":7: unknown section [colours]", ":10: "})
        EXPECT_THAT(lines, HasSubstr("root.keys" + std::string(line)));
}

TEST_F(SortCompiler, NamesTheMissingRootTable)
{
    std::filesystem::remove(tree_.path("sorts/root.keys"));
    EXPECT_THAT(build(""), HasSubstr("root.keys: cannot be read"));
}

} // namespace
