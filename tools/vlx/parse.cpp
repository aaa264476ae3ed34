// `vlx parse`: what the library reads, and how far.
#include <iterator>

#include <nlohmann/json.hpp>

#include "failure.hpp"
#include "format.hpp"
#include "wide.hpp"

namespace vlx::cli {

namespace {

using Json = nlohmann::ordered_json;

// The fields of a time by their names, and what they are before anything is read.
constexpr std::int32_t kUnread = INT32_MIN;
struct Field {
    const char* name;
    std::int32_t TSTimeFields::*field;
};
constexpr Field kFields[] = {
    {"year", &TSTimeFields::year},
    {"month", &TSTimeFields::month},
    {"dayOfMonth", &TSTimeFields::dayOfMonth},
    {"hours", &TSTimeFields::hours},
    {"minutes", &TSTimeFields::minutes},
    {"seconds", &TSTimeFields::seconds},
    {"dayOfWeek", &TSTimeFields::dayOfWeek},
    {"dayOfYear", &TSTimeFields::dayOfYear},
};

// Tells the text behind what was read; the status says whether there is any.
int finish(Json document, const Units& text, std::int32_t taken, const ParseOptions& options,
           Output& output)
{
    const auto size = static_cast<std::int32_t>(text.size());
    const std::string rest = utf8Of(text.data() + taken, size - taken);
    document["rest"] = rest;
    if (options.json) {
        output.print("{}\n", document.dump(2, ' ', false, Json::error_handler_t::replace));
    } else {
        for (const auto& [name, value] : document.items())
            if (name != "rest")
                output.print("{}\n", name == "value" ? value.dump()
                                                     : fmt::format("{} {}", name, value.dump()));
        if (!rest.empty())
            output.print("{}\n", output.styled(kBad, fmt::format("not read: \"{}\"", rest)));
    }
    output.finish();
    return rest.empty() ? kExitGood : kExitText;
}

} // namespace

int parseNumber(const ParseOptions& options, bool monetary, Output& output)
{
    const LocaleHandle locale = openLocale(options.locale);
    const Units text = unitsOf(options.text);
    const auto size = static_cast<std::int32_t>(text.size());
    const std::uint32_t mode = (monetary ? TS_OPT_MONETARY : 0) |
                               (options.mapsDigits ? TS_OPT_MAP_DIGITS : 0) |
                               (options.ofObject ? TS_OPT_OBJECT_VALUE : 0);
    TSChar16* end = nullptr;
    Json document;
    if (options.whole)
        document["value"] =
            TSStringToLongU(locale.get(), text.data(), size, &end, options.base, mode);
    else
        document["value"] = TSStringToDoubleU(locale.get(), text.data(), size, &end, mode);
    if (const std::int32_t code = TSGetError(locale.get()); code != TS_ERR_NONE)
        throw Failure(code == TS_ERR_BASE
                          ? fmt::format("there is no base {}; give 0, or 2 to 36", options.base)
                          : fmt::format("the number could not be read (error {})", code));
    return finish(document, text, static_cast<std::int32_t>(end - text.data()), options, output);
}

int parseTime(const ParseOptions& options, Output& output)
{
    const LocaleHandle locale = openLocale(options.locale);
    const Units text = unitsOf(options.text);
    const Units pattern = unitsOf(options.pattern);
    TSTimeFields time;
    for (const Field& field : kFields)
        time.*field.field = kUnread;
    const std::int32_t taken = TSStringToTimeU(
        locale.get(), &time, text.data(), static_cast<std::int32_t>(text.size()), pattern.data(),
        static_cast<std::int32_t>(pattern.size()), options.ofObject ? TS_OPT_OBJECT_VALUE : 0);
    const std::int32_t code = TSGetError(locale.get());
    if (code == TS_ERR_DIRECTIVE)
        throw Failure(fmt::format("the pattern \"{}\" has a directive that cannot be read; `vlx "
                                  "parse time --help` lists those that can",
                                  options.pattern));
    if (code != TS_ERR_NONE)
        throw Failure(
            fmt::format(R"("{}" does not match the pattern "{}")", options.text, options.pattern));
    Json document = Json::object();
    for (const Field& field : kFields)
        if (time.*field.field != kUnread)
            document[field.name] = time.*field.field;
    return finish(document, text, taken, options, output);
}

} // namespace vlx::cli
