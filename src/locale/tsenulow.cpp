// TSEnumLocalesW: every object of the locale directory, with names of 32-bit values.
#include "frame/trace.hpp"
#include "locale/enum.hpp"

TS_TRACE_UNIT("tsenulow");

int32_t TSEnumLocalesW(TSEnumLocalesCallbackW callback, TSContext user)
{
    TS_TRACE(TSEnumLocalesW);
    vlx::enumObjects([&](int32_t type, const char* name) {
        TSChar32 wide[TSObjDisk::kNameSize] = {};
        for (int i = 0; name[i] != 0; ++i)
            wide[i] = static_cast<std::uint8_t>(name[i]);
        return callback(user, type, wide);
    });
    TS_RETURN(0);
}
