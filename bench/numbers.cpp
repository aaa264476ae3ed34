// Numbers, money and times to text and back, in German. The values take turns, so that no branch
// predictor knows them by heart; what a peer writes or reads is compared with ours before the
// clock runs, where both have the same customs.
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <monetary.h>
#include <random>
#include <string>
#include <vector>

#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/unum.h>

#include "bench.hpp"
#include "glibc.hpp"

namespace vlx::bench {

namespace {

constexpr const char* kGermany = "German_Germany.MS1252";
constexpr std::size_t kValues = 256; // a power of two
constexpr std::int32_t kRoom = 128;

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

const std::vector<std::tm>& times()
{
    static const std::vector<std::tm> values = [] {
        std::mt19937_64 random(3);
        std::vector<std::tm> made;
        for (std::size_t i = 0; i < kValues; ++i) {
            const auto seconds = static_cast<std::time_t>(random() % 4000000000U);
            std::tm time{};
            gmtime_r(&seconds, &time);
            made.push_back(time);
        }
        return made;
    }();
    return values;
}

TSTimeFields fieldsOf(const std::tm& time)
{
    return {time.tm_sec, time.tm_min,  time.tm_hour, time.tm_mday,
            time.tm_mon, time.tm_year, time.tm_wday, time.tm_yday};
}

// Runs a row: `call(i)` gets an index of the values.
template <class Call>
void run(benchmark::State& state, const Call& call)
{
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(turn));
        benchmark::ClobberMemory();
        turn = (turn + 1) % kValues;
    }
}

// A row of this library.
template <class Call>
void runVlx(benchmark::State& state, const Call& call)
{
    const RowLocale locale(state, kGermany);
    if (locale)
        run(state, [&](std::size_t i) { return call(locale.get(), i); });
}

