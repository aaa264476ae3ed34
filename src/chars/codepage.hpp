// The code page object and its primitives: reading, writing, measuring, classifying and converting
// one character. Nothing here allocates, locks or fails; all work straight on the sections.
//
// A packed value holds a character's bytes, the first one most significant. A state is 0 in the
// single-byte state, 1 in the multi-byte state, where every character has `maxCharBytes` bytes.
#pragma once

#include <algorithm>
#include <cstdint>

#include "chars/cpfile.hpp"
#include "frame/objman.hpp"
#include "tessera.h"

inline const TSCodePageHeader& tsCodePage(const TSObject* object)
{
    return *reinterpret_cast<const TSCodePageHeader*>(object->sections[0]);
}

// The packed value of the character at `string`, its length by `charLength`.
TSChar32 TSCpGetWide(const TSObject* object, const char* string);

// The packed value of `maxCharBytes` bytes in the multi-byte state, else of one byte.
TSChar32 TSCpGetWideEx(const TSObject* object, const char* string, std::int32_t state);

// Writes a packed value, at most 4 bytes, and returns their number.
std::int32_t TSCpPutWide(char* output, TSChar32 value);

// The number of bytes that `count` characters span. There is no end test.
std::int32_t TSCpCharsToBytes(const TSObject* object, const char* string, std::int32_t state,
                              std::int32_t count);

// The Unicode value of a character longer than one byte; 0xFFFD where it has none.
TSChar16 TSCpMbToUnicode(const TSObject* object, const char* string);

// The Unicode value of a packed value above 255.
TSChar16 TSCpWideToUnicode(const TSObject* object, TSChar32 value);

// Writes the character of a Unicode value, at most 4 bytes, and returns their number. A value that
// the code page cannot represent gives `substChar`.
std::int32_t TSCpUnicodeToMb(const TSObject* object, TSChar16 value, char* output);

// The packed value of the character of a Unicode value.
TSChar32 TSCpUnicodeToWide(const TSObject* object, TSChar16 value);

// The type record of a character longer than one byte.
const TSTypeRecord* TSCpCharTypeRecord(const TSObject* object, const char* string);
const TSTypeRecord* TSCpCharTypeRecordW(const TSObject* object, TSChar32 value);

// Maps the case of a character longer than one byte by its type record, if the record's type has
// one of the bits of `mapping`. The first writes at most 4 bytes to `output`.
void TSCpMapChar(const TSObject* object, const char* string, char* output, std::uint32_t mapping);
TSChar32 TSCpMapCharW(const TSObject* object, TSChar32 value, std::uint32_t mapping);

// TSCpMapChar of a character of the multi-byte state; returns the number of bytes written.
std::int32_t TSCpMapCharEx(const TSObject* object, const char* string, char* output,
                           std::uint32_t mapping);

// TSCpCharsToBytes of a string with a known end: nothing is read at or behind `limit` bytes, and
// each character that is missing there counts as one byte. INT32_MAX stands for more than that.
std::int32_t TSCpCharsToBytesWithin(const TSObject* object, const char* string, std::int32_t state,
                                    std::int32_t count, std::int32_t limit);

namespace vlx {

inline constexpr int kMaxCharBytes = 4;

// How many bytes a walk through a trie may use that begins with `lead`. A lead of a single byte is
// walked only for packed values, which have four bytes of room. Tries in sections of the heap did
// not pass the check at load, or need not have: their walks count.
inline int walkLength(const TSCodePageHeader& page, std::uint8_t lead)
{
    const int plain = page.charLength[lead] >= 2 ? page.charLength[lead] : kMaxCharBytes;
    return page.cpFlags & kStateful ? std::min<int>(plain, page.maxCharBytes) : plain;
}

} // namespace vlx
