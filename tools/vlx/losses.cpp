#include "losses.hpp"

#include <cstring>

namespace vlx::cli {

namespace {

constexpr TSChar16 kReplacement = 0xFFFD;
constexpr std::size_t kKnown = 1 << 16;

// The bytes of a Unicode value, without a shift byte in front of them.
std::string formOf(TSLocale* locale, TSChar16 value)
{
    char bytes[8];
    const std::int32_t size = TSUnicodeToString(locale, bytes, sizeof bytes, &value, 1, 0);
    return {bytes, static_cast<std::size_t>(size)};
}

TSChar16 unicodeOfPacked(TSLocale* locale, TSChar32 packed)
{
    TSChar16 value = kReplacement;
    TSStringToUnicodeW(&value, 1, locale, &packed, 1, 0);
    return value;
}

// The byte that stands for a value that no code page has; nothing where every value has a form.
std::optional<std::uint8_t> substituteOf(TSLocale* locale)
{
    constexpr TSChar16 noncharacter = 0xFFFE;
    const std::string form = formOf(locale, noncharacter);
    if (form.size() != 1)
        return std::nullopt;
    return static_cast<std::uint8_t>(form[0]);
}

TSChar32 packedOf(const Character& character)
{
    TSChar32 packed = 0;
    for (int i = 0; i < character.size; ++i)
        packed = packed << 8 | static_cast<std::uint8_t>(character.bytes[i]);
    return packed;
}

std::string_view textOf(const Character& character)
{
    return {character.bytes, static_cast<std::size_t>(character.size)};
}

} // namespace

LossFinder::LossFinder(const CodePage& source, const CodePage& target)
    : source_(source.locale.get()), target_(target.locale.get()),
      sourceIsUtf8_(CharacterWalk(source_).isUtf8()), substitute_(substituteOf(target_)),
      unknown_(formOf(target_, kReplacement)), known_(kKnown)
{
}

bool LossFinder::suspects(std::string_view output) const
{
    if (output.empty())
        return false;
    if (substitute_ && std::memchr(output.data(), *substitute_, output.size()))
        return true;
    return (unknown_.size() > 1 || !substitute_) &&
           memmem(output.data(), output.size(), unknown_.data(), unknown_.size());
}

TSChar16 LossFinder::unicode(const Character& character) const
{
    // A byte that looks like a shift byte and is read as a character would be passed over.
    if (character.size == 1)
        return unicodeOfPacked(source_, packedOf(character));
    TSChar16 value = kReplacement;
    TSStringToUnicodeEx(&value, 1, source_, character.bytes, character.state, character.size, 0);
    return value;
}

// UTF-8 is read by a rule that takes any bytes: a character is defined if they are its form.
bool LossFinder::isUndefined(const Character& character, TSChar16 value) const
{
    if (value != kReplacement && !sourceIsUtf8_)
        return false;
    return formOf(source_, value) != textOf(character);
}

Loss LossFinder::judge(const Character& character) const
{
    const TSChar16 value = unicode(character);
    if (isUndefined(character, value))
        return Loss::kUndefined;
    const std::string form = formOf(target_, value);
    const bool substituted = substitute_ && form.size() == 1 &&
                             static_cast<std::uint8_t>(form[0]) == *substitute_ &&
                             unicodeOfPacked(target_, *substitute_) != value;
    return substituted ? Loss::kSubstituted : Loss::kNone;
}

Loss LossFinder::lossOf(const Character& character)
{
    const TSChar32 packed = packedOf(character);
    const std::uint64_t key = std::uint64_t{packed} << 8 | static_cast<unsigned>(character.size);
    std::uint64_t& known = known_[(packed ^ packed >> 16) % kKnown];
    if (known >> 8 != key)
        known = key << 8 | static_cast<std::uint8_t>(judge(character));
    return static_cast<Loss>(known & 0xFF);
}

void LossFinder::find(const CharacterWalk& walk, const char* begin, const char* end, int state,
                      const Receiver& receive)
{
    const char* at = begin;
    for (;;) {
        const Character character = walk.next(at, end, state);
        if (character.size == 0)
            return;
        if (const Loss loss = lossOf(character); loss != Loss::kNone)
            receive(loss, character);
    }
}

} // namespace vlx::cli
