// Stepping through a mebibyte of CP932, character by character and in one call. Every row counts
// the characters, and a row whose count is not that of TSNumChars is refused.
#include <array>
#include <cstring>
#include <cwchar>

#include <unicode/ucnv.h>

#include "bench.hpp"
#include "glibc.hpp"
#include "texts.hpp"

namespace vlx::bench {

namespace {

constexpr const char* kLocaleName = "Japanese_Japan.MS932";

using MakeText = const std::string& (*)();

// The right number of characters; 0 with the row skipped.
std::int64_t expectedCount(benchmark::State& state, const std::string& text)
{
    const RowLocale locale(state, kLocaleName);
    return locale ? TSNumChars(locale.get(), text.data(), static_cast<int32_t>(text.size()), 0) : 0;
}

// Runs a row: `count` goes through the text and gives the number of its characters.
template <class Count>
void countRow(benchmark::State& state, const std::string& text, const Count& count)
{
    const std::int64_t expected = expectedCount(state, text);
    if (expected == 0)
        return;
    if (count() != expected) {
        state.SkipWithError("counts other characters than TSNumChars");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(count());
    const auto runs = static_cast<std::int64_t>(state.iterations());
    state.SetBytesProcessed(runs * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(runs * expected);
}

void stepVlx(benchmark::State& state, MakeText makeText)
{
    const std::string& text = makeText();
    const RowLocale locale(state, kLocaleName);
    if (!locale)
        return;
    countRow(state, text, [&] {
        std::int64_t count = 0;
        const char* const end = text.data() + text.size();
        for (const char* at = text.data(); at < end; at = TSNextChar(locale.get(), at))
            ++count;
        return count;
    });
}

void countVlx(benchmark::State& state, MakeText makeText)
{
    const std::string& text = makeText();
    const RowLocale locale(state, kLocaleName);
    if (!locale)
        return;
    countRow(state, text, [&] {
        return std::int64_t{
            TSNumChars(locale.get(), text.data(), static_cast<int32_t>(text.size()), 0)};
    });
}

void stepGlibc(benchmark::State& state, MakeText makeText)
{
    const std::string& text = makeText();
    const GlibcLocale locale("ja_JP", "WINDOWS-31J");
    if (!locale) {
        state.SkipWithError("localedef cannot make ja_JP.WINDOWS-31J here");
        return;
    }
    countRow(state, text, [&] {
        std::int64_t count = 0;
        std::mbstate_t shift{};
        std::size_t step = 0;
        for (std::size_t at = 0; at < text.size(); at += step, ++count) {
            step = std::mbrlen(text.data() + at, text.size() - at, &shift);
            if (step == 0 || step > text.size())
                break;
        }
        return count;
    });
}

// The C library counts the characters of a terminated text where there is no output.
void countGlibc(benchmark::State& state, MakeText makeText)
{
    const std::string& text = makeText();
    const GlibcLocale locale("ja_JP", "WINDOWS-31J");
    if (!locale) {
        state.SkipWithError("localedef cannot make ja_JP.WINDOWS-31J here");
        return;
    }
    countRow(state, text, [&] {
        std::mbstate_t shift{};
        const char* from = text.c_str();
        return static_cast<std::int64_t>(std::mbsrtowcs(nullptr, &from, 0, &shift));
    });
}

// ICU's converter of the same mapping.
class Converter {
  public:
    Converter() : converter_(ucnv_open("ibm-943_P15A-2003", &code_)) {}
    ~Converter() { ucnv_close(converter_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    UConverter* get() const { return converter_; }

  private:
    UErrorCode code_ = U_ZERO_ERROR;
    UConverter* converter_;
};

void stepIcu(benchmark::State& state, MakeText makeText)
{
    const std::string& text = makeText();
    const Converter converter;
    countRow(state, text, [&] {
        std::int64_t count = 0;
        UErrorCode code = U_ZERO_ERROR;
        ucnv_reset(converter.get());
        const char* const end = text.data() + text.size();
        for (const char* at = text.data(); at < end && U_SUCCESS(code); ++count)
            benchmark::DoNotOptimize(ucnv_getNextUChar(converter.get(), &at, end, &code));
        return count;
    });
}

// In one go ICU can only convert; every character of the texts is one 16-bit value.
void countIcu(benchmark::State& state, MakeText makeText)
{
    const std::string& text = makeText();
    const Converter converter;
    countRow(state, text, [&] {
        std::int64_t count = 0;
        std::array<UChar, 4096> piece;
        ucnv_reset(converter.get());
        const char* at = text.data();
        const char* const end = at + text.size();
        for (UErrorCode code = U_BUFFER_OVERFLOW_ERROR; code == U_BUFFER_OVERFLOW_ERROR;) {
            code = U_ZERO_ERROR;
            UChar* to = piece.data();
            ucnv_toUnicode(converter.get(), &to, to + piece.size(), &at, end, nullptr, true, &code);
            count += to - piece.data();
        }
        return count;
    });
}

} // namespace

void addSteppingRows()
{
    constexpr struct {
        const char* name;
        MakeText make;
    } texts[] = {{"japanese", japaneseText}, {"ascii", asciiText}};
    constexpr struct {
        const char* work;
        const char* who;
        void (*run)(benchmark::State&, MakeText);
    } rows[] = {{"Step", "vlx", stepVlx},       {"Step", "glibc_mbrlen", stepGlibc},
                {"Step", "icu", stepIcu},       {"Count", "vlx", countVlx},
                {"Count", "glibc", countGlibc}, {"Count", "icu", countIcu}};
    for (const auto& text : texts)
        for (const auto& row : rows)
            benchmark::RegisterBenchmark(
                (std::string(row.work) + '/' + text.name + '/' + row.who).c_str(), row.run,
                text.make);
}

} // namespace vlx::bench
