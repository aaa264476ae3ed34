// TSTerm: the stop of the library.
#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "frame/trace.hpp"
#include "tessera.h"

TS_TRACE_UNIT("tsterm");

namespace {

// Releases the default locale and the object store; the first failure of the two.
std::int32_t releaseEverything(TSGlobals& globals)
{
    std::int32_t result = TS_ERR_NONE;
    if (TSLocale* const locale = tsDefaultLocale) {
        tsDefaultLocale = nullptr;
        result = TSReleaseLocale(locale);
    }
    TSObjManager* const manager = globals.objectManager;
    globals.objectManager = nullptr;
    const std::int32_t destroyed = TSDestroyObjManager(manager);
    return result != TS_ERR_NONE ? result : destroyed;
}

} // namespace

int32_t TSTerm(void)
{
    TS_TRACE(TSTerm);
    if (!tsGlobals)
        TS_RETURN(TS_ERR_NONE);
    TSGlobals& globals = *tsGlobals;
    SYS1_GetLock(&globals.lock);
    if (globals.initCount == 0) { // a start that failed half way
        SYS1_ReleaseLock(&globals.lock);
        TS_RETURN(TS_ERR_NONE);
    }
    --globals.initCount;
    if (globals.initCount != 0) {
        // Deliberate: the lock stays with this thread, so that no other one starts, stops or loads
        // between this stop and the last; the last stop ends the lock.
        TS_RETURN(TS_ERR_NONE);
    }

    const std::int32_t result = releaseEverything(globals);
    globals.active = 0;
    SYS1_ReleaseLock(&globals.lock);
    SYS1_DestroyLock(&globals.lock);
    // Deliberate: the area came from allocateObject and goes back through free.
    const bool freed = vlx::release(&globals);
    tsGlobals = nullptr;
    TS_RETURN(result == TS_ERR_NONE && !freed ? TS_ERR_FAILED : result);
}
