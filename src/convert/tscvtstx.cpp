// TSConvertStringEx: bytes of one code page to bytes of another, with shift states on either side.
#include "convert/output.hpp"
#include "convert/source.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tscvtstx");

namespace {

// An empty text, closed if the target stands in the multi-byte state; the result in bytes, or one
// character.
int32_t emptyStatefulText(const TSLocale& target, char* output, int32_t state, int32_t size,
                          const vlx::ConversionOptions& wanted)
{
    const bool closes = (target.flags & vlx::kLocaleStateful) && state == 1;
    if (!closes)
        return vlx::emptyText(output, size, wanted.terminate());
    if (!wanted.terminate() || size <= 0 || (size < 2 && !wanted.counted))
        return 0;
    output[0] = static_cast<char>(tsCodePage(target.codePage).shiftOut);
    output[1] = 0;
    return wanted.counted ? 1 : 2;
}

} // namespace

int32_t TSConvertStringEx(TSLocale* targetHandle, char* output, int32_t targetState, int32_t size,
                          TSLocale* sourceHandle, const char* input, int32_t sourceState,
                          int32_t length, uint32_t options)
{
    TS_TRACE(TSConvertStringEx);
    TSLocale* const target = tsLocale(targetHandle);
    const TSLocale* const source = tsLocale(sourceHandle);
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(target->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    target->lastError = TS_ERR_NONE;
    if (length == 0 || size <= 0)
        TS_RETURN(emptyStatefulText(*target, output, targetState, size, wanted));
    const int32_t bytes = vlx::inputBytes(*source, input, sourceState, length, wanted.counted);
    const bool shifts = (target->flags & vlx::kLocaleStateful) != 0;
    const vlx::ByteOutput sink(*target, output, shifts ? targetState : -1, size, wanted);
    if (source->flags & vlx::kLocaleStateful)
        TS_RETURN(convertTo(sink,
                            vlx::ShiftSource{source->codePage, input, input + bytes, sourceState},
                            length < 0));
    TS_RETURN(vlx::withPlainSource(*source, input, bytes, [&](const auto& text) {
        return convertTo(sink, text, length < 0);
    }));
}
