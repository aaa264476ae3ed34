// The primitives of the code page object. Their tables were checked when the object was loaded: a
// trie ends within a character's length, and no offset or index leaves its section.
#include "chars/codepage.hpp"

namespace {

using vlx::kNoUnicode;
using vlx::kUtf8CodePage;

std::uint8_t byteAt(const char* string, int index)
{
    return static_cast<std::uint8_t>(string[index]);
}

TSChar32 pack(const char* string, int length)
{
    TSChar32 value = 0;
    for (int i = 0; i < length; ++i)
        value = value << 8 | byteAt(string, i);
    return value;
}

// The bytes of a packed value, with room for a walk to its end.
struct Unpacked {
    explicit Unpacked(TSChar32 value) { TSCpPutWide(bytes, value); }
    char bytes[4] = {};
};

// Deliberate: no test of the continuation bytes or of the shortest form.
TSChar16 utf8ToUnicode(const char* string)
{
    const unsigned lead = byteAt(string, 0);
    const unsigned second = byteAt(string, 1) & 0x3Fu;
    if (lead >= 0xE0)
        return static_cast<TSChar16>((lead & 0x0F) << 12 | second << 6 |
                                     (byteAt(string, 2) & 0x3Fu));
    return static_cast<TSChar16>((lead & 0x1F) << 6 | second);
}

TSChar32 unicodeToUtf8(TSChar16 unicode)
{
    const TSChar32 value = unicode;
    if (value <= 0x7F)
        return value;
    if (value <= 0x7FF)
        return (value & 0x7C0) * 4 | (value & 0x3F) | 0xC080;
    return (value & 0xF000) * 16 | (value & 0xFC0) * 4 | (value & 0x3F) | 0xE08080;
}

TSChar16 walkToUnicode(const TSObject* object, const char* string)
{
    const std::uint8_t* const section = object->sections[1];
    if (!section) // a single-byte page: no value above 255 is a character
        return kNoUnicode;
    const auto* const nodes = reinterpret_cast<const TSUnicodeNode*>(section);
    const TSUnicodeNode* node = nodes;
    for (std::uint8_t byte = byteAt(string, 0);; byte = byteAt(++string, 0)) {
        if (byte < node->low || byte > node->high)
            return kNoUnicode;
        const unsigned index = node->base + (byte & node->mask);
        if (node->isLeaf) {
            const auto* const values =
                reinterpret_cast<const vlx::Le16*>(section + tsCodePage(object).leafTableOffset);
            return values[index];
        }
        node = nodes + index;
    }
}

// The packed value that a page's arrays hold at `index`.
TSChar32 pageValue(const TSObject* object, const TSUnicodePage& page, unsigned index)
{
    const auto byteOf = [index](const std::uint8_t* section, unsigned offset) {
        return TSChar32{section[offset + index]};
    };
    const auto wordOf = [index](const std::uint8_t* section, unsigned offset) {
        return TSChar32{reinterpret_cast<const vlx::Le16*>(section + offset)[index]};
    };
    const std::uint8_t* const low = object->sections[2];
    const std::uint8_t* const high = object->sections[3];
    switch (page.kind) {
    case vlx::kPageByte:
        return byteOf(low, page.offset3);
    case vlx::kPageWord:
        return wordOf(low, page.offset3);
    case vlx::kPageWordByte:
        return byteOf(high, page.offset4) << 16 | wordOf(low, page.offset3);
    case vlx::kPageWordWord:
        return wordOf(high, page.offset4) << 16 | wordOf(low, page.offset3);
    default: // vlx::kPageByteByte, the last kind that passes the check at load
        return byteOf(high, page.offset4) << 8 | byteOf(low, page.offset3);
    }
}

const TSTypeRecord* walkToRecord(const TSObject* object, const char* string)
{
    static constexpr TSTypeRecord kNoRecord{std::uint32_t{0}, std::uint32_t{0}};
    const TSCodePageHeader& page = tsCodePage(object);
    if (page.typeTrieOffset == 0) // a single-byte page: no value above 255 is a character
        return &kNoRecord;
    const std::uint8_t* const section = object->sections[0];
    const auto* const nodes = reinterpret_cast<const TSTypeNode*>(section + page.typeTrieOffset);
    const TSTypeNode* node = nodes;
    while (!node->isLeaf)
        node = nodes + node->base + (byteAt(string++, 0) & node->mask);
    const auto* const records =
        reinterpret_cast<const TSTypeRecord*>(section + page.typeRecordsOffset);
    return records + node->base + (byteAt(string, 0) & node->mask);
}

// Maps a character of `length` bytes and returns the number of bytes written.
std::int32_t mapChar(const TSObject* object, const char* string, int length, char* output,
                     std::uint32_t mapping)
{
    const TSTypeRecord* const record = TSCpCharTypeRecord(object, string);
    if (record->type & mapping)
        return TSCpPutWide(output, pack(string, length) + record->delta);
    for (int i = 0; i < length; ++i)
        output[i] = string[i];
    return length;
}

} // namespace

