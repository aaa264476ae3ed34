// Every character of every shipped code page, read back by a reader of its own and compared with
// the source, with ICU and with glibc. What differs from those two stands in
// codepage-differences.tsv, with the reason; a line that no longer holds fails too.
#include <algorithm>
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include "characters.hpp"
#include "converter.hpp"
#include "page_reader.hpp"
#include "shipped.hpp"
#include "sourcefile.hpp"
#include "width.hpp"

using namespace vlx::data;

namespace {

constexpr std::uint32_t kHalfWidth = 0x10000000;
constexpr std::uint32_t kIdeographWord = 0x40000801;
constexpr std::uint32_t kUpper = 0x002;
constexpr std::uint32_t kLower = 0x004;

CharacterData loaded(CharacterData::Repertoire repertoire)
{
    Diagnostics diagnostics;
    return CharacterData::load(VLX_DATA_DIRECTORY "/unicode", repertoire, diagnostics).value();
}

const CharacterData& characters()
{
    static const CharacterData data = loaded(CharacterData::kWithYounger);
    return data;
}

// The page that has all characters has the words of the library.
const CharacterData& libraryCharacters()
{
    static const CharacterData data = loaded(CharacterData::kLibrary);
    return data;
}

// How a converter differs from the page at a key; the table of differences explains the words.
using Differences = std::map<std::uint32_t, std::string>;

template <class Map>
Differences differencesOf(const Map& ours, const Map& theirs)
{
    Differences found;
    for (const auto& [key, value] : ours)
        if (const auto other = theirs.find(key); other == theirs.end())
            found[key] = "missing";
        else if (other->second != value)
            found[key] = "other";
    for (const auto& [key, value] : theirs)
        if (!ours.contains(key))
            found[key] = "extra";
    return found;
}

// Marks what the converter itself does not take back.
void markOneWay(Differences& found, const vlx::import::ConverterTables& theirs)
{
    for (auto& [key, kind] : found) {
        const auto character = theirs.encode.find(static_cast<std::uint16_t>(key));
        if (character == theirs.encode.end())
            continue;
        const auto back = theirs.decode.find(character->second);
        if (back == theirs.decode.end() || back->second != key)
            kind = "oneway";
    }
}

// A row of the table of differences: so many keys, all of them within the runs.
struct Listed {
    std::string kind;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> runs;
    int count;
    int seen = 0;

