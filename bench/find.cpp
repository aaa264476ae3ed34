// Counting and finding characters, and spans.
#include <algorithm>
#include <array>
#include <cstring>
#include <cwchar>

#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include "rows.hpp"

namespace vlx::bench {

namespace {

constexpr const char* kGermany = "German_Germany.MS1252";
constexpr const char* kJapan = "Japanese_Japan.MS932";

constexpr Size kSizes[] = {{"16", 16, 256}, {"1KiB", 1024, 8}, {"1MiB", kMebibyte, 1}};
constexpr Size kFindSizes[] = {{"64", 64, 64}, {"64KiB", 65536, 1}};

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
    }
}

void addSpanRows()
{
    for (const Size& size : kFindSizes) {
        const auto add = [&size](const char* name, const Run& runner) {
            addRow(name, size, Script::kGerman, "CP1252", runner);
        };
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

} // namespace

void addSearchRows()
{
    add932Rows();
    addFindRows();
    addSpanRows();
}

} // namespace vlx::bench
