#include "sort_tailor.hpp"

#include <algorithm>

#include "content_text.hpp"

namespace vlx::data {

namespace {

// The syllables of Hangul: a leading consonant, a vowel, and a trailing consonant or none.
constexpr int kSyllables = 0xAC00;
constexpr int kLastSyllable = 0xD7A3;
constexpr int kLeads = 0x1100;
constexpr int kVowels = 0x1161;
constexpr int kTrails = 0x11A7; // one ahead of the first
constexpr int kLeadCount = 19;
constexpr int kVowelCount = 21;
constexpr int kTrailCount = 28;
// Syllables go by rule and have no place among the weights of the table.
constexpr std::uint32_t kHangul = 0x50000;

bool isBetween(int value, int first, int count)
{
    return value >= first && value < first + count;
}

} // namespace

TailoredOrder::TailoredOrder(const RootTable& root, const PageSet& pages)
    : root_(root), pages_(pages), weights_(root)
{
    for (const auto& [characters, elements] : root.entries()) {
        CollationElements& target = entries_[characters];
        for (const RootElement& element : elements)
            target.push_back(weights_.elementOf(element));
        longest_ = std::max(longest_, characters.size());
        const int character = characters[0];
        if (characters.size() == 1 && target.size() == 1 &&
            (isBetween(character, kLeads, kLeadCount) ||
             isBetween(character, kVowels, kVowelCount) ||
             isBetween(character, kTrails + 1, kTrailCount - 1)))
            jamo_[target[0].primary] = character;
    }
}

CollationElement TailoredOrder::unlisted(char16_t character)
{
    const std::uint32_t value = character;
    const bool isIdeograph = value >= 0x4E00 && value <= 0x9FFF;
    const bool isExtension = value >= 0x3400 && value <= 0x4DBF;
    const bool isSyllable = value >= kSyllables && value <= kLastSyllable;
    const std::uint32_t base = isIdeograph   ? kIdeographs
                               : isExtension ? kExtensionA
                               : isSyllable  ? kHangul
                                             : kUnlisted;
    if (!pages_[value >> 8])
        return {weights_.primaryOf(base | value), 0, 0};
    return weights_.elementOf({base | value, kCommonSecondary, kCommonTertiary});
}

// The elements of what begins at `at`, which moves behind it. Marks that belong to it, but stand
// behind others, are taken out of the text.
CollationElements TailoredOrder::match(std::u16string& text, std::size_t& at)
{
    std::size_t length = std::min(longest_, text.size() - at);
    while (length > 0 && !entries_.contains(std::u16string_view(text).substr(at, length)))
        --length;
    if (length == 0)
        return {unlisted(text[at++])};
    std::u16string key = text.substr(at, length);
    int skipped = 0;
    for (std::size_t mark = at + length; mark < text.size();) {
        const int markClass = root_.combiningClass(text[mark]);
        if (markClass == 0)
            break;
        if (markClass != skipped && entries_.contains(key + text[mark])) {
            key += text[mark];
            text.erase(mark, 1);
        } else {
            skipped = markClass;
            ++mark;
        }
    }
    at += length;
    return entries_.find(key)->second;
}

// Letters of one syllable become the syllable, so that a circled one sorts with the plain one.
void TailoredOrder::joinSyllables(CollationElements& elements)
{
    const auto jamoAt = [&](std::size_t place) {
        const auto found =
            place < elements.size() ? jamo_.find(elements[place].primary) : jamo_.end();
        return found == jamo_.end() ? 0 : found->second;
    };
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!isBetween(jamoAt(i), kLeads, kLeadCount) ||
            !isBetween(jamoAt(i + 1), kVowels, kVowelCount))
            continue;
        const bool hasTrail = isBetween(jamoAt(i + 2), kTrails + 1, kTrailCount - 1);
        const int code =
            kSyllables +
            ((jamoAt(i) - kLeads) * kVowelCount + jamoAt(i + 1) - kVowels) * kTrailCount +
            (hasTrail ? jamoAt(i + 2) - kTrails : 0);
        elements[i].primary = weights_.primaryOf(kHangul | static_cast<std::uint32_t>(code));
        const auto next = elements.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        elements.erase(next, next + (hasTrail ? 2 : 1));
    }
}

CollationElements TailoredOrder::elementsOf(std::u16string_view text)
{
    std::u16string rest = root_.decomposed(text);
    CollationElements elements;
    for (std::size_t at = 0; at < rest.size();) {
        const CollationElements next = match(rest, at);
        elements.insert(elements.end(), next.begin(), next.end());
    }
    joinSyllables(elements);
    return elements;
}

// Letters and marks put together as far as characters exist.
std::u16string TailoredOrder::composed(std::u16string_view decomposed) const
{
    std::u16string text;
    while (!decomposed.empty()) {
        std::size_t length = decomposed.size();
        while (length > 1 && !root_.composed(decomposed.substr(0, length)))
            --length;
        text += root_.composed(decomposed.substr(0, length)).value_or(decomposed[0]);
        decomposed.remove_prefix(length);
    }
    return text;
}

