// The lengths of strings: a negative one means up to the terminator.
#pragma once

#include <cstdint>
#include <cstring>

#include "chars/form.hpp"

namespace vlx {

inline std::int32_t unitsOf(const char* string)
{
    return static_cast<std::int32_t>(std::strlen(string));
}

template <class Unit>
std::int32_t unitsOf(const Unit* string)
{
    const Unit* at = string;
    while (*at != 0)
        ++at;
    return static_cast<std::int32_t>(at - string);
}

// The text of a string argument.
template <class Form>
Text<Form> textOf(const Form&, const typename Form::Unit* string, std::int32_t length,
                  std::int32_t state = 0)
{
    return {string, string + (length < 0 ? unitsOf(string) : length), state};
}

} // namespace vlx
