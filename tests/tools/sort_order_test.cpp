// The shipped sorts: which there are, that they are what the importer makes, and the order of the
// root by the conformance test of CLDR.
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "container.hpp"
#include "import.hpp"
#include "sort_reader.hpp"
#include "sort_root.hpp"
#include "source_tree.hpp"
#include "tsconst.h"

using namespace vlx::data;

namespace {

namespace fs = std::filesystem;

constexpr const char* kCldr = "/usr/share/unicode/cldr";

std::string objectPath(int id)
{
    return std::string(VLX_LOCALE "/") +
           objectFileName(TS_OBJ_SORT, static_cast<std::uint16_t>(id));
}

// Ids are for ever: locales name them in their data, and callers keep them.
TEST(ShippedSorts, HaveTheirIdsAndNames)
{
    const std::vector<std::string> names = {"General",
                                            "Spanish",
                                            "TraditionalSpanish",
                                            "DanishNorwegian",
                                            "Swedish",
                                            "Finnish",
                                            "Croatian",
                                            "Czech",
                                            "Estonian",
                                            "Hungarian",
                                            "Latvian",
                                            "Lithuanian",
                                            "Romanian",
                                            "Slovak",
                                            "Slovenian",
                                            "Thai",
                                            "Turkish",
                                            "Ukrainian",
                                            "Vietnamese",
                                            "CanadianFrench",
                                            "Polish",
                                            "Icelandic",
                                            "Albanian",
                                            "Catalan",
                                            "GermanPhonebook",
                                            "IgnorePunctuation"};
    Diagnostics diagnostics;
    const auto control = readContainer(VLX_LOCALE "/control.nls", diagnostics);
    ASSERT_TRUE(control) << linesOf(diagnostics);
    std::vector<std::string> found;
    for (const TSObjDisk& entry : controlEntries(*control)) {
        if (entry.type != TS_OBJ_SORT)
            continue;
        found.push_back(nameOf(entry));
        EXPECT_EQ(entry.id, found.size());
    }
    EXPECT_EQ(found, names);
}

// Without contractions no character looks ahead, which is dear; only languages with letters of two
// characters have them.
TEST(ShippedSorts, HaveContractionsWhereTheLanguageNeedsThem)
{
    for (const int id : {1, 2, 5, 6, 9, 11, 13, 15, 17, 18, 20, 21, 22, 25, 26})
        EXPECT_EQ(SortReader::ofFile(objectPath(id)).contractionCount(), 0U) << id;
    for (const auto& [id, count] :
         {std::pair{3, 6}, {7, 9}, {8, 4}, {12, 3}, {14, 4}, {19, 120}, {23, 27}, {24, 2}})
        EXPECT_EQ(SortReader::ofFile(objectPath(id)).contractionCount(),
                  static_cast<unsigned>(count))
            << id;
}

TEST(ShippedSorts, CoverEveryCharacter)
{
    const SortReader sort = SortReader::ofFile(objectPath(1));
    for (unsigned page = 0; page < 256; ++page)
        EXPECT_EQ(sort.pageFlags(page) & ~2U, 0U) << page;
    std::map<unsigned, unsigned> owners; // level 1 weights of characters that no language orders
    for (unsigned value = 0x4E00; value < 0xA000; ++value)
        EXPECT_TRUE(
            owners.emplace(sort.lookUp(static_cast<char16_t>(value)).first.weight1, value).second)
            << value;
}

TEST(ShippedSorts, AreWhatTheImporterMakes)
{
    if (!fs::exists(kCldr))
        GTEST_SKIP() << kCldr << " is not there";
    const SourceTree tree;
    vlx::import::CldrOptions options;
    options.outputDirectory = tree.path("new");
    ASSERT_TRUE(vlx::import::importSorts(options));
    std::size_t files = 0;
    for (const auto& entry : fs::directory_iterator(VLX_DATA_DIRECTORY "/sorts")) {
        ++files;
        EXPECT_EQ(contentOf(entry.path().string()),
                  contentOf(tree.path("new/sorts/" + entry.path().filename().string())))
            << entry.path();
    }
    EXPECT_EQ(files, 27U);
}

TEST(SortImport, FailsWithoutItsFiles)
{
    const SourceTree tree;
    vlx::import::CldrOptions options;
    options.cldrDirectory = tree.path("nowhere");
    options.outputDirectory = tree.path("new");
    EXPECT_FALSE(vlx::import::importSorts(options));
}

// A line of the conformance test: characters, and their weights in brackets.
struct Line {
    std::u16string text;
    std::string weights;
    std::string name;
};

class Conformance : public testing::Test {
  protected:
    void SetUp() override
    {
        if (!fs::exists(kCldr))
            GTEST_SKIP() << kCldr << " is not there";
        Diagnostics diagnostics;
        root_ = RootTable::load(VLX_DATA_DIRECTORY "/sorts/root.keys", diagnostics);
        ASSERT_TRUE(root_) << linesOf(diagnostics);
    }

