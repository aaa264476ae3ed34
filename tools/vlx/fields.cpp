#include "fields.hpp"

#include <algorithm>
#include <utility>

namespace vlx::cli {

namespace {

constexpr std::uint32_t kBlank = 0x080; // of TS_CT_CLASS

bool isBlankValue(TSLocale* locale, TSChar32 packed)
{
    return (TSGetCharTypeW(locale, packed, TS_CT_CLASS) & kBlank) != 0;
}

} // namespace

FieldCutter::FieldCutter(TSLocale* locale, std::optional<std::string> separator)
    : locale_(locale), walk_(locale), separator_(std::move(separator))
{
    for (unsigned byte = 0; byte < isBlankByte_.size(); ++byte)
        isBlankByte_[byte] = isBlankValue(locale, byte);
}

void FieldCutter::split(std::string_view line)
{
    line_ = line;
    characters_.clear();
    fields_.clear();
    const char* at = line.data();
    const char* const end = at + line.size();
    for (int state = 0;;) {
        const Character character = walk_.next(at, end, state);
        if (character.size == 0)
            break;
        characters_.push_back(character);
    }
    if (separator_)
        splitAtSeparators();
    else
        splitAtBlanks();
}

bool FieldCutter::isBlank(const Character& character) const
{
    if (character.size == 1)
        return isBlankByte_[static_cast<std::uint8_t>(*character.bytes)];
    TSChar32 packed = 0;
    for (int i = 0; i < character.size; ++i)
        packed = packed << 8 | static_cast<std::uint8_t>(character.bytes[i]);
    return isBlankValue(locale_, packed);
}

bool FieldCutter::isSeparator(const Character& character) const
{
    return std::string_view(character.bytes, static_cast<std::size_t>(character.size)) ==
           *separator_;
}

void FieldCutter::splitAtSeparators()
{
    std::size_t begin = 0;
    for (std::size_t i = 0; i < characters_.size(); ++i) {
        if (!isSeparator(characters_[i]))
            continue;
        fields_.push_back({begin, i});
        begin = i + 1;
    }
    fields_.push_back({begin, characters_.size()});
}

void FieldCutter::splitAtBlanks()
{
    std::size_t begin = 0;
    bool afterOther = false;
    for (std::size_t i = 0; i < characters_.size(); ++i) {
        const bool blank = isBlank(characters_[i]);
        if (blank && afterOther) {
            fields_.push_back({begin, i});
            begin = i;
        }
        afterOther = !blank;
    }
    fields_.push_back({begin, characters_.size()});
}

// The beginning of the place's field, behind blanks that do not count; the end of the line if there
// is no such field.
std::size_t FieldCutter::beginOf(const FieldPlace& place) const
{
    if (place.field > fields_.size())
        return characters_.size();
    std::size_t at = fields_[place.field - 1].begin;
    while (place.skipsBlanks && at < characters_.size() && isBlank(characters_[at]))
        ++at;
    return at;
}

// Behind the place's character.
std::size_t FieldCutter::endOf(const FieldPlace& place) const
{
    if (place.character == 0)
        return place.field > fields_.size() ? characters_.size() : fields_[place.field - 1].end;
    const std::size_t begin = beginOf(place);
    return begin + std::min(place.character, characters_.size() - begin);
}

Slice FieldCutter::cut(const FieldRange& range) const
{
    std::size_t begin = beginOf(range.begin);
    if (range.begin.character > 1)
        begin += std::min(range.begin.character - 1, characters_.size() - begin);
    const std::size_t end = range.end ? endOf(*range.end) : characters_.size();
    if (begin >= end)
        return {line_.data() + line_.size(), 0, 0};
    const Character& first = characters_[begin];
    const Character& last = characters_[end - 1];
    return {first.bytes, static_cast<std::size_t>(last.bytes + last.size - first.bytes),
            first.state};
}

} // namespace vlx::cli
