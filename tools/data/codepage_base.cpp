#include "codepage_base.hpp"

#include <algorithm>

namespace vlx::data {

namespace {

class Inheritance {
  public:
    Inheritance(CodePageSource& source, SourcePlaces& places, const CodePageSource& base,
                const SourcePlaces& basePlaces, int line)
        : source_(source), places_(places), base_(base), basePlaces_(basePlaces), line_(line)
    {
    }

    void takeSettings();
    void takeCells();
    void takeEncode();
    void takeMapValues();

  private:
    template <class Value>
    void take(const char* key, Value CodePageSource::*member)
    {
        if (!places_.settings.contains(key))
            source_.*member = base_.*member;
    }
    bool ownCell(Packed character) const
    {
        return own_.contains(character) || places_.unassigned.contains(character);
    }
    bool saysMoreThanTheCells(std::uint16_t value, Packed character) const;

    CodePageSource& source_;
    SourcePlaces& places_;
    const CodePageSource& base_;
    const SourcePlaces& basePlaces_;
    const int line_;
    const std::map<Packed, std::uint16_t> own_ = source_.decode;
};

void Inheritance::takeSettings()
{
    take("family", &CodePageSource::asciiFamily);
    take("max bytes", &CodePageSource::maxBytes);
    take("rule", &CodePageSource::utf8);
    take("substitution", &CodePageSource::substitution);
    take("lf", &CodePageSource::lineFeed);
    take("cr", &CodePageSource::carriageReturn);
    take("lineEnd3", &CodePageSource::lineEnd3);
    take("lineEnd4", &CodePageSource::lineEnd4);
    take("shift", &CodePageSource::shiftIn);
    take("shift", &CodePageSource::shiftOut);
    for (const auto& [key, line] : basePlaces_.settings)
        if (key != "id" && key != "name")
            places_.settings.emplace(key, line_);
}

void Inheritance::takeCells()
{
    for (const auto& [character, value] : base_.decode)
        if (!places_.unassigned.contains(character) &&
            source_.decode.emplace(character, value).second)
            places_.cells[character] = line_;
}

// A line of the base that its own cells made necessary may have become needless or wrong.
bool Inheritance::saysMoreThanTheCells(std::uint16_t value, Packed character) const
{
    if (character != kNoCharacter && ownCell(character))
        return false;
    const auto decodes = [value](const auto& cell) { return cell.second == value; };
    const auto count = std::count_if(source_.decode.begin(), source_.decode.end(), decodes);
    if (character == kNoCharacter)
        return count > 0;
    return count != 1 || source_.decode.at(character) != value;
}

void Inheritance::takeEncode()
{
    for (const auto& [value, chosen] : basePlaces_.encode)
        if (saysMoreThanTheCells(value, chosen.character))
            places_.encode.emplace(value, EncodeLine{chosen.character, line_});
}

void Inheritance::takeMapValues()
{
    const auto gone = [this](Packed character) {
        return character != kNoCharacter && !source_.decode.contains(character);
    };
    for (const auto& [from, to] : base_.mapValues)
        if (!gone(from) && !gone(to) && source_.mapValues.emplace(from, to).second)
            places_.mapValues[from] = line_;
}

} // namespace

void inherit(CodePageSource& source, SourcePlaces& places, const CodePageSource& base,
             const SourcePlaces& basePlaces, int line)
{
    Inheritance inheritance(source, places, base, basePlaces, line);
    inheritance.takeSettings();
    inheritance.takeCells();
    inheritance.takeEncode();
    inheritance.takeMapValues();
}

} // namespace vlx::data
