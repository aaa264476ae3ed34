// String functions over texts: upper case, counting and finding characters, spans, comparison. The
// short texts take turns, so that no branch predictor knows them by heart.
#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <functional>

#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include "bench.hpp"
#include "glibc.hpp"
#include "texts.hpp"

namespace vlx::bench {

namespace {

constexpr const char* kGermany = "German_Germany.MS1252";
constexpr const char* kEngland = "English_UnitedStates.MS1252"; // no pairs for its case
constexpr const char* kJapan = "Japanese_Japan.MS932";

struct Size {
    const char* name;
    std::size_t bytes;
    std::size_t texts;
};
constexpr Size kSizes[] = {{"16", 16, 256}, {"1KiB", 1024, 8}, {"1MiB", kMebibyte, 1}};
constexpr Size kFindSizes[] = {{"64", 64, 64}, {"64KiB", 65536, 1}};
constexpr Size kCompareSizes[] = {{"16", 16, 256}, {"1KiB", 1024, 8}};

int32_t asLength(std::size_t size)
{
    return static_cast<int32_t>(size);
}

const TSChar16* asUnits(const std::u16string& units)
{
    return reinterpret_cast<const TSChar16*>(units.data());
}

const UChar* asUChars(const std::u16string& units)
{
    return units.data();
}

// Runs a row: `call` gets one piece after the other, each `bytes` long.
template <class Call>
void run(benchmark::State& state, const std::vector<Piece>& pieces, const Call& call)
{
    std::size_t bytes = 0;
    for (const Piece& piece : pieces)
        bytes += piece.bytes.size();
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(pieces[turn]));
        benchmark::ClobberMemory();
        turn = turn + 1 == pieces.size() ? 0 : turn + 1;
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(static_cast<double>(state.iterations()) *
                                                      static_cast<double>(bytes) /
                                                      static_cast<double>(pieces.size())));
}

// The same, after `call` gave what `expected` gives for every piece.
template <class Call, class Expected>
void runChecked(benchmark::State& state, const std::vector<Piece>& pieces, const Call& call,
                const Expected& expected)
{
    for (const Piece& piece : pieces) {
        if (call(piece) != expected(piece)) {
            state.SkipWithError("gives another result");
            return;
        }
    }
    run(state, pieces, call);
}

using Run = std::function<void(benchmark::State&, const std::vector<Piece>&)>;

void addRow(const std::string& name, const Size& size, Script script, const char* page,
            const Run& runner)
{
    const std::size_t at = name.rfind('/');
    const std::string full = name.substr(0, at) + '/' + size.name + name.substr(at);
    benchmark::RegisterBenchmark(full.c_str(), [=, &size](benchmark::State& state) {
        runner(state, makePieces(script, page, size.bytes, size.texts));
    });
}

// Gives a row its locale.
template <class Body>
Run withLocale(const char* name, const Body& body)
{
    return [=](benchmark::State& state, const std::vector<Piece>& pieces) {
        const RowLocale locale(state, name);
        if (locale)
            body(state, pieces, locale.get());
    };
}

template <class Body>
Run withGlibc(const char* source, const char* charmap, const Body& body)
{
    return [=](benchmark::State& state, const std::vector<Piece>& pieces) {
        const GlibcLocale locale(source, charmap);
        if (locale)
            body(state, pieces, uselocale(nullptr));
        else
            state.SkipWithError("localedef cannot make the locale here");
    };
}

using Pieces = const std::vector<Piece>&;

// Upper case.

void upperBytesVlx(benchmark::State& state, Pieces pieces, TSLocale* locale)
{
    std::string output(2 * pieces[0].bytes.size() + 64, '\0');
    run(state, pieces, [&](const Piece& piece) {
        return TSMapString(locale, output.data(), asLength(output.size()), piece.bytes.data(),
                           asLength(piece.bytes.size()), TS_MAP_UPPER);
    });
}

void upperBytesGlibc(benchmark::State& state, Pieces pieces, locale_t locale)
{
    std::string output(2 * pieces[0].bytes.size() + 64, '\0');
    run(state, pieces, [&](const Piece& piece) {
        for (std::size_t i = 0; i < piece.bytes.size(); ++i)
            output[i] =
                static_cast<char>(toupper_l(static_cast<unsigned char>(piece.bytes[i]), locale));
        return piece.bytes.size();
    });
}

void upperUnitsVlx(benchmark::State& state, Pieces pieces, TSLocale* locale)
{
    std::u16string output(2 * pieces[0].units.size() + 64, 0);
    run(state, pieces, [&](const Piece& piece) {
        return TSMapStringU(locale, reinterpret_cast<TSChar16*>(output.data()),
                            asLength(output.size()), asUnits(piece.units),
                            asLength(piece.units.size()), TS_MAP_UPPER);
    });
}

