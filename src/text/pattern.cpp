#include "text/pattern.hpp"

namespace vlx {

namespace {

constexpr char kLetters[] = "%#abcdjmpwxyzABHIMSUWXYZ";

constexpr bool isOfLanguage(char letter)
{
    for (const char known : kLetters)
        if (letter == known)
            return true;
    return false;
}

// Consecutive codes of consecutive letters.
struct Run {
    unsigned char first;
    char letter;
    int count;
};

template <std::size_t Count>
constexpr PatternTable tableOf(const Run (&runs)[Count])
{
    PatternTable table{};
    for (const Run& run : runs)
        for (int i = 0; i < run.count; ++i)
            if (isOfLanguage(static_cast<char>(run.letter + i)))
                table.letters[run.first + i] = static_cast<char>(run.letter + i);
    return table;
}

constexpr Run kAsciiRuns[] = {{0x23, '#', 1}, {0x25, '%', 1}, {0x41, 'A', 26}, {0x61, 'a', 26}};
constexpr Run kEbcdicRuns[] = {{0x7B, '#', 1}, {0x6C, '%', 1}, {0xC1, 'A', 9}, {0xD1, 'J', 9},
                               {0xE2, 'S', 8}, {0x81, 'a', 9}, {0x91, 'j', 9}, {0xA2, 's', 8}};
constexpr Run kEbcdicRuns930[] = {{0x7B, '#', 1}, {0x6C, '%', 1}, {0xC1, 'A', 9}, {0xD1, 'J', 9},
                                  {0xE2, 'S', 8}, {0x62, 'a', 4}, {0x72, 'j', 1}, {0x75, 'm', 1},
                                  {0x78, 'p', 1}, {0xB6, 'w', 4}};

bool isIn(std::int32_t value, std::int32_t most)
{
    return value >= 0 && value <= most;
}

// The week of the year, whose weeks begin `start` days behind Sunday.
TimeNumber weekNumber(const TSTimeFields& time, int start)
{
    const bool inRange = isIn(time.dayOfWeek, 6) && isIn(time.dayOfYear, 365);
    if (!inRange)
        return {0, 2, false};
    const std::int32_t day = (time.dayOfWeek + 7 - start) % 7;
    return {time.dayOfYear / 7 + (time.dayOfYear % 7 >= day), 2, true};
}

} // namespace

constexpr PatternTable kAsciiPattern = tableOf(kAsciiRuns);
constexpr PatternTable kEbcdicPattern = tableOf(kEbcdicRuns);
constexpr PatternTable kEbcdicPattern930 = tableOf(kEbcdicRuns930);

TimeNumber timeNumber(char letter, const TSTimeFields& time)
{
    switch (letter) {
    case 'd':
        return {time.dayOfMonth, 2, isIn(time.dayOfMonth, 31)};
    case 'j': // as the record has it, from 0
        return {time.dayOfYear, 3, isIn(time.dayOfYear, 365)};
    case 'm':
        return {std::int64_t{time.month} + 1, 2, isIn(time.month, 11)};
    case 'w':
        return {time.dayOfWeek, 1, isIn(time.dayOfWeek, 6)};
    case 'y':
        return {std::int64_t{time.year} + 1900, 2, true};
    case 'H':
        return {time.hours, 2, isIn(time.hours, 23)};
    case 'I':
        return {time.hours % 12 == 0 ? 12 : time.hours % 12, 2, isIn(time.hours, 23)};
    case 'M':
        return {time.minutes, 2, isIn(time.minutes, 59)};
    case 'S':
        return {time.seconds, 2, isIn(time.seconds, 59)};
    case 'U':
        return weekNumber(time, 0);
    case 'W':
        return weekNumber(time, 1);
    case 'Y':
        return {std::int64_t{time.year} + 1900, 4, true};
    default:
        return {0, 0, false};
    }
}

bool isTimeName(char letter)
{
    return letter == 'a' || letter == 'b' || letter == 'p' || letter == 'A' || letter == 'B';
}

int timeName(char letter, const TSTimeFields& time)
{
    switch (letter) {
    case 'a':
        return isIn(time.dayOfWeek, 6) ? TS_LI_ABDAY_1 + time.dayOfWeek : 0;
    case 'b':
        return isIn(time.month, 11) ? TS_LI_ABMONTH_1 + time.month : 0;
    case 'A':
        return isIn(time.dayOfWeek, 6) ? TS_LI_DAY_1 + time.dayOfWeek : 0;
    case 'B':
        return isIn(time.month, 11) ? TS_LI_MONTH_1 + time.month : 0;
    default:
        if (!isIn(time.hours, 23))
            return 0;
        return time.hours < 12 ? TS_LI_AM : TS_LI_PM;
    }
}

TimeDigits timeDigits(const TimeNumber& number, bool flag)
{
    TimeDigits result{};
    std::uint64_t value =
        static_cast<std::uint64_t>(number.value < 0 ? -number.value : number.value);
    do {
        result.digits[3 - result.count++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (result.count < number.width && !(flag && value == 0));
    for (int i = 0; i < result.count; ++i)
        result.digits[i] = result.digits[4 - result.count + i];
    return result;
}

} // namespace vlx
