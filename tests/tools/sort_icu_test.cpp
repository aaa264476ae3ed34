// Each shipped sort beside ICU's collator of its language, on words of the language's letters. The
// two share the CLDR rules and nothing else.
#include <algorithm>
#include <memory>
#include <random>
#include <set>

#include <gtest/gtest.h>
#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/ulocdata.h>
#include <unicode/uniset.h>
#include <unicode/usetiter.h>

#include "container.hpp"
#include "sort_reader.hpp"
#include "tsconst.h"

namespace {

constexpr int kPairs = 20000;
constexpr std::size_t kLongest = 8; // letters in a word

// Where a sort may differ from ICU, and why.
enum class Cause {
    kNone,
    kLongLetters, // contractions of three and more characters
    kStrayMarks,  // marks that are no part of a character
};

struct Row {
    int id;
    const char* collator; // a language tag
    const char* letters;  // the locale of the letters
    int most = 0;         // pairs that may differ
    Cause cause = Cause::kNone;
};

// The causes are facts of the format and the comparison; the counts are what they come to on these
// words, which are made to hit them.
constexpr Row kRows[] = {
    {1, "root", "en"},   {1, "de", "de"},           {1, "fr", "fr"},
    {1, "it", "it"},     {1, "pt", "pt"},           {1, "nl", "nl"},
    {1, "ru", "ru"},     {1, "bg", "bg"},           {1, "he", "he"},
    {2, "es", "es"},     {3, "es-u-co-trad", "es"}, {4, "da", "da"},
    {5, "sv", "sv"},     {6, "fi", "fi"},           {7, "hr", "hr"},
    {8, "cs", "cs"},     {9, "et", "et"},           {10, "hu", "hu", 60, Cause::kLongLetters},
    {11, "lv", "lv"},    {12, "lt", "lt"},          {13, "ro", "ro"},
    {14, "sk", "sk"},    {15, "sl", "sl"},          {16, "th", "th", 30, Cause::kStrayMarks},
    {17, "tr", "tr"},    {18, "uk", "uk"},          {19, "vi", "vi"},
    {20, "fr-CA", "fr"}, {21, "pl", "pl"},          {22, "is", "is"},
    {23, "sq", "sq"},    {24, "ca", "ca"},          {25, "de-u-co-phonebk", "de"},
};

icu::UnicodeString unicode(const std::u16string& text)
{
    return {text.data(), static_cast<int32_t>(text.size())};
}

std::u16string units(const icu::UnicodeString& text)
{
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

std::string utf8(const std::u16string& text)
{
    std::string bytes;
    return unicode(text).toUTF8String(bytes);
}

using Letters = std::vector<std::u16string>;

// The letters of a language in small, capital and title case, digraphs included.
Letters lettersOf(const char* locale)
{
    UErrorCode code = U_ZERO_ERROR;
    const icu::Normalizer2* const composer = icu::Normalizer2::getNFCInstance(code);
    ULocaleData* const data = ulocdata_open(locale, &code);
    USet* const set = ulocdata_getExemplarSet(data, nullptr, 0, ULOCDATA_ES_STANDARD, &code);
    std::set<std::u16string> letters;
    icu::UnicodeSetIterator at(*icu::UnicodeSet::fromUSet(set));
    while (at.next()) {
        const icu::UnicodeString letter = composer->normalize(at.getString(), code);
        const icu::Locale language(locale);
        for (const icu::UnicodeString& form :
             {letter, icu::UnicodeString(letter).toUpper(language),
              icu::UnicodeString(letter).toTitle(nullptr, language)})
            if (form.length() > 0 && form.length() <= 2)
                letters.insert(units(form));
    }
    uset_close(set);
    ulocdata_close(data);
    EXPECT_TRUE(U_SUCCESS(code)) << locale;
    return {letters.begin(), letters.end()};
}

// Pairs of words: any two, and pairs that differ in the case of a letter, its accent, or a letter.
class Words {
  public:
    explicit Words(Letters letters) : letters_(std::move(letters)) {}

    std::pair<std::u16string, std::u16string> pair()
    {
        Letters one(1 + below(kLongest));
        for (std::u16string& letter : one)
            letter = any();
        Letters other = one;
        std::u16string& changed = other[below(other.size())];
        switch (below(4)) {
        case 0:
            for (std::u16string& letter : other)
                letter = any();
            break;
        case 1:
            changed = otherCase(changed);
            break;
        case 2:
            changed = any();
            break;
        default:
            changed = otherAccent(changed);
            if (below(2) == 0)
                other.push_back(any());
        }
        return {joined(one), joined(other)};
    }

  private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    const std::u16string& any() { return letters_[below(letters_.size())]; }
    static std::u16string joined(const Letters& letters)
    {
        std::u16string word;
        for (const std::u16string& letter : letters)
            word += letter;
        return word;
    }
    static std::u16string otherCase(const std::u16string& letter)
    {
        icu::UnicodeString upper = unicode(letter).toUpper(icu::Locale::getRoot());
        return units(upper == unicode(letter) ? upper.toLower(icu::Locale::getRoot()) : upper);
    }
    static char16_t baseOf(const std::u16string& letter)
    {
        UErrorCode code = U_ZERO_ERROR;
        const icu::UnicodeString parts =
            icu::Normalizer2::getNFDInstance(code)->normalize(unicode(letter), code);
        return static_cast<char16_t>(u_tolower(parts[0]));
    }
    std::u16string otherAccent(const std::u16string& letter)
    {
        Letters near;
        for (const std::u16string& one : letters_)
            if (baseOf(one) == baseOf(letter))
                near.push_back(one);
        return near.empty() ? letter : near[below(near.size())];
    }

    Letters letters_;
    std::mt19937 random_{7};
};

std::unique_ptr<icu::Collator> collatorOf(const char* tag)
{
    UErrorCode code = U_ZERO_ERROR;
    const icu::Locale locale = icu::Locale::forLanguageTag(tag, code);
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, code));
    collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, code);
    collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, code);
    EXPECT_TRUE(U_SUCCESS(code)) << tag;
    return collator;
}

