// `vlx sort`: lines of any code page in the order of a locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "keys.hpp"
#include "library.hpp"
#include "terminal.hpp"

namespace vlx::cli {

struct SortOptions {
    std::string locale;
    std::vector<std::string> files = {"-"}; // "-" is standard input; or two strings to explain
    std::string output = "-";               // "-" is standard output
    std::vector<std::string> keys;          // as -k has them
    std::string separator;                  // none if empty
    std::string memory = "256M";
    std::string directory; // of temporary files; else TMPDIR
    bool ignoresCase = false;
    bool ignoresWidth = false;
    bool skipsBlanks = false;
    bool numeric = false;
    bool reversed = false;
    bool unique = false;
    bool checks = false;
    bool checksQuietly = false;
    bool showsKeys = false;
    bool explains = false;
    bool json = false;
};

class SortCommand {
  public:
    explicit SortCommand(CLI::App& app);
    SortCommand(const SortCommand&) = delete;
    SortCommand& operator=(const SortCommand&) = delete;

    bool parsed() const { return command_->parsed(); }
    int run(const Library& library, Output& output) const;

  private:
    void addOrder();
    void addModes();

    CLI::App* const command_;
    SortOptions options_;
};

// What the lines are compared by.
KeyBuilder keyBuilderOf(TSLocale* locale, const SortOptions& options);

// The bytes that a size such as 64M stands for.
std::size_t bytesOfSize(const std::string& size);

// Each gives the exit status, or throws a Failure.
int sortTexts(TSLocale* locale, const SortOptions& options);
int checkOrder(TSLocale* locale, const SortOptions& options, Output& output);
int showKeys(TSLocale* locale, const SortOptions& options, Output& output);
int explainPair(const Library& library, TSLocale* locale, const SortOptions& options,
                Output& output);

} // namespace vlx::cli
