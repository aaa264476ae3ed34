// The whole characters at the start of a text.
#pragma once

#include "chars/form.hpp"
#include "chars/walk.hpp"

namespace vlx {

// Moves over the characters of a text that stand in it whole, and over the shift bytes among them.
template <class Form>
Text<Form> behindWhole(const Form& form, Text<Form> text)
{
    while (form.settle(text) && form.length(text) <= text.left())
        text.at += form.length(text);
    return text;
}

// Bytes of the whole characters of plain text.
inline std::int32_t wholeBytes(const TSLocale& locale, const char* string, std::int32_t length)
{
    if (locale.flags & kLocaleSingleByte)
        return length;
    const char* const behind =
        walkRuns(tsCodePage(locale.codePage), PlainSet::ofBytes(locale.pageTraits), string,
                 string + length, [](const char*, const char*, std::int32_t) { return true; });
    return static_cast<std::int32_t>(behind - string);
}

} // namespace vlx
