// What the standard output is, and text made ready for it.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include <fmt/color.h>
#include <fmt/format.h>

namespace vlx::cli {

struct Terminal {
    bool colour = false; // a terminal, and NO_COLOR is unset
    bool utf8 = false;   // by the user's locale
    int width = 80;      // columns
};

Terminal standardOutput();

// Text for the standard output, collected and written in large pieces. Fails if it cannot be
// written.
class Output {
  public:
    explicit Output(const Terminal& terminal) : terminal_(terminal) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    const Terminal& terminal() const { return terminal_; }

    template <class... Arguments>
    void print(fmt::format_string<Arguments...> format, Arguments&&... arguments)
    {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Arguments>(arguments)...);
        if (text_.size() >= kPiece)
            write();
    }

    // A word in a style, which only a terminal shows.
    template <class Word>
    std::string styled(const fmt::text_style& style, const Word& word) const
    {
        return terminal_.colour ? fmt::format(style, "{}", word) : fmt::format("{}", word);
    }

    // Writes what is left.
    void finish();

  private:
    static constexpr std::size_t kPiece = 1 << 16;

    void write();

    Terminal terminal_;
    fmt::memory_buffer text_;
};

// The styles of the command.
inline const fmt::text_style kHeading = fmt::emphasis::bold;
inline const fmt::text_style kFaint = fmt::emphasis::faint;
inline const fmt::text_style kGood = fmt::fg(fmt::terminal_color::green);
inline const fmt::text_style kBad = fmt::fg(fmt::terminal_color::red);
inline const fmt::text_style kMark = fmt::fg(fmt::terminal_color::cyan);

// A 16-bit Unicode value in UTF-8. A lone surrogate has no such form and gives U+FFFD.
std::string utf8(std::uint16_t value);

// The same for a reader: control characters and the blank as symbols, other characters that would
// not show or would change the line's direction as a dot.
std::string visible(std::uint16_t value);

} // namespace vlx::cli