TSChar32 TSCpGetWide(const TSObject* object, const char* string)
{
    return pack(string, tsCodePage(object).charLength[byteAt(string, 0)]);
}

TSChar32 TSCpGetWideEx(const TSObject* object, const char* string, std::int32_t state)
{
    return pack(string, state ? tsCodePage(object).maxCharBytes : 1);
}

std::int32_t TSCpPutWide(char* output, TSChar32 value)
{
    // Deliberate: a zero byte inside a value is dropped; packed values hold none.
    char* at = output;
    if (value > 0xFFFFFF)
        *at++ = static_cast<char>(value >> 24);
    if (value & 0xFF0000)
        *at++ = static_cast<char>(value >> 16);
    if (value & 0xFF00)
        *at++ = static_cast<char>(value >> 8);
    *at++ = static_cast<char>(value);
    return static_cast<std::int32_t>(at - output);
}

std::int32_t TSCpCharsToBytes(const TSObject* object, const char* string, std::int32_t state,
                              std::int32_t count)
{
    return TSCpCharsToBytesWithin(object, string, state, count, INT32_MAX);
}

std::int32_t TSCpCharsToBytesWithin(const TSObject* object, const char* string, std::int32_t state,
                                    std::int32_t count, std::int32_t limit)
{
    const TSCodePageHeader& page = tsCodePage(object);
    const bool stateful = (page.cpFlags & vlx::kStateful) != 0;
    std::int32_t at = 0;
    const auto passShift = [&] {
        if (!stateful || at >= limit)
            return;
        const std::uint8_t byte = byteAt(string, at);
        if (byte == page.shiftIn)
            state = 1;
        else if (byte == page.shiftOut)
            state = 0;
        else
            return;
        ++at;
    };
    for (; count > 0 && at < limit; --count) {
        passShift();
        if (stateful)
            at += state ? page.maxCharBytes : 1;
        else
            at += page.charLength[byteAt(string, at)];
        passShift();
    }
    return at + count;
}

TSChar16 TSCpMbToUnicode(const TSObject* object, const char* string)
{
    return object->id == kUtf8CodePage ? utf8ToUnicode(string) : walkToUnicode(object, string);
}

TSChar16 TSCpWideToUnicode(const TSObject* object, TSChar32 value)
{
    return TSCpMbToUnicode(object, Unpacked(value).bytes);
}

std::int32_t TSCpUnicodeToMb(const TSObject* object, TSChar16 value, char* output)
{
    if (object->id == kUtf8CodePage)
        return TSCpPutWide(output, unicodeToUtf8(value));
    const TSUnicodePage& page = tsCodePage(object).unicodePages[value >> 8];
    const auto low = static_cast<std::uint8_t>(value);
    if (low < page.low || low > page.high) {
        *output = static_cast<char>(tsCodePage(object).substChar);
        return 1;
    }
    return TSCpPutWide(output, pageValue(object, page, low & page.mask));
}

TSChar32 TSCpUnicodeToWide(const TSObject* object, TSChar16 value)
{
    if (object->id == kUtf8CodePage)
        return unicodeToUtf8(value);
    const TSUnicodePage& page = tsCodePage(object).unicodePages[value >> 8];
    const auto low = static_cast<std::uint8_t>(value);
    if (low < page.low || low > page.high)
        return tsCodePage(object).substChar;
    return pageValue(object, page, low & page.mask);
}

const TSTypeRecord* TSCpCharTypeRecord(const TSObject* object, const char* string)
{
    return walkToRecord(object, string);
}

const TSTypeRecord* TSCpCharTypeRecordW(const TSObject* object, TSChar32 value)
{
    return walkToRecord(object, Unpacked(value).bytes);
}

void TSCpMapChar(const TSObject* object, const char* string, char* output, std::uint32_t mapping)
{
    mapChar(object, string, tsCodePage(object).charLength[byteAt(string, 0)], output, mapping);
}

TSChar32 TSCpMapCharW(const TSObject* object, TSChar32 value, std::uint32_t mapping)
{
    const TSTypeRecord* const record = TSCpCharTypeRecordW(object, value);
    return record->type & mapping ? value + record->delta : value;
}

std::int32_t TSCpMapCharEx(const TSObject* object, const char* string, char* output,
                           std::uint32_t mapping)
{
    return mapChar(object, string, tsCodePage(object).maxCharBytes, output, mapping);
}
