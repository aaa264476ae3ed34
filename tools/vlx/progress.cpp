#include "progress.hpp"

#include <algorithm>
#include <cstdio>
#include <string>

#include <fmt/format.h>
#include <unistd.h>

namespace vlx::cli {

namespace {

constexpr std::uint64_t kLong = 8 << 20; // shorter work is done before it could be read
constexpr auto kBetween = std::chrono::milliseconds(100);
constexpr int kBarWidth = 30;

std::string amount(double bytes)
{
    constexpr double thousand = 1024;
    constexpr const char* units[] = {"B", "KiB", "MiB", "GiB"};
    std::size_t unit = 0;
    for (; bytes >= thousand && unit + 1 < std::size(units); ++unit)
        bytes /= thousand;
    return fmt::format("{:.{}f} {}", bytes, unit < 3 ? 0 : 2, units[unit]);
}

} // namespace

Progress::Progress(std::optional<std::uint64_t> total, bool shown)
    : total_(total), shown_(shown && isatty(STDERR_FILENO))
{
}

void Progress::advance(std::uint64_t bytes)
{
    done_ += bytes;
    if (!shown_ || std::max(done_, total_.value_or(0)) < kLong)
        return;
    const Clock::time_point now = Clock::now();
    if (now < next_)
        return;
    next_ = now + kBetween;
    print(now);
}

void Progress::print(Clock::time_point now)
{
    const double seconds =
        std::max(std::chrono::duration<double>(now - begin_).count(), 0.001); // no division by none
    const auto done = static_cast<double>(done_);
    const std::string rate = amount(done / seconds) + "/s";
    if (total_) {
        const double part = std::min(done / static_cast<double>(*total_), 1.0);
        const auto full = static_cast<std::size_t>(part * kBarWidth);
        fmt::print(stderr, "\r[{:-<{}}] {:3.0f}%  {} of {}, {}\033[K", std::string(full, '#'),
                   kBarWidth, 100 * part, amount(done), amount(static_cast<double>(*total_)), rate);
    } else {
        fmt::print(stderr, "\r{}, {}\033[K", amount(done), rate);
    }
    std::fflush(stderr);
    onScreen_ = true;
}

void Progress::clear()
{
    if (onScreen_)
        fmt::print(stderr, "\r\033[K");
    onScreen_ = false;
}

} // namespace vlx::cli