void upperUnitsIcu(benchmark::State& state, Pieces pieces)
{
    std::u16string output(2 * pieces[0].units.size() + 64, 0);
    run(state, pieces, [&](const Piece& piece) {
        UErrorCode code = U_ZERO_ERROR;
        return u_strToUpper(output.data(), asLength(output.size()), asUChars(piece.units),
                            asLength(piece.units.size()), "de", &code);
    });
}

void upperUnitsGlibc(benchmark::State& state, Pieces pieces, locale_t locale)
{
    std::u16string output(2 * pieces[0].units.size() + 64, 0);
    run(state, pieces, [&](const Piece& piece) {
        for (std::size_t i = 0; i < piece.units.size(); ++i)
            output[i] = static_cast<char16_t>(towupper_l(piece.units[i], locale));
        return piece.units.size();
    });
}

void addUpperRows()
{
    for (const Size& size : kSizes) {
        for (const auto& [name, locale] : {std::pair{"english", kEngland}, {"german", kGermany}}) {
            const std::string bytes = std::string("Upper/1252_") + name;
            addRow(bytes + "/vlx", size, Script::kGerman, "CP1252",
                   withLocale(locale, upperBytesVlx));
            addRow(bytes + "/glibc_toupper_l", size, Script::kGerman, "CP1252",
                   withGlibc("de_DE", "CP1252", upperBytesGlibc));
            const std::string units = std::string("Upper/16bit_") + name;
            addRow(units + "/vlx", size, Script::kGerman, "CP1252",
                   withLocale(locale, upperUnitsVlx));
            addRow(units + "/icu", size, Script::kGerman, "CP1252", upperUnitsIcu);
            addRow(units + "/glibc_towupper_l", size, Script::kGerman, "CP1252",
                   withGlibc("de_DE", "UTF-8", upperUnitsGlibc));
        }
    }
}

// Counting and finding in CP932. No text has the character sought.

constexpr char kSought[] = "\x9F\x54"; // U+6B0A
constexpr char16_t kSoughtUnit = 0x6B0A;

void count932Vlx(benchmark::State& state, Pieces pieces, TSLocale* locale)
{
    runChecked(
        state, pieces,
        [&](const Piece& piece) {
            return TSNumChars(locale, piece.bytes.data(), asLength(piece.bytes.size()), 0);
        },
        [](const Piece& piece) { return asLength(piece.units.size()); });
}

void count932Glibc(benchmark::State& state, Pieces pieces, locale_t)
{
    runChecked(
        state, pieces,
        [&](const Piece& piece) {
            std::mbstate_t shift{};
            const char* from = piece.bytes.c_str();
            return std::mbsrtowcs(nullptr, &from, 0, &shift);
        },
        [](const Piece& piece) { return piece.units.size(); });
}

// Converts a text piece by piece with ICU; `use` gets the units of each.
template <class Use>
void convertWithIcu(UConverter* converter, const std::string& text, const Use& use)
{
    std::array<UChar, 4096> units;
    ucnv_reset(converter);
    const char* at = text.data();
    const char* const end = at + text.size();
    for (UErrorCode code = U_BUFFER_OVERFLOW_ERROR; code == U_BUFFER_OVERFLOW_ERROR;) {
        code = U_ZERO_ERROR;
        UChar* to = units.data();
        ucnv_toUnicode(converter, &to, to + units.size(), &at, end, nullptr, true, &code);
        use(units.data(), asLength(static_cast<std::size_t>(to - units.data())));
    }
}

void count932Icu(benchmark::State& state, Pieces pieces)
{
    UErrorCode code = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open("ibm-943_P15A-2003", &code);
    runChecked(
        state, pieces,
        [&](const Piece& piece) {
            int32_t count = 0;
            convertWithIcu(converter, piece.bytes,
                           [&](const UChar*, int32_t length) { count += length; });
            return count;
        },
        [](const Piece& piece) { return asLength(piece.units.size()); });
    ucnv_close(converter);
}

void find932Vlx(benchmark::State& state, Pieces pieces, TSLocale* locale)
{
    runChecked(
        state, pieces,
        [&](const Piece& piece) {
            return TSStrchr(locale, piece.bytes.data(), asLength(piece.bytes.size()), kSought, 0);
        },
        [](const Piece&) { return static_cast<char*>(nullptr); });
}

