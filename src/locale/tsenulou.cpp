// TSEnumLocalesU: every object of the locale directory, with 16-bit names.
#include "frame/trace.hpp"
#include "locale/enum.hpp"

TS_TRACE_UNIT("tsenulou");

int32_t TSEnumLocalesU(TSEnumLocalesCallbackU callback, TSContext user)
{
    TS_TRACE(TSEnumLocalesU);
    vlx::enumObjects([&](int32_t type, const char* name) {
        TSChar16 wide[TSObjDisk::kNameSize] = {}; // stays empty without the code page of names
        TSNameToUnicode(name, -1, wide, TSObjDisk::kNameSize);
        return callback(user, type, wide);
    });
    TS_RETURN(0);
}
