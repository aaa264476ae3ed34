// Readable sources: text lines with their numbers, the small parsers that the formats share, and
// the one way in which diagnostics are reported.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "object.hpp"

namespace vlx::data {

// A line without its comment and without the white space at its ends; never empty.
struct SourceLine {
    int number = 0;
    std::string text;
};

// The lines of a file that hold something, comments taken away from `#` on. Nothing, with a
// diagnostic, if the file cannot be read.
std::optional<std::vector<SourceLine>> readSource(const std::string& path,
                                                  Diagnostics& diagnostics);
std::optional<std::string> readText(const std::string& path, Diagnostics& diagnostics);
std::optional<Bytes> readBytes(const std::string& path, Diagnostics& diagnostics);

std::string_view trimmed(std::string_view text);
std::vector<std::string_view> wordsOf(std::string_view text);

// The whole of `text` as a number of at most `limit`, or nothing. Hexadecimal digits in any case.
std::optional<std::uint32_t> parseHex(std::string_view text, std::uint32_t limit);
std::optional<std::uint32_t> parseDecimal(std::string_view text, std::uint32_t limit);

std::string hexText(std::uint32_t value, int digits);

// Collects the errors of one file.
class Reporter {
  public:
    Reporter(std::string file, Diagnostics& diagnostics)
        : file_(std::move(file)), diagnostics_(diagnostics)
    {
    }
    void error(int line, std::string message);
    bool clean() const { return errors_ == 0; }

  private:
    std::string file_;
    Diagnostics& diagnostics_;
    int errors_ = 0;
};

// True if there is an error among them; warnings alone are none.
bool hasErrors(const Diagnostics& diagnostics);
// One line each: file:line: message.
void print(const Diagnostics& diagnostics, std::ostream& out);

} // namespace vlx::data
