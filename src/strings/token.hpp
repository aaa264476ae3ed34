// Tokens: the search for the next one in a string of units without states. The caller keeps the
// position: what is left comes back as a pointer and a length, and the delimiter behind the token
// is overwritten with zeros.
#pragma once

#include <cstdint>

#include "strings/span.hpp"

namespace vlx {

// The next token of `string`, or null; `length` units are there, and what is left behind the token
// and its delimiter is stored in `length` and `next`.
template <class Form>
typename Form::Unit* nextToken(const Form& form, typename Form::Unit* string, std::int32_t& length,
                               const SpanText<Form>& delimiters, typename Form::Unit*& next)
{
    using Unit = typename Form::Unit;
    Unit* token = string;
    std::int32_t left = length;
    length = 0;
    std::int32_t span = spanOf(form, {token, left}, delimiters, false);
    if (span == 0 && left > 0) {
        const std::int32_t leading = spanOf(form, {token, left}, delimiters, true);
        token += leading;
        left -= leading;
        if (left == 0)
            return nullptr;
        span = spanOf(form, {token, left}, delimiters, false);
    }
    if (span >= left) // the token reaches the end
        return token;
    Unit* const delimiter = token + span;
    const std::int32_t size = CharacterSet<Form>::lengthAt(form, {delimiter, token + left, 0});
    std::fill_n(delimiter, size, Unit{0});
    length = left - span - size;
    if (length > 0)
        next = delimiter + size;
    return token;
}

} // namespace vlx