    bool covers(std::uint32_t key, const std::string& how) const
    {
        return how == kind && std::any_of(runs.begin(), runs.end(), [key](const auto& run) {
                   return key >= run.first && key <= run.second;
               });
    }
};

// Of the form 0025,0071-0073.
std::vector<std::pair<std::uint32_t, std::uint32_t>> parseRuns(std::string text)
{
    std::vector<std::pair<std::uint32_t, std::uint32_t>> runs;
    std::replace(text.begin(), text.end(), ',', ' ');
    for (const std::string_view run : wordsOf(text)) {
        const std::size_t dash = std::min(run.find('-'), run.size());
        const std::string_view last = dash < run.size() ? run.substr(dash + 1) : run;
        runs.emplace_back(parseHex(run.substr(0, dash), 0xFFFFFF).value(),
                          parseHex(last, 0xFFFFFF).value());
    }
    return runs;
}

std::vector<Listed> listedDifferences(const std::string& page, const std::string& converter,
                                      const std::string& direction)
{
    std::vector<Listed> rows;
    Diagnostics diagnostics;
    const auto table = readSource(VLX_TEST_DIRECTORY "/codepage-differences.tsv", diagnostics);
    for (const SourceLine& line : table.value()) {
        const auto words = wordsOf(line.text);
        if (words.size() > 6 && words[0] == page && words[1] == converter && words[2] == direction)
            rows.push_back({std::string(words[3]), parseRuns(std::string(words[4])),
                            static_cast<int>(parseDecimal(words[5], 0xFFFF).value())});
    }
    return rows;
}

std::string keyText(std::uint32_t key)
{
    return hexText(key, key > 0xFFFF ? 6 : 4);
}

void expectListed(const Differences& found, const std::string& page, const std::string& converter,
                  const std::string& direction)
{
    std::vector<Listed> listed = listedDifferences(page, converter, direction);
    std::string unlisted;
    for (const auto& difference : found) {
        const auto row = std::find_if(listed.begin(), listed.end(), [&](const Listed& one) {
            return one.covers(difference.first, difference.second);
        });
        if (row == listed.end())
            unlisted += keyText(difference.first) + " " + difference.second + ", ";
        else
            ++row->seen;
    }
    EXPECT_EQ(unlisted, "") << page << ' ' << converter << ' ' << direction;
    for (const Listed& row : listed)
        EXPECT_EQ(row.seen, row.count) << page << ' ' << converter << ' ' << direction << ' '
                                       << row.kind << " from " << keyText(row.runs.front().first);
}

void expectAgreement(const PageReader& reader, const std::string& page,
                     const std::string& converter, const vlx::import::ConverterTables& theirs)
{
    Differences decoding = differencesOf(reader.allDecoded(), theirs.decode);
    for (const auto& [character, units] : theirs.impossible)
        decoding[character] = "wide";
    expectListed(decoding, page, converter, "decode");
    Differences encoding = differencesOf(reader.allEncoded(), theirs.encode);
    markOneWay(encoding, theirs);
    expectListed(encoding, page, converter, "encode");
}

// By ICU; signs that stand for a letter stay: the micro sign, and ohm, kelvin and angstrom.
UChar32 caseOf(UChar32 value, UChar32 (*map)(UChar32))
{
    const bool sign = value == 0x00B5 || value == 0x2126 || value == 0x212A || value == 0x212B;
    return sign ? value : map(value);
}

class ShippedPages : public testing::TestWithParam<ShippedPage> {
  protected:
    PageReader reader_{compiledPath(GetParam().id), GetParam().id};
};

TEST_P(ShippedPages, DecodeAsTheSourceSays)
{
    EXPECT_EQ(reader_.allDecoded(), decodeTableOf(sourcePath(GetParam().name)));
}

TEST_P(ShippedPages, EncodeEveryValueThatIsDecodedAndNothingElse)
{
    const auto decoded = reader_.allDecoded();
    const auto encoded = reader_.allEncoded();
    for (const auto& [character, value] : decoded)
        EXPECT_EQ(decoded.at(encoded.at(value)), value) << hexText(character, 4);
    for (const auto& [value, character] : encoded)
        EXPECT_EQ(decoded.at(character), value) << hexText(value, 4);
}

class PagesOfIcu : public ShippedPages {};
class PagesOfGlibc : public ShippedPages {};

TEST_P(PagesOfIcu, AgreeWithIt)
{
    const ShippedPage& page = GetParam();
    vlx::import::ConverterTables icu;
    ASSERT_TRUE(
        vlx::import::readIcu(page.icu.c_str(), reader_.maxBytes(), reader_.stateful(), icu));
    expectAgreement(reader_, page.name, "icu", icu);
}

TEST_P(PagesOfGlibc, AgreeWithIt)
{
    const ShippedPage& page = GetParam();
    vlx::import::ConverterTables glibc;
    if (!vlx::import::readIconv(page.glibc.c_str(), reader_.maxBytes(), reader_.stateful(), glibc))
        GTEST_SKIP() << "iconv has no " << page.glibc;
    expectAgreement(reader_, page.name, "glibc", glibc);
}

TEST_P(ShippedPages, HaveTheTypesOfTheirCharacters)
{
    const auto decoded = reader_.allDecoded();
    for (std::uint32_t byte = 0; byte < 0x100; ++byte) {
        const auto cell = decoded.find(byte);
        const std::uint32_t wanted =
            cell == decoded.end() ? 0 : characters().typeWord(cell->second) | kHalfWidth;
        EXPECT_EQ(reader_.type(static_cast<std::uint8_t>(byte)), wanted) << hexText(byte, 2);
    }
    for (const auto& [character, value] : decoded)
        if (character > 0xFF) {
            const bool userDefined = value >= 0xE000 && value <= 0xF8FF;
            EXPECT_EQ(reader_.record(character).type,
                      userDefined ? kIdeographWord : characters().typeWord(value))
                << hexText(character, 4);
        }
}

TEST_P(ShippedPages, MapTheCaseOfSingleBytesAsIcuDoes)
{
    const auto decoded = reader_.allDecoded();
    const auto encoded = reader_.allEncoded();
    for (std::uint32_t at = 0; at < 0x100; ++at) {
        const auto byte = static_cast<std::uint8_t>(at);
        const auto image = [&](UChar32 value) {
            const auto found = encoded.find(static_cast<std::uint16_t>(value));
            return found != encoded.end() && found->second <= 0xFF ? found->second : at;
        };
        const auto cell = decoded.find(at);
        const bool assigned = cell != decoded.end();
        EXPECT_EQ(reader_.toUpper(byte), assigned ? image(caseOf(cell->second, u_toupper)) : at);
        EXPECT_EQ(reader_.toLower(byte), assigned ? image(caseOf(cell->second, u_tolower)) : at);
    }
}

TEST_P(ShippedPages, MapTheCaseOfLongerCharactersAsIcuDoes)
{
    const auto decoded = reader_.allDecoded();
    const auto encoded = reader_.allEncoded();
    for (const auto& [character, value] : decoded) {
        if (character <= 0xFF)
            continue;
        const auto [type, delta] = reader_.record(character);
        const UChar32 image = type & kUpper   ? caseOf(value, u_tolower)
                              : type & kLower ? caseOf(value, u_toupper)
                                              : value;
        const auto found = encoded.find(static_cast<std::uint16_t>(image));
        const bool mapped =
            image != value && found != encoded.end() &&
            PageReader::bytesOf(found->second).size() == PageReader::bytesOf(character).size();
        EXPECT_EQ(character + delta, mapped ? found->second : character) << hexText(character, 4);
    }
}

TEST_P(ShippedPages, KnowTheWideFormsThatTheyHave)
{
    if (reader_.maxBytes() == 1)
        return;
    const auto encoded = reader_.allEncoded();
    for (const auto& [character, value] : reader_.allDecoded()) {
        const std::uint16_t wide = toFullWidth(value);
        const auto found = encoded.find(wide);
        const bool has = wide != value && found != encoded.end();
        EXPECT_EQ(reader_.mapValue(character), has ? found->second : 0) << hexText(character, 4);
    }
}

std::string titleOf(const testing::TestParamInfo<ShippedPage>& page)
{
    return pageName(page.param);
}
INSTANTIATE_TEST_SUITE_P(Page, ShippedPages, testing::ValuesIn(shippedPages()), titleOf);
INSTANTIATE_TEST_SUITE_P(Page, PagesOfIcu, testing::ValuesIn(shippedPages(&ShippedPage::icu)),
                         titleOf);
INSTANTIATE_TEST_SUITE_P(Page, PagesOfGlibc, testing::ValuesIn(shippedPages(&ShippedPage::glibc)),
                         titleOf);

TEST(ShippedPageTable, HasEverySourceAndEachPageHasAConverter)
{
    std::set<std::string> names{"UTF-8"};
    for (const ShippedPage& page : shippedPages()) {
        EXPECT_FALSE(page.icu.empty() && page.glibc.empty()) << page.name;
        names.insert(page.name);
    }
    std::set<std::string> sources;
    for (const auto& file : std::filesystem::directory_iterator(VLX_DATA_DIRECTORY "/codepages"))
        sources.insert(file.path().stem().string());
    EXPECT_EQ(names, sources);
}

TEST(Utf8Page, HasTheLengthsOfTheRule)
{
    const PageReader reader(compiledPath(57352), 57352);
    EXPECT_EQ(reader.maxBytes(), 3);
    for (unsigned lead = 0; lead < 0x100; ++lead) {
        const int length = lead < 0xC0 || lead > 0xEF ? 1 : lead < 0xE0 ? 2 : 3;
        EXPECT_EQ(reader.length(static_cast<std::uint8_t>(lead)), length) << hexText(lead, 2);
        EXPECT_EQ(reader.decode(lead), lead < 0x80 ? lead : 0xFFFD) << hexText(lead, 2);
    }
}

TEST(Utf8Page, HasTypesAndWideFormsOfEveryValue)
{
    const PageReader reader(compiledPath(57352), 57352);
    for (std::uint32_t value = 0x80; value < 0x10000; ++value) {
        const auto value16 = static_cast<std::uint16_t>(value);
        const std::uint32_t character = reader.encode(value16);
        ASSERT_EQ(reader.decode(character), value);
        EXPECT_EQ(reader.record(character).type, libraryCharacters().typeWord(value16));
        const std::uint16_t wide = toFullWidth(value16);
        EXPECT_EQ(reader.mapValue(character), wide == value ? 0 : reader.encode(wide));
    }
}

TEST(Utf8Page, MapsCaseWhereTheLengthStays)
{
    const PageReader reader(compiledPath(57352), 57352);
    const auto other = [&](std::uint16_t value) {
        const std::uint32_t character = reader.encode(value);
        return reader.decode(character + reader.record(character).delta);
    };
    EXPECT_EQ(other(0x00E4), 0x00C4);
    EXPECT_EQ(other(0x00C4), 0x00E4);
    EXPECT_EQ(other(0x00FF), 0x0178);
    EXPECT_EQ(other(0x044F), 0x042F);
    EXPECT_EQ(other(0x1E00), 0x1E01);
    EXPECT_EQ(other(0xFF21), 0xFF41);
    EXPECT_EQ(other(0x0130), 0x0130) << "its small letter is one byte long";
    EXPECT_EQ(other(0x4E00), 0x4E00);
}

} // namespace
