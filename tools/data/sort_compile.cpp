#include "sort_compile.hpp"

#include <algorithm>
#include <set>

#include "collate/sort.hpp"
#include "container.hpp"
#include "content_text.hpp"
#include "sort_numbers.hpp"
#include "sort_rules.hpp"
#include "sort_tailor.hpp"
#include "sourcefile.hpp"

#include "tsconst.h"

namespace vlx::data {

namespace {

constexpr unsigned kPages = 256;
constexpr unsigned kPageSize = 256;

// A level 3 weight above those of letters in any case.
constexpr MinorWeight kAboveLetters{static_cast<int>(LetterCase::kUpper), 0xFFFF, 0};

// Pairs of characters that are to be held as contractions although no rule places them: each of
// `first` with each of `second`.
struct Combination {
    std::u16string first;
    std::u16string second;
};

// A source as its keys say.
struct SortSource {
    SourceHead head;
    std::string rules;
    int rulesLine = 0;
    std::optional<PageSet> pages;
    std::set<std::u16string> notHeld; // what the rules place and the format cannot hold
    std::vector<Combination> combinations;
};

SortSource readSource(Source& source)
{
    SortSource read;
    read.head = source.head(TS_OBJ_SORT);
    const SourceText rules = source.lines("rules");
    read.rules = rules.text;
    read.rulesLine = rules.line;
    if (source.has("pages")) {
        read.pages = parsePages(utf8Of(source.text("pages")));
        if (!read.pages)
            source.refuse("pages", "is not of the form 00-06 0E");
    }
    if (source.has("not_held"))
        for (const std::u16string& text : source.texts("not_held", 1, 1000))
            read.notHeld.insert(text);
    for (std::size_t i = 0; source.has("combine[" + std::to_string(i) + "]"); ++i) {
        const std::string key = "combine[" + std::to_string(i) + "]";
        read.combinations.push_back(
            {source.text(key + ".first", filledText), source.text(key + ".second", filledText)});
    }
    source.know("combine");
    return read;
}

class SortCompiler {
  public:
    SortCompiler(const SortSource& source, const RootTable& root, Source& complaints,
                 Reporter& report)
        : source_(source), root_(root), pages_(source.pages.value_or(root.pages())),
          order_(root, pages_), complaints_(complaints), report_(report)
    {
    }

    std::optional<Bytes> compile();

  private:
    void takeCharacters();
    void takePlaced();
    void takeCombinations();
    bool isMoreThanItsParts(char16_t first, char16_t second);
    void takePair(const std::u16string& pair);
    void reportNotHeld(const PlacedText& placed, const std::string& why);
    void separateExpansions();
    std::optional<Bytes> layOut();
    TSSortChar recordOf(const HeldElements& elements) const;
    TSSortExpansion expansionOf(char16_t character, const HeldElements& elements) const;
    std::uint8_t directions() const;

