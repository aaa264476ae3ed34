// Which characters of a code page are plain.
#include "chars/runs.hpp"

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

constexpr auto kSameBytes = sameValues<std::uint8_t>();
constexpr auto kSameWords = sameValues<Le16>();
constexpr auto kOnes = allOnes();

template <class Unit>
bool areEqual(const Unit* table, const std::array<Unit, kValues>& expected, std::size_t begin,
              std::size_t end)
{
    return std::memcmp(table + begin, expected.data() + begin, (end - begin) * sizeof(Unit)) == 0;
}

// The plain characters, where `areSame` tells of a range of values whether all of them are.
template <class AreSame>
PlainSet plainSet(const AreSame& areSame)
{
    if (!areSame(std::size_t{0}, kAsciiEnd))
        return PlainSet::none();
    return kBlocksKnowLatin && areSame(kLatinBegin, kValues) ? PlainSet::latin()
                                                             : PlainSet::ascii();
}

} // namespace

PlainSet plainBytes(const TSCodePageHeader& page)
{
    return plainSet([&](std::size_t begin, std::size_t end) {
        return areEqual(page.charLength, kOnes, begin, end) &&
               areEqual(page.toUnicode, kSameWords, begin, end);
    });
}

PlainSet plainUnits(const TSObject* object)
{
    if (object->id == kUtf8CodePage)
        return PlainSet::ascii();
    const TSUnicodePage& page = tsCodePage(object).unicodePages[0];
    if (page.low != 0 || page.mask != 0xFF || page.kind > kPageWord)
        return PlainSet::none();
    return plainSet([&](std::size_t begin, std::size_t end) {
        if (page.high < end - 1)
            return false;
        const std::uint8_t* const values = object->sections[2] + page.offset3;
        return page.kind == kPageByte
                   ? areEqual(values, kSameBytes, begin, end)
                   : areEqual(reinterpret_cast<const Le16*>(values), kSameWords, begin, end);
    });
}

bool allAreSingle(const TSCodePageHeader& page)
{
    return areEqual(page.charLength, kOnes, 0, kValues);
}

} // namespace vlx
