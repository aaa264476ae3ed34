// The library over the shipped sorts: its comparison and its keys beside the literal reader's, in
// all members.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "container.hpp"
#include "shipped.hpp"
#include "sort_reader.hpp"

#include "tessera.h"
#include "tsconst.h"

namespace {

using vlx::data::Diagnostics;

constexpr std::size_t kSorts = 26;
constexpr std::size_t kLongest = 8;

// Pairs of each sort; VLX_RANDOM_CALLS can ask for more of all of them.
int wantedPairs()
{
    const char* const asked = std::getenv("VLX_RANDOM_CALLS");
    return (asked ? std::atoi(asked) : 100000) / static_cast<int>(kSorts);
}

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

// What pages of Japanese have beside ASCII: kana, ideographs, wide letters, signs of several ones.
std::vector<char16_t> japaneseCharacters()
{
    std::vector<char16_t> characters = {0x3001, 0x3231, 0x3349, 0x4E00, 0x4E8C, 0xFF01, 0x2026};
    for (const int first : {0x0391, 0x0410, 0x2460, 0x3041, 0x30A1, 0xFF21, 0xFF41, 0xFF71})
        for (int c = first; c < first + 12; ++c)
            characters.push_back(static_cast<char16_t>(c));
    return characters;
}

// Unicode values and the packed values of their characters.
using Page = std::map<char16_t, char32_t>;

Page pageOf(const std::string& name, const std::vector<char16_t>& characters)
{
    Page page;
    if (name == "UTF-8") {
        for (const char16_t c : characters)
            page[c] = c < 0x80 ? c
                      : c < 0x800
                          ? 0xC080u | (c & 0x7C0u) << 2 | (c & 0x3Fu)
                          : 0xE08080u | (c & 0xF000u) << 4 | (c & 0xFC0u) << 2 | (c & 0x3Fu);
        return page;
    }
    std::map<char16_t, char32_t> all;
    for (const auto& [character, value] : decodeTableOf(sourcePath(name)))
        all.emplace(static_cast<char16_t>(value), character);
    for (const char16_t c : characters)
        if (all.count(c) != 0)
            page[c] = all[c];
    return page;
}

// A text in the forms of all members. Stateful bytes have no shift byte at the end, which would be
// one more thing to read.
struct Forms {
    Forms(const std::u16string& text, const Page& page, bool isStateful) : units(text)
    {
        bool isMulti = false;
        for (const char16_t c : text) {
            const char32_t character = page.at(c);
            packed += character;
            if (isStateful && isMulti != (character > 0xFF)) {
                isMulti = !isMulti;
                bytes += isMulti ? '\x0E' : '\x0F';
            }
            for (int shift = 24; shift >= 0; shift -= 8)
                if (shift == 0 || character >> shift != 0)
                    bytes += static_cast<char>(character >> shift);
        }
    }

    std::u16string units;
    std::u32string packed;
    std::string bytes;
};

template <class Text>
int32_t lengthOf(const Text& text)
{
    return static_cast<int32_t>(text.size());
}
const TSChar16* unitsOf(const Forms& text)
{
    return reinterpret_cast<const TSChar16*>(text.units.data());
}
const TSChar32* packedOf(const Forms& text)
{
    return reinterpret_cast<const TSChar32*>(text.packed.data());
}

// The members for a text form, and a page that the texts fit in.
struct Member {
    const char* name;
    const char* page;
    bool isStateful;
    int32_t (*compare)(TSLocale*, const Forms&, const Forms&);
    int32_t (*key)(TSLocale*, char* buffer, int32_t size, const Forms&);
};

int32_t compareBytes(TSLocale* locale, const Forms& one, const Forms& other)
{
    return TSStrcoll(locale, one.bytes.data(), lengthOf(one.bytes), other.bytes.data(),
                     lengthOf(other.bytes), 0);
}
int32_t keyOfBytes(TSLocale* locale, char* buffer, int32_t size, const Forms& text)
{
    return TSStrxfrm(locale, buffer, size, text.bytes.data(), lengthOf(text.bytes), 0);
}

constexpr Member kMembers[] = {
    {"U", "UTF-8", false,
     [](TSLocale* locale, const Forms& one, const Forms& other) {
         return TSStrcollU(locale, unitsOf(one), lengthOf(one.units), unitsOf(other),
                           lengthOf(other.units), 0);
     },
     [](TSLocale* locale, char* buffer, int32_t size, const Forms& text) {
         return TSStrxfrmU(locale, buffer, size, unitsOf(text), lengthOf(text.units), 0);
     }},
    {"Wcs", "UTF-8", false,
     [](TSLocale* locale, const Forms& one, const Forms& other) {
         return TSWcscoll(locale, packedOf(one), lengthOf(one.packed), packedOf(other),
                          lengthOf(other.packed), 0);
     },
     [](TSLocale* locale, char* buffer, int32_t size, const Forms& text) {
         return TSWcsxfrm(locale, buffer, size, packedOf(text), lengthOf(text.packed), 0);
     }},
    {"Utf8", "UTF-8", false, compareBytes, keyOfBytes},
    {"SingleBytes", "MS1252", false, compareBytes, keyOfBytes},
    {"DoubleBytes", "MS932", false, compareBytes, keyOfBytes},
    {"Ex", "IBM939", true,
     [](TSLocale* locale, const Forms& one, const Forms& other) {
         return TSStrcollEx(locale, one.bytes.data(), 0, lengthOf(one.bytes), other.bytes.data(), 0,
                            lengthOf(other.bytes), 0);
     },
     [](TSLocale* locale, char* buffer, int32_t size, const Forms& text) {
         return TSStrxfrmEx(locale, buffer, size, text.bytes.data(), 0, lengthOf(text.bytes), 0);
     }},
};

class LibrarySort : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        ASSERT_EQ(TSInit(VLX_LOCALE, nullptr, nullptr, nullptr, nullptr, 0, 0), 0);
    }
    static void TearDownTestSuite() { TSTerm(); }
};

