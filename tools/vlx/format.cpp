// `vlx format`: what the library writes, in a few forms of asking.
#include "format.hpp"

#include <charconv>
#include <ctime>
#include <vector>

#include <nlohmann/json.hpp>

#include "failure.hpp"
#include "times.hpp"
#include "wide.hpp"

namespace vlx::cli {

namespace {

constexpr std::int32_t kFirstRoom = 256;
constexpr std::int32_t kMostRoom = 1 << 20;

// What a writer of the library gives: its text, once there is room enough for it, and its code.
struct Text {
    std::string text;
    std::int32_t code = TS_ERR_NONE;
};

template <class Write>
Text written(TSLocale* locale, const Write& write)
{
    for (std::int32_t room = kFirstRoom;; room *= 4) {
        Units units(static_cast<std::size_t>(room), 0);
        const std::int32_t count = write(units.data(), room);
        const std::int32_t code = TSGetError(locale);
        if (code != TS_ERR_BUFFER || room >= kMostRoom)
            return {utf8Of(units.data(), count), code};
    }
}

int print(const Text& text, const char* function, bool json, Output& output)
{
    if (json) {
        using Json = nlohmann::ordered_json;
        const Json document = {{"text", text.text}, {"function", function}};
        output.print("{}\n", document.dump(2, ' ', false, Json::error_handler_t::replace));
    } else {
        output.print("{}\n", text.text);
    }
    output.finish();
    return kExitGood;
}

// A whole argument as a number; false if it is none.
template <class Number>
bool readWhole(const std::string& text, Number& number)
{
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

double doubleOf(const std::string& text)
{
    double value = 0;
    if (!readWhole(text, value))
        throw Failure(fmt::format("\"{}\" is no number; write it as -1234.5", text));
    return value;
}

std::uint32_t sourceOf(const FormatOptions& options)
{
    return options.ofObject ? TS_OPT_OBJECT_VALUE : 0;
}

TSTimeFields now()
{
    const std::time_t seconds = std::time(nullptr);
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the program has one thread
    const std::tm* const time = std::localtime(&seconds);
    if (!time)
        throw Failure("the time of this machine cannot be told; give a time");
    return {time->tm_sec, time->tm_min,  time->tm_hour, time->tm_mday,
            time->tm_mon, time->tm_year, time->tm_wday, time->tm_yday};
}

} // namespace

int formatNumber(const FormatOptions& options, Output& output)
{
    const LocaleHandle locale = openLocale(options.locale);
    std::int32_t whole = 0;
    if (readWhole(options.value, whole)) {
        const auto write = [&](TSChar16* to, std::int32_t size) {
            return TSLongToStringU(locale.get(), whole, to, size, sourceOf(options));
        };
        return print(written(locale.get(), write), "TSLongToString", options.json, output);
    }
    const double value = doubleOf(options.value);
    const auto write = [&](TSChar16* to, std::int32_t size) {
        return TSDoubleToStringU(locale.get(), value, to, size, sourceOf(options));
    };
    return print(written(locale.get(), write), "TSDoubleToString", options.json, output);
}

int formatMoney(const FormatOptions& options, Output& output)
{
    const LocaleHandle locale = openLocale(options.locale);
    const double value = doubleOf(options.value);
    const std::uint32_t kind = options.international ? TS_OPT_INTERNATIONAL : 0;
    const auto write = [&](TSChar16* to, std::int32_t size) {
        return TSCurrencyToStringU(locale.get(), value, to, size, sourceOf(options) | kind);
    };
    return print(written(locale.get(), write), "TSCurrencyToString", options.json, output);
}

int formatTime(const FormatOptions& options, Output& output)
{
    const LocaleHandle locale = openLocale(options.locale);
    const TSTimeFields time = options.time.empty() ? now() : timeOfIso(options.time);
    const Units pattern = unitsOf(options.pattern);
    const auto write = [&](TSChar16* to, std::int32_t size) {
        return TSTimeToStringU(locale.get(), &time, to, size, pattern.data(),
                               static_cast<std::int32_t>(pattern.size()), sourceOf(options));
    };
    const Text text = written(locale.get(), write);
    if (text.code == TS_ERR_DIRECTIVE)
        throw Failure(
            fmt::format("the pattern \"{}\" has a directive that there is none of, behind "
                        "\"{}\"; `vlx format time --help` lists them",
                        options.pattern, text.text));
    if (text.code != TS_ERR_NONE)
        throw Failure(fmt::format("the time could not be written (error {})", text.code));
    return print(text, "TSTimeToString", options.json, output);
}

} // namespace vlx::cli
