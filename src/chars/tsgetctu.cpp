// TSGetCharTypeU: what a Unicode value is, by the library's own table.
#include "chars/ctype.hpp"
#include "chars/unitypes.hpp"

uint32_t TSGetCharTypeU(TSLocale* handle, TSChar16 value, uint32_t kind)
{
    return vlx::typeField(*tsLocale(handle), vlx::uniTypeWord(value), kind);
}
