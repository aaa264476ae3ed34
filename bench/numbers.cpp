// Numbers and money to text and back, in German. The values take turns, so that no branch
// predictor knows them by heart; what we read is compared with the value.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <monetary.h>
#include <random>
#include <string>
#include <vector>

#include <unicode/unum.h>

#include "values.hpp"

namespace vlx::bench {

namespace {

const std::vector<double>& doubles()
{
    static const std::vector<double> values = [] {
        std::mt19937_64 random(1);
        std::vector<double> made;
        for (std::size_t i = 0; i < kValues; ++i) // hundredths up to ten millions
            made.push_back(static_cast<double>(random() % 1000000000) / 100 *
                           (i % 4 == 0 ? -1 : 1));
        return made;
    }();
    return values;
}

const std::vector<std::int32_t>& longs()
{
    static const std::vector<std::int32_t> values = [] {
        std::mt19937_64 random(2);
        std::vector<std::int32_t> made;
        for (std::size_t i = 0; i < kValues; ++i)
            made.push_back(static_cast<std::int32_t>(random()) >> random() % 24);
        return made;
    }();
    return values;
}

// A number format of ICU.
class IcuNumbers {
  public:
    IcuNumbers(UNumberFormatStyle style, bool grouped, int digits)
        : format_(unum_open(style, nullptr, 0, "de_DE", nullptr, &code_))
    {
        unum_setAttribute(format_, UNUM_GROUPING_USED, grouped);
        if (digits >= 0)
            unum_setAttribute(format_, UNUM_FRACTION_DIGITS, digits);
    }
    ~IcuNumbers() { unum_close(format_); }
    IcuNumbers(const IcuNumbers&) = delete;
    IcuNumbers& operator=(const IcuNumbers&) = delete;

    UNumberFormat* get() const { return format_; }

