// TSStrxfrmU: the sort key of a 16-bit string.
#include "collate/key.hpp"

TS_TRACE_UNIT("tsstrxfu");

namespace {

// The key of the binary sort: the values as they are, or a failure.
int32_t layOut(char* buffer, int32_t size, const TSChar16* values, int32_t count)
{
    return vlx::numbersKey(buffer, size, count, 2, [values](int32_t i) { return values[i]; });
}

} // namespace

int32_t TSStrxfrmU(TSLocale* handle, char* buffer, int32_t size, const TSChar16* string,
                   int32_t length, uint32_t options)
{
    TS_TRACE(TSStrxfrmU);
    TSLocale* const locale = tsLocale(handle);
    const vlx::KeyOptions asked(options);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (length < 0)
        length = vlx::unitsOf(string);
    if (length == 0)
        TS_RETURN(vlx::emptyKey(buffer, size));
    const bool isBinary = (locale->flags & vlx::kLocaleBinarySort) != 0;
    const TSChar16* values = string;
    int32_t count = length;
    int32_t result = -1;
    if (isBinary && asked.fold() == vlx::Fold::kNone) {
        result = layOut(buffer, size, values, count);
    } else {
        // Deliberate: without a fold the string itself is used, and the memory is asked for all the
        // same, and given back at once.
        vlx::KeyValues memory(length);
        if (!memory.get())
            TS_FAIL(locale->lastError, TS_ERR_MEMORY, -1, "Out of memory");
        if (asked.fold() == vlx::Fold::kNone) {
            memory.giveBack();
        } else {
            const vlx::UnicodeFold form{{locale->codePage}};
            values = memory.get();
            count = foldText(*locale, form, vlx::textOf<vlx::UnicodeForm>(form, string, length),
                             asked.fold(), memory.get(), false);
        }
        result = isBinary ? layOut(buffer, size, values, count)
                          : TSSortBuildKey(*locale, buffer, size, values, count);
    }
    if (result < 0)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, -1, "Out of memory");
    TS_RETURN(result);
}
