#include "codepage_check.hpp"

#include <set>

#include "chars/cpfile.hpp"

namespace vlx::data {

namespace {

std::string textOf(Packed character)
{
    return hexText(character, packedLength(character) * 2);
}

class SourceChecker {
  public:
    SourceChecker(CodePageSource& source, const SourcePlaces& places, Reporter& report)
        : source_(source), places_(places), report_(report)
    {
    }

    void check()
    {
        checkSettings();
        checkCells();
        reverse();
        checkMapValues();
    }

  private:
    int lineOf(const char* key) const
    {
        const auto found = places_.settings.find(key);
        return found == places_.settings.end() ? 0 : found->second;
    }
    void require(std::initializer_list<const char*> keys)
    {
        for (const char* key : keys)
            if (!places_.settings.contains(key))
                report_.error(0, std::string("'") + key + "' is missing");
    }

    void checkSettings();
    void checkCells();
    void checkShiftBytes(Packed character, int line);
    std::set<std::uint16_t> ambiguous();
    void reverse();
    void checkMapValues();

    CodePageSource& source_;
    const SourcePlaces& places_;
    Reporter& report_;
};

void SourceChecker::checkSettings()
{
    require({"id", "name"});
    require({"family", "max bytes", "substitution", "lf", "cr", "lineEnd3", "lineEnd4"});
    if (source_.stateful() && source_.maxBytes == 1)
        report_.error(lineOf("shift"), "a page with shift bytes has characters of several bytes");
    if (source_.utf8 != (source_.id == kUtf8CodePage))
        report_.error(lineOf("id"), "the rule utf8 belongs to id 57352 and to no other");
    if (source_.utf8 != source_.decode.empty())
        report_.error(0, source_.utf8 ? "a page by rule has no decode table"
                                      : "the decode table is missing");
}

void SourceChecker::checkShiftBytes(Packed character, int line)
{
    for (Packed bytes = character; bytes != 0; bytes >>= 8)
        if ((bytes & 0xFF) == source_.shiftIn || (bytes & 0xFF) == source_.shiftOut)
            report_.error(line, textOf(character) + " holds a shift byte");
}

// In a page without shift bytes the first byte alone tells the length of a character.
void SourceChecker::checkCells()
{
    std::map<Packed, int> lengths;
    for (const auto& [character, value] : source_.decode) {
        const int length = packedLength(character);
        const int line = places_.cells.at(character);
        const Packed lead = character >> 8 * (length - 1);
        if (length > source_.maxBytes)
            report_.error(line, textOf(character) + " is longer than 'max bytes'");
        else if (source_.stateful() && length != 1 && length != source_.maxBytes)
            report_.error(line, textOf(character) + " is neither one byte nor 'max bytes' long");
        else if (!source_.stateful() && lengths.emplace(lead, length).first->second != length)
            report_.error(line, "characters of different lengths begin with " + hexText(lead, 2));
        if (source_.stateful())
            checkShiftBytes(character, line);
    }
}

// The values that several characters decode to. The source has to choose one of them.
std::set<std::uint16_t> SourceChecker::ambiguous()
{
    std::set<std::uint16_t> several;
    for (const auto& [character, value] : source_.decode) {
        const Packed first = source_.encode.emplace(value, character).first->second;
        if (first != character && several.insert(value).second && !places_.encode.contains(value))
            report_.error(places_.cells.at(character),
                          hexText(value, 4) + " is decoded from " + textOf(first) + " and " +
                              textOf(character) + ": [encode] has to choose");
    }
    return several;
}

// The reverse of the decode table where that is clear, and [encode] where it is not; it may say
// nothing that is clear without it.
void SourceChecker::reverse()
{
    const std::set<std::uint16_t> several = ambiguous();
    for (const auto& [value, chosen] : places_.encode) {
        const auto& [character, line] = chosen;
        const auto plain = source_.encode.find(value);
        const bool decoded = plain != source_.encode.end();
        if (character != kNoCharacter && !source_.decode.contains(character))
            report_.error(line, "no such character in the decode table");
        else if (decoded && plain->second == character && !several.contains(value))
            report_.error(line, "the decode table says so already");
        else if (!decoded && character == kNoCharacter)
            report_.error(line, "nothing decodes to this value");
        if (character == kNoCharacter)
            source_.encode.erase(value);
        else
            source_.encode[value] = character;
    }
}

void SourceChecker::checkMapValues()
{
    for (const auto& [from, to] : source_.mapValues)
        for (const Packed character : {from, to})
            if (character != kNoCharacter && !source_.decode.contains(character))
                report_.error(places_.mapValues.at(from),
                              textOf(character) + " is not in the decode table");
}

} // namespace

void completeSource(CodePageSource& source, const SourcePlaces& places, Reporter& report)
{
    SourceChecker(source, places, report).check();
}

} // namespace vlx::data