  private:
    UErrorCode code_ = U_ZERO_ERROR;
    UNumberFormat* format_;
};

void doubleVlx(benchmark::State& state)
{
    char text[kRoom];
    runVlx(state, [&](TSLocale* locale, std::size_t i) {
        return TSDoubleToString(locale, doubles()[i], text, kRoom, 0);
    });
}

void doubleGlibc(benchmark::State& state)
{
    char text[kRoom];
    runGlibc(state, [&](std::size_t i) {
        return std::snprintf(text, sizeof text, "%'.2f", doubles()[i]);
    });
}

void doubleIcu(benchmark::State& state)
{
    const IcuNumbers format(UNUM_DECIMAL, true, 2);
    UChar text[kRoom];
    run(state, [&](std::size_t i) {
        UErrorCode code = U_ZERO_ERROR;
        return unum_formatDouble(format.get(), doubles()[i], text, kRoom, nullptr, &code);
    });
}

void longVlx(benchmark::State& state)
{
    char text[kRoom];
    runVlx(state, [&](TSLocale* locale, std::size_t i) {
        return TSLongToString(locale, longs()[i], text, kRoom, 0);
    });
}

void longGlibc(benchmark::State& state)
{
    char text[kRoom];
    runGlibc(state,
             [&](std::size_t i) { return std::snprintf(text, sizeof text, "%'d", longs()[i]); });
}

void longIcu(benchmark::State& state)
{
    const IcuNumbers format(UNUM_DECIMAL, true, 0);
    UChar text[kRoom];
    run(state, [&](std::size_t i) {
        UErrorCode code = U_ZERO_ERROR;
        return unum_format(format.get(), longs()[i], text, kRoom, nullptr, &code);
    });
}

void moneyVlx(benchmark::State& state)
{
    char text[kRoom];
    runVlx(state, [&](TSLocale* locale, std::size_t i) {
        return TSCurrencyToString(locale, doubles()[i], text, kRoom, 0);
    });
}

void moneyGlibc(benchmark::State& state)
{
    char text[kRoom];
    runGlibc(state, [&](std::size_t i) { return strfmon(text, sizeof text, "%n", doubles()[i]); });
}

void moneyIcu(benchmark::State& state)
{
    const IcuNumbers format(UNUM_CURRENCY, true, -1);
    UChar text[kRoom];
    run(state, [&](std::size_t i) {
        UErrorCode code = U_ZERO_ERROR;
        return unum_formatDouble(format.get(), doubles()[i], text, kRoom, nullptr, &code);
    });
}

// The doubles as German text.
std::vector<std::string> doubleTexts(bool grouped)
{
    std::vector<std::string> made;
    for (const double value : doubles()) {
        char text[kRoom];
        std::snprintf(text, sizeof text, "%.2f", value);
        std::string german = text;
        const std::size_t point = german.find('.');
        german[point] = ',';
        for (std::size_t at = point; grouped && at > 3 && german[at - 4] != '-'; at -= 3)
            german.insert(at - 3, 1, '.');
        made.push_back(german);
    }
    return made;
}

void parseDoubleVlx(benchmark::State& state, bool grouped)
{
    const std::vector<std::string> texts = doubleTexts(grouped);
    runVlx(state, [&](TSLocale* locale, std::size_t i) {
        char* end;
        const double value = TSStringToDouble(locale, texts[i].c_str(), -1, &end, 0);
        if (*end != 0 || std::abs(value - doubles()[i]) > 1e-6)
            state.SkipWithError("reads another value");
        return value;
    });
}

void parseDoubleGlibc(benchmark::State& state)
{
    const std::vector<std::string> texts = doubleTexts(false);
    runGlibc(state, [&](std::size_t i) { return std::strtod(texts[i].c_str(), nullptr); });
}

void parseGroupedGlibc(benchmark::State& state)
{
    const std::vector<std::string> texts = doubleTexts(true);
    runGlibc(state, [&](std::size_t i) {
        double value = 0;
        return std::sscanf(texts[i].c_str(), "%'lf", &value) + value;
    });
}

void parseDoubleIcu(benchmark::State& state, bool grouped)
{
    const IcuNumbers format(UNUM_DECIMAL, true, -1);
    std::vector<std::u16string> texts;
    for (const std::string& text : doubleTexts(grouped))
        texts.push_back(wide(text));
    run(state, [&](std::size_t i) {
        UErrorCode code = U_ZERO_ERROR;
        return unum_parseDouble(format.get(), texts[i].data(),
                                static_cast<std::int32_t>(texts[i].size()), nullptr, &code);
    });
}

std::vector<std::string> longTexts()
{
    std::vector<std::string> made;
    for (const std::int32_t value : longs())
        made.push_back(std::to_string(value));
    return made;
}

void parseLongVlx(benchmark::State& state)
{
    const std::vector<std::string> texts = longTexts();
    runVlx(state, [&](TSLocale* locale, std::size_t i) {
        const std::int32_t value = TSStringToLong(locale, texts[i].c_str(), -1, nullptr, 10, 0);
        if (value != longs()[i])
            state.SkipWithError("reads another value");
        return value;
    });
}

void parseLongGlibc(benchmark::State& state)
{
    const std::vector<std::string> texts = longTexts();
    runGlibc(state, [&](std::size_t i) { return std::strtol(texts[i].c_str(), nullptr, 10); });
}

void parseLongIcu(benchmark::State& state)
{
    const IcuNumbers format(UNUM_DECIMAL, true, 0);
    std::vector<std::u16string> texts;
    for (const std::string& text : longTexts())
        texts.push_back(wide(text));
    run(state, [&](std::size_t i) {
        UErrorCode code = U_ZERO_ERROR;
        return unum_parse(format.get(), texts[i].data(), static_cast<std::int32_t>(texts[i].size()),
                          nullptr, &code);
    });
}

BENCHMARK(doubleVlx)->Name("DoubleToText/grouped/vlx");
BENCHMARK(doubleGlibc)->Name("DoubleToText/grouped/glibc_snprintf");
BENCHMARK(doubleIcu)->Name("DoubleToText/grouped/icu_unum_formatDouble");
BENCHMARK(longVlx)->Name("LongToText/grouped/vlx");
BENCHMARK(longGlibc)->Name("LongToText/grouped/glibc_snprintf");
BENCHMARK(longIcu)->Name("LongToText/grouped/icu_unum_format");
BENCHMARK(moneyVlx)->Name("MoneyToText/symbol/vlx");
BENCHMARK(moneyGlibc)->Name("MoneyToText/symbol/glibc_strfmon");
BENCHMARK(moneyIcu)->Name("MoneyToText/symbol/icu_unum_formatDouble");
BENCHMARK_CAPTURE(parseDoubleVlx, plain, false)->Name("TextToDouble/plain/vlx");
BENCHMARK(parseDoubleGlibc)->Name("TextToDouble/plain/glibc_strtod");
BENCHMARK_CAPTURE(parseDoubleIcu, plain, false)->Name("TextToDouble/plain/icu_unum_parseDouble");
BENCHMARK_CAPTURE(parseDoubleVlx, grouped, true)->Name("TextToDouble/grouped/vlx");
BENCHMARK(parseGroupedGlibc)->Name("TextToDouble/grouped/glibc_sscanf");
BENCHMARK_CAPTURE(parseDoubleIcu, grouped, true)->Name("TextToDouble/grouped/icu_unum_parseDouble");
BENCHMARK(parseLongVlx)->Name("TextToLong/plain/vlx");
BENCHMARK(parseLongGlibc)->Name("TextToLong/plain/glibc_strtol");
BENCHMARK(parseLongIcu)->Name("TextToLong/plain/icu_unum_parse");
} // namespace

} // namespace vlx::bench
