// The class of a character, asked for one by one over a text: what a call costs. Every row counts
// the letters, so that no answer goes unused.
#include <algorithm>
#include <cctype>
#include <cwctype>
#include <memory>

#include <unicode/uchar.h>
#include <unicode/ucnv.h>

#include "bench.hpp"
#include "glibc.hpp"
#include "texts.hpp"

namespace vlx::bench {

namespace {

constexpr std::size_t kLength = 4096;
constexpr std::uint32_t kAlphabetic = 0x001;

using Units = std::basic_string<TSChar16>;

// The first characters of a CP932 text as 16-bit values.
Units unicodeOf(const std::string& text)
{
    UErrorCode code = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
        ucnv_open("ibm-943_P15A-2003", &code), ucnv_close);
    std::u16string units(text.size(), 0);
    const int32_t length =
        ucnv_toUChars(converter.get(), units.data(), static_cast<int32_t>(units.size()),
                      text.data(), static_cast<int32_t>(text.size()), &code);
    units.resize(U_SUCCESS(code) ? std::min<std::size_t>(kLength, static_cast<std::size_t>(length))
                                 : 0);
    return {units.begin(), units.end()};
}

const Units& japaneseUnits()
{
    static const Units units = unicodeOf(japaneseText());
    return units;
}

const Units& asciiUnits()
{
    static const Units units = unicodeOf(asciiText());
    return units;
}

// German in CP1252.
const std::string& germanBytes()
{
    static const std::string text = [] {
        std::string filled;
        while (filled.size() < kLength)
            filled += "Zw\xF6lf Boxk\xE4mpfer jagen 3 gro\xDF"
                      "e L\xF6wen \xFC"
                      "ber den Deich. ";
        filled.resize(kLength);
        return filled;
    }();
    return text;
}

// Runs a row: `isLetter` is asked about each element of the text.
template <class Text, class IsLetter>
void classRow(benchmark::State& state, const Text& text, const IsLetter& isLetter)
{
    for (auto _ : state) {
        std::size_t letters = 0;
        for (const auto element : text)
            letters += isLetter(element) ? 1 : 0;
        benchmark::DoNotOptimize(letters);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

using MakeUnits = const Units& (*)();

void unicodeVlx(benchmark::State& state, MakeUnits text)
{
    const RowLocale locale(state, "German_Germany.MS1252");
    if (locale)
        classRow(state, text(), [handle = locale.get()](TSChar16 unit) {
            return (TSGetCharTypeU(handle, unit, TS_CT_CLASS) & kAlphabetic) != 0;
        });
}

void unicodeCharType(benchmark::State& state, MakeUnits text)
{
    constexpr int lastLetter = U_OTHER_LETTER;
    classRow(state, text(), [](TSChar16 unit) { return u_charType(unit) <= lastLetter; });
}

void unicodeIsalpha(benchmark::State& state, MakeUnits text)
{
    classRow(state, text(), [](TSChar16 unit) { return u_isalpha(unit) != 0; });
}

void unicodeGlibc(benchmark::State& state, MakeUnits text)
{
    const GlibcLocale locale("de_DE", "UTF-8");
    if (!locale) {
        state.SkipWithError("localedef cannot make de_DE.UTF-8 here");
        return;
    }
    const wctype_t alpha = std::wctype("alpha");
    classRow(state, text(), [alpha](TSChar16 unit) { return std::iswctype(unit, alpha) != 0; });
}

void bytesVlx(benchmark::State& state)
{
    const RowLocale locale(state, "German_Germany.MS1252");
    if (locale)
        classRow(state, germanBytes(), [handle = locale.get()](const char& byte) {
            return (TSGetCharType(handle, &byte, TS_CT_CLASS) & kAlphabetic) != 0;
        });
}

void bytesGlibc(benchmark::State& state)
{
    const GlibcLocale locale("de_DE", "CP1252");
    if (!locale) {
        state.SkipWithError("localedef cannot make de_DE.CP1252 here");
        return;
    }
    const locale_t current = uselocale(nullptr);
    classRow(state, germanBytes(), [current](char byte) {
        return isalpha_l(static_cast<unsigned char>(byte), current) != 0;
    });
}

BENCHMARK(bytesVlx)->Name("Class/bytes/vlx");
BENCHMARK(bytesGlibc)->Name("Class/bytes/glibc_isalpha_l");
BENCHMARK_CAPTURE(unicodeVlx, ascii, asciiUnits)->Name("Class/ascii/vlx");
BENCHMARK_CAPTURE(unicodeCharType, ascii, asciiUnits)->Name("Class/ascii/icu_u_charType");
BENCHMARK_CAPTURE(unicodeIsalpha, ascii, asciiUnits)->Name("Class/ascii/icu_u_isalpha");
BENCHMARK_CAPTURE(unicodeGlibc, ascii, asciiUnits)->Name("Class/ascii/glibc_iswctype");
BENCHMARK_CAPTURE(unicodeVlx, japanese, japaneseUnits)->Name("Class/japanese/vlx");
BENCHMARK_CAPTURE(unicodeCharType, japanese, japaneseUnits)->Name("Class/japanese/icu_u_charType");
BENCHMARK_CAPTURE(unicodeIsalpha, japanese, japaneseUnits)->Name("Class/japanese/icu_u_isalpha");
BENCHMARK_CAPTURE(unicodeGlibc, japanese, japaneseUnits)->Name("Class/japanese/glibc_iswctype");

} // namespace

} // namespace vlx::bench
