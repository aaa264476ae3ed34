// The rule syntax: every operator, escapes, settings, and what is said of each error.
#include <gtest/gtest.h>

#include "sort_rules.hpp"

using namespace vlx::data;

namespace {

struct Parsed {
    std::vector<SortRule> rules;
    Diagnostics diagnostics;
};

Parsed parse(std::string_view text, int firstLine = 1)
{
    Parsed parsed;
    Reporter report("F", parsed.diagnostics);
    parsed.rules = parseSortRules(text, firstLine, report);
    return parsed;
}

// A rule as a line: "& a", "[before 1] a", "1 b", "= b / c", "[words]".
std::string shown(const SortRule& rule)
{
    const auto text = [](const std::u16string& units) {
        return std::string(units.begin(), units.end()); // ASCII in these tests
    };
    if (rule.kind == SortRule::kSetting) {
        std::string words;
        for (const std::string& word : rule.words)
            words += (words.empty() ? "" : "|") + word;
        return "[" + words + "]";
    }
    if (rule.kind == SortRule::kReset)
        return (rule.strength == Strength::kPrimary ? "before " : "& ") + text(rule.text);
    const std::string strength = rule.strength == Strength::kIdentical
                                     ? "="
                                     : std::to_string(static_cast<int>(rule.strength));
    return strength + " " + text(rule.text) +
           (rule.extension.empty() ? "" : " / " + text(rule.extension));
}

std::string shown(const Parsed& parsed)
{
    std::string all;
    for (const SortRule& rule : parsed.rules)
        all += (all.empty() ? "" : "; ") + shown(rule);
    return all;
}

TEST(SortRules, EveryOperatorIsRead)
{
    const Parsed parsed = parse("&a<b<<c<<<d=e&f<<g/hi");
    EXPECT_TRUE(parsed.diagnostics.empty());
    EXPECT_EQ(shown(parsed), "& a; 1 b; 2 c; 3 d; = e; & f; 2 g / hi");
}

TEST(SortRules, BeforeStandsInAReset)
{
    EXPECT_EQ(shown(parse("& [before 1] x < y")), "before x; 1 y");
}

TEST(SortRules, BlanksLineEndsAndCommentsDoNotCount)
{
    const Parsed parsed = parse("# first\n & a b\t<\n  c # and & this\n\n<<d\n");
    EXPECT_TRUE(parsed.diagnostics.empty());
    EXPECT_EQ(shown(parsed), "& ab; 1 c; 2 d");
    ASSERT_EQ(parsed.rules.size(), 3U);
    EXPECT_EQ(parsed.rules[0].line, 2);
    EXPECT_EQ(parsed.rules[2].line, 5);
}

TEST(SortRules, SignsOfTheSyntaxAreCharactersInQuotesOrBehindABackslash)
{
    const Parsed parsed = parse(R"(&\&<'<='<<'it''s'<<<''=\\)");
    EXPECT_TRUE(parsed.diagnostics.empty());
    EXPECT_EQ(shown(parsed), "& &; 1 <=; 2 it's; 3 '; = \\");
}

TEST(SortRules, CharactersMayBeGivenByTheirCode)
{
    const Parsed parsed = parse(R"(&a\u0301<\u0041b)");
    ASSERT_EQ(parsed.rules.size(), 2U);
    EXPECT_EQ(parsed.rules[0].text, u"a\u0301");
    EXPECT_EQ(parsed.rules[1].text, u"Ab");
}

TEST(SortRules, SettingsAreWordsAndASetIsOneWord)
{
    EXPECT_EQ(shown(parse("[caseFirst upper][reorder Latn Cyrl]")),
              "[caseFirst|upper]; [reorder|Latn|Cyrl]");
    EXPECT_EQ(shown(parse("[suppressContractions [a-c d]]")), "[suppressContractions|[a-c d]]");
}

TEST(SortRules, ASetHasCharactersAndRanges)
{
    EXPECT_EQ(parseSortSet("[a-d x]"), u"abcdx");
    EXPECT_EQ(parseSortSet("[\u0418\u0438]"), u"\u0418\u0438");
    for (const char* const bad : {"a", "[]", "[a-]", "[d-a]", "[[a]]", "[\\u0041]"})
        EXPECT_EQ(parseSortSet(bad), std::nullopt) << bad;
}

struct BadRule {
    const char* text;
    int line;
    const char* message;
};

class BadRules : public testing::TestWithParam<BadRule> {};

TEST_P(BadRules, AreReportedWithTheirLine)
{
    const Parsed parsed = parse(GetParam().text, 11);
    ASSERT_EQ(parsed.diagnostics.size(), 1U) << shown(parsed);
    EXPECT_EQ(parsed.diagnostics[0].file, "F");
    EXPECT_EQ(parsed.diagnostics[0].line, GetParam().line);
    EXPECT_NE(parsed.diagnostics[0].message.find(GetParam().message), std::string::npos)
        << parsed.diagnostics[0].message;
}

INSTANTIATE_TEST_SUITE_P(All, BadRules,
                         testing::Values(BadRule{"<b", 11, "without an &"},
                                         BadRule{"\n\n&a<<<<b", 13, "more than three <"},
                                         BadRule{"&a<*bc", 11, "write the relations out"},
                                         BadRule{"&a<b|c", 11, "a context (|) cannot be held"},
                                         BadRule{"&[before 2]a<<b", 11, "[before 2] is no place"},
                                         BadRule{"&a<", 11, "characters are missing"},
                                         BadRule{"&a<b/", 11, "characters are missing"},
                                         BadRule{"&a<'b", 11, "without its second one"},
                                         BadRule{"&a<\\u12", 11, "four digits"},
                                         BadRule{"&a<\\uD800", 11, "four digits"},
                                         BadRule{"[reorder Latn", 11, "a [ without its ]"},
                                         BadRule{"[]", 11, "an empty setting"},
                                         BadRule{"*a", 11, "where a rule begins"},
                                         BadRule{"&a<\xF0\x9F\x98\x80", 11, "end at U+FFFF"},
                                         BadRule{"&a<\xFF", 11, "not UTF-8"}));

TEST(SortRules, WhatIsBehindAnErrorIsReadOn)
{
    const Parsed parsed = parse("&a<*b\n&c<d\n&e<<<<f\n&g<h");
    EXPECT_EQ(parsed.diagnostics.size(), 2U);
    EXPECT_EQ(shown(parsed), "& a; & c; 1 d; & e; & g; 1 h");
}

} // namespace
