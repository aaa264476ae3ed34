// TSStrcmpU: compares two 16-bit strings by their code.
#include "strings/compare.hpp"

TS_TRACE_UNIT("tsstrcmu");

namespace {

using Image = vlx::UpperImage<TSChar16>;

// Deliberate: the blank is two bytes as they are stored, which is U+0020 on a big-endian host
// alone.
bool isBlank(TSChar16 unit)
{
    const uint8_t blank[sizeof unit] = {0x00, 0x20};
    return std::memcmp(&unit, blank, sizeof unit) == 0;
}

// Deliberate: a first string of nothing leaves the second one its blanks.
void stripUnits(const TSChar16* string1, int32_t& length1, const TSChar16* string2,
                int32_t& length2)
{
    while (length1 > 0 && isBlank(string1[length1 - 1]))
        --length1;
    while (length1 > 0 && length2 > 0 && isBlank(string2[length2 - 1]))
        --length2;
}

// The result of a comparison that needs no memory, but for the lengths.
int32_t compareUnits(const vlx::CompareOptions& options, const TSChar16* string1,
                     const TSChar16* string2, int32_t count)
{
    if (options.isExact()) {
        const int32_t at = vlx::firstDifference(string1, string2, count);
        return at == count ? 0 : string1[at] - string2[at];
    }
    if (options.ignoresWidth())
        return vlx::compareImages(string1, string2, count,
                                  [](TSChar16 unit) { return vlx::uniToHalfWidth(unit); });
    return vlx::compareImages(string1, string2, count,
                              [](TSChar16 unit) { return vlx::uniToUpper(unit); });
}

} // namespace

int32_t TSStrcmpU(TSLocale* handle, const TSChar16* string1, int32_t length1,
                  const TSChar16* string2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrcmpU);
    TSLocale* const locale = tsLocale(handle);
    const vlx::CompareOptions asked(options);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    length1 = vlx::comparedLength(string1, length1);
    length2 = vlx::comparedLength(string2, length2);
    if (asked.strips)
        stripUnits(string1, length1, string2, length2);
    TS_PRINT(TRC1_DETAIL, "options = %08x", asked.rest);
    TS_DUMP(TRC1_DETAIL, string1, static_cast<uint32_t>(length1) * uint32_t{sizeof *string1},
            "String1");
    TS_DUMP(TRC1_DETAIL, string2, static_cast<uint32_t>(length2) * uint32_t{sizeof *string2},
            "String2");
    locale->lastError = TS_ERR_NONE;
    int32_t result = 0;
    if (length1 > 0 && length2 > 0 && asked.ignoresCase() && vlx::hasUpperPairs(*locale)) {
        Image image1(length1, 4);
        Image image2(length2, 4);
        if (!image1 || !image2)
            TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
        image1.count =
            TSMapStringU(locale, image1.units(), image1.size(), string1, length1, TS_MAP_UPPER);
        image2.count =
            TSMapStringU(locale, image2.units(), image2.size(), string2, length2, TS_MAP_UPPER);
        result = imageDifference(image1, image2, vlx::differenceOfUnits);
    } else if (length1 > 0 && length2 > 0) {
        result = compareUnits(asked, string1, string2, std::min(length1, length2));
    }
    // Deliberate: also equal images of strings that are not equally long are told apart.
    TS_RETURN(result != 0 ? result : length1 - length2);
}
