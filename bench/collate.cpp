// Collation and sort keys: word pairs of four kinds, sorting by comparison, keys and sorting by
// them. The peers are the C library's locale and ICU's collator of the same language, ICU with the
// conversion that text in a code page costs it.
#include <algorithm>
#include <array>
#include <cstring>
#include <random>
#include <string_view>

#include <unicode/ucnv.h>
#include <unicode/ucol.h>

#include "bench.hpp"
#include "glibc.hpp"
#include "texts.hpp"

namespace vlx::bench {

namespace {

using Random = std::mt19937;
using Words = std::vector<Piece>;

struct Language {
    const char* name;
    const char* locale;
    const char* glibc;
    const char* icu;
    const char16_t* syllables; // parted by blanks
};
constexpr Language kLanguages[] = {
    {"de", "German_Germany.MS1252", "de_DE", "de",
     u"ver ge schl auf \u00fcber k\u00f6n nen stra \u00dfe m\u00e4d chen ung lich Haus Zeit wort "
     u"en st\u00fc ck er"},
    {"fr", "French_France.MS1252", "fr_FR", "fr",
     u"pr\u00e9 com ment tion cot\u00e9 \u00e9l\u00e8ve fran \u00e7ais o\u00f9 le par mes gar "
     u"\u00e7on ais \u00eatre Mar i e"},
    {"es", "Spanish_Spain.MS1252", "es_ES", "es",
     u"con ma\u00f1 ana ci\u00f3n per ros cas ado ni\u00f1o \u00e1rbol llo che gu\u00ed Es pa "
     u"\u00f1a ente mar t\u00fa"},
};

constexpr int kPairs = 1024; // more than a branch predictor learns
constexpr std::size_t kWords = 100000;

int32_t asLength(std::size_t size)
{
    return static_cast<int32_t>(size);
}

const TSChar16* asUnits(const Piece& piece)
{
    return reinterpret_cast<const TSChar16*>(piece.units.c_str());
}

class WordMaker {
  public:
    explicit WordMaker(const Language& language)
    {
        std::u16string syllable;
        for (const char16_t* at = language.syllables;; ++at) {
            if (*at != u' ' && *at != 0) {
                syllable += *at;
                continue;
            }
            syllables_.push_back(syllable);
            syllable.clear();
            if (*at == 0)
                break;
        }
    }

    std::u16string word(std::size_t least)
    {
        std::u16string word;
        while (word.size() < least)
            word += syllables_[random_() % syllables_.size()];
        return word;
    }
    std::u16string anyWord() { return word(3 + random_() % 8); }

    // The word with the case or the accent of a letter changed.
    std::u16string variant(std::u16string word)
    {
        constexpr std::array<std::pair<char16_t, char16_t>, 10> kOther = {{{u'a', u'\u00e4'},
                                                                           {u'o', u'\u00f6'},
                                                                           {u'u', u'\u00fc'},
                                                                           {u'e', u'\u00e9'},
                                                                           {u'n', u'\u00f1'},
                                                                           {u'i', u'\u00ed'},
                                                                           {u's', u'S'},
                                                                           {u'r', u'R'},
                                                                           {u't', u'T'},
                                                                           {u'c', u'C'}}};
        const std::size_t start = random_() % word.size();
        for (std::size_t i = 0; i < word.size(); ++i) {
            char16_t& letter = word[(start + i) % word.size()];
            for (const auto& [plain, other] : kOther)
                if (letter == plain) {
                    letter = other;
                    return word;
                }
        }
        return word;
    }