void TailoredOrder::suppressContractions(std::u16string_view first)
{
    std::erase_if(entries_, [&](const auto& entry) {
        return entry.first.size() > 1 && first.find(entry.first[0]) != std::u16string_view::npos;
    });
}

// False if the setting is not known.
bool TailoredOrder::takeSetting(const SortRule& rule)
{
    const std::vector<std::string>& words = rule.words;
    const auto is = [&words](const char* first, const char* second) {
        return words.size() == 2 && words[0] == first && words[1] == second;
    };
    // Characters are always looked at in parts, so normalisation asks for nothing more.
    if (is("normalization", "on") || is("normalization", "off") || is("caseFirst", "off") ||
        is("alternate", "non-ignorable") || is("strength", "3"))
        return true;
    if (is("caseFirst", "upper")) {
        weights_.setUpperFirst();
        return true;
    }
    if (is("backwards", "2"))
        return isBackwards_ = true;
    if (is("alternate", "shifted"))
        return hasSpecials_ = true;
    if (words[0] == "reorder")
        return weights_.reorder({words.begin() + 1, words.end()});
    const auto set = words[0] == "suppressContractions" && words.size() == 2
                         ? parseSortSet(words[1])
                         : std::nullopt;
    if (set)
        suppressContractions(*set);
    return set.has_value();
}

void TailoredOrder::applySetting(const SortRule& rule, Reporter& report)
{
    if (takeSetting(rule))
        return;
    std::string text;
    for (const std::string& word : rule.words)
        text += (text.empty() ? "" : " ") + word;
    report.error(rule.line, "the setting [" + text + "] is not taken");
}

// The place for something that differs from the current one by this much.
bool TailoredOrder::movePlace(Strength strength)
{
    if (strength == Strength::kIdentical)
        return true;
    const auto isWeak = [strength](const CollationElement& one) {
        return (strength == Strength::kPrimary     ? one.primary
                : strength == Strength::kSecondary ? one.secondary
                                                   : one.tertiary) == 0;
    };
    while (!place_.empty() && isWeak(place_.back()))
        place_.pop_back();
    if (place_.empty())
        return false;
    CollationElement& last = place_.back();
    if (strength == Strength::kPrimary)
        last = isAhead_ ? weights_.aheadOfPrimary(last) : weights_.behindPrimary(last);
    else if (strength == Strength::kSecondary)
        last = weights_.behindSecondary(last);
    else
        last = weights_.behindTertiary(last);
    return true;
}

// Which case the elements of a placed text count as: those of its letters, the last element for all
// letters that are left.
void TailoredOrder::setCases(std::u16string_view text)
{
    std::vector<LetterCase> cases;
    for (const CollationElement& element : elementsOf(text))
        if (element.primary != 0)
            cases.push_back(weights_.caseOf(element.tertiary));
    std::vector<CollationElement*> letters;
    for (CollationElement& element : place_)
        if (element.primary != 0 && element.tertiary != 0)
            letters.push_back(&element);
    for (std::size_t i = 0; i < letters.size(); ++i) {
        LetterCase letterCase = i < cases.size() ? cases[i] : LetterCase::kLower;
        for (std::size_t j = letters.size(); i + 1 == letters.size() && j < cases.size(); ++j)
            if (cases[j] != letterCase)
                letterCase = LetterCase::kMixed;
        weights_.setCase(*letters[i], letterCase);
    }
}

void TailoredOrder::applyRelation(const SortRule& rule, Reporter& report)
{
    const std::u16string text = root_.decomposed(rule.text);
    if (isAhead_ && rule.strength != Strength::kPrimary)
        return report.error(rule.line, "behind [before 1] the first relation is <");
    if (!movePlace(rule.strength))
        return report.error(rule.line, "'" + utf8Of(rule.text) +
                                           "' has no place: what stands ahead of it has no weight "
                                           "on that level");
    isAhead_ = false;
    if (rule.strength != Strength::kIdentical)
        setCases(rule.text);
    CollationElements elements = place_;
    if (!rule.extension.empty()) {
        const CollationElements more = elementsOf(rule.extension);
        elements.insert(elements.end(), more.begin(), more.end());
    }
    entries_[text] = elements;
    longest_ = std::max(longest_, text.size());
    placed_.push_back({composed(text), rule.line});
}

void TailoredOrder::apply(const std::vector<SortRule>& rules, Reporter& report)
{
    for (const SortRule& rule : rules) {
        if (rule.kind == SortRule::kSetting) {
            applySetting(rule, report);
        } else if (rule.kind == SortRule::kRelation) {
            applyRelation(rule, report);
        } else {
            place_ = elementsOf(rule.text);
            isAhead_ = rule.strength == Strength::kPrimary;
        }
    }
}

} // namespace vlx::data
