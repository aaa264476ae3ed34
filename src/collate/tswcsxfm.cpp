// TSWcsxfrm: the sort key of a string of packed values.
#include "collate/key.hpp"

TS_TRACE_UNIT("tswcsxfm");

int32_t TSWcsxfrm(TSLocale* handle, char* buffer, int32_t size, const TSChar32* string,
                  int32_t length, uint32_t options)
{
    TS_TRACE(TSWcsxfrm);
    TSLocale* const locale = tsLocale(handle);
    const vlx::KeyOptions asked(options);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (length < 0)
        length = vlx::unitsOf(string);
    if (length == 0)
        TS_RETURN(vlx::emptyKey(buffer, size));
    const bool isBinary = (locale->flags & vlx::kLocaleBinarySort) != 0;
    int32_t result = -1;
    if (isBinary && asked.fold() == vlx::Fold::kNone) {
        result =
            vlx::numbersKey(buffer, size, length, 4, [string](int32_t i) { return string[i]; });
    } else {
        const vlx::KeyValues memory(length);
        if (!memory.get())
            TS_FAIL(locale->lastError, TS_ERR_MEMORY, -1, "Out of memory");
        TSChar16* const values = memory.get();
        const vlx::PackedFold form(locale->codePage, (locale->flags & vlx::kLocaleSingleByte) != 0);
        const int32_t count =
            foldText(*locale, form, vlx::textOf<vlx::PackedForm>(form, string, length),
                     asked.fold(), values);
        if (isBinary)
            result = vlx::numbersKey(buffer, size, count, 4, [&](int32_t i) {
                return TSCpUnicodeToWide(locale->codePage, values[i]);
            });
        else
            result = TSSortBuildKey(*locale, buffer, size, values, count);
    }
    if (result < 0)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, -1, "Out of memory");
    TS_RETURN(result);
}
