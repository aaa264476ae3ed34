// TSSetLocaleTextInfoW: changes a text item of a record by packed values.
#include "chars/codepage.hpp"
#include "frame/scratch.hpp"
#include "frame/trace.hpp"
#include "locale/update.hpp"
#include "strings/length.hpp"

TS_TRACE_UNIT("tslstinw");

namespace {

constexpr std::int32_t kBytesOfElement = 5; // a character and a shift byte

// Lays the values out, with shift bytes where the code page is stateful; no closing one.
std::int32_t layOut(const TSLocale& locale, const TSChar32* text, std::int32_t length, char* bytes)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const bool stateful = (locale.flags & vlx::kLocaleStateful) != 0;
    char* at = bytes;
    bool multi = false;
    for (std::int32_t i = 0; i < length; ++i) {
        if (stateful && multi != (text[i] > 0xFF)) {
            multi = !multi;
            *at++ = static_cast<char>(multi ? page.shiftIn : page.shiftOut);
        }
        at += TSCpPutWide(at, text[i]);
    }
    return static_cast<std::int32_t>(at - bytes);
}

} // namespace

int32_t TSSetLocaleTextInfoW(TSLocale* handle, int32_t item, const TSChar32* text, int32_t length,
                             uint32_t options)
{
    TS_TRACE(TSSetLocaleTextInfoW);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (length < 0)
        length = vlx::unitsOf(text);
    if (length == 0)
        TS_RETURN(1);
    const std::uint64_t room = static_cast<std::uint64_t>(length) * kBytesOfElement;
    const vlx::Scratch bytes(room <= INT32_MAX ? room : UINT64_MAX);
    if (!bytes)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, 0, "Unable to allocate %d elements", length);
    const int32_t size = layOut(*locale, text, length, bytes.as<char>());
    TS_RETURN(TSSetLocaleTextInfoEx(locale, item, bytes.as<char>(), 0, size, 0));
}
