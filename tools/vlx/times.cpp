#include "times.hpp"

#include <charconv>
#include <chrono>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

namespace {

// Takes numbers and the characters between them off a text.
class Scanner {
  public:
    explicit Scanner(const std::string& text) : at_(text.data()), end_(at_ + text.size()) {}

    bool number(int digits, int& value)
    {
        if (end_ - at_ < digits)
            return false;
        const auto result = std::from_chars(at_, at_ + digits, value);
        if (result.ec != std::errc() || result.ptr != at_ + digits || value < 0)
            return false;
        at_ += digits;
        return true;
    }

    bool sign(std::string_view signs)
    {
        if (at_ == end_ || signs.find(*at_) == std::string_view::npos)
            return false;
        ++at_;
        return true;
    }

    bool ends() const { return at_ == end_; }

  private:
    const char* at_;
    const char* end_;
};

bool scanClock(Scanner& scanner, TSTimeFields& time)
{
    if (scanner.ends())
        return true;
    if (!scanner.sign("T ") || !scanner.number(2, time.hours) || !scanner.sign(":") ||
        !scanner.number(2, time.minutes))
        return false;
    const bool isRead = scanner.ends() || (scanner.sign(":") && scanner.number(2, time.seconds));
    return isRead && scanner.ends() && time.hours < 24 && time.minutes < 60 && time.seconds < 60;
}

} // namespace

TSTimeFields timeOfIso(const std::string& text)
{
    namespace chrono = std::chrono;
    TSTimeFields time{};
    int year = 0;
    int month = 0;
    int day = 0;
    Scanner scanner(text);
    const bool isRead = scanner.number(4, year) && scanner.sign("-") && scanner.number(2, month) &&
                        scanner.sign("-") && scanner.number(2, day) && scanClock(scanner, time);
    const chrono::year_month_day date{chrono::year(year),
                                      chrono::month(static_cast<unsigned>(month)),
                                      chrono::day(static_cast<unsigned>(day))};
    if (!isRead || !date.ok())
        throw Failure(
            fmt::format("\"{}\" is no time; write it as 2005-03-07 or 2005-03-07T13:05:09", text));
    const chrono::sys_days days(date);
    const chrono::sys_days newYear(date.year() / chrono::January / 1);
    time.dayOfMonth = day;
    time.month = month - 1;
    time.year = year - 1900;
    time.dayOfWeek = static_cast<int>(chrono::weekday(days).c_encoding());
    time.dayOfYear = static_cast<int>((days - newYear).count());
    return time;
}

} // namespace vlx::cli