// A row of the C library, in its German locale.
template <class Call>
void runGlibc(benchmark::State& state, const Call& call)
{
    const GlibcLocale locale("de_DE", "CP1252");
    if (!locale) {
        state.SkipWithError("localedef cannot make de_DE.CP1252 here");
        return;
    }
    run(state, call);
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

// A time format of ICU by a pattern, and the values in its milliseconds.
class IcuTimes {
  public:
    explicit IcuTimes(const char16_t* pattern)
        : format_(udat_open(UDAT_PATTERN, UDAT_PATTERN, "de_DE", u"GMT", -1, pattern, -1, &code_))
    {
    }
    ~IcuTimes() { udat_close(format_); }
    IcuTimes(const IcuTimes&) = delete;
    IcuTimes& operator=(const IcuTimes&) = delete;

    UDateFormat* get() const { return format_; }

  private:
    UErrorCode code_ = U_ZERO_ERROR;
    UDateFormat* format_;
};

std::vector<UDate> milliseconds()
{
    std::vector<UDate> made;
    for (std::tm time : times())
        made.push_back(1000.0 * static_cast<double>(timegm(&time)));
    return made;
}

std::u16string wide(const std::string& text)
{
    std::u16string units;
    for (const char byte : text)
        units += static_cast<unsigned char>(byte);
    return units;
}

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

// The two patterns of the rows about times, in each language of patterns.
struct Pattern {
    const char* c;
    const char16_t* icu;
};
constexpr Pattern kNames{"%A, %d. %B %Y", u"EEEE, dd. MMMM yyyy"};
constexpr Pattern kNumeric{"%d.%m.%Y %H:%M:%S", u"dd.MM.yyyy HH:mm:ss"};

void timeVlx(benchmark::State& state, Pattern pattern)
{
    std::vector<TSTimeFields> values;
    for (const std::tm& time : times())
        values.push_back(fieldsOf(time));
    char text[kRoom];
    runVlx(state, [&](TSLocale* locale, std::size_t i) {
        return TSTimeToString(locale, &values[i], text, kRoom, pattern.c, -1, TS_OPT_TERMINATE);
    });
}

void timeGlibc(benchmark::State& state, Pattern pattern)
{
    char text[kRoom];
    runGlibc(state, [&](std::size_t i) {
        return std::strftime(text, sizeof text, pattern.c, &times()[i]);
    });
}

void timeIcu(benchmark::State& state, Pattern pattern)
{
    const IcuTimes format(pattern.icu);
    const std::vector<UDate> values = milliseconds();
    UChar text[kRoom];
    run(state, [&](std::size_t i) {
        UErrorCode code = U_ZERO_ERROR;
        return udat_format(format.get(), values[i], text, kRoom, nullptr, &code);
    });
}

// The times as German text in the code page.
std::vector<std::string> timeTexts(Pattern pattern)
{
    std::vector<std::string> made;
    const GlibcLocale locale("de_DE", "CP1252");
    for (const std::tm& time : times()) {
        char text[kRoom];
        made.emplace_back(text, std::strftime(text, sizeof text, pattern.c, &time));
    }
    return made;
}

void parseTimeVlx(benchmark::State& state, Pattern pattern)
{
    const std::vector<std::string> texts = timeTexts(pattern);
    TSTimeFields time{};
    runVlx(state, [&](TSLocale* locale, std::size_t i) {
        const std::int32_t taken =
            TSStringToTime(locale, &time, texts[i].c_str(), -1, pattern.c, -1, 0);
        if (taken != static_cast<std::int32_t>(texts[i].size()))
            state.SkipWithError("does not read its text");
        return taken;
    });
}

void parseTimeGlibc(benchmark::State& state, Pattern pattern)
{
    const std::vector<std::string> texts = timeTexts(pattern);
    std::tm time{};
    runGlibc(state, [&](std::size_t i) { return strptime(texts[i].c_str(), pattern.c, &time); });
}

void parseTimeIcu(benchmark::State& state, Pattern pattern)
{
    const IcuTimes format(pattern.icu);
    std::vector<std::u16string> texts;
    for (const std::string& text : timeTexts(pattern))
        texts.push_back(wide(text));
    run(state, [&](std::size_t i) {
        UErrorCode code = U_ZERO_ERROR;
        return udat_parse(format.get(), texts[i].data(), static_cast<std::int32_t>(texts[i].size()),
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
BENCHMARK_CAPTURE(timeVlx, names, kNames)->Name("TimeToText/names/vlx");
BENCHMARK_CAPTURE(timeGlibc, names, kNames)->Name("TimeToText/names/glibc_strftime");
BENCHMARK_CAPTURE(timeIcu, names, kNames)->Name("TimeToText/names/icu_udat_format");
BENCHMARK_CAPTURE(timeVlx, numeric, kNumeric)->Name("TimeToText/numeric/vlx");
BENCHMARK_CAPTURE(timeGlibc, numeric, kNumeric)->Name("TimeToText/numeric/glibc_strftime");
BENCHMARK_CAPTURE(timeIcu, numeric, kNumeric)->Name("TimeToText/numeric/icu_udat_format");
BENCHMARK_CAPTURE(parseTimeVlx, names, kNames)->Name("TextToTime/names/vlx");
BENCHMARK_CAPTURE(parseTimeGlibc, names, kNames)->Name("TextToTime/names/glibc_strptime");
BENCHMARK_CAPTURE(parseTimeIcu, names, kNames)->Name("TextToTime/names/icu_udat_parse");
BENCHMARK_CAPTURE(parseTimeVlx, numeric, kNumeric)->Name("TextToTime/numeric/vlx");
BENCHMARK_CAPTURE(parseTimeGlibc, numeric, kNumeric)->Name("TextToTime/numeric/glibc_strptime");
BENCHMARK_CAPTURE(parseTimeIcu, numeric, kNumeric)->Name("TextToTime/numeric/icu_udat_parse");

} // namespace

} // namespace vlx::bench
