// `vlx show`: every value of a locale by its item.
#include <string>
#include <variant>
#include <vector>

#include <nlohmann/json.hpp>

#include "commands.hpp"

namespace vlx::cli {

namespace {

struct Item {
    std::int32_t item;
    const char* name; // behind TS_LI_
    bool number;
    const char* heading; // of the items from this one on
};
constexpr Item kItems[] = {
    {TS_LI_LANGUAGE_ID, "LANGUAGE_ID", true, "Objects"},
    {TS_LI_LANGUAGE_OBJECT, "LANGUAGE_OBJECT", false, nullptr},
    {TS_LI_LANGUAGE_CODE, "LANGUAGE_CODE", false, nullptr},
    {TS_LI_LANGUAGE_NAME, "LANGUAGE_NAME", false, nullptr},
    {TS_LI_TERRITORY_ID, "TERRITORY_ID", true, nullptr},
    {TS_LI_TERRITORY_OBJECT, "TERRITORY_OBJECT", false, nullptr},
    {TS_LI_TERRITORY_CODE, "TERRITORY_CODE", false, nullptr},
    {TS_LI_TERRITORY_NAME, "TERRITORY_NAME", false, nullptr},
    {TS_LI_CODEPAGE_ID, "CODEPAGE_ID", true, nullptr},
    {TS_LI_CODEPAGE_OBJECT, "CODEPAGE_OBJECT", false, nullptr},
    {TS_LI_SORT_ID, "SORT_ID", true, nullptr},
    {TS_LI_SORT_OBJECT, "SORT_OBJECT", false, nullptr},
    {TS_LI_DEFAULT_TERRITORY_OBJECT, "DEFAULT_TERRITORY_OBJECT", false, nullptr},
    {TS_LI_DEFAULT_CODEPAGE_OBJECT, "DEFAULT_CODEPAGE_OBJECT", false, nullptr},
    {TS_LI_DEFAULT_SORT_OBJECT, "DEFAULT_SORT_OBJECT", false, nullptr},
    {TS_LI_DAY_1, "DAY_1", false, "Days"},
    {TS_LI_DAY_2, "DAY_2", false, nullptr},
    {TS_LI_DAY_3, "DAY_3", false, nullptr},
    {TS_LI_DAY_4, "DAY_4", false, nullptr},
    {TS_LI_DAY_5, "DAY_5", false, nullptr},
    {TS_LI_DAY_6, "DAY_6", false, nullptr},
    {TS_LI_DAY_7, "DAY_7", false, nullptr},
    {TS_LI_ABDAY_1, "ABDAY_1", false, nullptr},
    {TS_LI_ABDAY_2, "ABDAY_2", false, nullptr},
    {TS_LI_ABDAY_3, "ABDAY_3", false, nullptr},
    {TS_LI_ABDAY_4, "ABDAY_4", false, nullptr},
    {TS_LI_ABDAY_5, "ABDAY_5", false, nullptr},
    {TS_LI_ABDAY_6, "ABDAY_6", false, nullptr},
    {TS_LI_ABDAY_7, "ABDAY_7", false, nullptr},
    {TS_LI_MONTH_1, "MONTH_1", false, "Months"},
    {TS_LI_MONTH_2, "MONTH_2", false, nullptr},
    {TS_LI_MONTH_3, "MONTH_3", false, nullptr},
    {TS_LI_MONTH_4, "MONTH_4", false, nullptr},
    {TS_LI_MONTH_5, "MONTH_5", false, nullptr},
    {TS_LI_MONTH_6, "MONTH_6", false, nullptr},
    {TS_LI_MONTH_7, "MONTH_7", false, nullptr},
    {TS_LI_MONTH_8, "MONTH_8", false, nullptr},
    {TS_LI_MONTH_9, "MONTH_9", false, nullptr},
    {TS_LI_MONTH_10, "MONTH_10", false, nullptr},
    {TS_LI_MONTH_11, "MONTH_11", false, nullptr},
    {TS_LI_MONTH_12, "MONTH_12", false, nullptr},
    {TS_LI_MONTH_13, "MONTH_13", false, nullptr},
    {TS_LI_ABMONTH_1, "ABMONTH_1", false, nullptr},
    {TS_LI_ABMONTH_2, "ABMONTH_2", false, nullptr},
    {TS_LI_ABMONTH_3, "ABMONTH_3", false, nullptr},
    {TS_LI_ABMONTH_4, "ABMONTH_4", false, nullptr},
    {TS_LI_ABMONTH_5, "ABMONTH_5", false, nullptr},
    {TS_LI_ABMONTH_6, "ABMONTH_6", false, nullptr},
    {TS_LI_ABMONTH_7, "ABMONTH_7", false, nullptr},
    {TS_LI_ABMONTH_8, "ABMONTH_8", false, nullptr},
    {TS_LI_ABMONTH_9, "ABMONTH_9", false, nullptr},
    {TS_LI_ABMONTH_10, "ABMONTH_10", false, nullptr},
    {TS_LI_ABMONTH_11, "ABMONTH_11", false, nullptr},
    {TS_LI_ABMONTH_12, "ABMONTH_12", false, nullptr},
    {TS_LI_ABMONTH_13, "ABMONTH_13", false, nullptr},
    {TS_LI_AM, "AM", false, "Half days"},
    {TS_LI_PM, "PM", false, nullptr},
    {TS_LI_TERRITORY_FLAG0, "TERRITORY_FLAG0", true, "Numbers"},
    {TS_LI_DECIMAL_POINT, "DECIMAL_POINT", false, nullptr},
    {TS_LI_THOUSANDS_SEP, "THOUSANDS_SEP", false, nullptr},
    {TS_LI_LIST_SEPARATOR, "LIST_SEPARATOR", false, nullptr},
    {TS_LI_GROUPING, "GROUPING", false, nullptr},
    {TS_LI_FRAC_DIGITS, "FRAC_DIGITS", true, nullptr},
    {TS_LI_CURRENCY_SYMBOL, "CURRENCY_SYMBOL", false, "Currency"},
    {TS_LI_INT_CURRENCY_SYMBOL, "INT_CURRENCY_SYMBOL", false, nullptr},
    {TS_LI_MON_DECIMAL_POINT, "MON_DECIMAL_POINT", false, nullptr},
    {TS_LI_MON_THOUSANDS_SEP, "MON_THOUSANDS_SEP", false, nullptr},
    {TS_LI_MON_GROUPING, "MON_GROUPING", false, nullptr},
    {TS_LI_MON_FRAC_DIGITS, "MON_FRAC_DIGITS", true, nullptr},
    {TS_LI_INT_FRAC_DIGITS, "INT_FRAC_DIGITS", true, nullptr},
    {TS_LI_POSITIVE_SIGN, "POSITIVE_SIGN", false, nullptr},
    {TS_LI_NEGATIVE_SIGN, "NEGATIVE_SIGN", false, nullptr},
    {TS_LI_P_CS_PRECEDES, "P_CS_PRECEDES", true, nullptr},
    {TS_LI_P_SEP_BY_SPACE, "P_SEP_BY_SPACE", true, nullptr},
    {TS_LI_N_CS_PRECEDES, "N_CS_PRECEDES", true, nullptr},
    {TS_LI_N_SEP_BY_SPACE, "N_SEP_BY_SPACE", true, nullptr},
    {TS_LI_P_SIGN_POSN, "P_SIGN_POSN", true, nullptr},
    {TS_LI_N_SIGN_POSN, "N_SIGN_POSN", true, nullptr},
    {TS_LI_TIME_FORMAT, "TIME_FORMAT", false, "Time"},
    {TS_LI_DATE_FORMAT, "DATE_FORMAT", false, nullptr},
    {TS_LI_LONG_DATE_FORMAT, "LONG_DATE_FORMAT", false, nullptr},
    {TS_LI_TERRITORY_FLAG5, "TERRITORY_FLAG5", true, "Carried for the caller"},
    {TS_LI_TERRITORY_FLAG6, "TERRITORY_FLAG6", true, nullptr},
    {TS_LI_TERRITORY_WORD9, "TERRITORY_WORD9", true, nullptr},
    {TS_LI_MAX_CHAR_SIZE, "MAX_CHAR_SIZE", true, "Code page"},
    {TS_LI_ASCII_BASED, "ASCII_BASED", true, nullptr},
    {TS_LI_SHIFT_SENSITIVE, "SHIFT_SENSITIVE", true, nullptr},
    {TS_LI_LOCALE_NAME, "LOCALE_NAME", false, "Name"},
};

using Text = std::vector<TSChar16>; // without its terminator
using Value = std::variant<std::monostate, std::int32_t, Text>;

// The text of an item, as long as it may be; nothing if it has none.
Value textOf(TSLocale* locale, std::int32_t item, std::uint32_t options)
{
    for (Text text(128);; text.resize(2 * text.size())) {
        const auto size = static_cast<std::int32_t>(text.size());
        const std::int32_t written = TSGetLocaleTextInfoU(locale, item, text.data(), size, options);
        if (written < 0)
            return {};
        if (written == size) // it may be cut
            continue;
        text.resize(static_cast<std::size_t>(written) - 1);
        return text;
    }
}

Value valueOf(TSLocale* locale, const Item& item, std::uint32_t options)
{
    if (item.number)
        return TSGetLocaleNumInfo(locale, item.item, options);
    return textOf(locale, item.item, options);
}

// Controls, blanks and marks that would not show or would change the line.
bool needsEscape(TSChar16 unit, bool utf8Terminal)
{
    const auto between = [unit](TSChar16 low, TSChar16 high) {
        return unit >= low && unit <= high;
    };
    return unit < 0x20 || between(0x7F, 0xA0) || unit == 0xAD || between(0x2000, 0x200F) ||
           between(0x2028, 0x202F) || between(0x2060, 0x206F) || between(0xD800, 0xDFFF) ||
           unit == 0xFEFF || (unit >= 0x80 && !utf8Terminal);
}

std::string quoted(const Text& text, const Terminal& terminal)
{
    std::string line = "\"";
    for (const TSChar16 unit : text) {
        if (needsEscape(unit, terminal.utf8))
            line += fmt::format("\\u{:04X}", unit);
        else if (unit == '"' || unit == '\\')
            line += fmt::format("\\{}", static_cast<char>(unit));
        else
            line += utf8(unit);
    }
    return line + '"';
}

std::string utf8Text(const Text& text)
{
    std::string result;
    for (const TSChar16 unit : text)
        result += utf8(unit);
    return result;
}

void printPlain(TSLocale* locale, std::uint32_t options, Output& output)
{
    for (const Item& item : kItems) {
        if (item.heading)
            output.print("{}{}\n", item.item == 1 ? "" : "\n",
                         output.styled(kHeading, item.heading));
        const Value value = valueOf(locale, item, options);
        std::string shown = output.styled(kFaint, "not listed");
        if (const auto* const number = std::get_if<std::int32_t>(&value))
            shown = fmt::format_int(*number).str();
        else if (const auto* const text = std::get_if<Text>(&value))
            shown = quoted(*text, output.terminal());
        output.print("  {:>2}  {:<25}  {}\n", item.item, item.name, shown);
    }
}

void printJson(TSLocale* locale, std::uint32_t options, Output& output)
{
    using Json = nlohmann::ordered_json;
    Json items = Json::array();
    for (const Item& item : kItems) {
        const Value value = valueOf(locale, item, options);
        Json shown;
        if (const auto* const number = std::get_if<std::int32_t>(&value))
            shown = *number;
        else if (const auto* const text = std::get_if<Text>(&value))
            shown = utf8Text(*text);
        items.push_back({{"item", item.item},
                         {"name", fmt::format("TS_LI_{}", item.name)},
                         {"value", std::move(shown)}});
    }
    const Json document = {{"items", std::move(items)}};
    output.print("{}\n", document.dump(2, ' ', false, Json::error_handler_t::replace));
}

} // namespace

int showLocale(const ShowOptions& options, Output& output)
{
    const LocaleHandle locale = options.user ? openUserLocale() : openLocale(options.locale);
    const std::uint32_t source = options.object ? TS_OPT_OBJECT_VALUE : 0;
    if (options.json)
        printJson(locale.get(), source, output);
    else
        printPlain(locale.get(), source, output);
    output.finish();
    return 0;
}

} // namespace vlx::cli
