// The library over the shipped sorts: its comparison and its keys beside the literal reader's, of
// 16-bit text and of text in a code page.
#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "container.hpp"
#include "sort_reader.hpp"

#include "tessera.h"
#include "tsconst.h"

namespace {

using vlx::data::Diagnostics;

constexpr int kPairs = 4000; // of each sort
constexpr std::size_t kLongest = 8;

std::vector<std::pair<int, std::string>> shippedSorts()
{
    Diagnostics diagnostics;
    std::vector<std::pair<int, std::string>> sorts;
    if (const auto control = vlx::data::readContainer(VLX_LOCALE "/control.nls", diagnostics))
        for (const TSObjDisk& entry : vlx::data::controlEntries(*control))
            if (entry.type == TS_OBJ_SORT)
                sorts.emplace_back(entry.id, vlx::data::nameOf(entry));
    return sorts;
}

// Characters of every kind that a sort has: letters of its contractions and expansions, marks,
// punctuation, letters by rule.
std::vector<char16_t> charactersOf(const SortReader& sort)
{
    std::vector<char16_t> characters;
    for (char16_t c = 0x20; c < 0x180; ++c)
        characters.push_back(c);
    for (std::size_t i = 0; i < sort.contractionCount(); ++i)
        for (const std::size_t at : {0U, 2U})
            characters.push_back(static_cast<char16_t>(sort.word(sort.word(1034) + 10 * i + at)));
    for (std::size_t i = 0; i < sort.expansionCount(); i += 16)
        characters.push_back(static_cast<char16_t>(sort.word(sort.word(1032) + 14 * i)));
    for (const int c : {0x0300, 0x0301, 0x0308, 0x0323, 0x03B1, 0x0436, 0x05D0, 0x0E01, 0x0E40,
                        0x1EA5, 0x2026, 0x4E00, 0x9FA5, 0xAC00, 0xD7A3, 0xE000, 0xF900, 0xFFFF})
        characters.push_back(static_cast<char16_t>(c));
    return characters;
}

// A locale with the sort, and the sort by itself.
class LibrarySort : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        ASSERT_EQ(TSInit(VLX_LOCALE, nullptr, nullptr, nullptr, nullptr, 0, 0), 0);
    }
    static void TearDownTestSuite() { TSTerm(); }

    void open(int id, const std::string& name)
    {
        int32_t code = 0;
        locale_ = TSGetLocale(("English_UnitedStates.MS1252@" + name).c_str(), 0, &code);
        ASSERT_NE(locale_, nullptr) << name << ": " << code;
        sort_ =
            SortReader::ofFile(VLX_LOCALE "/" + vlx::data::objectFileName(
                                                    TS_OBJ_SORT, static_cast<std::uint16_t>(id)));
        letters_ = charactersOf(sort_);
    }
    void close() { TSReleaseLocale(locale_); }

    std::u16string anyText()
    {
        std::u16string text;
        for (std::size_t length = random_() % (kLongest + 1); length > 0; --length)
            text += letters_[random_() % letters_.size()];
        return text;
    }
    // Another text, or the same one with a character changed.
    std::u16string variantOf(const std::u16string& text)
    {
        if (text.empty() || random_() % 4 == 0)
            return anyText();
        std::u16string variant = text;
        variant[random_() % variant.size()] = letters_[random_() % letters_.size()];
        return variant;
    }

    std::string keyOf(const std::u16string& text) const
    {
        std::string key(16 * kLongest + 16, '\0');
        const int32_t size = TSStrxfrmU(locale_, key.data(), static_cast<int32_t>(key.size()),
                                        reinterpret_cast<const TSChar16*>(text.data()),
                                        static_cast<int32_t>(text.size()), 0);
        key.resize(static_cast<std::size_t>(std::max(size, 0)));
        return key;
    }

    TSLocale* locale_ = nullptr;
    SortReader sort_{{}};
    std::vector<char16_t> letters_;
    std::mt19937 random_{11};
};

int signOf(int value)
{
    return (value > 0) - (value < 0);
}

TEST_F(LibrarySort, ComparesAndMakesKeysAsTheObjectSays)
{
    const auto sorts = shippedSorts();
    ASSERT_EQ(sorts.size(), 26U);
    for (const auto& [id, name] : sorts) {
        open(id, name);
        for (int i = 0; i < kPairs; ++i) {
            const std::u16string one = anyText();
            const std::u16string other = variantOf(one);
            const int order = TSStrcollU(locale_, reinterpret_cast<const TSChar16*>(one.data()),
                                         static_cast<int32_t>(one.size()),
                                         reinterpret_cast<const TSChar16*>(other.data()),
                                         static_cast<int32_t>(other.size()), 0);
            ASSERT_EQ(signOf(order), sort_.compare(one, other)) << name << ", pair " << i;
            if (!one.empty()) {
                ASSERT_EQ(keyOf(one), sort_.key(one)) << name << ", pair " << i;
            }
        }
        close();
    }
}

// ASCII and the bytes A0 to FF of the page are the characters of these codes.
TEST_F(LibrarySort, OrdersBytesAsTheirCharacters)
{
    for (const auto& [id, name] : shippedSorts()) {
        open(id, name);
        letters_.clear();
        for (char16_t c = 0x20; c <= 0xFF; ++c)
            if (c < 0x7F || c >= 0xA0)
                letters_.push_back(c);
        for (int i = 0; i < kPairs / 4; ++i) {
            const std::u16string one = anyText();
            const std::u16string other = variantOf(one);
            const std::string bytes1(one.begin(), one.end());
            const std::string bytes2(other.begin(), other.end());
            const int order = TSStrcoll(locale_, bytes1.data(), static_cast<int32_t>(bytes1.size()),
                                        bytes2.data(), static_cast<int32_t>(bytes2.size()), 0);
            ASSERT_EQ(signOf(order), sort_.compare(one, other)) << name << ", pair " << i;
        }
        close();
    }
}

TEST_F(LibrarySort, IsTheDefaultOfItsLanguage)
{
    const auto compare = [](const char* locale, std::string_view one, std::string_view other) {
        int32_t code = 0;
        TSLocale* const handle = TSGetLocale(locale, 0, &code);
        EXPECT_NE(handle, nullptr) << locale;
        const int order = TSStrcoll(handle, one.data(), static_cast<int32_t>(one.size()),
                                    other.data(), static_cast<int32_t>(other.size()), 0);
        TSReleaseLocale(handle);
        return signOf(order);
    };
    EXPECT_EQ(compare("German_Germany.MS1252", "\xE4rger", "Zorn"), -1);
    EXPECT_EQ(compare("German_Germany.MS1252@Swedish", "\xE4rger", "Zorn"), 1);
    EXPECT_EQ(compare("German_Germany.MS1252@BINARY", "a", "Z"), 1);
    EXPECT_EQ(compare("Turkish_Turkey.MS1254", "\xFDl\xFDk", "ilik"), -1) << "dotless first";
    EXPECT_EQ(compare("German_Germany.MS1252@Turkish", "\xE7", "d"), -1);
    EXPECT_EQ(compare("French_France.MS1252@CanadianFrench", "cot\xE9", "c\xF4te"), 1);
    EXPECT_EQ(compare("French_France.MS1252", "cot\xE9", "c\xF4te"), -1);
    EXPECT_EQ(compare("German_Germany.MS1252@GermanPhonebook", "G\xF6the", "Gof"), -1);
    EXPECT_EQ(compare("German_Germany.MS1252", "G\xF6the", "Gof"), 1);
}

} // namespace
