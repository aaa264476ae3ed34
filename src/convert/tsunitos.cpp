// TSUnicodeToString: 16-bit values to bytes.
#include "convert/output.hpp"
#include "convert/source.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsunitos");

int32_t TSUnicodeToString(TSLocale* handle, char* output, int32_t size, const TSChar16* input,
                          int32_t count, uint32_t options)
{
    TS_TRACE(TSUnicodeToString);
    TSLocale* const locale = tsLocale(handle);
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const int32_t units = count < 0 ? vlx::unitsOf(input) : count;
    const vlx::UnicodeSource source{input, input + units};
    vlx::ByteOutput sink(*locale, output, -1, size, wanted);
    if (!(locale->flags & vlx::kLocaleSingleByte))
        TS_RETURN(convertTo(sink, source, count < 0));

    // A single-byte page: one byte for each value, whatever its tables hold.
    int32_t done = sink.putSingle(input, units);
    char bytes[4];
    for (bool fits = true; fits && done < units; done += fits) {
        TSCpUnicodeToMb(locale->codePage, input[done], bytes);
        fits = sink.putBytes(bytes, 1);
    }
    TS_RETURN(sink.finish(count < 0 && done == units));
}