void find932Glibc(benchmark::State& state, Pieces pieces, locale_t)
{
    runChecked(
        state, pieces,
        [&](const Piece& piece) {
            std::array<wchar_t, 1024> wide;
            std::mbstate_t shift{};
            const wchar_t* found = nullptr;
            for (const char* from = piece.bytes.c_str(); from && !found;) {
                const std::size_t count = std::mbsrtowcs(wide.data(), &from, wide.size(), &shift);
                found = std::wmemchr(wide.data(), kSoughtUnit, count);
            }
            return found != nullptr;
        },
        [](const Piece&) { return false; });
}

void find932Icu(benchmark::State& state, Pieces pieces)
{
    UErrorCode code = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open("ibm-943_P15A-2003", &code);
    runChecked(
        state, pieces,
        [&](const Piece& piece) {
            bool found = false;
            convertWithIcu(converter, piece.bytes, [&](const UChar* units, int32_t length) {
                found = found || u_memchr(units, kSoughtUnit, length);
            });
            return found;
        },
        [](const Piece&) { return false; });
    ucnv_close(converter);
}

void add932Rows()
{
    for (const Size& size : kSizes) {
        for (const auto& [name, script] :
             {std::pair{"log", Script::kJapaneseLog}, {"japanese", Script::kJapanese}}) {
            const std::string count = std::string("Count/932_") + name;
            addRow(count + "/vlx", size, script, "CP932", withLocale(kJapan, count932Vlx));
            addRow(count + "/icu", size, script, "CP932", count932Icu);
            addRow(count + "/glibc", size, script, "CP932",
                   withGlibc("ja_JP", "WINDOWS-31J", count932Glibc));
            const std::string find = std::string("Find/932_") + name;
            addRow(find + "/vlx", size, script, "CP932", withLocale(kJapan, find932Vlx));
            addRow(find + "/icu", size, script, "CP932", find932Icu);
            addRow(find + "/glibc", size, script, "CP932",
                   withGlibc("ja_JP", "WINDOWS-31J", find932Glibc));
        }
    }
}

// Finding a character that is not there, and spans that reach the end.

constexpr char kAbsent = '~';
constexpr char16_t kAbsentUnit = u'~';

// The characters of the German texts.
const Piece& spanSet()
{
    static const Piece set = [] {
        Piece made{makePieces(Script::kGerman, "CP1252", 65536, 1)[0].units, {}};
        std::sort(made.units.begin(), made.units.end());
        made.units.erase(std::unique(made.units.begin(), made.units.end()), made.units.end());
        made.bytes = recoded(made.units, "CP1252");
        return made;
    }();
    return set;
}

void addFindRows()
{
    const auto isNull = [](const Piece&) { return static_cast<const void*>(nullptr); };
    for (const Size& size : kFindSizes) {
        const auto add = [&size](const char* name, const Run& runner) {
            addRow(name, size, Script::kGerman, "CP1252", runner);
        };
        add("Find/1252/vlx",
            withLocale(kGermany, [=](benchmark::State& state, Pieces pieces, TSLocale* locale) {
                runChecked(
                    state, pieces,
                    [&](const Piece& piece) -> const void* {
                        return TSStrchr(locale, piece.bytes.data(), asLength(piece.bytes.size()),
                                        &kAbsent, 0);
                    },
                    isNull);
            }));
        add("Find/1252/glibc_memchr", [=](benchmark::State& state, Pieces pieces) {
            runChecked(
                state, pieces,
                [&](const Piece& piece) -> const void* {
                    return std::memchr(piece.bytes.data(), kAbsent, piece.bytes.size());
                },
                isNull);
        });
        add("Find/16bit/vlx",
            withLocale(kGermany, [=](benchmark::State& state, Pieces pieces, TSLocale* locale) {
                runChecked(
                    state, pieces,
                    [&](const Piece& piece) -> const void* {
                        return TSStrchrU(locale, asUnits(piece.units), asLength(piece.units.size()),
                                         kAbsentUnit, 0);
                    },
                    isNull);
            }));
        add("Find/16bit/icu_u_memchr", [=](benchmark::State& state, Pieces pieces) {
            runChecked(
                state, pieces,
                [&](const Piece& piece) -> const void* {
                    return u_memchr(piece.units.data(), kAbsentUnit, asLength(piece.units.size()));
                },
                isNull);
        });
        add("Find/16bit/glibc_memchr", [=](benchmark::State& state, Pieces pieces) {
            runChecked(
                state, pieces,
                [&](const Piece& piece) -> const void* { // as many bytes, of 8 bits each
                    return std::memchr(piece.units.data(), kAbsent,
                                       piece.units.size() * sizeof(char16_t));
                },
                isNull);
        });
        const auto all = [](const Piece& piece) { return piece.units.size(); };
        add("Span/1252/vlx",
            withLocale(kGermany, [=](benchmark::State& state, Pieces pieces, TSLocale* locale) {
                const std::string& set = spanSet().bytes;
                runChecked(
                    state, pieces,
                    [&](const Piece& piece) {
                        return static_cast<std::size_t>(
                            TSStrspn(locale, piece.bytes.data(), asLength(piece.bytes.size()),
                                     set.data(), asLength(set.size()), 0));
                    },
                    all);
            }));
        add("Span/1252/glibc_strspn", [=](benchmark::State& state, Pieces pieces) {
            const std::string& set = spanSet().bytes;
            runChecked(
                state, pieces,
                [&](const Piece& piece) { return std::strspn(piece.bytes.c_str(), set.c_str()); },
                all);
        });
        add("Span/16bit/vlx",
            withLocale(kGermany, [=](benchmark::State& state, Pieces pieces, TSLocale* locale) {
                const std::u16string& set = spanSet().units;
                runChecked(
                    state, pieces,
                    [&](const Piece& piece) {
                        return static_cast<std::size_t>(
                            TSStrspnU(locale, asUnits(piece.units), asLength(piece.units.size()),
                                      asUnits(set), asLength(set.size())));
                    },
                    all);
            }));
        add("Span/16bit/icu_u_strspn", [=](benchmark::State& state, Pieces pieces) {
            const std::u16string& set = spanSet().units;
            runChecked(
                state, pieces,
                [&](const Piece& piece) {
                    return static_cast<std::size_t>(u_strspn(asUChars(piece.units), asUChars(set)));
                },
                all);
        });
        add("Span/16bit/glibc_strspn", [=](benchmark::State& state, Pieces pieces) {
            const std::string& set = spanSet().bytes; // as many characters, of a byte each
            runChecked(
                state, pieces,
                [&](const Piece& piece) { return std::strspn(piece.bytes.c_str(), set.c_str()); },
                all);
        });
    }
}

