#include "characters.hpp"

#include <numeric>

#include "sourcefile.hpp"
#include "typeword.hpp"

namespace vlx::data {

namespace {

constexpr std::size_t kValues = 0x10000;

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

std::optional<Range> parseRange(std::string_view first, std::string_view last)
{
    const auto from = parseHex(first, kValues - 1);
    const auto to = parseHex(last, kValues - 1);
    if (!from || !to || *from > *to)
        return std::nullopt;
    return Range{*from, *to};
}

std::optional<int> parseDifference(std::string_view text)
{
    if (text.size() < 2 || (text[0] != '+' && text[0] != '-'))
        return std::nullopt;
    const auto size = parseDecimal(text.substr(1), kValues - 1);
    if (!size)
        return std::nullopt;
    return text[0] == '-' ? -static_cast<int>(*size) : static_cast<int>(*size);
}

} // namespace

CharacterData::CharacterData() : words_(kValues, kNoDirectionWord), lower_(kValues), upper_(kValues)
{
    std::iota(lower_.begin(), lower_.end(), std::uint16_t{0});
    upper_ = lower_;
    for (std::uint32_t value = 0; value < kValues; ++value)
        fixedWord(static_cast<std::uint16_t>(value), words_[value]);
}

std::optional<CharacterData> CharacterData::load(const std::string& directory,
                                                 Repertoire repertoire, Diagnostics& diagnostics)
{
    CharacterData data;
    Diagnostics own;
    data.loadProperties(directory + "/properties-2.0.tsv", kLibrary, own);
    data.loadCase(directory + "/simple-case.tsv", own);
    if (repertoire == kWithYounger) {
        data.loadProperties(directory + "/properties-younger.tsv", kWithYounger, own);
        data.loadCase(directory + "/case-younger.tsv", own);
    }
    diagnostics.insert(diagnostics.end(), own.begin(), own.end());
    if (hasErrors(own))
        return std::nullopt;
    return data;
}

// The words that are fixed are those of the library; no younger character was thought of.
void CharacterData::loadProperties(const std::string& path, Repertoire repertoire,
                                   Diagnostics& diagnostics)
{
    const auto lines = readSource(path, diagnostics);
    if (!lines)
        return;
    Reporter report(path, diagnostics);
    for (const SourceLine& line : *lines) {
        const auto words = wordsOf(line.text);
        const auto range = words.size() == 5 ? parseRange(words[0], words[1]) : std::nullopt;
        if (!range || !knownDirection(std::string(words[3]))) {
            report.error(line.number, "not a row of first, last, category, direction, flags");
            continue;
        }
        const Properties properties{std::string(words[2]), std::string(words[3]),
                                    std::string(words[4])};
        for (std::uint32_t value = range->first; value <= range->last; ++value) {
            const auto value16 = static_cast<std::uint16_t>(value);
            if (std::uint32_t fixed = 0; repertoire == kWithYounger || !fixedWord(value16, fixed))
                words_[value] = ruleWord(value16, properties);
        }
    }
}

void CharacterData::loadCase(const std::string& path, Diagnostics& diagnostics)
{
    const auto lines = readSource(path, diagnostics);
    if (!lines)
        return;
    Reporter report(path, diagnostics);
    for (const SourceLine& line : *lines) {
        const auto words = wordsOf(line.text);
        const auto range = words.size() == 5 ? parseRange(words[1], words[2]) : std::nullopt;
        const auto step = range ? parseDecimal(words[3], 2) : std::nullopt;
        const auto difference = range ? parseDifference(words[4]) : std::nullopt;
        if (!step || *step == 0 || !difference || (words[0] != "lower" && words[0] != "upper")) {
            report.error(line.number, "not a row of direction, first, last, step, difference");
            continue;
        }
        auto& images = words[0] == "lower" ? lower_ : upper_;
        for (std::uint32_t value = range->first; value <= range->last; value += *step)
            images[value] = static_cast<std::uint16_t>(static_cast<int>(value) + *difference);
    }
}

} // namespace vlx::data
