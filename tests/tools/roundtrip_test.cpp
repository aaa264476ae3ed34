// Whole texts of every character of each shipped code page, through the library, ICU and iconv. The
// characters on which the three do not agree stay out of the texts: codepage-differences.tsv lists
// them, and pages_test.cpp holds that list.
#include <algorithm>
#include <memory>
#include <random>

#include <gtest/gtest.h>
#include <iconv.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>

#include "converter.hpp"
#include "page_reader.hpp"
#include "shipped.hpp"
#include "tessera.h"

namespace {

constexpr int kTimes = 3; // each character stands so often in a text, at places by chance
constexpr char kUtf8[] = "UTF-8";

// A character of a page and its value.
struct Pair {
    std::uint32_t character;
    std::uint16_t value;
};

struct CloseLocale {
    void operator()(TSLocale* locale) const { TSReleaseLocale(locale); }
};
using Locale = std::unique_ptr<TSLocale, CloseLocale>;

Locale openPage(const char* name)
{
    std::int32_t code = 0;
    return Locale(TSGetLocale(("." + std::string(name) + "@BINARY").c_str(), 0, &code));
}

std::string utf8Of(const std::vector<Pair>& text)
{
    std::string utf8;
    for (const Pair& pair : text) {
        char bytes[U8_MAX_LENGTH];
        int size = 0;
        U8_APPEND_UNSAFE(bytes, size, pair.value);
        utf8.append(bytes, static_cast<std::size_t>(size));
    }
    return utf8;
}

// The text in its page; `shifts` is empty, or the bytes that enter and leave the multi-byte state.
std::string bytesOf(const std::vector<Pair>& text, const std::string& shifts)
{
    std::string bytes;
    bool multi = false;
    const auto enter = [&](bool wanted) {
        if (!shifts.empty() && multi != wanted)
            bytes += shifts[wanted ? 0 : 1];
        multi = wanted;
    };
    for (const Pair& pair : text) {
        enter(pair.character > 0xFF);
        for (const std::uint8_t byte : PageReader::bytesOf(pair.character))
            bytes += static_cast<char>(byte);
    }
    enter(false);
    return bytes;
}

// By the library, in slices of a length that no character fits into evenly.
std::string byLibrary(TSLocale* to, TSLocale* from, const std::string& text, std::size_t slice)
{
    TSConversion* const conversion = TSOpenConversion(to, from);
    std::string result;
    for (std::size_t at = 0; at < text.size(); at += slice) {
        const char* input = text.data() + at;
        auto left = static_cast<std::int32_t>(std::min(slice, text.size() - at));
        for (std::int32_t code = TS_ERR_OUTPUT_FULL; code == TS_ERR_OUTPUT_FULL;) {
            char area[512];
            char* output = area;
            std::int32_t room = sizeof area;
            code = TSConvertBuffer(conversion, &output, &room, &input, &left);
            result.append(area, output);
        }
    }
    EXPECT_EQ(TSCloseConversion(conversion), 0);
    return result;
}

std::string byIcu(const char* to, const char* from, const std::string& text)
{
    UErrorCode error = U_ZERO_ERROR;
    std::string result(4 * text.size() + 16, '\0');
    const std::int32_t size =
        ucnv_convert(to, from, result.data(), static_cast<std::int32_t>(result.size()), text.data(),
                     static_cast<std::int32_t>(text.size()), &error);
    EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
    result.resize(static_cast<std::size_t>(std::max(size, 0)));
    return result;
}

std::string byIconv(const char* to, const char* from, std::string text)
{
    const iconv_t handle = iconv_open(to, from);
    std::string result(4 * text.size() + 16, '\0');
    char* input = text.data();
    char* output = result.data();
    std::size_t left = text.size();
    std::size_t room = result.size();
    EXPECT_EQ(iconv(handle, &input, &left, &output, &room), 0U) << left << " bytes left";
    EXPECT_EQ(iconv(handle, nullptr, nullptr, &output, &room), 0U);
    iconv_close(handle);
    result.resize(result.size() - room);
    return result;
}

class WholeTexts : public testing::TestWithParam<ShippedPage> {
  protected:
    WholeTexts()
    {
        EXPECT_EQ(TSInit(VLX_LOCALE, nullptr, nullptr, nullptr, nullptr, 0, TS_STRICT_OBJECTS), 0);
        page_ = openPage(GetParam().name.c_str());
        utf8_ = openPage(kUtf8);
        // Only a stateful page writes a byte to end a text that is in the multi-byte state.
        char shift[5] = {};
        if (TSTerminateStringEx(page_.get(), shift, 1, 0) == 1) {
            shifts_ = std::string(1, '\x0E') + shift[0];
        }
    }
    ~WholeTexts() override
    {
        page_.reset();
        utf8_.reset();
        TSTerm();
    }

    // A text of those characters of the page that `agrees` takes, each kTimes, by chance.
    template <class Agrees>
    std::vector<Pair> textOf(Agrees agrees) const
    {
        std::vector<Pair> text;
        for (const auto& [character, value] : decoded_)
            for (int i = 0; i < kTimes && agrees(character, value); ++i)
                text.push_back({character, value});
        std::shuffle(text.begin(), text.end(), std::mt19937_64(20260806));
        return text;
    }

