// The next collation element of a text. What a character is, is the form's affair.
#pragma once

#include "chars/form.hpp"
#include "collate/lookup.hpp"

namespace vlx {

// Reads a character that stands in the text whole.
template <class Form>
bool readUnicode(const Form& form, Text<Form>& text, TSChar16& value)
{
    if (!settleWhole(form, text))
        return false;
    value = form.unicode(text);
    text.at += form.length(text);
    return true;
}

// Where a text is read, one element after another.
template <class Form>
struct CollationCursor {
    static constexpr TSChar16 kNothing = 0xFFFF;

    bool hasMore() const { return pending != kNothing || text.at != text.end || lostOne; }

    Text<Form> text;
    std::uint16_t position = 0;  // wraps
    TSChar16 pending = kNothing; // a character that was read ahead
    // Deliberate: a character of the value 0xFFFF that was read ahead is lost, and yet the text
    // goes on behind its end until the next read.
    bool lostOne = false;
};

} // namespace vlx

// The next elements of a text; returns their number. A character that the end cuts off ends the
// text. Deliberate: the position counts fresh reads and contractions, so that a character which was
// read ahead does not move it.
template <class Form>
std::int32_t TSCollNext(const Form& form, const vlx::Sort& sort, vlx::CollationCursor<Form>& cursor,
                        vlx::SortElements& found)
{
    constexpr TSChar16 kNothing = vlx::CollationCursor<Form>::kNothing;
    TSChar16 value = cursor.pending;
    if (value != kNothing) {
        cursor.pending = kNothing;
    } else if (readUnicode(form, cursor.text, value)) {
        ++cursor.position;
    } else {
        cursor.text.at = cursor.text.end;
        cursor.lostOne = false;
        return 0;
    }
    TSChar16 next = kNothing;
    if (sort.hasContractions() && readUnicode(form, cursor.text, next)) {
        if (TSSortLookupPair(sort, value, next, found)) {
            ++cursor.position;
            return 1;
        }
        cursor.pending = next;
        cursor.lostOne = cursor.lostOne || next == kNothing;
    }
    return TSSortLookupChar(sort, value, found);
}
