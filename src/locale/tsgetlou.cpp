// TSGetLocaleU: a locale from a 16-bit name.
#include "chars/cpfile.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/locale.hpp"
#include "locale/make.hpp"
#include "tessera.h"

TS_TRACE_UNIT("tsgetlou");

namespace {

std::uint32_t lengthOf(const TSChar16* name)
{
    std::uint32_t length = 0;
    while (name && name[length] != 0)
        ++length;
    return length;
}

} // namespace

TSLocale* TSGetLocaleU(const TSChar16* name, uint32_t options, int32_t* code)
{
    TS_TRACE(TSGetLocaleU);
    TSLocale* const none = nullptr;
    int32_t unused = TS_ERR_NONE;
    int32_t& result = code ? *code : unused;

    result = TS_ERR_NONE;
    if (options & ~vlx::kLocaleOptions)
        TS_FAIL(result, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    if (options & TS_LOCALE_USER) // the name is not looked at
        TS_RETURN(TSGetLocale(nullptr, options, &result));

    char local[vlx::kLocaleNameSize];
    const std::uint32_t length = lengthOf(name);
    char* narrow = local;
    if (length >= sizeof local)
        narrow = static_cast<char*>(vlx::allocate(length + 1));
    if (!narrow)
        TS_FAIL(result, TS_ERR_MEMORY, none, "Unable to allocate %u bytes for a name", length + 1);

    TSLocale* locale = nullptr;
    const auto count = static_cast<std::int32_t>(length);
    if (length > 0 && TSNameFromUnicode(name, count, narrow, length + 1, &result) < 0) {
        result = result == TS_ERR_MEMORY ? TS_ERR_MEMORY : TS_ERR_NO_OBJECTS;
        TS_PRINT(TRC1_ERRORS, "No code page %d for a name, err = %d", vlx::kAsciiCodePage, result);
    } else {
        narrow[length] = 0;
        locale = TSGetLocale(narrow, options, &result);
    }
    if (narrow != local)
        vlx::release(narrow);
    TS_RETURN(locale);
}
