// TSStrcmp: compares two strings by their code.
#include "strings/plaincmp.hpp"
#include "strings/whole.hpp"

TS_TRACE_UNIT("tsstrcmp");

namespace {

// The bytes to compare: a character that a given length cuts off does not count. Deliberate: a
// negative length other than -1 is a text of nothing.
int32_t bytesOf(const TSLocale& locale, const char* string, int32_t length, bool counted)
{
    if (length == -1)
        return vlx::unitsOf(string);
    if (length <= 0)
        return 0;
    if (counted)
        length = TSCpCharsToBytes(locale.codePage, string, 0, length);
    return vlx::wholeBytes(locale, string, length);
}

// Whether the exact comparison of two strings as given, not empty, is also that of their whole
// characters: they differ before anything that could be cut off, or have the same bytes.
bool comparesAsGiven(const vlx::CompareText& first, const vlx::CompareText& second, int32_t& result)
{
    const int32_t common = std::min(first.length, second.length);
    result = vlx::byteDifference(first.string, second.string, common);
    if (result == 0)
        return first.length == second.length;
    const int32_t sure = common - (vlx::kLongestCharacter - 1);
    return sure > 0 && std::memcmp(first.string, second.string, static_cast<size_t>(sure)) != 0;
}

// The result of a comparison that needs no memory.
int32_t compareTexts(const TSLocale& locale, const vlx::CompareOptions& options,
                     const vlx::CompareText& first, const vlx::CompareText& second)
{
    const bool isSingle = (locale.flags & vlx::kLocaleSingleByte) != 0;
    const int32_t common = std::min(first.length, second.length);
    int32_t result = 0;
    if (options.isExact() || (options.ignoresWidth() && isSingle))
        result = vlx::byteDifference(first.string, second.string, common);
    else if (vlx::areSame(first.string, first.length, second.string, second.length))
        return 0;
    else if (options.ignoresWidth())
        return vlx::compareWidth(locale, first, second);
    else
        result = isSingle ? vlx::compareSingleCase(locale, first, second)
                          : vlx::compareCase(locale, first, second);
    return result != 0 ? result : first.length - second.length;
}

// By the upper-case images that the pairs of the language give.
int32_t compareImagesOf(vlx::TraceGuard& tsTrace, TSLocale* locale, const vlx::CompareText& first,
                        const vlx::CompareText& second)
{
    vlx::UpperImage<char> image1(first.length, 8);
    vlx::UpperImage<char> image2(second.length, 8);
    if (!image1 || !image2)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
    const int32_t same = vlx::sameImageHead(*locale, first, second);
    image1.count = TSMapString(locale, image1.units(), image1.size(), first.string + same,
                               first.length - same, TS_MAP_UPPER);
    image2.count = TSMapString(locale, image2.units(), image2.size(), second.string + same,
                               second.length - same, TS_MAP_UPPER);
    TS_RETURN(imageDifference(image1, image2, vlx::differenceOfBytes));
}

// All ways of a comparison; by itself, so that the quick way has no part in what it needs.
[[gnu::noinline]] int32_t compare(vlx::TraceGuard& tsTrace, TSLocale* locale,
                                  const vlx::CompareOptions& asked, vlx::CompareText first,
                                  vlx::CompareText second)
{
    if (asked.strips)
        vlx::stripBlanks(first, second, [&](char* copy, int32_t, int32_t size) {
            return TSTruncateString(locale, copy, size, truncationOptions(asked));
        });
    TS_DUMP(TRC1_DETAIL, first.string, first.size(), "String1");
    TS_DUMP(TRC1_DETAIL, second.string, second.size(), "String2");
    locale->lastError = TS_ERR_NONE;
    if (first.length == 0 || second.length == 0)
        TS_RETURN(first.length - second.length);
    if (!asked.ignoresCase() || !vlx::hasUpperPairs(*locale))
        TS_RETURN(compareTexts(*locale, asked, first, second));
    return compareImagesOf(tsTrace, locale, first, second);
}

} // namespace

int32_t TSStrcmp(TSLocale* handle, const char* string1, int32_t length1, const char* string2,
                 int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrcmp);
    TSLocale* const locale = tsLocale(handle);
    int32_t difference = 0;
    if (options == 0 && length1 > 0 && length2 > 0 && !tsTrace.on(TRC1_DETAIL) &&
        comparesAsGiven({string1, length1}, {string2, length2}, difference)) {
        locale->lastError = TS_ERR_NONE;
        TS_RETURN(difference);
    }
    const vlx::CompareOptions asked(options);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    return compare(tsTrace, locale, asked,
                   {string1, bytesOf(*locale, string1, length1, asked.counted)},
                   {string2, bytesOf(*locale, string2, length2, asked.counted)});
}
