// The subcommands. Each gives the exit status, or throws a Failure.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "library.hpp"
#include "terminal.hpp"

namespace vlx::cli {

struct LocalesOptions {
    std::optional<int> type; // TS_OBJ_...; all if not given
    bool json = false;
};
int listLocales(const Library& library, const LocalesOptions& options, Output& output);

struct ShowOptions {
    std::string locale;
    bool user = false;   // the user's locale instead
    bool object = false; // the values of the territory, without what the host has changed
    bool json = false;
};
int showLocale(const ShowOptions& options, Output& output);

struct WalkOptions {
    std::string locale;
    std::string file; // "-" is standard input
    bool json = false;
    bool backward = false;
    std::optional<std::int32_t> limit; // of characters shown
};
int walkText(const Library& library, const WalkOptions& options, Output& output);

struct MessageOptions {
    std::string catalog;
    std::int32_t set = 0;
    std::int32_t message = 0;
    std::string locale;
    bool raw = false; // in the locale's code page instead of UTF-8
};
int printMessage(const Library& library, const MessageOptions& options, Output& output);

struct IdsOptions {
    std::vector<std::string> words; // ids, names and aliases; everything if empty
    std::optional<int> type;
};
int printIds(const Library& library, const IdsOptions& options, Output& output);

struct ConvOptions {
    std::string from; // code pages by name, further name or id
    std::string to;
    std::vector<std::string> files = {"-"}; // "-" is standard input
    std::string output = "-";               // "-" is standard output
};
int convertTexts(const Library& library, const ConvOptions& options);

// The object types by their numbers.
inline constexpr const char* kTypeNames[] = {"language", "territory", "codepage", "sort"};

} // namespace vlx::cli
