// `vlx format` and `vlx parse`: numbers, money and times to text and back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "library.hpp"
#include "terminal.hpp"

namespace vlx::cli {

struct FormatOptions {
    std::string locale;
    std::string value;   // of a number or an amount
    std::string pattern; // of a time
    std::string time;    // ISO 8601, now if empty
    bool international = false;
    bool ofObject = false;
    bool json = false;
};

struct ParseOptions {
    std::string locale;
    std::string text;
    std::string pattern;
    std::int32_t base = 10;
    bool whole = false; // a whole number
    bool mapsDigits = false;
    bool ofObject = false;
    bool json = false;
};

// The two commands, with what follows them.
class TextCommands {
  public:
    explicit TextCommands(CLI::App& app);
    TextCommands(const TextCommands&) = delete;
    TextCommands& operator=(const TextCommands&) = delete;

    // Whether one of them was given; its exit status.
    bool parsed() const;
    int run(Output& output) const;

  private:
    void addFormat(CLI::App& app);
    void addParse(CLI::App& app);

    FormatOptions format_;
    ParseOptions parse_;
    CLI::App* formatNumber_ = nullptr;
    CLI::App* formatMoney_ = nullptr;
    CLI::App* formatTime_ = nullptr;
    CLI::App* parseNumber_ = nullptr;
    CLI::App* parseMoney_ = nullptr;
    CLI::App* parseTime_ = nullptr;
};

// Each gives the exit status, or throws a Failure.
int formatNumber(const FormatOptions& options, Output& output);
int formatMoney(const FormatOptions& options, Output& output);
int formatTime(const FormatOptions& options, Output& output);
int parseNumber(const ParseOptions& options, bool monetary, Output& output);
int parseTime(const ParseOptions& options, Output& output);

} // namespace vlx::cli