int signOf(int value)
{
    return (value > 0) - (value < 0);
}

// A sort in one of the members, beside the sort by itself.
class LibrarySortMember : public LibrarySort, public testing::WithParamInterface<Member> {
  protected:
    void open(int id, const std::string& name)
    {
        const Member& member = GetParam();
        int32_t code = 0;
        locale_ = TSGetLocale(
            ("English_UnitedStates." + std::string(member.page) + "@" + name).c_str(), 0, &code);
        ASSERT_NE(locale_, nullptr) << name << ": " << code;
        sort_ =
            SortReader::ofFile(VLX_LOCALE "/" + vlx::data::objectFileName(
                                                    TS_OBJ_SORT, static_cast<std::uint16_t>(id)));
        letters_ = charactersOf(sort_);
        for (const char16_t c : japaneseCharacters())
            letters_.push_back(c);
        page_ = pageOf(member.page, letters_);
        letters_.clear();
        for (const auto& [c, character] : page_)
            letters_.push_back(c);
    }
    void close() { TSReleaseLocale(locale_); }

    std::u16string anyText()
    {
        std::u16string text;
        for (std::size_t length = random_() % (kLongest + 1); length > 0; --length)
            text += letters_[random_() % letters_.size()];
        return text;
    }
    // Another text, or the same one with a character changed, added or taken away.
    std::u16string variantOf(const std::u16string& text)
    {
        if (text.empty() || random_() % 4 == 0)
            return anyText();
        std::u16string variant = text;
        const std::size_t at = random_() % variant.size();
        const char16_t letter = letters_[random_() % letters_.size()];
        const auto otherCase = static_cast<char16_t>(variant[at] ^ 0x20);
        switch (random_() % 4) {
        case 0:
            variant[at] = page_.count(otherCase) != 0 ? otherCase : letter;
            break;
        case 1:
            variant.insert(at, 1, letter);
            break;
        case 2:
            variant.erase(at, 1);
            break;
        default:
            variant[at] = letter;
        }
        return variant;
    }
    Forms formsOf(const std::u16string& text) const
    {
        return Forms(text, page_, GetParam().isStateful);
    }

    std::string keyOf(const Forms& text) const
    {
        std::string key(16 * (kLongest + 1) + 16, '\0');
        const int32_t size =
            GetParam().key(locale_, key.data(), static_cast<int32_t>(key.size()), text);
        key.resize(static_cast<std::size_t>(std::max(size, 0)));
        return key;
    }

    TSLocale* locale_ = nullptr;
    SortReader sort_{{}};
    Page page_;
    std::vector<char16_t> letters_;
    std::mt19937 random_{11};
};

TEST_P(LibrarySortMember, ComparesAndMakesKeysAsTheObjectSays)
{
    const auto sorts = shippedSorts();
    ASSERT_EQ(sorts.size(), kSorts);
    for (const auto& [id, name] : sorts) {
        open(id, name);
        ASSERT_GE(letters_.size(), 90U) << name;
        for (int i = 0; i < wantedPairs(); ++i) {
            const std::u16string one = anyText();
            const std::u16string other = variantOf(one);
            const Forms forms = formsOf(one);
            ASSERT_EQ(signOf(GetParam().compare(locale_, forms, formsOf(other))),
                      sort_.compare(one, other))
                << name << ", pair " << i;
            if (!one.empty()) {
                ASSERT_EQ(keyOf(forms), sort_.key(one)) << name << ", pair " << i;
            }
        }
        close();
    }
}

INSTANTIATE_TEST_SUITE_P(Members, LibrarySortMember, testing::ValuesIn(kMembers),
                         [](const auto& member) { return std::string(member.param.name); });

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
