#include "localedir.hpp"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>

#include <fmt/format.h>

#include "environment.hpp"
#include "locale/content.hpp"
#include "tsconst.h"

namespace vlx::cli {

namespace {

constexpr const char* kControlFile = "control.nls";
constexpr const char* kAliasFile = "alias.txt";

std::optional<Bytes> readFile(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return std::nullopt;
    return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

char lowered(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool sameName(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return lowered(a) == lowered(b); });
}

// A piece of a locale name: the text up to one of `delimiters`, taken off the front of `rest`.
std::string_view takePart(std::string_view& rest, std::string_view delimiters)
{
    const std::string_view part = rest.substr(0, rest.find_first_of(delimiters));
    rest.remove_prefix(part.size());
    return part;
}

// The part of a locale name behind `mark`, empty if it has none.
std::string_view takeMarked(std::string_view& rest, char mark, std::string_view delimiters)
{
    if (rest.empty() || rest.front() != mark)
        return {};
    rest.remove_prefix(1);
    return takePart(rest, delimiters);
}

} // namespace

std::optional<ObjectFile> readObjectFile(const std::filesystem::path& path)
{
    const std::optional<Bytes> bytes = readFile(path);
    ObjectFile file;
    if (!bytes || bytes->size() < sizeof file.header)
        return std::nullopt;
    std::memcpy(&file.header, bytes->data(), sizeof file.header);
    if (file.header.magic != TSObjHeader::kMagic)
        return std::nullopt;
    // Of a control file the library reads the first section without regard to the count.
    const int count = std::clamp<int>(file.header.sectionCount, 1, TSObjHeader::kMaxSections);
    for (int i = 0; i < count; ++i) {
        const std::size_t offset = file.header.sectionOffset(i);
        const std::size_t size = file.header.sectionSize(i);
        if (size > 0 && (offset > bytes->size() || size > bytes->size() - offset))
            return std::nullopt;
        if (size > 0)
            file.sections[i].assign(bytes->data() + offset, bytes->data() + offset + size);
    }
    return file;
}

std::optional<LocaleDirectory> LocaleDirectory::find(const std::string& given)
{
    std::vector<std::string> candidates;
    if (!given.empty())
        candidates.push_back(given);
    if (const auto variable = environment("TS_LOCALEDIR"))
        candidates.push_back(*variable);
    candidates.emplace_back(VLX_LOCALE_DIRECTORY);
    for (const std::string& candidate : candidates)
        if (std::ifstream(candidate + "/" + kControlFile, std::ios::binary))
            return LocaleDirectory(candidate);
    return std::nullopt;
}

LocaleDirectory::LocaleDirectory(std::filesystem::path path) : path_(std::move(path))
{
    const std::optional<ObjectFile> control = readObjectFile(path_ / kControlFile);
    if (!control)
        return;
    const Bytes& table = control->sections[0];
    for (std::size_t at = 0; table.size() - at >= sizeof(TSObjDisk); at += sizeof(TSObjDisk)) {
        TSObjDisk entry;
        std::memcpy(&entry, table.data() + at, sizeof entry);
        objects_.push_back({entry.type, entry.id,
                            std::string(entry.name, strnlen(entry.name, sizeof entry.name))});
    }
}

std::optional<ListedObject> LocaleDirectory::byName(int type, std::string_view name) const
{
    for (const ListedObject& object : objects_)
        if (object.type == type && sameName(object.name, name))
            return object;
    return std::nullopt;
}

std::optional<ListedObject> LocaleDirectory::byId(int type, std::uint16_t id) const
{
    for (const ListedObject& object : objects_)
        if (object.type == type && object.id == id)
            return object;
    return std::nullopt;
}

std::optional<ListedObject> LocaleDirectory::codePageOf(std::string_view localeName) const
{
    const std::string_view languageName = takePart(localeName, "_.@");
    takeMarked(localeName, '_', ".@");
    if (const std::string_view name = takeMarked(localeName, '.', "@"); !name.empty())
        return byName(TS_OBJ_CODEPAGE, name);

    const std::optional<ListedObject> language =
        byName(TS_OBJ_LANGUAGE, languageName.empty() ? TS_DEFAULT_LANGUAGE : languageName);
    const std::optional<ObjectFile> file =
        language ? object(TS_OBJ_LANGUAGE, language->id) : std::nullopt;
    if (!file || file->sections[0].size() < sizeof(TSLanguageContent))
        return std::nullopt;
    TSLanguageContent content;
    std::memcpy(&content, file->sections[0].data(), sizeof content);
    return byId(TS_OBJ_CODEPAGE, content.defaultCodePage);
}

std::optional<ListedObject> LocaleDirectory::byAlias(std::string_view alias) const
{
    std::ifstream file(path_ / kAliasFile);
    std::string codePage;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#')
            continue;
        std::istringstream words(line);
        if (!std::isspace(static_cast<unsigned char>(line.front())))
            words >> codePage; // else the entry goes on
        for (std::string word; words >> word;)
            if (sameName(word, alias))
                return byName(TS_OBJ_CODEPAGE, codePage);
    }
    return std::nullopt;
}

std::optional<ListedObject> LocaleDirectory::codePageNamed(const std::string& name) const
{
    if (auto page = byName(TS_OBJ_CODEPAGE, name))
        return page;
    if (auto page = byAlias(name))
        return page;
    std::uint16_t id = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, id);
    return error == std::errc() && stop == end ? byId(TS_OBJ_CODEPAGE, id) : std::nullopt;
}

std::optional<ObjectFile> LocaleDirectory::object(int type, std::uint16_t id) const
{
    return readObjectFile(path_ / fmt::format("{}_{:05}.nls", kObjectTypeCode[type], id));
}

} // namespace vlx::cli
