// TSGetCharType: what a character is.
#include "chars/ctype.hpp"

uint32_t TSGetCharType(TSLocale* handle, const char* character, uint32_t kind)
{
    return vlx::plainTypeField(*tsLocale(handle), character, kind);
}
