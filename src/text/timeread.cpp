#include "text/timeread.hpp"

namespace vlx {

namespace {

constexpr TimeField timeField(char letter)
{
    switch (letter) {
    case 'd':
        return {&TSTimeFields::dayOfMonth, 2, 31, 0, false};
    case 'j': // as the text has it
        return {&TSTimeFields::dayOfYear, 3, 366, 0, false};
    case 'm':
        return {&TSTimeFields::month, 2, 12, -1, false};
    case 'w':
        return {&TSTimeFields::dayOfWeek, 1, 6, 0, false};
    case 'y': // there is no rule for the century
        return {&TSTimeFields::year, 2, 99, 0, false};
    case 'H':
        return {&TSTimeFields::hours, 2, 23, 0, false};
    case 'I':
        return {&TSTimeFields::hours, 2, 12, 0, true};
    case 'M':
        return {&TSTimeFields::minutes, 2, 59, 0, false};
    case 'S':
        return {&TSTimeFields::seconds, 2, 59, 0, false};
    case 'Y':
        return {&TSTimeFields::year, 4, 9999, -1900, false};
    default:
        return {nullptr, 0, 0, 0, false};
    }
}

constexpr TimeNames timeNames(char letter)
{
    constexpr int kDays = 7;
    constexpr int kMonths = 12; // the thirteenth is not looked at
    switch (letter) {
    case 'a':
        return {TS_LI_ABDAY_1, kDays, &TSTimeFields::dayOfWeek};
    case 'b':
        return {TS_LI_ABMONTH_1, kMonths, &TSTimeFields::month};
    case 'p':
        return {TS_LI_AM, 2, nullptr};
    case 'A':
        return {TS_LI_DAY_1, kDays, &TSTimeFields::dayOfWeek};
    case 'B':
        return {TS_LI_MONTH_1, kMonths, &TSTimeFields::month};
    default:
        return {0, 0, nullptr};
    }
}

// One entry for each letter.
template <auto EntryOf>
constexpr auto tableOf()
{
    std::array<decltype(EntryOf('a')), kLetters> table{};
    for (int letter = 0; letter < kLetters; ++letter)
        table[static_cast<std::size_t>(letter)] = EntryOf(static_cast<char>(letter));
    return table;
}

} // namespace

constexpr std::array<TimeField, kLetters> kTimeFields = tableOf<timeField>();
constexpr std::array<TimeNames, kLetters> kTimeNames = tableOf<timeNames>();

} // namespace vlx
