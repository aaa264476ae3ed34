// TSStrcoll: compares two strings by the locale's sort.
#include "collate/collate.hpp"

TS_TRACE_UNIT("tsstrcol");

int32_t TSStrcoll(TSLocale* handle, const char* string1, int32_t length1, const char* string2,
                  int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrcoll);
    TSLocale* const locale = tsLocale(handle);
    if (options & TS_OPT_CHAR_COUNT) {
        length1 = vlx::countedBytes(*locale, string1, 0, length1);
        length2 = vlx::countedBytes(*locale, string2, 0, length2);
        options &= ~TS_OPT_CHAR_COUNT;
    }
    if (locale->flags & vlx::kLocaleBinarySort)
        TS_RETURN(TSStrcmp(locale, string1, length1, string2, length2, options));
    if (options == 0) {
        const int32_t early = vlx::withPlainForm(*locale, [&](const auto& form) {
            return vlx::earlyDifference(*locale, form, string1, length1, string2, length2);
        });
        if (early != 0)
            TS_RETURN(early);
    }
    vlx::CompareText first{string1, vlx::comparedLength(string1, length1)};
    vlx::CompareText second{string2, vlx::comparedLength(string2, length2)};
    // Deliberate: it is the bit of width that asks for it, and TS_OPT_STRIP_BLANKS alone is an
    // option that keys do not know.
    if (options & vlx::kWidthBit) {
        vlx::stripWideBlanks(first, second, 256, [locale](char* copy, int32_t, int32_t size) {
            return TSTruncateString(locale, copy, size,
                                    TS_TRUNC_STRIP_BLANKS | TS_OPT_IGNORE_WIDTH);
        });
        options &= ~TS_OPT_STRIP_BLANKS;
    }
    vlx::WorkArea area(first.length, second.length);
    std::optional<int32_t> result;
    if (options == 0)
        result = vlx::withPlainForm(*locale, [&](const auto& form) {
            return vlx::compareElements(*locale, form, vlx::textOf(form, string1, first.length),
                                        vlx::textOf(form, string2, second.length), area);
        });
    else
        result = vlx::compareKeys(
            area,
            [&](char* key, int32_t size) {
                return TSStrxfrm(locale, key, size, string1, first.length, options);
            },
            [&](char* key, int32_t size) {
                return TSStrxfrm(locale, key, size, string2, second.length, options);
            });
    if (!result)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
    TS_RETURN(*result);
}
