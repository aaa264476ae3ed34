#include "text/pattern.hpp"

namespace vlx {

namespace {

constexpr char kLanguage[] = "%#abcdjmpwxyzABHIMSUWXYZ";

constexpr bool isOfLanguage(char letter)
{
    for (const char known : kLanguage)
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

constexpr TimeDirective directiveOf(char letter)
{
    using Fields = TSTimeFields;
    constexpr std::uint32_t kAny = 0xFFFFFFFF; // years have no range
    switch (letter) {
    case 'a':
        return {&Fields::dayOfWeek, 6, TS_LI_ABDAY_1, 0, TimeText::kName};
    case 'b':
        return {&Fields::month, 11, TS_LI_ABMONTH_1, 0, TimeText::kName};
    case 'd':
        return {&Fields::dayOfMonth, 31, 0, 2, TimeText::kNumber};
    case 'j': // as the record has it, from 0
        return {&Fields::dayOfYear, 365, 0, 3, TimeText::kNumber};
    case 'm':
        return {&Fields::month, 11, 1, 2, TimeText::kNumber};
    case 'p':
        return {&Fields::hours, 23, 0, 0, TimeText::kHalf};
    case 'w':
        return {&Fields::dayOfWeek, 6, 0, 1, TimeText::kNumber};
    case 'y':
        return {&Fields::year, kAny, 1900, 2, TimeText::kNumber};
    case 'A':
        return {&Fields::dayOfWeek, 6, TS_LI_DAY_1, 0, TimeText::kName};
    case 'B':
        return {&Fields::month, 11, TS_LI_MONTH_1, 0, TimeText::kName};
    case 'H':
        return {&Fields::hours, 23, 0, 2, TimeText::kNumber};
    case 'I':
        return {&Fields::hours, 23, 0, 2, TimeText::kHour};
    case 'M':
        return {&Fields::minutes, 59, 0, 2, TimeText::kNumber};
    case 'S':
        return {&Fields::seconds, 59, 0, 2, TimeText::kNumber};
    case 'U':
        return {&Fields::dayOfWeek, 6, 0, 2, TimeText::kWeek};
    case 'W':
        return {&Fields::dayOfWeek, 6, 1, 2, TimeText::kWeek};
    case 'Y':
        return {&Fields::year, kAny, 1900, 4, TimeText::kNumber};
    default:
        return {nullptr, 0, 0, 0, TimeText::kOther};
    }
}

constexpr std::array<TimeDirective, kLetters> directives()
{
    std::array<TimeDirective, kLetters> table{};
    for (int letter = 0; letter < kLetters; ++letter)
        table[static_cast<std::size_t>(letter)] = directiveOf(static_cast<char>(letter));
    return table;
}

} // namespace

constexpr PatternTable kAsciiPattern = tableOf(kAsciiRuns);
constexpr PatternTable kEbcdicPattern = tableOf(kEbcdicRuns);
constexpr PatternTable kEbcdicPattern930 = tableOf(kEbcdicRuns930);

constexpr std::array<TimeDirective, kLetters> kTimeDirectives = directives();

TimeDigits timeDigits(const TimeNumber& number, bool flag)
{
    TimeDigits result{};
    std::uint32_t value = number.value;
    do {
        result.digits[kMostDigits - 1 - result.count++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (result.count < number.width && !(flag && value == 0));
    for (int i = 0; i < result.count; ++i)
        result.digits[i] = result.digits[kMostDigits - result.count + i];
    return result;
}

} // namespace vlx
