// The lookups of string mapping. The tables of the objects were checked when those were loaded: no
// offset leads outside a section.
#include "mapping/unimap.hpp"

#include "chars/codepage.hpp"
#include "frame/globals.hpp"
#include "locale/content.hpp"
#include "locale/locale.hpp"

namespace {

TSChar16 mapped(TSLocale* handle, TSChar16 image)
{
    TSLocale& locale = *tsLocale(handle);
    if (locale.lastError != TS_ERR_NONE) // a shared record is written only when it changes
        locale.lastError = TS_ERR_NONE;
    return image;
}

const TSMapPair* mapPairs(const TSObject* object)
{
    return reinterpret_cast<const TSMapPair*>(object->sections[0] +
                                              tsCodePage(object).mapPairsOffset);
}

// The pair table of a language.
struct LanguagePairs {
    LanguagePairs(const TSObject* language, vlx::PairTable table)
    {
        const std::uint8_t* const section = language->sections[0];
        const auto& content = *reinterpret_cast<const TSLanguageContent*>(section);
        const bool upper = table == vlx::PairTable::kUpper;
        count = upper ? content.upperPairCount : content.lowerPairCount;
        entries = reinterpret_cast<const TSLanguagePair*>(
            section + (upper ? content.upperPairs : content.lowerPairs));
    }

    unsigned count;
    const TSLanguagePair* entries;
};

} // namespace

TSChar16 TSUniToLower(TSLocale* handle, TSChar16 value)
{
    return mapped(handle, vlx::uniToLower(value));
}

TSChar16 TSUniToUpper(TSLocale* handle, TSChar16 value)
{
    return mapped(handle, vlx::uniToUpper(value));
}

TSChar16 TSUniToFullWidth(TSLocale* handle, TSChar16 value)
{
    return mapped(handle, vlx::uniToFullWidth(value));
}

TSChar16 TSUniToHalfWidth(TSLocale* handle, TSChar16 value)
{
    return mapped(handle, vlx::uniToHalfWidth(value));
}

TSChar32 TSCpMapValue(const TSObject* object, TSChar32 character)
{
    const unsigned count = tsCodePage(object).mapPairCount;
    if (count == 0)
        return 0;
    const TSMapPair* const pairs = mapPairs(object);
    unsigned low = 0;
    unsigned high = count - 1;
    while (low < high) {
        const unsigned middle = (low + high) / 2;
        if (character <= pairs[middle].key)
            high = middle;
        else
            low = middle + 1;
    }
    return pairs[high].key == character ? TSChar32{pairs[high].value} : 0;
}

TSChar32 TSCpUnmapValue(const TSObject* object, TSChar32 value)
{
    const TSCodePageHeader& page = tsCodePage(object);
    // Deliberate: a single-byte page has no map values, so that its offset of 0 leads to the bytes
    // of the header. Mapping does not ask such a page, and the section is long enough.
    const auto* const values =
        reinterpret_cast<const vlx::Le32*>(object->sections[0] + page.mapValuesOffset);
    for (TSChar32 byte = 0; byte < 256; ++byte)
        if (values[byte] == value)
            return byte;
    const TSMapPair* const pairs = mapPairs(object);
    for (unsigned i = 0; i < page.mapPairCount; ++i)
        if (pairs[i].value == value)
            return pairs[i].key;
    return 0;
}

vlx::PairStarts::PairStarts(const TSObject* language, PairTable table)
{
    const LanguagePairs pairs(language, table);
    for (unsigned i = 0; i < pairs.count; ++i) {
        const unsigned first = pairs.entries[i].first;
        starts_[first / kBits % kWords] |= std::uint64_t{1} << first % kBits;
        passAscii_ = passAscii_ && first >= 0x80;
        leaveAscii_ = leaveAscii_ && pairs.entries[i].second == 0;
    }
    leaveAscii_ = leaveAscii_ && passAscii_;
}

std::int32_t TSLangMapPair(const TSObject* language, TSChar16 first, TSChar16 second,
                           TSChar16* result1, TSChar16* result2, vlx::PairTable table)
{
    const LanguagePairs pairs(language, table);
    for (unsigned i = 0; i < pairs.count; ++i) {
        const TSLanguagePair& pair = pairs.entries[i];
        if (pair.first != first || pair.second != second)
            continue;
        *result1 = pair.result1;
        *result2 = pair.result2;
        return pair.result2 > 0 ? 2 : 1;
    }
    return 0;
}
