// `vlx walk`: what it says of a text, held against sources and oracles that know nothing of it.
#include <algorithm>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iconv.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

// The characters of a document as one UTF-8 text.
std::string textOf(const json& document)
{
    std::string text;
    for (const json& item : document["items"])
        if (item.contains("character") && !item["character"].is_null())
            text += item["character"].get<std::string>();
    return text;
}

// The bytes of all items, which are the bytes of the file.
std::string bytesOf(const json& document)
{
    std::string bytes;
    for (const json& item : document["items"]) {
        const auto hex = item["bytes"].get<std::string>();
        for (std::size_t i = 0; i < hex.size(); i += 2)
            bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

struct Example {
    const char* locale;
    const char* file;
    const char* source;
};

constexpr Example kExamples[] = {
    {"Japanese_Japan.MS932", "japanese.ms932.txt", "japanese.txt"},
    {"Japanese_Japan.IBM930", "japanese.ibm930.txt", "japanese-ebcdic.txt"},
    {"German_Germany.MS1252", "german.ms1252.txt", "german.txt"},
    {"English.UTF-8", "multilingual.utf8.txt", "multilingual.txt"},
};

TEST(Walk, ReadsEachExampleAsItsSource)
{
    for (const Example& example : kExamples) {
        const std::string source =
            contentOf(std::string(VLX_EXAMPLES "/sources/") + example.source);
        const json document =
            walked(std::string("--locale ") + example.locale + " " + example.file);
        EXPECT_EQ(textOf(document), source) << example.file;
        EXPECT_EQ(bytesOf(document), contentOf(std::string(VLX_EXAMPLES "/") + example.file));
        EXPECT_EQ(document["totals"]["lines"], std::count(source.begin(), source.end(), '\n'));
        EXPECT_EQ(document["totals"]["unmapped"], 0);
        for (const json& check : document["checks"])
            EXPECT_EQ(check["agrees"], true) << example.file;
    }
}

TEST(Walk, GoesBackOverWhatItWentForward)
{
    for (const Example& example : kExamples) {
        const std::string arguments =
            std::string("--locale ") + example.locale + " " + example.file;
        json forward = walked(arguments)["items"];
        std::reverse(forward.begin(), forward.end());
        EXPECT_EQ(walked("--backward " + arguments)["items"], forward) << example.file;
    }
}

TEST(Walk, ShowsEveryByteOfASingleBytePage)
{
    std::string all(256, '\0');
    for (std::size_t byte = 0; byte < all.size(); ++byte)
        all[byte] = static_cast<char>(byte);
    const Workshop workshop;
    const json document = walked("--locale German.MS1252 " + workshop.file("all", all));
    ASSERT_EQ(document["items"].size(), 256U);
    EXPECT_EQ(bytesOf(document), all);

    const iconv_t oracle = iconv_open("UTF-16LE", "CP1252");
    std::vector<int> unmapped;
    for (std::size_t byte = 0; byte < all.size(); ++byte) {
        char in = all[byte];
        unsigned char out[2] = {};
        char* from = &in;
        char* to = reinterpret_cast<char*>(out);
        std::size_t left = 1;
        std::size_t room = sizeof out;
        const json& item = document["items"][byte];
        if (iconv(oracle, &from, &left, &to, &room) == static_cast<std::size_t>(-1)) {
            iconv(oracle, nullptr, nullptr, nullptr, nullptr);
            EXPECT_TRUE(item["unicode"].is_null()) << byte;
            unmapped.push_back(static_cast<int>(byte));
            continue;
        }
        char expected[8];
        std::snprintf(expected, sizeof expected, "U+%04X", out[0] | out[1] << 8);
        EXPECT_EQ(item["unicode"], expected);
    }
    iconv_close(oracle);
    EXPECT_THAT(unmapped, ElementsAre(0x81, 0x8D, 0x8F, 0x90, 0x9D));
    EXPECT_EQ(document["totals"]["unmapped"], unmapped.size());
    EXPECT_EQ(run("walk --locale German.MS1252 " + workshop.path("all")).status, 1);
}

TEST(Walk, TellsACharacterThatTheEndCutsOff)
{
    const Workshop workshop;
    const std::string file = workshop.file("cut", "\x93\xFA\x96");
    const Outcome plain = run("walk --locale Japanese.MS932 " + file);
    EXPECT_EQ(plain.status, 1);
    EXPECT_THAT(plain.out, HasSubstr("cut off: 1 of 2 bytes"));
    const json cut = walked("--locale Japanese.MS932 " + file)["totals"]["cutOff"];
    EXPECT_EQ(cut, (json{{"offset", 2}, {"bytes", 1}, {"of", 2}}));
    EXPECT_EQ(
        walked("--locale English.UTF-8 " + workshop.file("e2", "a\xE2\x82"))["totals"]["cutOff"],
        (json{{"offset", 1}, {"bytes", 2}, {"of", 3}}));
}

TEST(Walk, CountsShiftBytesApartFromCharacters)
{
    const Workshop workshop;
    const std::string file = workshop.file("shifted", "\x0E\x45\x62\x0F\x25");
    const json totals = walked("--locale Japanese.IBM930 " + file)["totals"];
    EXPECT_EQ(totals["characters"], 2);
    EXPECT_EQ(totals["multiByte"], 1);
    EXPECT_EQ(totals["shiftBytes"], 2);
    EXPECT_EQ(run("walk --locale Japanese.IBM930 " + file).status, 0);
    // In a page without states the same bytes are control characters.
    EXPECT_EQ(walked("--locale German.MS1252 " + file)["totals"]["shiftBytes"], 0);
}

TEST(Walk, TakesATextThatEndsBehindAShiftByte)
{
    const Workshop workshop;
    for (const char* const text : {"\x0E", "\x25\x0E", "\x0E\x45", "\x0F", "\x0F\x25"}) {
        const std::string file = workshop.file("end", text);
        const json document = walked("--locale Japanese.IBM930 " + file);
        EXPECT_EQ(bytesOf(document), text);
        json back = walked("--backward --locale Japanese.IBM930 " + file)["items"];
        std::reverse(back.begin(), back.end());
        EXPECT_EQ(back, document["items"]);
    }
}

// Where shift bytes follow each other the library's functions read the text differently, which is
// told, and is not taken for a fault.
TEST(Walk, TellsWhereTheFunctionsDiffer)
{
    const Workshop workshop;
    const std::string file = workshop.file("runs", "\x25\x0E\x0F\x25");
    const Outcome outcome = run("walk --locale Japanese.IBM930 " + file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("differs (shift bytes follow each other"));
}

TEST(Walk, TakesNulBytesAndEmptyTexts)
{
    const Workshop workshop;
    using namespace std::string_view_literals;
    const std::string file = workshop.file("nul", "a\0b\0"sv);
    const json document = walked("--locale German.MS1252 " + file);
    EXPECT_EQ(document["totals"]["characters"], 4);
    EXPECT_EQ(textOf(document), "a\0b\0"sv);
    EXPECT_EQ(walked("--locale German.MS1252 /dev/null")["totals"]["lines"], 0);
    EXPECT_EQ(run("walk --locale Japanese.IBM930 /dev/null").status, 0);
}

TEST(Walk, ReadsStandardInput)
{
    EXPECT_EQ(run("walk --locale German.MS1252 - <german.ms1252.txt | tail -n +2").out,
              run("walk --locale German.MS1252 german.ms1252.txt | tail -n +2").out);
}

// Any bytes: nothing is lost, nothing is read twice, and the program ends as it should.
TEST(Walk, SurvivesRandomBytes)
{
    const Workshop workshop;
    std::minstd_rand random(930); // NOLINT: the same bytes in each run
    for (int round = 0; round < 8; ++round) {
        std::string bytes(200, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() >> 8);
        const std::string file = workshop.file("random", bytes);
        for (const char* const page : {"MS932", "IBM930", "IBM037", "MS950", "UTF-8"}) {
            const std::string locale = std::string("--locale English.") + page + " ";
            const Outcome outcome = run("walk " + locale + file);
            EXPECT_TRUE(outcome.status == 0 || outcome.status == 1) << outcome.errors;
            EXPECT_EQ(bytesOf(walked(locale + file)), bytes) << page;
            EXPECT_EQ(run("walk --backward " + locale + file).status, outcome.status) << page;
        }
    }
}

} // namespace
} // namespace vlx::cli::test
