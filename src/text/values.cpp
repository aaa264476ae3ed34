#include "text/values.hpp"

#include <algorithm>
#include <bit>
#include <cstring>

#include "chars/codepage.hpp"
#include "chars/runs.hpp"
#include "locale/content.hpp"
#include "locale/itemwalk.hpp"
#include "strings/whole.hpp"

namespace vlx {

namespace {

// The units of a text, at most `limit`.
std::int32_t boundedLength(const TSChar16* text, std::int32_t limit)
{
    std::int32_t length = 0;
    while (length < limit && text[length])
        ++length;
    return length;
}

ItemWalk walkOf(const TSLocale& locale, const ItemText& text)
{
    return {text, locale, (locale.flags & kLocaleStateful) != 0, nullptr};
}

// The bytes of characters, with no call for those that most names are made of.
class Encoder {
  public:
    explicit Encoder(const TSObject* object)
        : object_(object), page_(tsCodePage(object).unicodePages[0]),
          bytes_(page_.kind == kPageByte && object->id != kUtf8CodePage
                     ? object->sections[2] + page_.offset3
                     : nullptr)
    {
    }

    // Writes a character, at most 4 bytes, and gives their number.
    std::int32_t put(TSChar16 unicode, char* output) const
    {
        const auto low = static_cast<std::uint8_t>(unicode);
        if (!bytes_ || unicode > 0xFF || low < page_.low || low > page_.high)
            return TSCpUnicodeToMb(object_, unicode, output);
        *output = static_cast<char>(bytes_[low & page_.mask]);
        return 1;
    }

  private:
    const TSObject* const object_;
    const TSUnicodePage& page_;
    const std::uint8_t* const bytes_;
};

// The bytes of a text of an object.
std::int32_t putStored(const TSLocale& locale, const ItemText& text, char* buffer,
                       std::int32_t size)
{
    const Encoder encoder(locale.codePage);
    std::int32_t length = 0;
    for (std::int32_t i = 0; text.unit(i); ++i) {
        char bytes[4];
        const std::int32_t count = encoder.put(text.unit(i), bytes);
        if (count >= size - length)
            break;
        buffer[length++] = bytes[0];
        for (std::int32_t byte = 1; byte < count; ++byte)
            buffer[length++] = bytes[byte];
    }
    return length;
}

// The length of a text of an object, cut to `size`, if it stands at a place; else 0.
std::int32_t storedLengthAt(const Encoder& encoder, const ItemText& text, const char* at,
                            const char* end, std::int32_t size)
{
    std::int32_t length = 0;
    for (std::int32_t i = 0; text.unit(i); ++i) {
        char bytes[4];
        const std::int32_t count = encoder.put(text.unit(i), bytes);
        if (count >= size - length)
            break;
        if (count > end - at - length)
            return 0;
        for (std::int32_t byte = 0; byte < count; ++byte)
            if (at[length++] != bytes[byte])
                return 0;
    }
    return length;
}

// Whether a block of units lies between the start of a name and the end of the language's content,
// which reaches as far as its tables.
bool holdsBlock(const TSLocale& locale, const ItemText& name)
{
    const std::uint8_t* const content = locale.language->sections[0];
    const auto& header = *reinterpret_cast<const TSLanguageContent*>(content);
    const int end = std::max<int>(header.upperPairs, header.lowerPairs);
    const auto begin = static_cast<const std::uint8_t*>(name.at) - content;
    return begin + kBlock * static_cast<int>(sizeof(TSChar16)) <= end;
}

} // namespace

std::uint8_t byteSeparator(const TSLocale& locale, int item, bool ofObject)
{
    const ItemText text = itemText(locale, item, !ofObject);
    // Deliberate: there is room for one byte, so that a longer character is none at all.
    if (text.kind == TS_TEXT_CODEPAGE) {
        const auto byte = static_cast<std::uint8_t>(*text.bytes());
        const bool isWhole =
            (locale.flags & kLocaleSingleByte) || tsCodePage(locale.codePage).charLength[byte] == 1;
        return isWhole ? byte : 0;
    }
    char bytes[4];
    if (text.unit(0) == 0 || TSCpUnicodeToMb(locale.codePage, text.unit(0), bytes) != 1)
        return 0;
    return static_cast<std::uint8_t>(bytes[0]);
}

ValueText<char> plainItem(const TSLocale& locale, int item, bool ofObject, char* buffer,
                          std::int32_t size)
{
    const ItemText text = itemText(locale, item, !ofObject);
    if (text.kind == TS_TEXT_CODEPAGE) {
        const std::int32_t length = boundedLength(text.bytes(), size - 1);
        return {text.bytes(), wholeBytes(locale, text.bytes(), length)};
    }
    return {buffer, putStored(locale, text, buffer, size)};
}

std::int32_t putPlainName(const TSLocale& locale, int item, char* buffer, std::int32_t size)
{
    const ItemText text = nameText(locale, item);
    if (std::endian::native == std::endian::little && size > kBlock && holdsBlock(locale, text)) {
        const auto* const units = static_cast<const TSChar16*>(text.at);
        const int length = unitsBeforeZero(units);
        const PlainSet plain = PlainSet::ofUnits(locale.pageTraits);
        if (length < kBlock && !plain.isEmpty() && plainAtStart(units, plain) >= length) {
            narrowStart(units, buffer, length);
            return length;
        }
    }
    return putStored(locale, text, buffer, size);
}

NameMatch matchPlainName(const TSLocale& locale, int firstItem, int items, const char* at,
                         const char* end, std::int32_t size)
{
    const Encoder encoder(locale.codePage);
    NameMatch match;
    for (int i = 0; i < items; ++i) {
        const ItemText text = nameText(locale, firstItem + i);
        const std::int32_t length = storedLengthAt(encoder, text, at, end, size);
        if (length > match.length)
            match = {i, length};
    }
    return match;
}

ValueText<char> shiftItem(const TSLocale& locale, int item, bool ofObject, std::int32_t state,
                          char* buffer, std::int32_t size)
{
    const ItemWalk walk = walkOf(locale, itemText(locale, item, !ofObject));
    return {buffer, writeItemBytes(locale, walk, buffer, state != 0, size, false) - 1};
}

ValueText<TSChar16> unicodeItem(const TSLocale& locale, int item, bool ofObject, TSChar16* buffer,
                                std::int32_t size)
{
    const ItemText text = itemTextU(locale, item, !ofObject);
    if (!text.stored && !text.single) {
        const auto* const units = static_cast<const TSChar16*>(text.at);
        return {units, boundedLength(units, size - 1)};
    }
    const auto unitOf = [](const ItemChar& character) { return character.unicode; };
    return {buffer, writeElements(walkOf(locale, text), buffer, size, unitOf) - 1};
}

ValueText<TSChar32> packedItem(const TSLocale& locale, int item, bool ofObject, TSChar32* buffer,
                               std::int32_t size)
{
    const ItemWalk walk = walkOf(locale, itemText(locale, item, !ofObject));
    return {buffer, writeElements(walk, buffer, size, [&](const ItemChar& character) {
                        return packedValue(locale.codePage, character);
                    }) - 1};
}

} // namespace vlx
