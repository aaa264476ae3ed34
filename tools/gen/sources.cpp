#include "sources.hpp"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "characters.hpp"
#include "sourcefile.hpp"
#include "typeword.hpp"
#include "width.hpp"

namespace vlx::data {

namespace {

using Images = std::vector<std::uint16_t>;

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

std::optional<Range> parseRange(std::string_view first, std::string_view last)
{
    const auto from = parseHex(first, kUnicodeValues - 1);
    const auto to = parseHex(last, kUnicodeValues - 1);
    if (!from || !to || *from > *to)
        return std::nullopt;
    return Range{*from, *to};
}

// "0041" or "0041-005A".
std::optional<Range> parseRange(std::string_view text)
{
    const std::size_t dash = text.find('-');
    return parseRange(text.substr(0, dash),
                      text.substr(dash == std::string_view::npos ? 0 : dash + 1));
}

// Calls `row` with the words and the line of each row of a source.
template <class Row>
void eachRow(const std::string& path, Diagnostics& diagnostics, const Row& row)
{
    const auto lines = readSource(path, diagnostics);
    if (!lines)
        return;
    Reporter report(path, diagnostics);
    for (const SourceLine& line : *lines)
        if (const std::string fault = row(wordsOf(line.text)); !fault.empty())
            report.error(line.number, fault);
}

using Words = std::vector<std::string_view>;

class Loader {
  public:
    Loader(UnicodeTables& tables, std::string directory, Diagnostics& diagnostics)
        : tables_(tables), directory_(std::move(directory)), diagnostics_(diagnostics)
    {
    }

    void loadCharacters();
    void loadWidths();
    void loadDigits();
    void checkDoubts();

  private:
    void compare(const std::string& path, const char* what, std::uint16_t (*known)(std::uint16_t),
                 const Images& images);

    UnicodeTables& tables_;
    const std::string directory_;
    Diagnostics& diagnostics_;
};

void Loader::loadCharacters()
{
    const auto characters = CharacterData::load(directory_, CharacterData::kLibrary, diagnostics_);
    if (!characters)
        return;
    for (std::uint32_t value = 0; value < kUnicodeValues; ++value) {
        const auto value16 = static_cast<std::uint16_t>(value);
        tables_.type[value] = characters->typeWord(value16);
        tables_.lower[value] = characters->toLower(value16);
        tables_.upper[value] = characters->toUpper(value16);
    }
}

void Loader::loadWidths()
{
    const std::string path = directory_ + "/width.tsv";
    eachRow(path, diagnostics_, [&](const Words& words) -> std::string {
        const auto narrow = words.size() == 3 ? parseRange(words[0], words[1]) : std::nullopt;
        const auto wide = narrow ? parseHex(words[2], kUnicodeValues - 1) : std::nullopt;
        if (!wide)
            return "not a row of first and last half-width form and first full-width form";
        for (std::uint32_t i = 0; i <= narrow->last - narrow->first; ++i) {
            tables_.fullWidth[narrow->first + i] = static_cast<std::uint16_t>(*wide + i);
            tables_.halfWidth[*wide + i] = static_cast<std::uint16_t>(narrow->first + i);
        }
        return {};
    });
    compare(path, "full width", toFullWidth, tables_.fullWidth);
    compare(path, "half width", toHalfWidth, tables_.halfWidth);
}

void Loader::loadDigits()
{
    const std::string path = directory_ + "/digits.tsv";
    eachRow(path, diagnostics_, [&](const Words& words) -> std::string {
        const auto range = words.size() == 3 ? parseRange(words[0], words[1]) : std::nullopt;
        const auto digit = range ? parseDecimal(words[2], 9) : std::nullopt;
        if (!digit || *digit + (range->last - range->first) > 9)
            return "not a row of first value, last value, ASCII digit of the first one";
        for (std::uint32_t value = range->first; value <= range->last; ++value)
            tables_.digit[value] =
                static_cast<std::uint16_t>('0' + *digit + (value - range->first));
        return {};
    });
    for (std::uint32_t value = 0; value < kUnicodeValues; ++value)
        if (isMappedDigit(static_cast<std::uint16_t>(value)) != (tables_.digit[value] != 0))
            Reporter(path, diagnostics_)
                .error(0,
                       hexText(value, 4) + " is a digit here or for the type words, not for both");
}

// The type words know the widths, too, and the two may not differ.
void Loader::compare(const std::string& path, const char* what,
                     std::uint16_t (*known)(std::uint16_t), const Images& images)
{
    for (std::uint32_t value = 0; value < kUnicodeValues; ++value)
        if (known(static_cast<std::uint16_t>(value)) != images[value])
            Reporter(path, diagnostics_)
                .error(0, std::string(what) + " of " + hexText(value, 4) +
                              " is not what the type words take it for");
}

// A doubt stands on a word that the rules made, and names fields that there are.
void Loader::checkDoubts()
{
    constexpr std::array<std::string_view, 4> kFields = {"class", "form", "class,form",
                                                         "class,direction,form"};
    eachRow(directory_ + "/type-doubts.tsv", diagnostics_, [&](const Words& words) -> std::string {
        if (std::find(kFields.begin(), kFields.end(), words[0]) == kFields.end())
            return "not the fields of a type word: " + std::string(words[0]);
        for (std::size_t i = 1; i < words.size(); ++i) {
            const auto range = parseRange(words[i]);
            if (!range)
                return "not a value or a range: " + std::string(words[i]);
            for (std::uint32_t value = range->first; value <= range->last; ++value)
                if (tables_.type[value] == kNoDirectionWord)
                    return "a doubt about a value that is not assigned: " + hexText(value, 4);
        }
        return {};
    });
}

} // namespace

std::optional<UnicodeTables> loadUnicodeTables(const std::string& directory,
                                               Diagnostics& diagnostics)
{
    UnicodeTables tables;
    tables.type.resize(kUnicodeValues);
    tables.fullWidth.resize(kUnicodeValues);
    std::iota(tables.fullWidth.begin(), tables.fullWidth.end(), std::uint16_t{0});
    tables.lower = tables.upper = tables.halfWidth = tables.fullWidth;
    tables.digit.resize(kUnicodeValues);

    Diagnostics own;
    Loader loader(tables, directory, own);
    loader.loadCharacters();
    loader.loadWidths();
    loader.loadDigits();
    loader.checkDoubts();
    diagnostics.insert(diagnostics.end(), own.begin(), own.end());
    if (hasErrors(own))
        return std::nullopt;
    return tables;
}

} // namespace vlx::data
