#include <algorithm>
#include <vector>

#include <nlohmann/json.hpp>

#include "commands.hpp"

namespace vlx::cli {

namespace {

constexpr std::size_t kTypes = std::size(kTypeNames);
constexpr const char* kHeadings[kTypes] = {"Languages", "Territories", "Code pages", "Sorts"};

using Names = std::vector<std::string>[kTypes];

std::int32_t collect(TSContext user, std::int32_t type, const char* name)
{
    auto& names = *reinterpret_cast<Names*>(user);
    if (type >= 0 && static_cast<std::size_t>(type) < kTypes)
        names[type].emplace_back(name);
    return 1;
}

// Names in columns, as many as the terminal has room for, read downwards.
void printColumns(const std::vector<std::string>& names, Output& output)
{
    std::size_t width = 0;
    for (const std::string& name : names)
        width = std::max(width, name.size() + 2);
    const auto room = static_cast<std::size_t>(std::max(1, output.terminal().width - 2));
    const std::size_t columns = std::max<std::size_t>(1, room / std::max<std::size_t>(1, width));
    const std::size_t rows = (names.size() + columns - 1) / columns;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string line;
        for (std::size_t i = row; i < names.size(); i += rows)
            line += fmt::format("{:<{}}", names[i], width);
        line.erase(line.find_last_not_of(' ') + 1);
        output.print("  {}\n", line);
    }
}

void printPlain(const Names& names, const Library& library, const LocalesOptions& options,
                Output& output)
{
    const std::string place =
        library.directory() ? library.directory()->path().string() : "(built-in objects)";
    output.print("{}\n", output.styled(kFaint, place));
    for (std::size_t type = 0; type < kTypes; ++type) {
        if (options.type && static_cast<std::size_t>(*options.type) != type)
            continue;
        output.print("\n{} {}\n", output.styled(kHeading, kHeadings[type]),
                     output.styled(kMark, fmt::format("({})", names[type].size())));
        printColumns(names[type], output);
    }
}

void printJson(const Names& names, const Library& library, const LocalesOptions& options,
               Output& output)
{
    using Json = nlohmann::ordered_json;
    Json document;
    document["directory"] = nullptr;
    if (library.directory())
        document["directory"] = library.directory()->path().string();
    for (std::size_t type = 0; type < kTypes; ++type)
        if (!options.type || static_cast<std::size_t>(*options.type) == type)
            document[kTypeNames[type]] = {{"count", names[type].size()}, {"names", names[type]}};
    output.print("{}\n", document.dump(2, ' ', false, Json::error_handler_t::replace));
}

} // namespace

int listLocales(const Library& library, const LocalesOptions& options, Output& output)
{
    Names names;
    TSEnumLocales(collect, reinterpret_cast<TSContext>(&names));
    if (options.json)
        printJson(names, library, options, output);
    else
        printPlain(names, library, options, output);
    output.finish();
    return 0;
}

} // namespace vlx::cli
