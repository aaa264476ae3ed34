// TSInit: the start of the library.
#include <cstring>

#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "frame/trace.hpp"
#include "host/host.hpp"
#include "tessera.h"

TS_TRACE_UNIT("tsinit");

namespace {

// Allocates and zeroes the global area and publishes it with its lock.
bool createGlobals(TSAllocate allocateObject, TSContext context)
{
    void* const area = allocateObject(context, sizeof(TSGlobals));
    if (!area)
        return false;
    std::memset(area, 0, sizeof(TSGlobals));
    tsGlobals = static_cast<TSGlobals*>(area);
    SYS1_InitializeLock(&tsGlobals->lock);
    return true;
}

} // namespace

int32_t TSInit(const char* directory, TSAllocate allocate, TSFree free, TSAllocate allocateObject,
               TSFree freeObject, TSContext allocContext, uint32_t options)
{
    TS_TRACE(TSInit);
    if (!tsGlobals) {
        TS_PRINT(TRC1_DETAIL, "Creating global area");
        if (!createGlobals(allocateObject ? allocateObject : vlx::host::allocate, allocContext)) {
            TS_PRINT(TRC1_ERRORS, "Unable to allocate %d bytes for globals",
                     static_cast<int>(sizeof(TSGlobals)));
            TS_RETURN(TS_ERR_MEMORY);
        }
    }
    TSGlobals& globals = *tsGlobals;
    SYS1_GetLock(&globals.lock);

    std::int32_t result = TS_ERR_NONE;
    if (globals.initCount > 0) {
        // Deliberate: a later start succeeds whatever the first one returned.
        ++globals.initCount;
        TS_PRINT(TRC1_DETAIL, "Tessera init count = %d", globals.initCount);
    } else {
        TS_PRINT(TRC1_DETAIL, "Tessera init count = %d", globals.initCount);
        globals.fieldSeparator[0] = '_';
        globals.pathSeparator[0] = vlx::host::kPathSeparator[0];
        globals.alignment = 4;
        tsSlots.allocate = allocate ? allocate : vlx::host::allocate;
        tsSlots.free = free ? free : vlx::host::free;
        tsSlots.allocateObject = allocateObject ? allocateObject : vlx::host::allocate;
        tsSlots.freeObject = freeObject ? freeObject : vlx::host::free;
        if (allocContext != 0)
            globals.allocContext = allocContext;

        globals.active = 1;
        std::int32_t code = TS_ERR_NONE;
        TSObjManager* const manager = TSInitObjManager(directory, options, &code);
        if (!manager) {
            globals.active = 0;
            result = TS_ERR_NO_OBJECTS;
        } else {
            // A start without a usable control file is a started library too.
            if (code != TS_ERR_NONE)
                result = TS_ERR_NO_CONTROL_FILE;
            globals.objectManager = manager;
            ++globals.initCount;
        }
    }
    SYS1_ReleaseLock(&globals.lock);
    TS_RETURN(result);
}
