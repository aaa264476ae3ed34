// A message as an array of elements: TSGetMessage() in bytes, and a conversion of its result.
#pragma once

#include "catalog/catalog.hpp"
#include "catalog/catname.hpp"

namespace vlx {

// Turns `bytes`, terminated, into at most `count` elements.
template <class Unit>
using ToUnits = void (*)(TSLocale* locale, Unit* output, std::int32_t count, const char* bytes,
                         std::int32_t length);

// The result of TSGetMessage, and the same error in the locale, for whatever conversion failed.
template <class Unit>
std::int32_t messageUnits(TSCatalog* catalog, std::int32_t set, std::int32_t message, Unit* output,
                          std::int32_t count, const Unit* defaultText,
                          typename TextBytes<Unit>::Convert toBytes, ToUnits<Unit> toUnits)
{
    if (!catalog) {
        if (output)
            *output = 0;
        return TS_ERR_NO_MESSAGE;
    }
    TSLocale& locale = *catalog->locale;
    const auto fail = [&](std::int32_t code) {
        locale.lastError = code;
        return TS_ERR_NO_MESSAGE;
    };
    if (!output)
        return fail(TS_ERR_ARGUMENT);
    if (count < 1) {
        *output = 0;
        return TS_ERR_NONE;
    }
    locale.lastError = TS_ERR_NONE;
    const std::uint64_t size = 4 * static_cast<std::uint64_t>(count) + 1;
    const Scratch bytes(size + 1);
    if (!bytes || size > INT32_MAX)
        return fail(TS_ERR_MEMORY);
    const TextBytes<Unit> defaultBytes(&locale, defaultText, toBytes);
    if (const std::int32_t code = defaultBytes.code(); code != TS_ERR_NONE)
        return fail(code == TS_ERR_MEMORY ? code : TS_ERR_NO_MESSAGE);

    auto* const text = bytes.as<char>();
    std::memset(text, 0, defaultText ? size + 1 : 1); // a default text that is cut does not end
    const std::int32_t result = TSGetMessage(catalog, set, message, text,
                                             static_cast<std::int32_t>(size), defaultBytes.get());
    const std::int32_t error = locale.lastError;
    toUnits(&locale, output, count, text, unitsOf(text) + 1);
    output[count - 1] = 0;
    if (result != TS_ERR_NONE)
        locale.lastError = error;
    return result;
}

} // namespace vlx
