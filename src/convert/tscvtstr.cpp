// TSConvertString: bytes of one code page to bytes of another.
#include "convert/output.hpp"
#include "convert/source.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tscvtstr");

int32_t TSConvertString(TSLocale* targetHandle, char* output, int32_t size, TSLocale* sourceHandle,
                        const char* input, int32_t length, uint32_t options)
{
    TS_TRACE(TSConvertString);
    TSLocale* const target = tsLocale(targetHandle);
    const TSLocale* const source = tsLocale(sourceHandle);
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(target->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    target->lastError = TS_ERR_NONE;
    if (length == 0 || size <= 0)
        TS_RETURN(vlx::emptyText(output, size, wanted.terminate()));
    const int32_t bytes = vlx::inputBytes(*source, input, 0, length, wanted.counted);
    const vlx::ByteOutput sink(*target, output, -1, size, wanted);
    TS_RETURN(vlx::withPlainSource(*source, input, bytes, [&](const auto& text) {
        return convertTo(sink, text, length < 0);
    }));
}
