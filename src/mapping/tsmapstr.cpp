// TSMapString: the image of a string under a mapping, by the tables of its code page.
#include "mapping/mapbytes.hpp"
#include "mapping/pairruns.hpp"

TS_TRACE_UNIT("tsmapstr");

namespace {

using vlx::Mapping;

// The digit of a byte, or the byte: one byte of the image, whatever the page makes of it.
char digitByte(const TSObject* object, char source)
{
    const TSCodePageHeader& page = tsCodePage(object);
    const auto byte = static_cast<uint8_t>(source);
    const TSChar16 digit =
        page.charType[byte] & vlx::kDigitType ? vlx::uniDigit(page.toUnicode[byte]) : 0;
    char image[4] = {source};
    if (digit != 0)
        TSCpUnicodeToMb(object, digit, image);
    return image[0];
}

// Single-byte text where a byte becomes a byte.
int32_t mapSingle(const TSLocale& locale, const Mapping& mapping, char* destination, int32_t size,
                  const char* source, int32_t length)
{
    const int32_t count = std::max(std::min(size, length), 0);
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    if (mapping.isWidth()) {
        std::memmove(destination, source, static_cast<std::size_t>(count));
    } else if (mapping.isCase()) {
        const uint8_t* const table = mapping.caseTable(page);
        for (int32_t i = 0; i < count; ++i)
            destination[i] = static_cast<char>(table[static_cast<uint8_t>(source[i])]);
    } else {
        for (int32_t i = 0; i < count; ++i)
            destination[i] = digitByte(locale.codePage, source[i]);
    }
    return count;
}

// Case of single-byte text with the pairs of a language: where none begins a byte becomes a byte.
int32_t mapSinglePairs(const TSLocale& locale, const Mapping& mapping, bool leaps,
                       vlx::Text<vlx::MultiForm> text, vlx::PlainOutput output)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const uint8_t* const table = mapping.caseTable(page);
    const vlx::PairStarts starts(locale.language, mapping.pairs());
    const vlx::MultiMap form{{locale.codePage}};
    vlx::PairImages<vlx::MultiMap> images(form, locale.language, mapping, leaps);
    const auto plain =
        vlx::PlainSet::ofBytes(starts.passAscii() ? locale.pageTraits & vlx::kAsciiBytes : 0);
    const auto unicodeOf = [&page](char byte) {
        return page.toUnicode[static_cast<uint8_t>(byte)];
    };
    do {
        const int32_t run = vlx::beforePair(starts, plain, text.at,
                                            std::min(text.left(), output.room()), unicodeOf);
        output.putRun(table, text.at, run);
        text.at += run;
        if (run > 0)
            images.passMisses();
    } while (form.next(text) && output.put(images.take(text)));
    return output.written();
}

int32_t mapPlain(const TSLocale& locale, const Mapping& mapping, char* destination, int32_t size,
                 const char* source, int32_t length)
{
    const bool usesPairs = mapping.isCase() && mapping.usesPairs(locale);
    if ((locale.flags & vlx::kLocaleSingleByte) && !usesPairs)
        return mapSingle(locale, mapping, destination, size, source, length);
    // Deliberate: in lower case a character that hits alone just behind a miss leaps over bytes.
    const bool leaps = !mapping.isUpper();
    if (usesPairs && (locale.pageTraits & vlx::kAllSingle))
        return mapSinglePairs(locale, mapping, leaps, {source, source + length},
                              vlx::PlainOutput(destination, size));
    return vlx::mapText(vlx::MultiMap{{locale.codePage}}, locale.language, mapping, usesPairs,
                        leaps, {source, source + length}, vlx::PlainOutput(destination, size));
}

} // namespace

int32_t TSMapString(TSLocale* handle, char* destination, int32_t size, const char* source,
                    int32_t length, uint32_t mapping)
{
    TS_TRACE(TSMapString);
    TSLocale* const locale = tsLocale(handle);
    const Mapping asked(mapping);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid mapping %#x", mapping);
    if (asked.isCopy())
        TS_RETURN(TSStrcpy(locale, destination, size, source, length, mapping & TS_OPT_CHAR_COUNT));
    locale->lastError = TS_ERR_NONE;
    if (asked.counted && length > 0)
        length = TSCpCharsToBytes(locale->codePage, source, 0, length);
    length = vlx::mappedLength(source, length);
    if (!asked.counted)
        TS_RETURN(mapPlain(*locale, asked, destination, size, source, length));

    vlx::CountedArea area;
    const int32_t written =
        mapPlain(*locale, asked, area.bytes, vlx::CountedArea::capacityFor(size), source, length);
    TS_RETURN(vlx::withPlainForm(*locale, [&](const auto& form) {
        return area.handOver(form, 0, written, destination, size);
    }));
}
