// Upper case and comparison of texts.
#include <algorithm>
#include <cctype>
#include <cstring>
#include <cwctype>

#include <unicode/ustring.h>

#include "rows.hpp"

namespace vlx::bench {

namespace {

constexpr const char* kGermany = "German_Germany.MS1252";
constexpr const char* kEngland = "English_UnitedStates.MS1252"; // no pairs for its case
constexpr const char* kJapan = "Japanese_Japan.MS932";

constexpr Size kSizes[] = {{"16", 16, 256}, {"1KiB", 1024, 8}, {"1MiB", kMebibyte, 1}};
constexpr Size kCompareSizes[] = {{"16", 16, 256}, {"1KiB", 1024, 8}};

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
    addCompareRows();
}

} // namespace vlx::bench
