// The primitives of the code page object. Their tables were checked when the object was loaded: no
// offset or index leaves its section, and a trie that is used in place ends within a character's
// length.
#include "chars/codepage.hpp"

#include <algorithm>

#include "chars/tables.hpp"

namespace {

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

const TSTypeRecord* walkToRecord(const TSObject* object, const char* string)
{
    static constexpr TSTypeRecord kNoRecord{std::uint32_t{0}, std::uint32_t{0}};
    const TSCodePageHeader& page = tsCodePage(object);
    if (page.typeTrieOffset == 0) // a single-byte page: no value above 255 is a character
        return &kNoRecord;
    const std::uint8_t* const section = object->sections[0];
    const auto* const nodes = reinterpret_cast<const TSTypeNode*>(section + page.typeTrieOffset);
    const TSTypeNode* node = nodes;
    // A trie that is used in place ends by itself.
    int left = object->flags & TS_OBJ_SECTION1_HEAP ? vlx::walkLength(page, byteAt(string, 0))
                                                    : vlx::kMaxCharBytes;
    while (!node->isLeaf) {
        if (--left == 0)
            return &kNoRecord;
        node = nodes + node->base + (byteAt(string++, 0) & node->mask);
    }
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
    return static_cast<std::int32_t>(std::min<std::int64_t>(std::int64_t{at} + count, INT32_MAX));
}

TSChar16 TSCpMbToUnicode(const TSObject* object, const char* string)
{
    return object->id == kUtf8CodePage ? vlx::utf8ToUnicode(string)
                                       : vlx::UnicodeTrie(object).value(string);
}

TSChar16 TSCpWideToUnicode(const TSObject* object, TSChar32 value)
{
    return TSCpMbToUnicode(object, Unpacked(value).bytes);
}

std::int32_t TSCpUnicodeToMb(const TSObject* object, TSChar16 value, char* output)
{
    return TSCpPutWide(output, TSCpUnicodeToWide(object, value));
}

TSChar32 TSCpUnicodeToWide(const TSObject* object, TSChar16 value)
{
    return object->id == kUtf8CodePage ? vlx::unicodeToUtf8(value)
                                       : vlx::UnicodePages(object).packed(value);
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
