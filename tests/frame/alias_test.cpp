// alias.txt: its grammar, its limits and the lookups in its list.
#include "frame/alias.hpp"

#include <algorithm>
#include <cstring>
#include <vector>

#include "frame/real_store.hpp"
#include "support/allocator.hpp"

namespace vlx::test {
namespace {

using Aliases = std::vector<std::pair<std::string, std::string>>;

class Alias : public RealStoreTest {
  protected:
    ~Alias() override
    {
        while (tsGlobals)
            TSTerm();
        EXPECT_EQ(Allocator::liveBlocks(), 0);
        EXPECT_TRUE(Allocator::sound());
    }

    // Starts on the text and gives the list in its order: the alias, then the code page.
    Aliases listOf(std::string_view text)
    {
        alias(text);
        return startedList();
    }
    Aliases startedList()
    {
        while (tsGlobals)
            TSTerm();
        Allocator::reset();
        Trace::clear();
        EXPECT_EQ(TSInit(directory().c_str(), Allocator::allocate, Allocator::free,
                         Allocator::allocateObject, Allocator::freeObject, 0, 0),
                  TS_ERR_NONE);
        return list();
    }
    static Aliases list()
    {
        Aliases found;
        for (const TSAliasNode* node = manager().aliases; node; node = node->next)
            found.emplace_back(node->aliasName, node->codePageName);
        return found;
    }
    static bool failed() { return Trace::printed("Alias list build failed. No aliases supported"); }
    static bool said(const std::string& text)
    {
        return std::ranges::any_of(Trace::records(), [&](const TraceRecord& record) {
            return record.kind == TraceKind::kPrint && record.text == text;
        });
    }
};

TEST_F(Alias, WithoutTheFileTheListIsEmptyAndTheStartIsGood)
{
    EXPECT_EQ(startedList(), Aliases());
    EXPECT_TRUE(failed());
    const std::string path = directory() + host::kPathSeparator + "alias.txt";
    EXPECT_TRUE(said("Open of " + path + " failed, err = 2"));
    EXPECT_EQ(TSGetCodepageFromAlias(&manager(), "latin1"), nullptr);
}

TEST_F(Alias, AnEmptyFileIsAnEmptyList)
{
    EXPECT_EQ(listOf(""), Aliases());
    EXPECT_FALSE(failed());
}

TEST_F(Alias, ALineIsACodePageAndItsAliasesInUpperCaseAndFileOrder)
{
    EXPECT_EQ(listOf("Page latin1 Iso-8859-1\nOther x\n"),
              (Aliases{{"LATIN1", "Page"}, {"ISO-8859-1", "Page"}, {"X", "Other"}}));
    EXPECT_FALSE(failed());
}

TEST_F(Alias, TokensArePartedByAnyRunOfBlanksAndTabs)
{
    EXPECT_EQ(listOf("Page \t one\t\ttwo   three \t\n"),
              (Aliases{{"ONE", "Page"}, {"TWO", "Page"}, {"THREE", "Page"}}));
}

TEST_F(Alias, TheLastLineNeedsNoLineEnd)
{
    EXPECT_EQ(listOf("Page one"), (Aliases{{"ONE", "Page"}}));
}

TEST_F(Alias, ALineMayEndWithCarriageReturnAndLineFeed)
{
    const std::string longest(32, 'P');
    EXPECT_EQ(listOf(longest + "\r\n one\r\n\r\n two\r\nNext three \r\n"),
              (Aliases{{"ONE", longest}, {"TWO", longest}, {"THREE", "Next"}}));
    EXPECT_FALSE(failed());
}

TEST_F(Alias, ContinuationLinesGoOnWithTheEntry)
{
    EXPECT_EQ(listOf("Page one\n two\n\tthree four\nNext five\n six\n"),
              (Aliases{{"ONE", "Page"},
                       {"TWO", "Page"},
                       {"THREE", "Page"},
                       {"FOUR", "Page"},
                       {"FIVE", "Next"},
                       {"SIX", "Next"}}));
}

TEST_F(Alias, CommentsAndBlankLinesDoNotEndAnEntry)
{
    EXPECT_EQ(listOf("# head\n\nPage one\n# comment\n \t \n\n two\n"),
              (Aliases{{"ONE", "Page"}, {"TWO", "Page"}}));
    EXPECT_FALSE(failed());
}

TEST_F(Alias, ANumberSignBehindColumn1IsAToken)
{
    EXPECT_EQ(listOf("Page #one\n #two\n"), (Aliases{{"#ONE", "Page"}, {"#TWO", "Page"}}));
}

TEST_F(Alias, AFirstLineThatStartsWithWhiteSpaceIsAnErrorAndTheListIsEmpty)
{
    EXPECT_EQ(listOf(" Page one\nOther two\n"), Aliases());
    EXPECT_TRUE(said("Codepage name Page does not start in column 1"));
    EXPECT_TRUE(failed());
}

TEST_F(Alias, ACodePageWithoutAliasesGivesNoNode)
{
    EXPECT_EQ(listOf("Lonely\nPage one\n"), (Aliases{{"ONE", "Page"}}));
    EXPECT_FALSE(failed());
}

TEST_F(Alias, ACodePageThatTheControlFileDoesNotListIsTaken)
{
    EXPECT_EQ(listOf("Unlisted one\n"), (Aliases{{"ONE", "Unlisted"}}));
}

TEST_F(Alias, ACodePageNameOf32CharactersIsTaken)
{
    const std::string name(32, 'p');
    EXPECT_EQ(listOf(name + " one\n"), (Aliases{{"ONE", name}}));
}

TEST_F(Alias, ACodePageNameOf33CharactersEndsTheReadingAndTheAliasesBeforeItStay)
{
    const std::string name(33, 'p');
    EXPECT_EQ(listOf("Page one\n" + name + " two\nOther three\n"), (Aliases{{"ONE", "Page"}}));
    EXPECT_TRUE(said("codepage name length (33) for " + name + " exceeds maximum of 32"));
    EXPECT_TRUE(failed());
    EXPECT_STREQ(TSGetCodepageFromAlias(&manager(), "one"), "Page");
}

TEST_F(Alias, AnAliasOf64CharactersIsTaken)
{
    EXPECT_EQ(listOf("Page " + std::string(64, 'A') + " b\n"),
              (Aliases{{std::string(64, 'A'), "Page"}, {"B", "Page"}}));
}

// Deliberate: the report names the limit of code page names.
TEST_F(Alias, AnAliasOf65CharactersEndsTheReadingWithAReportOf32)
{
    const std::string name(65, 'a');
    EXPECT_EQ(listOf("Page one " + name + " two\n"), (Aliases{{"ONE", "Page"}}));
    EXPECT_TRUE(said("Alias name length (65) for " + name + " exceeds maximum of 32"));
    EXPECT_TRUE(failed());
}

TEST_F(Alias, ALineLongerThanTheBufferIsReadAsSeveral)
{
    // The first piece holds 32,766 characters and ends inside a run of blanks; the second piece
    // begins with a blank, so that it goes on with the entry.
    std::string text = "Page one" + std::string(32766 - 8, ' ') + " two\n";
    EXPECT_EQ(listOf(text), (Aliases{{"ONE", "Page"}, {"TWO", "Page"}}));
    EXPECT_FALSE(failed());
    // A piece that begins with another character is an entry of its own.
    text = "Page one" + std::string(32766 - 8, ' ') + "Two three\n";
    EXPECT_EQ(listOf(text), (Aliases{{"ONE", "Page"}, {"THREE", "Two"}}));
}

TEST_F(Alias, ALookupFindsAnAliasInAnyCase)
{
    listOf("Page MixedCase\nOther lower\n");
    for (const char* name : {"mixedcase", "MIXEDCASE", "mIXEDcASE"})
        EXPECT_STREQ(TSGetCodepageFromAlias(&manager(), name), "Page");
    EXPECT_STREQ(TSGetCodepageFromAlias(&manager(), "LOWER"), "Other");
    EXPECT_TRUE(said("Searching for LOWER."));
    EXPECT_TRUE(said("LOWER -> Other"));
}

TEST_F(Alias, ALookupNeedsTheWholeAlias)
{
    listOf("Page alias\n");
    for (const char* name : {"", "alia", "aliass", "Page"}) {
        Trace::clear();
        EXPECT_EQ(TSGetCodepageFromAlias(&manager(), name), nullptr);
        EXPECT_FALSE(Trace::printed(" -> "));
    }
}

TEST_F(Alias, OfTwoAliasesEqualInAllButCaseTheFirstWins)
{
    listOf("Page same\nOther SAME\n");
    EXPECT_EQ(list().size(), 2u);
    EXPECT_STREQ(TSGetCodepageFromAlias(&manager(), "Same"), "Page");
}

TEST_F(Alias, MessagesHaveTheFormatsThatServicesKnowThemBy)
{
    const auto has = [](std::string_view format) {
        const std::vector<TraceRecord> records = Trace::records();
        return std::any_of(records.begin(), records.end(),
                           [format](const TraceRecord& record) { return record.format == format; });
    };
    listOf("Page one " + std::string(65, 'a') + "\n");
    EXPECT_TRUE(has("Processing codepage '%s'"));
    EXPECT_TRUE(has("Processing alias '%s'"));
    EXPECT_TRUE(has("Saved alias %s, length = %d"));
    EXPECT_TRUE(has("Alias name length (%d) for %s exceeds maximum of %d"));
    listOf(" Page one\n");
    EXPECT_TRUE(has("Codepage name %s does not start in column 1"));
    listOf(std::string(33, 'p') + " one\n");
    EXPECT_TRUE(has("codepage name length (%d) for %s exceeds maximum of %d"));
}

TEST_F(Alias, TheStepsAreTraced)
{
    listOf("Page one\n");
    EXPECT_TRUE(said("Processing codepage 'Page'"));
    EXPECT_TRUE(said("Processing alias 'one'"));
    EXPECT_TRUE(said("Saved alias ONE, length = 3"));
    Trace::setMask(~std::uint32_t{TRC1_DETAIL});
    listOf("Page one\n");
    EXPECT_FALSE(Trace::printed("Processing"));
    EXPECT_FALSE(Trace::printed("Saved alias"));
}

TEST_F(Alias, WithoutMemoryTheReadingEndsAndTheAliasesBeforeItStay)
{
    alias("Page one two three\n");
    for (std::uint32_t n = 0; n < 3; ++n) {
        while (tsGlobals)
            TSTerm();
        Trace::clear();
        // The area, the manager, the raw table, the table; then the nodes.
        Allocator::failAllocation(Slot::kAllocateObject, 5 + n);
        EXPECT_EQ(TSInit(directory().c_str(), Allocator::allocate, Allocator::free,
                         Allocator::allocateObject, Allocator::freeObject, 0, 0),
                  TS_ERR_NONE);
        EXPECT_FALSE(Allocator::failurePending());
        EXPECT_EQ(list().size(), n);
        EXPECT_TRUE(failed());
        const char* const names[] = {"one", "two", "three"};
        EXPECT_TRUE(said("Unable to allocate " + std::to_string(sizeof(TSAliasNode)) +
                         " bytes for codepage Page, alias " + names[n]));
    }
}

TEST_F(Alias, TheNodesStayInThePairOfObjectsAndTheStopComesBack)
{
    startedList();
    TSTerm();
    const std::uint32_t taken = Allocator::calls(Slot::kAllocateObject);
    const std::uint32_t given = Allocator::calls(Slot::kFreeObject);
    listOf("Page one two three\n");
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(Allocator::calls(Slot::kAllocateObject), taken + 3);
    EXPECT_EQ(Allocator::calls(Slot::kFreeObject), given + 3);
    EXPECT_EQ(tsGlobals, nullptr);
}

TEST_F(Alias, TheListIsThatOfTheDirectoryThatWorked)
{
    alias("Page one\n");
    setConfig("TS_LOCALEDIR", directory());
    EXPECT_EQ(TSInit("nowhere", Allocator::allocate, Allocator::free, Allocator::allocateObject,
                     Allocator::freeObject, 0, 0),
              TS_ERR_NONE);
    EXPECT_EQ(list(), (Aliases{{"ONE", "Page"}}));
}

TEST_F(Alias, ABuiltinTableHasNoAliases)
{
    alias("Page one\n");
    workshop_.make("control.nls", Bytes(100, 0));
    EXPECT_EQ(TSInit(directory().c_str(), Allocator::allocate, Allocator::free,
                     Allocator::allocateObject, Allocator::freeObject, 0, 0),
              TS_ERR_NO_CONTROL_FILE);
    EXPECT_EQ(manager().aliases, nullptr);
    EXPECT_EQ(TSGetCodepageFromAlias(&manager(), "one"), nullptr);
}

TEST_F(Alias, AnyBytesAreSurvived)
{
    std::string text;
    std::uint32_t state = 1;
    for (int i = 0; i < 200000; ++i) {
        state = state * 1664525 + 1013904223;
        const char bytes[] = {' ',  '\t', '\n', '\r',
                              '\v', '\0', '#',  static_cast<char>(state >> 24)};
        text += bytes[state >> 13 & 7];
    }
    listOf("Page one\n" + text);
    EXPECT_STREQ(TSGetCodepageFromAlias(&manager(), "ONE"), "Page");
}

// Deliberate: aliases take no part in the lookup of a locale's code page.
TEST_F(Alias, ALocaleNameKnowsNoAlias)
{
    listOf("Page one\n");
    std::int32_t code = 0;
    EXPECT_EQ(TSGetLocale("North.one", 0, &code), nullptr);
    EXPECT_EQ(code, TS_ERR_CODEPAGE);
}

} // namespace
} // namespace vlx::test
