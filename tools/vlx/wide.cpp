#include "wide.hpp"

#include "terminal.hpp"

namespace vlx::cli {

namespace {

constexpr TSChar16 kBroken = 0xFFFD;

// The bytes of a character by its first byte; 0 for none.
std::size_t lengthOf(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

} // namespace

Units unitsOf(std::string_view utf8)
{
    Units units;
    for (std::size_t at = 0; at < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[at]);
        const std::size_t length = lengthOf(lead);
        std::uint32_t value = length < 2 ? lead : lead & (0x7Fu >> length);
        bool isGood = length != 0 && at + length <= utf8.size();
        for (std::size_t i = 1; isGood && i < length; ++i) {
            const auto byte = static_cast<unsigned char>(utf8[at + i]);
            isGood = (byte & 0xC0) == 0x80;
            value = value << 6 | (byte & 0x3Fu);
        }
        units += isGood && value <= 0xFFFF ? static_cast<TSChar16>(value) : kBroken;
        at += isGood ? length : 1;
    }
    return units;
}

std::string utf8Of(const TSChar16* units, std::int32_t count)
{
    std::string text;
    for (std::int32_t i = 0; i < count; ++i)
        text += utf8(units[i]);
    return text;
}

} // namespace vlx::cli
