#include "content_text.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vlx::data {

namespace {

// The code point of a well-formed UTF-8 sequence at `at`, which moves behind it; -1 for any other.
std::int32_t codePointAt(std::string_view text, std::size_t& at)
{
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned lead = byte(at);
    const std::size_t length = lead < 0x80                    ? 1
                               : lead >= 0xC2 && lead <= 0xDF ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length == 0 || length > text.size() - at)
        return -1;
    auto value = static_cast<std::int32_t>(length == 1 ? lead : lead & (0x7FU >> length));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return -1;
        value = value << 6 | (byte(at + i) & 0x3F);
    }
    static constexpr std::array<std::int32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    if (value < kLeast[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return -1;
    at += length;
    return value;
}

std::string hexOf(std::uint32_t value)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (int shift = value > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4)
        text += kDigits[value >> shift & 0xF];
    return text;
}

bool isSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

// What a reader of a source would not see, or take for an ordinary blank.
bool isInvisible(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit <= 0xA0) || unit == 0xAD || unit == 0x61C ||
           (unit >= 0x2000 && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202F) ||
           (unit >= 0x205F && unit <= 0x206F) || unit == 0x3000 || unit == 0xFEFF ||
           isSurrogate(unit);
}

std::size_t bytesOf(char16_t unit, std::uint16_t codePage)
{
    if (unit < 0x80 || codePage == 874 || (codePage >= 1250 && codePage <= 1258))
        return 1;
    if (codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950 || unit < 0x800)
        return 2;
    return 3;
}

} // namespace

std::optional<std::u16string> unitsOf(std::string_view utf8, std::string& complaint)
{
    std::u16string units;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::int32_t value = codePointAt(utf8, at);
        if (value > 0 && value <= 0xFFFF) {
            units += static_cast<char16_t>(value);
            continue;
        }
        complaint = value < 0 ? "text that is not UTF-8"
                              : "character U+" + hexOf(static_cast<std::uint32_t>(value)) +
                                    (value == 0 ? ", which would end the text"
                                                : ", but objects end at U+FFFF");
        return std::nullopt;
    }
    return units;
}

std::string utf8Of(std::u16string_view units)
{
    std::string text;
    for (const char16_t unit : units) {
        const unsigned value = isSurrogate(unit) ? 0xFFFD : unit;
        if (value < 0x80) {
            text += static_cast<char>(value);
            continue;
        }
        if (value >= 0x800)
            text += static_cast<char>(0xE0 | value >> 12);
        text += static_cast<char>(value < 0x800 ? 0xC0 | value >> 6 : 0x80 | (value >> 6 & 0x3F));
        text += static_cast<char>(0x80 | (value & 0x3F));
    }
    return text;
}

std::string quoted(std::u16string_view units)
{
    std::string text = "\"";
    for (const char16_t unit : units) {
        if (isInvisible(unit))
            text += "\\u" + hexOf(unit);
        else if (unit == '"' || unit == '\\')
            text += std::string("\\") + static_cast<char>(unit);
        else
            text += utf8Of({&unit, 1});
    }
    return text + "\"";
}

std::string plainText(std::u16string_view text)
{
    for (const char16_t unit : text) {
        if (isSurrogate(unit))
            return "surrogate U+" + hexOf(unit);
        if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0))
            return "control character U+" + hexOf(unit);
    }
    return {};
}

std::string filledText(std::u16string_view text)
{
    return text.empty() ? "empty text" : plainText(text);
}

TextRule shortText(std::uint16_t codePage)
{
    return [codePage](std::u16string_view text) {
        std::size_t bytes = 0;
        for (const char16_t unit : text)
            bytes += bytesOf(unit, codePage);
        return bytes <= kShortText ? std::string()
                                   : "text of " + std::to_string(bytes) + " bytes, above " +
                                         std::to_string(kShortText);
    };
}

TextRule both(TextRule first, TextRule second)
{
    return [first = std::move(first), second = std::move(second)](std::u16string_view text) {
        std::string complaint = first(text);
        return complaint.empty() ? second(text) : complaint;
    };
}

std::uint16_t TextBlock::putText(std::u16string_view text)
{
    const std::uint16_t offset = end();
    for (const char16_t unit : text)
        append(Le16(unit));
    append(Le16(0));
    return offset;
}

} // namespace vlx::data
