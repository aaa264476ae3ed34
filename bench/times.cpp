// Times to text and back, in German: names of days and months, and digits alone.
#include <ctime>
#include <random>
#include <vector>

#include <unicode/ucal.h>
#include <unicode/udat.h>

#include "values.hpp"

namespace vlx::bench {

namespace {

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