// Whether a difference has the cause that its row names.
bool isExplained(Cause cause, const std::u16string& one, const std::u16string& other)
{
    const auto lower = [](const std::u16string& text) {
        return units(unicode(text).toLower(icu::Locale::getRoot()));
    };
    const auto hasLong = [&](const std::u16string& text) {
        static const Letters kLong = {u"dzs", u"ccs", u"ddz", u"ggy", u"lly",
                                      u"nny", u"ssz", u"tty", u"zzs"};
        return std::any_of(kLong.begin(), kLong.end(), [&](const std::u16string& letters) {
            return lower(text).find(letters) != std::u16string::npos;
        });
    };
    const auto hasMark = [](const std::u16string& text) {
        return std::any_of(text.begin(), text.end(), [](char16_t c) {
            return c == 0x0E33 || (U_GET_GC_MASK(c) & U_GC_MN_MASK) != 0;
        });
    };
    switch (cause) {
    case Cause::kNone:
        return false;
    case Cause::kLongLetters:
        return hasLong(one) || hasLong(other);
    case Cause::kStrayMarks:
        return hasMark(one) || hasMark(other);
    }
    return false;
}

class SortsOfLanguages : public testing::TestWithParam<Row> {};

TEST_P(SortsOfLanguages, OrderWordsAsIcuDoes)
{
    const Row& row = GetParam();
    const SortReader sort = SortReader::ofFile(
        std::string(VLX_LOCALE "/") +
        vlx::data::objectFileName(TS_OBJ_SORT, static_cast<std::uint16_t>(row.id)));
    const auto collator = collatorOf(row.collator);
    Words words(lettersOf(row.letters));
    int differing = 0;
    int ordered = 0;
    for (int i = 0; i < kPairs; ++i) {
        const auto [one, other] = words.pair();
        UErrorCode code = U_ZERO_ERROR;
        const int expected = collator->compare(unicode(one), unicode(other), code);
        const int order = sort.compare(one, other);
        ordered += expected != 0;
        if (order == expected)
            continue;
        ++differing;
        EXPECT_TRUE(isExplained(row.cause, one, other))
            << utf8(one) << " " << utf8(other) << ": " << order << ", ICU " << expected;
    }
    EXPECT_LE(differing, row.most);
    EXPECT_GT(ordered, kPairs / 2);
    RecordProperty("differing", differing);
}

INSTANTIATE_TEST_SUITE_P(All, SortsOfLanguages, testing::ValuesIn(kRows), [](const auto& test) {
    std::string name = std::to_string(test.param.id) + "_" + test.param.collator;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

} // namespace
