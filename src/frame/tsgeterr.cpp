// TSGetError: the error code of a locale.
#include "frame/globals.hpp"
#include "locale/locale.hpp"
#include "tessera.h"

int32_t TSGetError(TSLocale* handle)
{
    return tsLocale(handle)->lastError;
}
