#include "locale/locale_builder.hpp"

#include <algorithm>
#include <cstdio>
#include <span>

#include "support/memory_host.hpp"

namespace vlx::test {

namespace {

constexpr std::size_t kHeaderSize = 76;
constexpr std::size_t kEntryNameSize = 34;
constexpr std::size_t kLanguageHeaderSize = 102;

void put16(Content& bytes, unsigned value)
{
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void put32(Content& bytes, std::uint32_t value)
{
    put16(bytes, value & 0xFFFF);
    put16(bytes, value >> 16);
}

void putText(Content& bytes, std::u16string_view text)
{
    for (const char16_t unit : text)
        put16(bytes, unit);
    put16(bytes, 0);
}

// A header and the sections that are not empty up to the last one, on odd addresses.
Content containerOf(std::span<const Content> sections)
{
    std::size_t count = sections.size();
    while (count > 1 && sections[count - 1].empty())
        --count;
    Content bytes;
    put32(bytes, 0x5A3C9E17);
    put32(bytes, 0x20000000);
    put16(bytes, static_cast<unsigned>(count));
    std::size_t offset = kHeaderSize + 1;
    for (std::size_t i = 0; i < count; ++i) {
        put16(bytes, static_cast<unsigned>(sections[i].size()));
        if (i > 0)
            put16(bytes, 0);
        put32(bytes, static_cast<std::uint32_t>(offset));
        offset += sections[i].size();
    }
    bytes.resize(kHeaderSize + 1);
    for (std::size_t i = 0; i < count; ++i)
        bytes.insert(bytes.end(), sections[i].begin(), sections[i].end());
    return bytes;
}

Content controlTable(const std::vector<ListedObject>& objects)
{
    Content bytes;
    for (const ListedObject& object : objects) {
        put16(bytes, object.id);
        bytes.push_back(object.type);
        bytes.push_back(0);
        const std::size_t end = bytes.size() + kEntryNameSize;
        bytes.insert(bytes.end(), object.name.begin(), object.name.end());
        bytes.resize(end);
    }
    return bytes;
}

} // namespace

Content languageContent(const LanguageSpec& language)
{
    Content bytes;
    put16(bytes, language.territory);
    put16(bytes, language.codePage);
    put16(bytes, language.sort);
    put16(bytes, 0);
    put16(bytes, 0);
    std::size_t offset = kLanguageHeaderSize;
    for (const std::u16string& text : language.texts) {
        put16(bytes, static_cast<unsigned>(offset));
        offset += 2 * (text.size() + 1);
    }
    put16(bytes, static_cast<unsigned>(offset));
    put16(bytes, static_cast<unsigned>(offset));
    for (const std::u16string& text : language.texts)
        putText(bytes, text);
    return bytes;
}

Content territoryContent(const TerritorySpec& territory)
{
    Content bytes;
    for (const TSChar16 separator : territory.separators)
        put16(bytes, separator);
    for (const std::uint16_t digits : territory.digits)
        put16(bytes, digits);
    bytes.push_back(territory.positiveSignPosition);
    bytes.push_back(territory.negativeSignPosition);
    put16(bytes, territory.word9);
    put16(bytes, territory.flags);
    std::size_t offset = 46;
    for (const std::u16string& text : territory.texts) {
        put16(bytes, static_cast<unsigned>(offset));
        offset += 2 * (text.size() + 1);
    }
    put16(bytes, static_cast<unsigned>(offset));
    for (const std::u16string& text : territory.texts)
        putText(bytes, text);
    return bytes;
}

LocaleDirectory& LocaleDirectory::add(const LanguageSpec& language)
{
    return add({language.id, TS_OBJ_LANGUAGE, language.name, {languageContent(language)}});
}

LocaleDirectory& LocaleDirectory::add(const TerritorySpec& territory)
{
    return add({territory.id, TS_OBJ_TERRITORY, territory.name, {territoryContent(territory)}});
}

LocaleDirectory& LocaleDirectory::add(std::string_view name, const PageBuilder& page)
{
    return add({page.object().id, TS_OBJ_CODEPAGE, std::string(name), page.sections()});
}

LocaleDirectory& LocaleDirectory::add(const SortSpec& sort)
{
    return add({sort.id, TS_OBJ_SORT, sort.name, {Content(16, 0x5A)}});
}

LocaleDirectory& LocaleDirectory::add(ListedObject object)
{
    const auto place = std::ranges::upper_bound(objects_, object, [](const auto& a, const auto& b) {
        return a.type != b.type ? a.type < b.type : a.id < b.id;
    });
    objects_.insert(place, std::move(object));
    return *this;
}

std::string LocaleDirectory::fileOf(std::string_view path, unsigned type, unsigned id)
{
    constexpr const char* kCodes[] = {"la", "te", "cp", "so"};
    char name[32];
    std::snprintf(name, sizeof name, "/%s_%05u.nls", kCodes[type], id);
    return std::string(path) + name;
}

void LocaleDirectory::put(std::string_view path) const
{
    const Content table[] = {controlTable(objects_)};
    MemoryHost::put(std::string(path) + "/control.nls", containerOf(table));
    for (const ListedObject& object : objects_)
        MemoryHost::put(fileOf(path, object.type, object.id), containerOf(object.sections));
}

} // namespace vlx::test
