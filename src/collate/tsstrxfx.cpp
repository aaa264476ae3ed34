// TSStrxfrmEx: the sort key of a stateful string.
#include "collate/key.hpp"

TS_TRACE_UNIT("tsstrxfx");

namespace {

// The key of the binary sort: the values as text, which begins in the single-byte state.
int32_t layOut(const TSLocale& locale, char* buffer, int32_t size, const TSChar16* values,
               int32_t count)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    vlx::KeyText key(buffer, size);
    bool isMulti = false;
    for (int32_t i = 0; i < count; ++i) {
        char bytes[4];
        const int32_t length = TSCpUnicodeToMb(locale.codePage, values[i], bytes);
        if (isMulti != (length > 1)) {
            isMulti = length > 1;
            key.putShift(isMulti ? page.shiftIn : page.shiftOut);
        }
        key.put(bytes, length);
    }
    return key.length();
}

} // namespace

int32_t TSStrxfrmEx(TSLocale* handle, char* buffer, int32_t size, const char* string, int32_t state,
                    int32_t length, uint32_t options)
{
    TS_TRACE(TSStrxfrmEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrxfrm(locale, buffer, size, string, length, options));
    if (options & TS_OPT_CHAR_COUNT && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, state, length);
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
    const vlx::ShiftFold form{{locale->codePage}};
    const int32_t count =
        foldText(*locale, form, vlx::textOf<vlx::ShiftForm>(form, string, length, state),
                 asked.fold(), values);
    const int32_t result = isBinary ? layOut(*locale, buffer, size, values, count)
                                    : TSSortBuildKey(*locale, buffer, size, values, count);
    if (result < 0)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, -1, "Out of memory");
    TS_RETURN(result);
}
