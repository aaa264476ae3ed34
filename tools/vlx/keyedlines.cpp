#include "keyedlines.hpp"

#include <fmt/format.h>

#include "terminal.hpp"
#include "wide.hpp"

namespace vlx::cli {

namespace {

Units unitsOfLine(TSLocale* locale, std::string_view text)
{
    Units units(text.size() + 1, 0);
    const std::int32_t count =
        TSStringToUnicodeEx(units.data(), static_cast<std::int32_t>(units.size()), locale,
                            text.data(), 0, static_cast<std::int32_t>(text.size()), 0);
    units.resize(static_cast<std::size_t>(count));
    return units;
}

} // namespace

KeyedLines::KeyedLines(const std::string& file, const LineEnds& ends, KeyBuilder& keys,
                       Progress& progress)
    : input_(file), reader_(input_, ends, progress), keys_(keys)
{
}

std::string KeyedLines::place() const
{
    return fmt::format("{}:{}", file(), number());
}

std::string plainText(TSLocale* locale, std::string_view text)
{
    const Units units = unitsOfLine(locale, text);
    return utf8Of(units.data(), static_cast<std::int32_t>(units.size()));
}

std::string shownText(TSLocale* locale, std::string_view text, bool utf8)
{
    std::string shown;
    for (const TSChar16 unit : unitsOfLine(locale, text)) {
        if (unit >= 0x20 && unit < 0x7F)
            shown += static_cast<char>(unit);
        else
            shown += utf8 ? visible(unit) : fmt::format("\\u{:04X}", static_cast<unsigned>(unit));
    }
    return shown;
}

} // namespace vlx::cli
