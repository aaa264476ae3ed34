// TSWcscoll: compares two strings of packed values by the locale's sort.
#include "collate/collate.hpp"

TS_TRACE_UNIT("tswcscol");

int32_t TSWcscoll(TSLocale* handle, const TSChar32* string1, int32_t length1,
                  const TSChar32* string2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSWcscoll);
    TSLocale* const locale = tsLocale(handle);
    if (locale->flags & vlx::kLocaleBinarySort)
        TS_RETURN(TSWcscmp(locale, string1, length1, string2, length2,
                           options & (TS_OPT_STRIP_BLANKS | TS_OPT_IGNORE_CASE)));
    const bool strips = (options & TS_OPT_STRIP_BLANKS) != 0;
    options &= ~(TS_OPT_STRIP_BLANKS | TS_OPT_CHAR_COUNT);
    const TSChar32 blank = tsCodePage(locale->codePage).cpFlags & vlx::kAsciiFamily ? 0x20 : 0x40;
    std::optional<TSChar32> wide;
    if (strips && (options & TS_OPT_IGNORE_WIDTH) == TS_OPT_IGNORE_WIDTH)
        TSMapStringW(locale, &wide.emplace(), 1, &blank, 1, TS_MAP_FULL_WIDTH);
    length1 = vlx::comparedLength(string1, length1);
    length2 = vlx::comparedLength(string2, length2);
    if (strips) {
        length1 = vlx::withoutBlanks(string1, length1, blank, wide);
        length2 = vlx::withoutBlanks(string2, length2, blank, wide);
    }
    vlx::WorkArea area(length1, length2, false);
    std::optional<int32_t> result;
    if (options == 0) {
        const vlx::PackedForm form{locale->codePage};
        result = vlx::compareElements(*locale, form, vlx::textOf(form, string1, length1),
                                      vlx::textOf(form, string2, length2), area);
    } else {
        result = vlx::compareKeys(
            area,
            [&](char* key, int32_t size) {
                return TSWcsxfrm(locale, key, size, string1, length1, options);
            },
            [&](char* key, int32_t size) {
                return TSWcsxfrm(locale, key, size, string2, length2, options);
            });
    }
    if (!result)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
    TS_RETURN(*result);
}