  private:
    Random random_{20261121};
    std::vector<std::u16string> syllables_;
};

Piece pieceOf(const std::u16string& units)
{
    return {units, recoded(units, "CP1252")};
}

enum class Kind { kRandom, kPrefix, kNear, kLong };
constexpr std::pair<const char*, Kind> kKinds[] = {{"random", Kind::kRandom},
                                                   {"prefix", Kind::kPrefix},
                                                   {"near", Kind::kNear},
                                                   {"long", Kind::kLong}};

// Pairs stand one behind the other.
Words makePairs(const Language& language, Kind kind)
{
    WordMaker maker(language);
    Words words;
    for (int i = 0; i < kPairs; ++i) {
        std::u16string head;
        if (kind == Kind::kPrefix)
            head = maker.word(8);
        else if (kind == Kind::kLong)
            head = maker.word(270);
        const std::u16string first = head + maker.anyWord();
        words.push_back(pieceOf(first));
        words.push_back(
            pieceOf(kind == Kind::kNear ? maker.variant(first) : head + maker.anyWord()));
    }
    return words;
}

Words makeWords(const Language& language)
{
    WordMaker maker(language);
    Words words;
    while (words.size() < kWords)
        words.push_back(pieceOf(maker.anyWord()));
    return words;
}

// A collator of ICU, and a converter for text in a code page.
class IcuCollator {
  public:
    explicit IcuCollator(const char* language)
        : collator_(ucol_open(language, &status_)), converter_(ucnv_open("windows-1252", &status_))
    {
    }
    ~IcuCollator()
    {
        ucol_close(collator_);
        ucnv_close(converter_);
    }
    IcuCollator(const IcuCollator&) = delete;
    IcuCollator& operator=(const IcuCollator&) = delete;

    int compareUnits(const Piece& first, const Piece& second)
    {
        return ucol_strcoll(collator_, first.units.data(), asLength(first.units.size()),
                            second.units.data(), asLength(second.units.size()));
    }
    int compareBytes(const Piece& first, const Piece& second)
    {
        const int32_t length1 = convert(first, buffer1_);
        const int32_t length2 = convert(second, buffer2_);
        return ucol_strcoll(collator_, buffer1_, length1, buffer2_, length2);
    }
    int32_t keyOfUnits(const Piece& piece, char* key, int32_t size)
    {
        return ucol_getSortKey(collator_, piece.units.data(), asLength(piece.units.size()),
                               reinterpret_cast<uint8_t*>(key), size);
    }
    int32_t keyOfBytes(const Piece& piece, char* key, int32_t size)
    {
        const int32_t length = convert(piece, buffer1_);
        return ucol_getSortKey(collator_, buffer1_, length, reinterpret_cast<uint8_t*>(key), size);
    }

  private:
    int32_t convert(const Piece& piece, UChar* buffer)
    {
        return ucnv_toUChars(converter_, buffer, kRoom, piece.bytes.data(),
                             asLength(piece.bytes.size()), &status_);
    }

    static constexpr int32_t kRoom = 1024;

