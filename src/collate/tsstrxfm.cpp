// TSStrxfrm: the sort key of a string.
#include "collate/key.hpp"

TS_TRACE_UNIT("tsstrxfm");

namespace {

int32_t foldBytes(const TSLocale& locale, const char* string, int32_t length, vlx::Fold fold,
                  TSChar16* values)
{
    if (locale.flags & vlx::kLocaleSingleByte) {
        const vlx::SingleFold form{{locale.codePage}};
        return foldText(locale, form, vlx::textOf<vlx::SingleForm>(form, string, length), fold,
                        values);
    }
    const vlx::MultiFold form{{locale.codePage}};
    return foldText(locale, form, vlx::textOf<vlx::MultiForm>(form, string, length), fold, values);
}

// The key of the binary sort: the values as text.
int32_t layOut(const TSLocale& locale, char* buffer, int32_t size, const TSChar16* values,
               int32_t count)
{
    vlx::KeyText key(buffer, size);
    for (int32_t i = 0; i < count; ++i) {
        char bytes[4];
        key.put(bytes, TSCpUnicodeToMb(locale.codePage, values[i], bytes));
    }
    return key.length();
}

} // namespace

int32_t TSStrxfrm(TSLocale* handle, char* buffer, int32_t size, const char* string, int32_t length,
                  uint32_t options)
{
    TS_TRACE(TSStrxfrm);
    TSLocale* const locale = tsLocale(handle);
    if (options & TS_OPT_CHAR_COUNT && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, 0, length);
    const vlx::KeyOptions asked(options);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (length < 0)
        length = vlx::unitsOf(string);
    if (length == 0)
        TS_RETURN(vlx::emptyKey(buffer, size));
    const bool isBinary = (locale->flags & vlx::kLocaleBinarySort) != 0;
    if (isBinary && asked.fold() == vlx::Fold::kNone)
        TS_RETURN(vlx::textKey(buffer, size, string, length));
    const vlx::KeyValues memory(length);
    if (!memory.get())
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, -1, "Out of memory");
    TSChar16* const values = memory.get();
    const int32_t count = foldBytes(*locale, string, length, asked.fold(), values);
    const int32_t result = isBinary ? layOut(*locale, buffer, size, values, count)
                                    : TSSortBuildKey(*locale, buffer, size, values, count);
    if (result < 0)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, -1, "Out of memory");
    TS_RETURN(result);
}
