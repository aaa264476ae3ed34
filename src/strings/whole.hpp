// The whole characters at the start of a text.
#pragma once

#include "chars/form.hpp"

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
    const MultiForm form{locale.codePage};
    return static_cast<std::int32_t>(behindWhole(form, {string, string + length}).at - string);
}

} // namespace vlx
