// TSStrcollEx: compares two stateful strings by the locale's sort.
#include "collate/collate.hpp"

TS_TRACE_UNIT("tsstrcox");

int32_t TSStrcollEx(TSLocale* handle, const char* string1, int32_t state1, int32_t length1,
                    const char* string2, int32_t state2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrcollEx);
    TSLocale* const locale = tsLocale(handle);
    if (options & TS_OPT_CHAR_COUNT) {
        length1 = vlx::countedBytes(*locale, string1, state1, length1);
        length2 = vlx::countedBytes(*locale, string2, state2, length2);
        options &= ~TS_OPT_CHAR_COUNT;
    }
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrcoll(locale, string1, length1, string2, length2, options));
    if (locale->flags & vlx::kLocaleBinarySort)
        TS_RETURN(TSStrcmpEx(locale, string1, state1, length1, string2, state2, length2,
                             vlx::codeOptions(options)));
    vlx::CompareText first{string1, vlx::comparedLength(string1, length1), state1};
    vlx::CompareText second{string2, vlx::comparedLength(string2, length2), state2};
    // Deliberate: TS_OPT_STRIP_BLANKS stays among the options, and keys refuse it.
    if (options & vlx::kWidthBit)
        vlx::stripWideBlanks(first, second, 257, [locale](char* copy, int32_t state, int32_t size) {
            return TSTruncateStringEx(locale, copy, state, size,
                                      TS_TRUNC_STRIP_BLANKS | TS_OPT_IGNORE_WIDTH);
        });
    vlx::WorkArea area(first.length, second.length);
    std::optional<int32_t> result;
    if (options == 0) {
        const vlx::ShiftForm form{locale->codePage};
        result =
            vlx::compareElements(*locale, form, vlx::textOf(form, string1, first.length, state1),
                                 vlx::textOf(form, string2, second.length, state2), area);
    } else {
        result = vlx::compareKeys(
            area,
            [&](char* key, int32_t size) {
                return TSStrxfrmEx(locale, key, size, string1, state1, first.length, options);
            },
            [&](char* key, int32_t size) {
                return TSStrxfrmEx(locale, key, size, string2, state2, second.length, options);
            });
    }
    if (!result)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Out of memory");
    TS_RETURN(*result);
}
