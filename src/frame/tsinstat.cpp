// TSInitState: a shift state to begin with.
#include "frame/globals.hpp"
#include "locale/locale.hpp"
#include "tessera.h"

void TSInitState(TSLocale* handle, int32_t* state)
{
    tsLocale(handle)->lastError = TS_ERR_NONE;
    *state = 0;
}
