// `vlx ids`: the numeric ids of locale objects and their names, through the facade.
#include <array>
#include <charconv>
#include <optional>
#include <vector>

#include "commands.hpp"
#include "failure.hpp"
#include "nls1.h"

namespace vlx::cli {

namespace {

constexpr std::size_t kTypes = std::size(kTypeNames);

struct Row {
    std::size_t type;
    std::int32_t id;
    std::string name;
    std::string asked; // an alias
};

std::int32_t idOf(std::size_t type, const std::string& name, std::int32_t& code)
{
    constexpr std::int32_t (*kGet[kTypes])(const char*, std::int32_t*) = {
        NLS1_GetLanguageId, NLS1_GetTerritoryId, NLS1_GetCodepageId, NLS1_GetSortId};
    return kGet[type](name.c_str(), &code);
}

// The name of an id; empty if there is none.
std::string nameOf(std::size_t type, std::int32_t id)
{
    if (type == TS_OBJ_SORT && id == 0)
        return "Binary"; // which is no object and has no name of its own
    constexpr std::int32_t (*kGet[kTypes])(std::int32_t, char*, std::int32_t) = {
        NLS1_GetLanguageName, NLS1_GetTerritoryName, NLS1_GetCodepageName, NLS1_GetSortName};
    std::array<char, 64> name{};
    return kGet[type](id, name.data(), static_cast<std::int32_t>(name.size())) == TS_ERR_NONE
               ? name.data()
               : std::string();
}

// The part of a number that is an id of the type: a pair has a language and a territory. None for a
// number that is no id.
std::optional<std::int32_t> partOf(std::size_t type, std::int32_t number)
{
    constexpr std::int32_t kBase = 65536;
    if (number < 0 || (number >= kBase && type != TS_OBJ_LANGUAGE && type != TS_OBJ_TERRITORY))
        return std::nullopt;
    if (number < kBase)
        return number;
    return type == TS_OBJ_LANGUAGE ? number % kBase : number / kBase;
}

// What one argument means in a type: an id, a name or an alias.
std::vector<Row> rowsOf(std::size_t type, const std::string& word)
{
    std::int32_t id = 0;
    const char* const end = word.data() + word.size();
    if (const auto [stop, error] = std::from_chars(word.data(), end, id);
        error == std::errc{} && stop == end) {
        const std::optional<std::int32_t> part = partOf(type, id);
        const std::string name = part ? nameOf(type, *part) : std::string();
        return name.empty() ? std::vector<Row>() : std::vector<Row>{{type, *part, name, ""}};
    }
    std::int32_t code = TS_ERR_NONE;
    id = idOf(type, word, code);
    if (code != TS_ERR_NONE)
        return {};
    const std::string name = nameOf(type, id);
    std::int32_t again = TS_ERR_NONE;
    const bool alias = !std::equal(word.begin(), word.end(), name.begin(), name.end(),
                                   [](unsigned char left, unsigned char right) {
                                       return std::tolower(left) == std::tolower(right);
                                   }) &&
                       idOf(type, name, again) == id;
    return {{type, id, name, alias ? word : ""}};
}

struct Listing {
    std::vector<Row> rows;
    std::optional<int> type;
};

std::int32_t collect(TSContext user, std::int32_t type, const char* name)
{
    auto& listing = *reinterpret_cast<Listing*>(user);
    const auto at = static_cast<std::size_t>(type);
    std::int32_t code = TS_ERR_NONE;
    if (type >= 0 && at < kTypes && (!listing.type || *listing.type == type))
        listing.rows.push_back({at, idOf(at, name, code), name, ""});
    return 1;
}

void print(const Row& row, Output& output)
{
    output.print("{:<10} {:>5}  {}{}\n", kTypeNames[row.type], row.id, row.name,
                 row.asked.empty() ? "" : fmt::format("  (alias {})", row.asked));
}

} // namespace

int printIds(const Library&, const IdsOptions& options, Output& output)
{
    Listing listing{{}, options.type};
    int status = kExitGood;
    if (options.words.empty())
        TSEnumLocales(collect, reinterpret_cast<TSContext>(&listing));
    for (const std::string& word : options.words) {
        const std::size_t before = listing.rows.size();
        for (std::size_t type = 0; type < kTypes; ++type)
            if (!options.type || static_cast<std::size_t>(*options.type) == type)
                for (const Row& row : rowsOf(type, word))
                    listing.rows.push_back(row);
        if (listing.rows.size() == before) {
            fmt::print(stderr, "vlx: nothing is listed under {}.\n", word);
            status = kExitText;
        }
    }
    for (const Row& row : listing.rows)
        print(row, output);
    output.finish();
    return status;
}

} // namespace vlx::cli
