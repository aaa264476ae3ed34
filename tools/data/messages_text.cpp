// Texts of messages in a code page of a compiled locale directory.
#include "messages.hpp"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "container.hpp"
#include "content_text.hpp"
#include "locale/content.hpp"
#include "sourcefile.hpp"

#include "tsconst.h"

namespace vlx::data {

namespace {

bool sameName(std::string_view one, std::string_view other)
{
    return std::ranges::equal(one, other, [](unsigned char left, unsigned char right) {
        return std::tolower(left) == std::tolower(right);
    });
}

std::optional<TSObjDisk> entryOf(const std::vector<TSObjDisk>& entries, std::uint8_t type,
                                 std::string_view name)
{
    for (const TSObjDisk& entry : entries)
        if (entry.type == type && sameName(nameOf(entry), name))
            return entry;
    return std::nullopt;
}

std::optional<Container> readObject(const std::string& directory, std::uint8_t type,
                                    std::uint16_t id, Diagnostics& diagnostics)
{
    return readContainer(directory + "/" + objectFileName(type, id), diagnostics);
}

// The id of the code page that a locale name tells, or its language.
std::optional<std::uint16_t> codePageOf(const std::string& directory, const std::string& locale,
                                        const std::vector<TSObjDisk>& entries,
                                        Diagnostics& diagnostics)
{
    const std::size_t dot = locale.find('.');
    if (dot != std::string::npos) {
        const std::string page = locale.substr(dot + 1, locale.find('@', dot) - dot - 1);
        const auto entry = entryOf(entries, TS_OBJ_CODEPAGE, page);
        return entry ? std::optional<std::uint16_t>(entry->id) : std::nullopt;
    }
    const auto language =
        entryOf(entries, TS_OBJ_LANGUAGE, locale.substr(0, locale.find_first_of("_@")));
    if (!language)
        return std::nullopt;
    const auto object = readObject(directory, TS_OBJ_LANGUAGE, language->id, diagnostics);
    if (!object || object->sections.front().size() < sizeof(TSLanguageContent))
        return std::nullopt;
    TSLanguageContent content;
    std::memcpy(&content, object->sections.front().data(), sizeof content);
    return content.defaultCodePage;
}

std::string unitName(char16_t unit)
{
    return "U+" + hexText(unit, 4);
}

} // namespace

std::optional<LocaleText> LocaleText::open(const std::string& localeDirectory,
                                           const std::string& localeName, Diagnostics& diagnostics)
{
    const auto control = readContainer(localeDirectory + "/control.nls", diagnostics);
    if (!control)
        return std::nullopt;
    const auto id = codePageOf(localeDirectory, localeName, controlEntries(*control), diagnostics);
    if (!id) {
        diagnostics.push_back(
            {localeDirectory, 0, "has no code page for the locale " + localeName});
        return std::nullopt;
    }
    const auto object = readObject(localeDirectory, TS_OBJ_CODEPAGE, *id, diagnostics);
    if (!object)
        return std::nullopt;
    auto page = CodePageView::open(object->sections, *id);
    if (!page)
        return std::nullopt;
    return LocaleText(std::move(*page));
}

std::optional<std::string> LocaleText::encode(const std::string& utf8, std::string& complaint) const
{
    const auto units = unitsOf(utf8, complaint);
    if (!units)
        return std::nullopt;
    std::string bytes;
    bool multi = false;
    const auto shiftTo = [&](bool wanted) {
        if (page_.stateful() && multi != wanted)
            bytes += static_cast<char>(wanted ? page_.header().shiftIn : page_.header().shiftOut);
        multi = wanted;
    };
    for (const char16_t unit : *units) {
        const auto character = page_.encode(unit);
        // A character that is missing would become the page's substitute.
        if (!character || page_.decode(*character) != unit) {
            complaint = "the code page has no " + unitName(unit);
            return std::nullopt;
        }
        const int length = packedLength(*character);
        shiftTo(length > 1);
        for (int i = length - 1; i >= 0; --i)
            bytes += static_cast<char>(*character >> 8 * i);
    }
    shiftTo(false);
    return bytes;
}

std::optional<std::string> LocaleText::decode(const std::string& bytes,
                                              std::string& complaint) const
{
    std::u16string units;
    bool multi = false;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto byte = static_cast<std::uint8_t>(bytes[at]);
        if (page_.stateful() &&
            (byte == page_.header().shiftIn || byte == page_.header().shiftOut)) {
            multi = byte == page_.header().shiftIn;
            ++at;
            continue;
        }
        const std::size_t length =
            page_.stateful() && !multi ? 1 : static_cast<std::size_t>(page_.lengthAt(byte));
        Packed character = 0;
        for (std::size_t i = 0; i < length && at + i < bytes.size(); ++i)
            character = character << 8 | static_cast<std::uint8_t>(bytes[at + i]);
        const auto value = length <= bytes.size() - at ? page_.decode(character) : std::nullopt;
        if (!value || *value == kNoUnicode) {
            complaint = "the code page has no character at byte " + std::to_string(at + 1);
            return std::nullopt;
        }
        units += static_cast<char16_t>(*value);
        at += length;
    }
    return utf8Of(units);
}

} // namespace vlx::data
