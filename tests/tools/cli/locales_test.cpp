// `vlx locales`, on a directory whose control file is written here.
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"
#include "frame/objfile.hpp"

namespace vlx::cli::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

struct Entry {
    std::uint8_t type;
    std::uint16_t id;
    const char* name;
};

constexpr Entry kEntries[] = {
    {0, 1, "English"},  {0, 2, "German"},   {1, 276, "Germany"},
    {2, 1, "US-ASCII"}, {2, 930, "IBM930"}, {2, 932, "MS932"},
};

// A control file with the entries of kEntries, which is all that listing needs.
std::string controlFile()
{
    TSObjHeader header{};
    header.magic = TSObjHeader::kMagic;
    header.sectionCount = std::uint16_t{1};
    header.sectionSize1 = static_cast<std::uint16_t>(std::size(kEntries) * sizeof(TSObjDisk));
    header.sectionOffset1 = std::uint32_t{sizeof header};
    std::string content(reinterpret_cast<const char*>(&header), sizeof header);
    for (const Entry& entry : kEntries) {
        TSObjDisk disk{};
        disk.id = entry.id;
        disk.type = entry.type;
        std::strncpy(disk.name, entry.name, sizeof disk.name - 1);
        content.append(reinterpret_cast<const char*>(&disk), sizeof disk);
    }
    return content;
}

class Locales : public testing::Test {
  protected:
    Locales() { workshop_.file("control.nls", controlFile()); }

    Outcome list(const std::string& arguments) const
    {
        return run("--locale-dir " + workshop_.path("") + " locales " + arguments);
    }

    Workshop workshop_;
};

TEST_F(Locales, AreGroupedByTypeWithCounts)
{
    const Outcome outcome = list("");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.out, workshop_.path("") + "\n"
                                                "\nLanguages (2)\n  English  German\n"
                                                "\nTerritories (1)\n  Germany\n"
                                                "\nCode pages (3)\n  US-ASCII  IBM930    MS932\n"
                                                "\nSorts (0)\n");
}

TEST_F(Locales, AreADocument)
{
    const json document = json::parse(list("--json").out);
    EXPECT_EQ(document["directory"], workshop_.path(""));
    EXPECT_EQ(document["language"], (json{{"count", 2}, {"names", {"English", "German"}}}));
    EXPECT_EQ(document["territory"]["count"], 1);
    EXPECT_EQ(document["codepage"]["names"], (json{"US-ASCII", "IBM930", "MS932"}));
    EXPECT_EQ(document["sort"], (json{{"count", 0}, {"names", json::array()}}));
}

TEST_F(Locales, OfOneType)
{
    EXPECT_EQ(list("--type territory").out,
              workshop_.path("") + "\n\nTerritories (1)\n  Germany\n");
    const json document = json::parse(list("--json --type language").out);
    EXPECT_TRUE(document.contains("language"));
    EXPECT_FALSE(document.contains("codepage"));
}

TEST_F(Locales, ComeFromTheVariableWithoutTheOption)
{
    const Surroundings surroundings{.localeDirectory = workshop_.path("")};
    EXPECT_EQ(run("locales", surroundings).out, list("").out);
}

TEST_F(Locales, ComeFromTheNextPlaceIfTheDirectoryHasNone)
{
    const Surroundings surroundings{.localeDirectory = workshop_.path("")};
    const Outcome outcome = run("--locale-dir /nowhere locales", surroundings);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, list("").out);
    EXPECT_EQ(outcome.errors,
              "vlx: /nowhere holds no control.nls; using " + workshop_.path("") + " instead.\n");
}

TEST_F(Locales, AreColouredOnATerminalAlone)
{
    EXPECT_THAT(list("").out, Not(HasSubstr("\033")));
    EXPECT_THAT(onTerminal("locales", ""), HasSubstr("\033["));
    const std::string plain = onTerminal("locales", "NO_COLOR=1");
    EXPECT_THAT(plain, HasSubstr("Languages ("));
    EXPECT_THAT(plain, Not(HasSubstr("\033")));
}

TEST(BuiltIn, ObjectsDoWithoutADirectory)
{
    if (std::filesystem::exists(VLX_DEFAULT_LOCALE "/control.nls"))
        GTEST_SKIP() << "the default locale directory exists on this machine";
    const Surroundings surroundings{.localeDirectory = "/nowhere"};
    const Outcome listed = run("locales --json", surroundings);
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.errors, HasSubstr("running on the built-in objects alone"));
    const json document = json::parse(listed.out);
    EXPECT_TRUE(document["directory"].is_null());
    EXPECT_EQ(document["codepage"]["names"], json{"US-ASCII"});

    const Workshop workshop;
    const json walk = walked("--locale English " + workshop.file("text", "a\nb\x80"), surroundings);
    EXPECT_TRUE(walk["codepage"].is_null());
    EXPECT_TRUE(walk["items"][0]["unicode"].is_null());
    EXPECT_EQ(walk["totals"]["characters"], 4);
    EXPECT_EQ(walk["totals"]["lines"], 2);
    EXPECT_TRUE(walk["totals"]["unmapped"].is_null());
}

} // namespace
} // namespace vlx::cli::test