// Comparison of a text with a copy of it, or with one in another case.

template <class Compare>
void compareRow(benchmark::State& state, Pieces pieces, bool otherCase, const Compare& compare)
{
    std::vector<Piece> copies = pieces;
    for (Piece& copy : copies)
        for (char& byte : copy.bytes)
            if (otherCase && byte >= 'a' && byte <= 'z')
                byte = static_cast<char>(byte - 'a' + 'A');
    runChecked(
        state, pieces,
        [&](const Piece& piece) {
            return compare(piece.bytes,
                           copies[static_cast<std::size_t>(&piece - pieces.data())].bytes);
        },
        [](const Piece&) { return 0; });
}

Run compareVlx(const char* localeName, bool otherCase)
{
    return withLocale(localeName, [=](benchmark::State& state, Pieces pieces, TSLocale* locale) {
        compareRow(state, pieces, otherCase, [&](const std::string& one, const std::string& other) {
            return TSStrcmp(locale, one.data(), asLength(one.size()), other.data(),
                            asLength(other.size()), otherCase ? TS_OPT_IGNORE_CASE : 0);
        });
    });
}

void addCompareRows()
{
    for (const Size& size : kCompareSizes) {
        const auto add = [&size](const std::string& name, const char* page, Script script,
                                 const Run& runner) { addRow(name, size, script, page, runner); };
        add("Compare/1252/vlx", "CP1252", Script::kGerman, compareVlx(kGermany, false));
        add("Compare/1252/glibc_memcmp", "CP1252", Script::kGerman,
            [](benchmark::State& state, Pieces pieces) {
                compareRow(state, pieces, false, [](const std::string& a, const std::string& b) {
                    return std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
                });
            });
        add("Compare/932/vlx", "CP932", Script::kJapanese, compareVlx(kJapan, false));
        add("Compare/932/glibc_memcmp", "CP932", Script::kJapanese,
            [](benchmark::State& state, Pieces pieces) {
                compareRow(state, pieces, false, [](const std::string& a, const std::string& b) {
                    return std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
                });
            });
        for (const auto& [name, locale] : {std::pair{"english", kEngland}, {"german", kGermany}}) {
            const std::string row = std::string("CompareCase/1252_") + name;
            add(row + "/vlx", "CP1252", Script::kGerman, compareVlx(locale, true));
            add(row + "/glibc_strcasecmp_l", "CP1252", Script::kGerman,
                withGlibc("de_DE", "CP1252",
                          [](benchmark::State& state, Pieces pieces, locale_t glibc) {
                              compareRow(state, pieces, true,
                                         [&](const std::string& a, const std::string& b) {
                                             return strcasecmp_l(a.c_str(), b.c_str(), glibc);
                                         });
                          }));
        }
    }
}

} // namespace

void addStringRows()
{
    addUpperRows();
    add932Rows();
    addFindRows();
    addCompareRows();
}

} // namespace vlx::bench
