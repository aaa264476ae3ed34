// TSSetLocaleTextInfoU: changes a text item of a record by 16-bit text.
#include <cstring>

#include "chars/cptext.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/update.hpp"
#include "strings/length.hpp"

TS_TRACE_UNIT("tslstinu");

namespace {

constexpr std::int32_t kMaxElements = 263;
constexpr std::int32_t kBytesOfElement = 5; // a character and a shift byte

// The given elements in the place of those that the bytes gave.
std::int32_t setTwin(TSLocale& locale, std::int32_t item, const TSChar16* text, std::int32_t length)
{
    if (const int index = vlx::placeOf(vlx::kTextItems, item); index >= 0)
        return vlx::updateTwin(locale, index, text, length);
    const int index = vlx::placeOf(vlx::kSeparatorItems, item);
    if (index < 0) // an object's name
        return TS_ERR_NONE;
    if (length != 1) // Deliberate: the byte has been taken
        return TS_ERR_NOT_FOUND;
    locale.*vlx::kLocaleSeparator[index].unicode = *text;
    return TS_ERR_NONE;
}

bool hasText(std::int32_t item)
{
    return vlx::typeOfNameItem(item) >= 0 || vlx::placeOf(vlx::kTextItems, item) >= 0 ||
           vlx::placeOf(vlx::kSeparatorItems, item) >= 0;
}

} // namespace

int32_t TSSetLocaleTextInfoU(TSLocale* handle, int32_t item, const TSChar16* text, int32_t length,
                             uint32_t options)
{
    TS_TRACE(TSSetLocaleTextInfoU);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (length < 0)
        length = vlx::unitsOf(text);
    if (length == 0)
        TS_RETURN(1);
    if (length > kMaxElements || !hasText(item))
        TS_FAIL(locale->lastError, TS_ERR_NOT_FOUND, 0, "Item %d takes no text of %d elements",
                item, length);

    TSChar16 elements[kMaxElements]; // the text may lie in the record
    std::memcpy(elements, text, static_cast<std::size_t>(length) * sizeof *text);
    char bytes[kMaxElements * kBytesOfElement + 2]; // the end has a shift byte and a NUL
    const int32_t size = TSCpTextFromUnicode(locale->codePage, elements, 0, length, bytes);
    bytes[size] = 0;
    if (!TSSetLocaleTextInfoEx(locale, item, bytes, 0, -1, 0))
        TS_RETURN(0);
    const int32_t code = setTwin(*locale, item, elements, length);
    if (code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, code, 0, "Unable to set the 16-bit form of item %d, err = %d",
                item, code);
    TS_RETURN(1);
}