    UErrorCode status_ = U_ZERO_ERROR;
    UCollator* collator_;
    UConverter* converter_;
    UChar buffer1_[kRoom];
    UChar buffer2_[kRoom];
};

template <class Compare>
void comparePairs(benchmark::State& state, const Words& words, const Compare& compare)
{
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(compare(words[turn], words[turn + 1]));
        turn = turn + 2 == words.size() ? 0 : turn + 2;
    }
}

template <class Compare>
void sortWords(benchmark::State& state, const Words& words, const Compare& compare)
{
    std::vector<const Piece*> order(words.size());
    for (auto _ : state) {
        std::transform(words.begin(), words.end(), order.begin(),
                       [](const Piece& word) { return &word; });
        std::sort(order.begin(), order.end(), [&](const Piece* first, const Piece* second) {
            return compare(*first, *second) < 0;
        });
        benchmark::DoNotOptimize(order.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(words.size()));
}

template <class Key>
void makeKeys(benchmark::State& state, const Words& words, const Key& key)
{
    char buffer[512]; // with room to work, which is cleared behind the key
    std::size_t turn = 0;
    std::int64_t bytes = 0;
    for (auto _ : state) {
        bytes += key(words[turn], buffer, int32_t{sizeof buffer});
        benchmark::ClobberMemory();
        turn = turn + 1 == 2 * kPairs ? 0 : turn + 1;
    }
    state.counters["key_bytes"] =
        static_cast<double>(bytes) / static_cast<double>(state.iterations());
}

template <class Key>
void sortByKeys(benchmark::State& state, const Words& words, const Key& key)
{
    // All keys in one area, as whoever sorts many of them keeps them.
    std::string area;
    std::vector<std::size_t> ends;
    char buffer[512];
    for (const Piece& word : words) {
        area.append(buffer, static_cast<std::size_t>(key(word, buffer, int32_t{sizeof buffer})));
        ends.push_back(area.size());
    }
    std::vector<std::string_view> keys;
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        keys.push_back(std::string_view(area).substr(begin, end - begin));
        begin = end;
    }
    std::vector<std::string_view> order;
    for (auto _ : state) {
        order = keys;
        std::sort(order.begin(), order.end());
        benchmark::DoNotOptimize(order.data());
    }
}

// Adds the rows of one worker; `with` runs a body with a comparison and a key function.
template <class With>
void addWorker(const Language& language, const std::string& form, const char* who, const With& with)
{
    const auto name = [&](const std::string& work) {
        return work + '/' + form + '/' + language.name + '/' + who;
    };
    for (const auto& [kindName, kind] : kKinds)
        benchmark::RegisterBenchmark(name(std::string("Collate_") + kindName).c_str(),
                                     [=, &language](benchmark::State& state) {
                                         with(state, [&](const auto& compare, const auto&) {
                                             comparePairs(state, makePairs(language, kind),
                                                          compare);
                                         });
                                     });
    benchmark::RegisterBenchmark(name("SortWords").c_str(), [=,
                                                             &language](benchmark::State& state) {
        with(state, [&](const auto& compare, const auto&) {
            sortWords(state, makeWords(language), compare);
        });
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(name("Key").c_str(), [=, &language](benchmark::State& state) {
        with(state, [&](const auto&, const auto& key) {
            makeKeys(state, makePairs(language, Kind::kRandom), key);
        });
    });
    benchmark::RegisterBenchmark(name("SortKeys").c_str(), [=, &language](benchmark::State& state) {
        with(state,
             [&](const auto&, const auto& key) { sortByKeys(state, makeWords(language), key); });
    })->Unit(benchmark::kMillisecond);
}

void addBytes(const Language& language)
{
    addWorker(language, "1252", "vlx", [&language](benchmark::State& state, const auto& body) {
        const RowLocale locale(state, language.locale);
        if (!locale)
            return;
        body(
            [&](const Piece& first, const Piece& second) {
                return TSStrcoll(locale.get(), first.bytes.c_str(), -1, second.bytes.c_str(), -1,
                                 0);
            },
            [&](const Piece& word, char* key, int32_t size) {
                return TSStrxfrm(locale.get(), key, size, word.bytes.c_str(), -1, 0);
            });
    });
    addWorker(language, "1252", "glibc", [&language](benchmark::State& state, const auto& body) {
        const GlibcLocale locale(language.glibc, "CP1252");
        if (!locale) {
            state.SkipWithError("localedef cannot make the locale here");
            return;
        }
        body([](const Piece& first,
                const Piece& second) { return strcoll(first.bytes.c_str(), second.bytes.c_str()); },
             [](const Piece& word, char* key, int32_t size) {
                 return asLength(strxfrm(key, word.bytes.c_str(), static_cast<std::size_t>(size)));
             });
    });
    addWorker(language, "1252", "icu", [&language](benchmark::State&, const auto& body) {
        IcuCollator icu(language.icu);
        body([&](const Piece& first,
                 const Piece& second) { return icu.compareBytes(first, second); },
             [&](const Piece& word, char* key, int32_t size) {
                 return icu.keyOfBytes(word, key, size);
             });
    });
}

void addUnits(const Language& language)
{
    addWorker(language, "16bit", "vlx", [&language](benchmark::State& state, const auto& body) {
        const RowLocale locale(state, language.locale);
        if (!locale)
            return;
        body(
            [&](const Piece& first, const Piece& second) {
                return TSStrcollU(locale.get(), asUnits(first), asLength(first.units.size()),
                                  asUnits(second), asLength(second.units.size()), 0);
            },
            [&](const Piece& word, char* key, int32_t size) {
                return TSStrxfrmU(locale.get(), key, size, asUnits(word),
                                  asLength(word.units.size()), 0);
            });
    });
    addWorker(language, "16bit", "icu", [&language](benchmark::State&, const auto& body) {
        IcuCollator icu(language.icu);
        body([&](const Piece& first,
                 const Piece& second) { return icu.compareUnits(first, second); },
             [&](const Piece& word, char* key, int32_t size) {
                 return icu.keyOfUnits(word, key, size);
             });
    });
}

} // namespace

void addCollationRows()
{
    for (const Language& language : kLanguages) {
        addBytes(language);
        addUnits(language);
    }
}

} // namespace vlx::bench
