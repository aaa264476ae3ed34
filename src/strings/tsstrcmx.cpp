// TSStrcmpEx: compares two stateful strings by their code.
#include "strings/shiftcmp.hpp"

TS_TRACE_UNIT("tsstrcmx");

namespace {

// The result of a comparison that needs no memory.
int32_t compareTexts(vlx::TraceGuard& trace, const TSLocale& locale,
                     const vlx::CompareOptions& options, const vlx::ShiftText& first,
                     const vlx::ShiftText& second)
{
    const vlx::CompareText& text1 = first.text;
    const vlx::CompareText& text2 = second.text;
    const bool isSingle = (locale.flags & vlx::kLocaleSingleByte) != 0;
    int32_t result = 0;
    if (options.isExact() || (options.ignoresWidth() && isSingle)) {
        result =
            vlx::byteDifference(text1.string, text2.string, std::min(text1.length, text2.length));
    } else {
        // Without its blanks a text may end inside a character that is read as a whole.
        if (!options.strips && text1.state == text2.state &&
            vlx::areSame(text1.string, text1.length, text2.string, text2.length))
            return 0;
        const vlx::ShiftSide side1(locale.codePage, text1, first.end);
        const vlx::ShiftSide side2(locale.codePage, text2, second.end);
        if (options.ignoresWidth())
            return vlx::compareShiftWidth(trace, side1, side2);
        result = vlx::compareShiftCase(side1, side2);
    }
    return result != 0 ? result : text1.length - text2.length;
}

} // namespace

int32_t TSStrcmpEx(TSLocale* handle, const char* string1, int32_t state1, int32_t length1,
                   const char* string2, int32_t state2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrcmpEx);
    TS_PRINT(TRC1_INPUTS, "Options = %08x", options);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrcmp(locale, string1, length1, string2, length2, options));
    const vlx::CompareOptions asked(options);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    vlx::ShiftText first(*locale, string1, state1, length1, asked.counted);
    vlx::ShiftText second(*locale, string2, state2, length2, asked.counted);
    vlx::CompareText& text1 = first.text;
    vlx::CompareText& text2 = second.text;
    if (asked.strips)
        vlx::stripBlanks(text1, text2, [&](char* copy, int32_t state, int32_t size) {
            return TSTruncateStringEx(locale, copy, state, size, truncationOptions(asked));
        });
    first.begin(tsCodePage(locale->codePage));
    second.begin(tsCodePage(locale->codePage));
    TS_PRINT(TRC1_DETAIL, "len1 = %d, str1state = %d, len2 = %d, str2state = %d", text1.length,
             text1.state, text2.length, text2.state);
    TS_DUMP(TRC1_DETAIL, text1.string, text1.size(), "String1");
    TS_DUMP(TRC1_DETAIL, text2.string, text2.size(), "String2");
    locale->lastError = TS_ERR_NONE;
    if (text1.length == 0 || text2.length == 0)
        TS_RETURN(text1.length - text2.length);
    if (!asked.ignoresCase() || !vlx::hasUpperPairs(*locale))
        TS_RETURN(compareTexts(tsTrace, *locale, asked, first, second));

    vlx::UpperImage<char> image1(text1.length, 8);
    vlx::UpperImage<char> image2(text2.length, 8);
    if (!image1 || !image2)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
    image1.count = TSMapStringEx(locale, image1.units(), 0, image1.size(), text1.string,
                                 text1.state, text1.length, TS_MAP_UPPER);
    image2.count = TSMapStringEx(locale, image2.units(), 0, image2.size(), text2.string,
                                 text2.state, text2.length, TS_MAP_UPPER);
    TS_RETURN(imageDifference(image1, image2, vlx::differenceOfBytes));
}
