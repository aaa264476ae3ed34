// The check of language and territory objects at load, and the copy of one that does not pass: the
// same values and texts, laid out as they should be.
#include <algorithm>
#include <cstring>

#include "frame/globals.hpp"
#include "frame/sections.hpp"
#include "locale/content.hpp"

namespace vlx {
namespace {

constexpr std::uint32_t kMaxContent = 0xFFFF;
constexpr std::uint32_t kUnit = sizeof(Le16);

std::uint16_t wordAt(const Section& section, std::uint32_t offset)
{
    Le16 word;
    std::memcpy(&word, section.data + offset, sizeof word);
    return word;
}

// Units before the terminator; as many as there are, if there is none in the section.
std::uint32_t textLength(const Section& section, std::uint32_t offset)
{
    std::uint32_t length = 0;
    while (offset + (length + 1) * kUnit <= section.size &&
           wordAt(section, offset + length * kUnit) != 0)
        ++length;
    return length;
}

bool isTerminated(const Section& section, std::uint32_t offset)
{
    return offset + (textLength(section, offset) + 1) * kUnit <= section.size;
}

// Writes a content: the header's words, then texts, then tables, never above the largest size.
class ContentWriter {
  public:
    ContentWriter(const Section& from, std::uint32_t headerSize)
        : from_(from), padded_(copyPadded(from, kMaxContent)), used_(headerSize)
    {
        if (padded_)
            std::memset(padded_ + headerSize, 0, kMaxContent - headerSize);
    }

    bool ready() const { return padded_ != nullptr; }
    std::uint8_t* block() const { return padded_; }

    // The word of the original header; 0 behind the end of a short one.
    std::uint16_t word(int index) const
    {
        const std::uint32_t offset = static_cast<std::uint32_t>(index) * kUnit;
        return offset + kUnit <= from_.size ? wordAt(from_, offset) : std::uint16_t{0};
    }

    // Appends the text that a word points to, of `most` units, cut to the room that is left less
    // `reserve`.
    void text(int index, std::uint32_t reserve, std::uint32_t most = kMaxContent)
    {
        const std::uint32_t offset = word(index);
        const std::uint32_t room = (kMaxContent - reserve - used_) / kUnit - 1;
        const std::uint32_t length = std::min({textLength(from_, offset), most, room});
        if (length > 0)
            std::memcpy(padded_ + used_, from_.data + offset, length * kUnit);
        mark(index);
        used_ += (length + 1) * kUnit;
    }

    // Appends the whole entries of a table and gives their number.
    std::uint16_t table(int index, std::uint32_t count, std::uint32_t entrySize)
    {
        const std::uint32_t offset = word(index);
        const std::uint32_t there = offset < from_.size ? (from_.size - offset) / entrySize : 0;
        const std::uint32_t room = (kMaxContent - used_) / entrySize;
        const std::uint32_t kept = std::min({count, there, room});
        if (kept > 0)
            std::memcpy(padded_ + used_, from_.data + offset, kept * entrySize);
        mark(index);
        used_ += kept * entrySize;
        return static_cast<std::uint16_t>(kept);
    }

    // Stores a word of the new header; `mark` stores the offset of what comes next.
    void store(int index, std::uint16_t value)
    {
        const Le16 word = value;
        std::memcpy(padded_ + static_cast<std::uint32_t>(index) * kUnit, &word, sizeof word);
    }
    void mark(int index) { store(index, static_cast<std::uint16_t>(used_)); }

  private:
    const Section& from_;
    std::uint8_t* const padded_;
    std::uint32_t used_;
};

constexpr int kUpperPairCount = 3; // header words of the language's pair tables
constexpr int kLowerPairCount = 4;
constexpr int kUpperPairs = 49;
constexpr int kLowerPairs = 50;
constexpr int kTerritoryEnd = 22;

} // namespace

bool languageIsSound(const Section& section)
{
    if (section.size < sizeof(TSLanguageContent))
        return false;
    for (std::uint32_t i = 0; i < TSLanguageContent::kTexts; ++i)
        if (!isTerminated(section, wordAt(section, (TSLanguageContent::kFirstText + i) * kUnit)))
            return false;
    const auto& content = *reinterpret_cast<const TSLanguageContent*>(section.data);
    const auto fits = [&](std::uint32_t offset, std::uint32_t count) {
        return offset + count * sizeof(TSLanguagePair) <= section.size;
    };
    return fits(content.upperPairs, content.upperPairCount) &&
           fits(content.lowerPairs, content.lowerPairCount);
}

// A territory's text is as long as the distance to the next one, so the order counts too.
bool territoryIsSound(const Section& section)
{
    if (section.size < sizeof(TSTerritoryContent))
        return false;
    for (int i = 0; i < TSTerritoryContent::kTexts; ++i) {
        const auto word = static_cast<std::uint32_t>(TSTerritoryContent::kFirstText + i);
        const std::uint32_t begin = wordAt(section, word * kUnit);
        const std::uint32_t end = wordAt(section, (word + 1) * kUnit);
        if (end > section.size || begin + kUnit > end || (end - begin) % kUnit != 0 ||
            wordAt(section, end - kUnit) != 0)
            return false;
    }
    return true;
}

bool rebuildLanguage(const Section& section, Section& copy)
{
    ContentWriter writer(section, sizeof(TSLanguageContent));
    if (!writer.ready())
        return false;
    for (int i = 0; i < TSLanguageContent::kTexts; ++i) {
        // Each text behind this one keeps room for its terminator.
        const int behind = TSLanguageContent::kTexts - 1 - i;
        writer.text(TSLanguageContent::kFirstText + i, static_cast<std::uint32_t>(behind) * kUnit);
    }
    const std::uint32_t pair = sizeof(TSLanguagePair);
    writer.store(kUpperPairCount, writer.table(kUpperPairs, writer.word(kUpperPairCount), pair));
    writer.store(kLowerPairCount, writer.table(kLowerPairs, writer.word(kLowerPairCount), pair));
    copy = {writer.block(), kMaxContent, true};
    return true;
}

bool rebuildTerritory(const Section& section, Section& copy)
{
    ContentWriter writer(section, sizeof(TSTerritoryContent));
    if (!writer.ready())
        return false;
    for (int i = 0; i < TSTerritoryContent::kTexts; ++i) {
        const int behind = TSTerritoryContent::kTexts - 1 - i;
        const int index = TSTerritoryContent::kFirstText + i;
        // A text without a terminator ends where the next one begins, if it stands behind it.
        const std::uint32_t begin = writer.word(index);
        const std::uint32_t end = writer.word(index + 1);
        writer.text(index, static_cast<std::uint32_t>(behind) * kUnit,
                    end > begin ? (end - begin) / kUnit : kMaxContent);
    }
    writer.mark(kTerritoryEnd);
    copy = {writer.block(), kMaxContent, true};
    return true;
}

} // namespace vlx