    // Holds the library to a converter, from the page and to it, over all on which they agree.
    template <class Convert>
    void compare(const vlx::import::ConverterTables& theirs, const char* name, Convert convert)
    {
        const auto decodesAlike = [&](std::uint32_t character, std::uint16_t value) {
            const auto found = theirs.decode.find(character);
            return found != theirs.decode.end() && found->second == value && !composed(value);
        };
        const auto encodesAlike = [&](std::uint32_t character, std::uint16_t value) {
            const auto found = theirs.encode.find(value);
            return found != theirs.encode.end() && found->second == character &&
                   encoded_.at(value) == character;
        };
        const std::vector<Pair> there = textOf(decodesAlike);
        EXPECT_GT(there.size(), kTimes * decoded_.size() * 2 / 3) << "too much is left out";
        const std::string bytes = bytesOf(there, shifts_);
        const std::string utf8 = byLibrary(utf8_.get(), page_.get(), bytes, 997);
        EXPECT_TRUE(utf8 == utf8Of(there));
        EXPECT_TRUE(utf8 == convert(kUtf8, name, bytes));

        const std::vector<Pair> back = textOf(encodesAlike);
        EXPECT_GT(back.size(), kTimes * decoded_.size() * 2 / 3) << "too much is left out";
        const std::string written = byLibrary(page_.get(), utf8_.get(), utf8Of(back), 1009);
        EXPECT_TRUE(closed(written, back) == bytesOf(back, shifts_));
        EXPECT_TRUE(closed(written, back) == convert(name, kUtf8, utf8Of(back)));
    }

    // glibc joins a letter and a mark of these pages to one character.
    bool composed(std::uint16_t value) const
    {
        return (GetParam().id == 1255 || GetParam().id == 1258) && u_getCombiningClass(value) != 0;
    }

    // A conversion handle leaves the state open at the end of a text.
    std::string closed(std::string bytes, const std::vector<Pair>& text) const
    {
        if (!shifts_.empty() && text.back().character > 0xFF)
            bytes += shifts_[1];
        return bytes;
    }

    const std::map<std::uint32_t, std::uint16_t> decoded_ =
        decodeTableOf(sourcePath(GetParam().name));
    // By the compiled page, whose differences from the converters are in the list.
    const std::map<std::uint16_t, std::uint32_t> encoded_ =
        PageReader(compiledPath(GetParam().id), GetParam().id).allEncoded();
    const int maxBytes_ = static_cast<int>(PageReader::bytesOf(decoded_.rbegin()->first).size());
    Locale page_;
    Locale utf8_;
    std::string shifts_;
};

class WholeTextsOfIcu : public WholeTexts {};
class WholeTextsOfGlibc : public WholeTexts {};

TEST_P(WholeTextsOfIcu, AreAsItsOwn)
{
    const std::string& name = GetParam().icu;
    vlx::import::ConverterTables icu;
    ASSERT_TRUE(vlx::import::readIcu(name.c_str(), maxBytes_, !shifts_.empty(), icu));
    compare(icu, name.c_str(), byIcu);
}

TEST_P(WholeTextsOfGlibc, AreAsItsOwn)
{
    const std::string& name = GetParam().glibc;
    vlx::import::ConverterTables glibc;
    if (!vlx::import::readIconv(name.c_str(), maxBytes_, !shifts_.empty(), glibc))
        GTEST_SKIP() << "iconv has no " << name;
    compare(glibc, name.c_str(), byIconv);
}

// There and back, where a character is the only one of its value.
TEST_P(WholeTexts, ComeBackAsTheyWere)
{
    std::map<std::uint16_t, int> characters;
    for (const auto& pair : decoded_)
        ++characters[pair.second];
    const std::vector<Pair> text =
        textOf([&](std::uint32_t, std::uint16_t value) { return characters[value] == 1; });
    EXPECT_GT(text.size(), kTimes * decoded_.size() * 18 / 20) << "too much is left out";
    const std::string bytes = bytesOf(text, shifts_);
    const std::string utf8 = byLibrary(utf8_.get(), page_.get(), bytes, 1013);
    EXPECT_TRUE(closed(byLibrary(page_.get(), utf8_.get(), utf8, 1019), text) == bytes);
}

std::string titleOf(const testing::TestParamInfo<ShippedPage>& page)
{
    return pageName(page.param);
}
INSTANTIATE_TEST_SUITE_P(Page, WholeTexts, testing::ValuesIn(shippedPages()), titleOf);
INSTANTIATE_TEST_SUITE_P(Page, WholeTextsOfIcu, testing::ValuesIn(shippedPages(&ShippedPage::icu)),
                         titleOf);
INSTANTIATE_TEST_SUITE_P(Page, WholeTextsOfGlibc,
                         testing::ValuesIn(shippedPages(&ShippedPage::glibc)), titleOf);

// Every 16-bit value, but for surrogates, which UTF-8 does not have.
TEST(WholeTextsOfUtf8, ComeBackAsTheyWereAndAreThoseOfIcuAndGlibc)
{
    ASSERT_EQ(TSInit(VLX_LOCALE, nullptr, nullptr, nullptr, nullptr, 0, TS_STRICT_OBJECTS), 0);
    Locale utf8 = openPage(kUtf8);
    std::vector<Pair> text;
    for (unsigned value = 1; value <= 0xFFFF; ++value)
        if (value < 0xD800 || value > 0xDFFF)
            text.push_back({0, static_cast<std::uint16_t>(value)});
    std::shuffle(text.begin(), text.end(), std::mt19937_64(57352));
    const std::string bytes = utf8Of(text);
    EXPECT_TRUE(byLibrary(utf8.get(), utf8.get(), bytes, 997) == bytes);
    EXPECT_TRUE(byIcu(kUtf8, kUtf8, bytes) == bytes);
    EXPECT_TRUE(byIconv(kUtf8, kUtf8, bytes) == bytes);
    utf8.reset();
    TSTerm();
}

} // namespace
