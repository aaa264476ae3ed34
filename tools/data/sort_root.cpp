#include "sort_root.hpp"

#include <algorithm>

#include "sourcefile.hpp"

namespace vlx::data {

namespace {

std::optional<char16_t> parseCharacter(std::string_view text)
{
    if (text.size() != 4)
        return std::nullopt;
    const auto value = parseHex(text, 0xFFFF);
    return value ? std::optional(static_cast<char16_t>(*value)) : std::nullopt;
}

std::optional<std::u16string> parseCharacters(std::string_view text)
{
    std::u16string characters;
    for (const std::string_view word : wordsOf(text)) {
        const auto character = parseCharacter(word);
        if (!character)
            return std::nullopt;
        characters += *character;
    }
    return characters.empty() ? std::nullopt : std::optional(characters);
}

// "2075" with the common weights on the other levels, or "2075.20.8".
std::optional<RootElement> parseElement(std::string_view text)
{
    const std::size_t dot = text.find('.');
    const auto primary = parseHex(text.substr(0, dot), 0x4FFFF);
    if (!primary)
        return std::nullopt;
    if (dot == std::string_view::npos)
        return RootElement{*primary, kCommonSecondary, kCommonTertiary};
    const std::string_view rest = text.substr(dot + 1);
    const std::size_t second = rest.find('.');
    if (second == std::string_view::npos)
        return std::nullopt;
    const auto secondary = parseHex(rest.substr(0, second), 0xFFFF);
    const auto tertiary = parseHex(rest.substr(second + 1), 0xFFFF);
    if (!secondary || !tertiary)
        return std::nullopt;
    return RootElement{*primary, static_cast<std::uint16_t>(*secondary),
                       static_cast<std::uint16_t>(*tertiary)};
}

// "-" is a character without weights.
std::optional<std::vector<RootElement>> parseElements(std::string_view text)
{
    std::vector<RootElement> elements;
    if (text == "-")
        return elements;
    for (const std::string_view word : wordsOf(text)) {
        const auto element = parseElement(word);
        if (!element)
            return std::nullopt;
        elements.push_back(*element);
    }
    return elements;
}

// A number and a number, "0300-0314".
struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

std::optional<Range> parseRange(std::string_view text, std::uint32_t limit)
{
    const std::size_t dash = text.find('-');
    const auto first = parseHex(text.substr(0, dash), limit);
    const auto last =
        dash == std::string_view::npos ? first : parseHex(text.substr(dash + 1), limit);
    if (!first || !last || *first > *last)
        return std::nullopt;
    return Range{*first, *last};
}

} // namespace

std::optional<PageSet> parsePages(std::string_view text)
{
    PageSet pages{};
    for (const std::string_view word : wordsOf(text)) {
        const auto range = parseRange(word, 0xFF);
        if (!range)
            return std::nullopt;
        for (std::uint32_t page = range->first; page <= range->last; ++page)
            pages[page] = true;
    }
    return pages;
}

// Reads the sections of the file, one line at a time.
class RootReader {
  public:
    RootReader(const std::string& path, Diagnostics& diagnostics) : report_(path, diagnostics) {}

    std::optional<RootTable> read(const std::vector<SourceLine>& lines)
    {
        bool (RootReader::*section)(std::string_view, std::string_view) = nullptr;
        for (const SourceLine& line : lines) {
            if (line.text.front() == '[') {
                section = sectionOf(line.text);
                if (section == nullptr)
                    report_.error(line.number, "unknown section " + line.text);
                continue;
            }
            const std::size_t tab = std::min(line.text.find('\t'), line.text.size());
            const std::string_view text = line.text;
            if (section == nullptr ||
                !(this->*section)(trimmed(text.substr(0, tab)), trimmed(text.substr(tab))))
                report_.error(line.number, "'" + line.text + "' is no line of its section");
        }
        if (table_.entries_.empty())
            report_.error(0, "has no elements");
        if (!report_.clean())
            return std::nullopt;
        return std::move(table_);
    }

  private:
    using Section = bool (RootReader::*)(std::string_view, std::string_view);

    static Section sectionOf(std::string_view head)
    {
        static constexpr std::pair<std::string_view, Section> kSections[] = {
            {"[pages]", &RootReader::readPages},
            {"[groups]", &RootReader::readGroup},
            {"[elements]", &RootReader::readElements},
            {"[decompositions]", &RootReader::readDecomposition},
            {"[classes]", &RootReader::readClass},
        };
        for (const auto& [name, section] : kSections)
            if (name == head)
                return section;
        return nullptr;
    }

    bool readPages(std::string_view text, std::string_view)
    {
        const auto pages = parsePages(text);
        if (pages)
            table_.pages_ = *pages;
        return pages.has_value();
    }

    bool readGroup(std::string_view name, std::string_view text)
    {
        const auto first = parseHex(text, 0x4FFFF);
        auto& groups = table_.groups_;
        if (!first || (!groups.empty() && groups.back().first >= *first))
            return false;
        groups.push_back({std::string(name), *first});
        return true;
    }

    bool readElements(std::string_view characters, std::string_view text)
    {
        const auto key = parseCharacters(characters);
        const auto elements = parseElements(text);
        return key && elements && table_.entries_.emplace(*key, *elements).second;
    }

    bool readDecomposition(std::string_view character, std::string_view text)
    {
        const auto whole = parseCharacter(character);
        const auto parts = parseCharacters(text);
        if (!whole || !parts || !table_.decompositions_.emplace(*whole, *parts).second)
            return false;
        // A character that is just another one under a second code is not what texts hold.
        if (parts->size() > 1)
            table_.compositions_.emplace(*parts, *whole);
        return true;
    }

    bool readClass(std::string_view characters, std::string_view text)
    {
        const auto range = parseRange(characters, 0xFFFF);
        const auto number = parseDecimal(text, 254);
        if (!range || !number || *number == 0)
            return false;
        for (std::uint32_t value = range->first; value <= range->last; ++value)
            table_.classes_[static_cast<char16_t>(value)] = static_cast<int>(*number);
        return true;
    }

    Reporter report_;
    RootTable table_;
};

std::optional<RootTable> RootTable::load(const std::string& path, Diagnostics& diagnostics)
{
    const auto lines = readSource(path, diagnostics);
    if (!lines)
        return std::nullopt;
    return RootReader(path, diagnostics).read(*lines);
}

std::u16string RootTable::decomposed(std::u16string_view text) const
{
    std::u16string result;
    for (const char16_t unit : text) {
        const auto found = decompositions_.find(unit);
        if (found == decompositions_.end())
            result += unit;
        else
            result += found->second;
    }
    const auto byClass = [this](char16_t one, char16_t other) {
        return combiningClass(one) < combiningClass(other);
    };
    for (auto at = result.begin(); at != result.end();) {
        if (combiningClass(*at) == 0) {
            ++at;
            continue;
        }
        const auto end =
            std::find_if(at, result.end(), [this](char16_t c) { return combiningClass(c) == 0; });
        std::stable_sort(at, end, byClass);
        at = end;
    }
    return result;
}

std::optional<char16_t> RootTable::composed(std::u16string_view decomposition) const
{
    const auto found = compositions_.find(decomposition);
    return found == compositions_.end() ? std::nullopt : std::optional(found->second);
}

int RootTable::combiningClass(char16_t character) const
{
    const auto found = classes_.find(character);
    return found == classes_.end() ? 0 : found->second;
}

} // namespace vlx::data
