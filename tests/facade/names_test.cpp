// Ids and names of objects.
#include <cstring>

#include "facade/facade_fixture.hpp"
#include "frame/alias.hpp"

namespace vlx::test {
namespace {

class FacadeNames : public Facade {
  protected:
    using GetName = std::int32_t (*)(std::int32_t id, char* buffer, std::int32_t size);

    static std::string name(GetName get, std::int32_t id)
    {
        char buffer[40] = "untouched";
        EXPECT_EQ(get(id, buffer, sizeof buffer), 0);
        return buffer;
    }

    // As if the line "TARGET ALIAS" stood in alias.txt.
    static void addAlias(const char* target, const char* alias)
    {
        auto* const node = static_cast<TSAliasNode*>(allocateObject(sizeof(TSAliasNode)));
        std::memset(node, 0, sizeof *node);
        std::strcpy(node->codePageName, target);
        std::strcpy(node->aliasName, alias);
        node->next = objectManager()->aliases;
        objectManager()->aliases = node;
    }
};

TEST_F(FacadeNames, IdsOfNamesInAnyCase)
{
    EXPECT_EQ(NLS1_GetLanguageId("GERMAN", &code_), 2);
    EXPECT_EQ(code_, 0);
    EXPECT_EQ(NLS1_GetTerritoryId("nippon", &code_), 30);
    EXPECT_EQ(NLS1_GetCodepageId("Latin1", &code_), 30);
    EXPECT_EQ(NLS1_GetSortId("book", &code_), 2);
    EXPECT_EQ(NLS1_GetSortId("book", nullptr), 2);
}

TEST_F(FacadeNames, AnUnknownNameIs0With37)
{
    for (const auto get :
         {NLS1_GetLanguageId, NLS1_GetTerritoryId, NLS1_GetCodepageId, NLS1_GetSortId}) {
        EXPECT_EQ(get("Nothing", &code_), 0);
        EXPECT_EQ(code_, 37);
        EXPECT_EQ(get("", &code_), 0);
        EXPECT_EQ(code_, 37);
    }
}

TEST_F(FacadeNames, TheBinarySortIs0Without37)
{
    EXPECT_EQ(NLS1_GetSortId("BINARY", &code_), 0);
    EXPECT_EQ(code_, 0);
    EXPECT_EQ(NLS1_GetSortId("binary", &code_), 0);
    EXPECT_EQ(code_, 0);
}

TEST_F(FacadeNames, AnAliasThatIsANameTooIsAnAlias)
{
    addAlias("Latin1", "WEST");
    addAlias("Double", "US");
    EXPECT_EQ(NLS1_GetCodepageId("west", &code_), 30);
    EXPECT_EQ(NLS1_GetCodepageId("US", &code_), 32);
    EXPECT_EQ(NLS1_GetCodepageId("Shift", &code_), 33);
}

TEST_F(FacadeNames, AnAliasIsNoLanguage)
{
    addAlias("German", "Deutsch");
    for (const auto get : {NLS1_GetLanguageId, NLS1_GetTerritoryId, NLS1_GetSortId}) {
        EXPECT_EQ(get("Deutsch", &code_), 0);
        EXPECT_EQ(code_, 37);
    }
}

TEST_F(FacadeNames, NamesOfIds)
{
    EXPECT_EQ(name(NLS1_GetLanguageName, 3), "Japanese");
    EXPECT_EQ(name(NLS1_GetTerritoryName, 20), "Germany");
    EXPECT_EQ(name(NLS1_GetCodepageName, 33), "Shift");
    EXPECT_EQ(name(NLS1_GetSortName, 1), "Plain");
}

TEST_F(FacadeNames, PairsAreCutToTheirSide)
{
    EXPECT_EQ(name(NLS1_GetLanguageName, 20 * 65536 + 3), "Japanese");
    EXPECT_EQ(name(NLS1_GetTerritoryName, 20 * 65536 + 3), "Germany");
    EXPECT_EQ(name(NLS1_GetCodepageName, 20 * 65536 + 33), "Shift");
    EXPECT_EQ(name(NLS1_GetSortName, 7 * 65536 + 2), "Book");
    char buffer[40] = "#";
    EXPECT_EQ(NLS1_GetLanguageName(20 * 65536, buffer, 40), 37);
    EXPECT_EQ(NLS1_GetTerritoryName(65535, buffer, 40), 37);
}

TEST_F(FacadeNames, AnUnknownIdLeavesTheBuffer)
{
    char buffer[40] = "#";
    for (const auto get :
         {NLS1_GetLanguageName, NLS1_GetTerritoryName, NLS1_GetCodepageName, NLS1_GetSortName}) {
        EXPECT_EQ(get(99, buffer, sizeof buffer), 37);
        EXPECT_STREQ(buffer, "#");
    }
}

TEST_F(FacadeNames, TheBinarySortHasNoName)
{
    char buffer[40] = "#";
    EXPECT_EQ(NLS1_GetSortName(0, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "#");
}

TEST_F(FacadeNames, ABufferOfTheNamesLengthIs40)
{
    Trace::setMask(TRC1_ERRORS);
    char buffer[40] = "#";
    EXPECT_EQ(NLS1_GetLanguageName(2, buffer, 6), 40);
    EXPECT_TRUE(
        Trace::printed("Object name length (6) for German exceeds output buffer length (6)"));
    EXPECT_STREQ(buffer, "#");
    EXPECT_EQ(NLS1_GetLanguageName(2, buffer, 7), 0);
    EXPECT_STREQ(buffer, "German");
    EXPECT_EQ(NLS1_GetLanguageName(2, nullptr, 0), 40);
    EXPECT_EQ(NLS1_GetLanguageName(2, nullptr, -1), 40);
}

TEST_F(FacadeNames, NoObjectIsLoaded)
{
    const int open = MemoryHost::openFiles();
    name(NLS1_GetLanguageName, 3);
    NLS1_GetCodepageId("Shift", &code_);
    EXPECT_EQ(MemoryHost::openFiles(), open);
}

TEST_F(FacadeNames, ANullNameOrBufferIsRefused)
{
    for (const auto get :
         {NLS1_GetLanguageId, NLS1_GetTerritoryId, NLS1_GetCodepageId, NLS1_GetSortId}) {
        EXPECT_EQ(get(nullptr, &code_), 0);
        EXPECT_EQ(code_, 2);
    }
    EXPECT_EQ(NLS1_GetLanguageName(2, nullptr, 40), 2);
}

using FacadeBuiltinNames = FacadeTest;

TEST_F(FacadeBuiltinNames, TheBuiltinTableHasThree)
{
    start();
    char buffer[40];
    EXPECT_EQ(NLS1_GetLanguageName(1, buffer, 40), 0);
    EXPECT_STREQ(buffer, "English");
    EXPECT_EQ(NLS1_GetTerritoryName(1, buffer, 40), 0);
    EXPECT_STREQ(buffer, "UnitedStates");
    EXPECT_EQ(NLS1_GetCodepageName(1, buffer, 40), 0);
    EXPECT_STREQ(buffer, "US-ASCII");
}

TEST_F(FacadeBuiltinNames, ASortIdThereIsAnsweredWithThePageBeforeIt)
{
    start();
    char buffer[40];
    EXPECT_EQ(NLS1_GetSortName(1, buffer, 40), 0); // Deliberate: the range of sorts is empty
    EXPECT_STREQ(buffer, "US-ASCII");
    EXPECT_EQ(NLS1_GetSortName(2, buffer, 40), 37);
}

} // namespace
} // namespace vlx::test