    // The lines of two characters that are on pages with records, or ideographs or syllables of
    // Hangul, and in canonical order.
    std::vector<Line> linesOfTwo(const std::string& file) const
    {
        std::ifstream in(std::string(kCldr) + "/common/uca/" + file);
        std::vector<Line> lines;
        for (std::string raw; std::getline(in, raw);) {
            const std::size_t semicolon = raw.find(';');
            if (raw.empty() || raw[0] == '#' || semicolon == std::string::npos)
                continue;
            Line line{{}, raw.substr(raw.rfind("\t[")), raw.substr(semicolon)};
            std::istringstream words(raw.substr(0, semicolon));
            bool inside = true;
            for (unsigned value = 0; words >> std::hex >> value;) {
                inside = inside && value <= 0xFFFF && isInside(static_cast<char16_t>(value));
                line.text += static_cast<char16_t>(value);
            }
            if (inside && line.text.size() == 2 && isCanonical(line.text))
                lines.push_back(std::move(line));
        }
        return lines;
    }
    bool isInside(char16_t c) const
    {
        return root_->pages()[c >> 8] || (c >= 0x4E00 && c <= 0x9FFF) ||
               (c >= 0xAC00 && c <= 0xD7A3);
    }
    bool isCanonical(const std::u16string& text) const
    {
        std::u16string parts;
        for (const char16_t unit : text)
            parts += root_->decomposed({&unit, 1});
        return parts == root_->decomposed(text);
    }

    // Level 1 weights of a line.
    static std::size_t letters(const Line& line)
    {
        const std::size_t begin = line.weights.find('[') + 1;
        std::istringstream words(line.weights.substr(begin, line.weights.find('|') - begin));
        std::size_t count = 0;
        for (std::string word; words >> word;)
            ++count;
        return count;
    }
    // Hangul letters have places among themselves, and syllables stand behind all of them.
    static bool hasHangul(const Line& line)
    {
        const char16_t c = line.text[0];
        return (c >= 0x1100 && c <= 0x11FF) || (c >= 0x3131 && c <= 0x318E) ||
               (c >= 0x3200 && c <= 0x321E) || (c >= 0x3260 && c <= 0x327E) || c >= 0xAC00;
    }

    std::optional<RootTable> root_;
};

// Every exception has one of two causes: a character of three or more letters, of which the format
// holds two, and Hangul letters beside syllables.
TEST_F(Conformance, PairsWithinTheRepertoireAreInOrder)
{
    const SortReader sort = SortReader::ofFile(objectPath(1));
    const std::vector<Line> lines = linesOfTwo("CollationTest_CLDR_NON_IGNORABLE.txt");
    ASSERT_GT(lines.size(), 40000U);
    std::map<std::string, int> causes;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const Line& above = lines[i - 1];
        const Line& line = lines[i];
        const int order = sort.compare(above.text, line.text);
        if (order < 0 || (order == 0 && above.weights == line.weights))
            continue;
        if (hasHangul(above) || hasHangul(line))
            ++causes["Hangul letters and syllables"];
        else if (letters(above) > 3 || letters(line) > 3)
            ++causes["three or more letters in one character"];
        else
            ADD_FAILURE() << above.name << "\n" << line.name;
    }
    int exceptions = 0;
    for (const auto& [cause, count] : causes) {
        exceptions += count;
        RecordProperty(cause, count);
    }
    const double passed = 1 - exceptions / static_cast<double>(lines.size() - 1);
    EXPECT_GE(passed, 0.997);
    EXPECT_EQ(causes.size(), 2U);
}

// With punctuation last of all, level 4 orders by place and not by weight alone, and a character
// that mixes punctuation with letters keeps the letters: a few more are out of order, and none is
// lost.
TEST_F(Conformance, PairsAreInOrderWithPunctuationLast)
{
    const SortReader sort = SortReader::ofFile(objectPath(26));
    const std::vector<Line> lines = linesOfTwo("CollationTest_CLDR_SHIFTED.txt");
    ASSERT_GT(lines.size(), 40000U);
    int exceptions = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const int order = sort.compare(lines[i - 1].text, lines[i].text);
        if (order == 0) {
            EXPECT_EQ(lines[i - 1].weights, lines[i].weights) << lines[i].name;
        }
        exceptions += order > 0;
    }
    EXPECT_LE(exceptions, static_cast<int>(lines.size() / 100));
}

} // namespace
