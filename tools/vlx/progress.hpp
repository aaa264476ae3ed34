// How far a long piece of work is, on a line of standard error that is a terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace vlx::cli {

class Progress {
  public:
    // `total` is nothing where nobody knows how much there is; without `shown` all is silent.
    Progress(std::optional<std::uint64_t> total, bool shown);
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void advance(std::uint64_t bytes);

    // Takes the line away, before something else is written to standard error.
    void clear();

  private:
    using Clock = std::chrono::steady_clock;

    void print(Clock::time_point now);

    const std::optional<std::uint64_t> total_;
    const bool shown_;
    const Clock::time_point begin_ = Clock::now();
    Clock::time_point next_ = begin_;
    std::uint64_t done_ = 0;
    bool onScreen_ = false;
};

} // namespace vlx::cli
