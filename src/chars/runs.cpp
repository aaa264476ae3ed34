// What loops may rely on in the tables of a code page.
#include "chars/runs.hpp"

#include <algorithm>
#include <array>

namespace vlx {
namespace {

constexpr std::size_t kValues = 0x100;
constexpr std::size_t kAsciiEnd = 0x80;
constexpr std::size_t kLatinBegin = 0xA0;

template <class Unit>
constexpr std::array<Unit, kValues> sameValues()
{
    std::array<Unit, kValues> values{};
    for (std::size_t i = 0; i < kValues; ++i)
        values[i] = static_cast<std::uint8_t>(i);
    return values;
}

constexpr std::array<std::uint8_t, kValues> allOnes()
{
    std::array<std::uint8_t, kValues> values{};
    for (std::uint8_t& value : values)
        value = 1;
    return values;
}

constexpr std::array<std::uint8_t, kValues> asciiUpperCase()
{
    std::array<std::uint8_t, kValues> values = sameValues<std::uint8_t>();
    for (std::size_t letter = 'a'; letter <= 'z'; ++letter)
        values[letter] = static_cast<std::uint8_t>(letter - 'a' + 'A');
    return values;
}

constexpr auto kAsciiUpper = asciiUpperCase();
constexpr auto kSameBytes = sameValues<std::uint8_t>();
constexpr auto kSameWords = sameValues<Le16>();
constexpr auto kOnes = allOnes();

template <class Unit>
bool areEqual(const Unit* table, const std::array<Unit, kValues>& expected, std::size_t begin,
              std::size_t end)
{
    return std::memcmp(table + begin, expected.data() + begin, (end - begin) * sizeof(Unit)) == 0;
}

// Whether the page that Unicode values below 0x100 have keeps all those of a range.
bool keepsUnits(const TSObject* object, std::size_t begin, std::size_t end)
{
    const TSUnicodePage& page = tsCodePage(object).unicodePages[0];
    if (page.low != 0 || page.mask != 0xFF || page.high < end - 1 || page.kind > kPageWord)
        return false;
    const std::uint8_t* const values = object->sections[2] + page.offset3;
    return page.kind == kPageByte
               ? areEqual(values, kSameBytes, begin, end)
               : areEqual(reinterpret_cast<const Le16*>(values), kSameWords, begin, end);
}

bool keepsBytes(const TSCodePageHeader& page, std::size_t begin, std::size_t end)
{
    return areEqual(page.charLength, kOnes, begin, end) &&
           areEqual(page.toUnicode, kSameWords, begin, end);
}

bool hasUtf8Lengths(const TSCodePageHeader& page)
{
    const std::uint8_t* const lengths = page.charLength;
    return std::all_of(lengths, lengths + 0xE0, [](auto length) { return length <= 2; }) &&
           std::all_of(lengths + 0xE0, lengths + kValues, [](auto length) { return length != 2; });
}

} // namespace

std::uint8_t pageTraitsOf(const TSObject* object)
{
    const TSCodePageHeader& page = tsCodePage(object);
    const bool isUtf8 = object->id == kUtf8CodePage; // by rule, whatever its pages hold
    unsigned traits = 0;
    const auto add = [&traits](unsigned trait, bool has) { traits |= has ? trait : 0; };
    add(kAsciiBytes, keepsBytes(page, 0, kAsciiEnd));
    add(kLatinBytes, kBlocksKnowLatin && keepsBytes(page, kLatinBegin, kValues));
    add(kAsciiUnits, isUtf8 || keepsUnits(object, 0, kAsciiEnd));
    add(kLatinUnits, kBlocksKnowLatin && !isUtf8 && keepsUnits(object, kLatinBegin, kValues));
    add(kAllSingle, areEqual(page.charLength, kOnes, 0, kValues));
    add(kAsciiCase, areEqual(page.toUpper, kAsciiUpper, 0, kAsciiEnd));
    add(kUtf8Lengths, isUtf8 && hasUtf8Lengths(page));
    return static_cast<std::uint8_t>(traits);
}

} // namespace vlx