    const SortSource& source_;
    const RootTable& root_;
    PageSet pages_;
    TailoredOrder order_;
    Source& complaints_;
    Reporter& report_;
    std::map<char16_t, HeldElements> characters_; // of the pages with records
    std::map<std::u16string, HeldElement> pairs_;
    std::set<std::u16string> foundNotHeld_;
    std::optional<SortNumbers> numbers_;
};

void SortCompiler::takeCharacters()
{
    for (unsigned value = 0; value < kPages * kPageSize; ++value) {
        const auto character = static_cast<char16_t>(value);
        if (pages_[value / kPageSize])
            characters_[character] =
                held(order_.elementsOf({&character, 1}), order_.weights(), order_.hasSpecials(), 2);
    }
}

void SortCompiler::takePair(const std::u16string& pair)
{
    HeldElements elements =
        held(order_.elementsOf(pair), order_.weights(), order_.hasSpecials(), 1);
    pairs_[pair] = elements.empty() ? HeldElement{} : elements[0];
}

// What the source does not say itself is an error, so that nothing gets lost unseen.
void SortCompiler::reportNotHeld(const PlacedText& placed, const std::string& why)
{
    foundNotHeld_.insert(placed.text);
    if (!source_.notHeld.contains(placed.text))
        report_.error(placed.line, quoted(placed.text) + " cannot be held: " + why);
}

void SortCompiler::takePlaced()
{
    for (const PlacedText& placed : order_.placed()) {
        if (std::any_of(placed.text.begin(), placed.text.end(),
                        [this](char16_t unit) { return !pages_[unit / kPageSize]; }))
            reportNotHeld(placed, "it is on a page without records");
        else if (placed.text.size() > 2)
            reportNotHeld(placed, "a contraction has two characters");
        else if (placed.text.size() == 2)
            takePair(placed.text);
    }
    for (const std::u16string& text : source_.notHeld)
        if (!foundNotHeld_.contains(text))
            complaints_.refuse("not_held", quoted(text) + " is held, or not placed by any rule");
}

// Two letters that follow each other like any two need no contraction. A letter and its mark do:
// the comparison may end on the letter, and then the mark comes too late.
bool SortCompiler::isMoreThanItsParts(char16_t first, char16_t second)
{
    CollationElements parts = order_.elementsOf({&first, 1});
    const CollationElements rest = order_.elementsOf({&second, 1});
    if (std::all_of(rest.begin(), rest.end(),
                    [](const CollationElement& one) { return one.primary == 0; }))
        return true;
    parts.insert(parts.end(), rest.begin(), rest.end());
    return parts != order_.elementsOf(std::u16string{first, second});
}

void SortCompiler::takeCombinations()
{
    for (const auto& [first, second] : source_.combinations)
        for (const char16_t one : first)
            for (const char16_t other : second)
                if (isMoreThanItsParts(one, other))
                    takePair({one, other});
}

// The second element of a character at the very end of a text is lost when that is compared with a
// text that ends at the same time. So that the two do not become equal, the first element of an
// expansion is no other character's element. Where a rule has told the two elements from those of
// the letters on level 2, level 3 is free, and takes a weight above all letters.
void SortCompiler::separateExpansions()
{
    std::set<HeldElement> single;
    for (const auto& [character, elements] : characters_)
        if (elements.size() == 1)
            single.insert(elements[0]);
    for (const auto& [pair, element] : pairs_)
        single.insert(element);
    for (auto& [character, elements] : characters_) {
        if (elements.size() != 2)
            continue;
        if (std::any_of(elements[1].secondaries.begin(), elements[1].secondaries.end(),
                        [](const MinorWeight& weight) { return weight.rank > 0; }))
            elements[0].tertiaries = {kAboveLetters};
        while (single.contains(elements[0]))
            elements[0].tertiaries.push_back({0, kCommonTertiary, 1});
    }
}

std::uint8_t SortCompiler::directions() const
{
    return static_cast<std::uint8_t>(order_.isBackwards() ? kAllForward & ~forwardBit(2)
                                                          : kAllForward);
}

TSSortChar SortCompiler::recordOf(const HeldElements& elements) const
{
    TSSortChar record{};
    unsigned bits = sortBitsOf(directions());
    if (elements.size() > 1) {
        bits |= kSortExpansion;
    } else if (!elements.empty()) {
        const HeldWeights weights = numbers_->of(elements[0]);
        record.weight1 = weights.weight1;
        record.weight2 = weights.weight2;
        record.weight3 = weights.weight3;
        if (elements[0].isSpecial)
            bits |= kSortSpecial;
    }
    record.sortBits = static_cast<std::uint16_t>(bits);
    return record;
}

TSSortExpansion SortCompiler::expansionOf(char16_t character, const HeldElements& elements) const
{
    const HeldWeights first = numbers_->of(elements[0]);
    const HeldWeights second = numbers_->of(elements[1]);
    TSSortExpansion expansion{};
    expansion.character = character;
    expansion.weight1 = first.weight1;
    expansion.weight2 = first.weight2;
    expansion.weight3 = first.weight3;
    expansion.secondWeight1 = second.weight1;
    expansion.secondWeight2 = second.weight2;
    expansion.secondWeight3 = second.weight3;
    return expansion;
}

template <class Record>
void append(Bytes& bytes, const Record& record)
{
    const auto* const begin = reinterpret_cast<const std::uint8_t*>(&record);
    bytes.insert(bytes.end(), begin, begin + sizeof record);
}

std::optional<Bytes> SortCompiler::layOut()
{
    TSSortData header{};
    header.defaultWeight2 = 1;
    header.defaultWeight3 = 1;
    Bytes characters;
    Bytes expansions;
    Bytes contractions;
    unsigned records = 0;
    for (unsigned page = 0; page < kPages; ++page) {
        TSSortPage& entry = header.sortPages[page];
        if (pages_[page]) {
            entry.pageBase = static_cast<std::uint16_t>(records);
            records += kPageSize;
        } else {
            entry.pageFlags = kPageLevel1;
            entry.pageDirection = directions();
            entry.pageBase = numbers_->pageBase(page);
        }
    }
    for (const auto& [character, elements] : characters_) {
        append(characters, recordOf(elements));
        if (elements.size() == 2)
            append(expansions, expansionOf(character, elements));
    }
    for (const auto& [pair, element] : pairs_) {
        const TSSortChar record = recordOf({element});
        append(contractions, TSSortContraction{pair[0], pair[1], record.weight1, record.weight2,
                                               record.weight3, record.sortBits});
    }
    const std::size_t expansionsAt = sizeof header + characters.size();
    const std::size_t contractionsAt = expansionsAt + expansions.size();
    const std::size_t size = contractionsAt + contractions.size();
    if (size > kMaxSectionSize) {
        report_.error(0, "takes " + std::to_string(size) +
                             " bytes: " + std::to_string(records / kPageSize) + " pages, " +
                             std::to_string(expansions.size() / sizeof(TSSortExpansion)) +
                             " expansions, " + std::to_string(pairs_.size()) +
                             " contractions; a section has at most 65,535");
        return std::nullopt;
    }
    header.expansionCount = static_cast<std::uint16_t>(expansions.size() / sizeof(TSSortExpansion));
    header.contractionCount = static_cast<std::uint16_t>(pairs_.size());
    header.charTableOffset = static_cast<std::uint16_t>(sizeof header);
    header.expansionTableOffset = static_cast<std::uint16_t>(expansionsAt);
    header.contractionTableOffset = static_cast<std::uint16_t>(contractionsAt);
    Bytes content;
    append(content, header);
    for (const Bytes* const table : {&characters, &expansions, &contractions})
        content.insert(content.end(), table->begin(), table->end());
    return content;
}

std::optional<Bytes> SortCompiler::compile()
{
    order_.apply(parseSortRules(source_.rules, source_.rulesLine, report_), report_);
    takeCharacters();
    takePlaced();
    takeCombinations();
    separateExpansions();
    if (!report_.clean())
        return std::nullopt;
    numbers_.emplace(root_, pages_, order_.weights());
    for (const auto& [character, elements] : characters_)
        for (const HeldElement& element : elements)
            numbers_->add(element);
    for (const auto& [pair, element] : pairs_)
        numbers_->add(element);
    for (const std::string& complaint : numbers_->number())
        report_.error(0, complaint);
    return report_.clean() ? layOut() : std::nullopt;
}

} // namespace

std::optional<SourceHead> readSortHead(const std::string& path, Diagnostics& diagnostics)
{
    return readHead(path, TS_OBJ_SORT, diagnostics);
}

std::optional<Object> compileSort(const std::string& path, const RootTable& root,
                                  Diagnostics& diagnostics)
{
    Source source(path, diagnostics);
    if (!source.good())
        return std::nullopt;
    const SortSource read = readSource(source);
    Reporter report(path, diagnostics);
    const auto content = SortCompiler(read, root, source, report).compile();
    auto object = source.finish(read.head, content.value_or(Bytes()));
    return report.clean() ? std::move(object) : std::nullopt;
}

} // namespace vlx::data
