// TSWcscmp: compares two strings of packed values by their code.
#include "strings/compare.hpp"

TS_TRACE_UNIT("tswcscmp");

namespace {

using Image = vlx::UpperImage<TSChar32>;

void stripValues(const TSLocale& locale, const TSChar32* string, int32_t& length)
{
    const TSChar32 blank = tsCodePage(locale.codePage).cpFlags & vlx::kAsciiFamily ? 0x20 : 0x40;
    while (length > 0 && string[length - 1] == blank)
        --length;
}

// Deliberate: of two images the low halves of the values are compared before the high ones.
int32_t differenceOfValues(TSChar32 first, TSChar32 second)
{
    const int32_t low =
        vlx::differenceOfUnits(static_cast<TSChar16>(first), static_cast<TSChar16>(second));
    return low != 0 ? low
                    : vlx::differenceOfUnits(static_cast<TSChar16>(first >> 16),
                                             static_cast<TSChar16>(second >> 16));
}

// The result of a comparison that needs no memory, but for the lengths.
int32_t compareValues(const TSLocale& locale, bool exact, const TSChar32* string1,
                      const TSChar32* string2, int32_t count)
{
    if (exact) {
        const int32_t at = vlx::firstDifference(string1, string2, count);
        return at == count ? 0 : static_cast<int32_t>(string1[at] - string2[at]);
    }
    const TSObject* const object = locale.codePage;
    return vlx::compareImages(string1, string2, count, [object](TSChar32 value) {
        return value < 256 ? TSChar32{tsCodePage(object).toUpper[value]}
                           : TSCpMapCharW(object, value, vlx::kMapsToUpper);
    });
}

} // namespace

int32_t TSWcscmp(TSLocale* handle, const TSChar32* string1, int32_t length1,
                 const TSChar32* string2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSWcscmp);
    TSLocale* const locale = tsLocale(handle);
    const vlx::CompareOptions asked(options);
    // Deliberate: this member knows no comparison by width.
    if (!asked.isExact() && asked.rest != TS_OPT_IGNORE_CASE)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    length1 = vlx::comparedLength(string1, length1);
    length2 = vlx::comparedLength(string2, length2);
    if (asked.strips) {
        stripValues(*locale, string1, length1);
        stripValues(*locale, string2, length2);
    }
    locale->lastError = TS_ERR_NONE;
    int32_t result = 0;
    if (length1 > 0 && length2 > 0 && asked.ignoresCase() && vlx::hasUpperPairs(*locale)) {
        Image image1(length1, 8);
        Image image2(length2, 8);
        if (!image1 || !image2)
            TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
        image1.count =
            TSMapStringW(locale, image1.units(), image1.size(), string1, length1, TS_MAP_UPPER);
        image2.count =
            TSMapStringW(locale, image2.units(), image2.size(), string2, length2, TS_MAP_UPPER);
        result = imageDifference(image1, image2, differenceOfValues);
    } else if (length1 > 0 && length2 > 0) {
        result =
            compareValues(*locale, asked.isExact(), string1, string2, std::min(length1, length2));
    }
    TS_RETURN(result != 0 ? result : length1 - length2);
}
