// The five text forms as policies with the same names in the same order, so that a family is one
// algorithm and its members pick the form:
//
//     settle   moves to the next character; false at the end of the text
//     length   units of the character there
//     value    its packed value
//     unicode  its Unicode value
//
// SingleForm and MultiForm are bytes without a state, ShiftForm is stateful text, UnicodeForm
// 16-bit text and PackedForm 32-bit packed values.
#pragma once

#include <cstdint>

#include "chars/codepage.hpp"
#include "locale/locale.hpp"

namespace vlx {

// Shift bytes, compared as what they are.
inline bool isShiftIn(const TSCodePageHeader& page, char byte)
{
    return static_cast<std::uint8_t>(byte) == page.shiftIn;
}
inline bool isShiftOut(const TSCodePageHeader& page, char byte)
{
    return static_cast<std::uint8_t>(byte) == page.shiftOut;
}

// A place in a text and its end; the state counts in stateful text alone.
template <class Form>
struct Text {
    const typename Form::Unit* at;
    const typename Form::Unit* end;
    std::int32_t state = 0;

    std::int32_t left() const { return static_cast<std::int32_t>(end - at); }
};

struct SingleForm {
    using Unit = char;
    const TSObject* object;

    bool settle(Text<SingleForm>& text) const { return text.at != text.end; }
    std::int32_t length(const Text<SingleForm>&) const { return 1; }
    TSChar32 value(const Text<SingleForm>& text) const
    {
        return static_cast<std::uint8_t>(*text.at);
    }
    TSChar16 unicode(const Text<SingleForm>& text) const
    {
        return tsCodePage(object).toUnicode[static_cast<std::uint8_t>(*text.at)];
    }
};

struct MultiForm {
    using Unit = char;
    const TSObject* object;

    bool settle(Text<MultiForm>& text) const { return text.at != text.end; }
    std::int32_t length(const Text<MultiForm>& text) const
    {
        return tsCodePage(object).charLength[static_cast<std::uint8_t>(*text.at)];
    }
    TSChar32 value(const Text<MultiForm>& text) const { return TSCpGetWide(object, text.at); }
    TSChar16 unicode(const Text<MultiForm>& text) const
    {
        if (length(text) == 1)
            return tsCodePage(object).toUnicode[static_cast<std::uint8_t>(*text.at)];
        return TSCpMbToUnicode(object, text.at);
    }
};

struct ShiftForm { // shift bytes set the state and are no characters
    using Unit = char;
    const TSObject* object;

    bool settle(Text<ShiftForm>& text) const
    {
        const TSCodePageHeader& page = tsCodePage(object);
        for (; text.at != text.end; ++text.at) {
            if (isShiftIn(page, *text.at))
                text.state = 1;
            else if (isShiftOut(page, *text.at))
                text.state = 0;
            else
                return true;
        }
        return false;
    }
    std::int32_t length(const Text<ShiftForm>& text) const
    {
        return text.state ? tsCodePage(object).maxCharBytes : 1;
    }
    TSChar32 value(const Text<ShiftForm>& text) const
    {
        return TSCpGetWideEx(object, text.at, text.state);
    }
    TSChar16 unicode(const Text<ShiftForm>& text) const
    {
        if (length(text) == 1)
            return tsCodePage(object).toUnicode[static_cast<std::uint8_t>(*text.at)];
        return TSCpMbToUnicode(object, text.at);
    }
};

struct UnicodeForm {
    using Unit = TSChar16;
    const TSObject* object;

    bool settle(Text<UnicodeForm>& text) const { return text.at != text.end; }
    std::int32_t length(const Text<UnicodeForm>&) const { return 1; }
    TSChar32 value(const Text<UnicodeForm>& text) const
    {
        return TSCpUnicodeToWide(object, *text.at);
    }
    TSChar16 unicode(const Text<UnicodeForm>& text) const { return *text.at; }
};

struct PackedForm {
    using Unit = TSChar32;
    const TSObject* object;

    bool settle(Text<PackedForm>& text) const { return text.at != text.end; }
    std::int32_t length(const Text<PackedForm>&) const { return 1; }
    TSChar32 value(const Text<PackedForm>& text) const { return *text.at; }
    TSChar16 unicode(const Text<PackedForm>& text) const
    {
        return *text.at < 256 ? TSChar16{tsCodePage(object).toUnicode[*text.at]}
                              : TSCpWideToUnicode(object, *text.at);
    }
};

// Calls `member` with the form of plain text in a code page.
template <class Member>
auto withPlainForm(const TSObject* object, const Member& member)
{
    if (tsCodePage(object).maxCharBytes == 1)
        return member(SingleForm{object});
    return member(MultiForm{object});
}

// The same for the text of a locale, by its flags.
template <class Member>
auto withPlainForm(const TSLocale& locale, const Member& member)
{
    if (locale.flags & kLocaleSingleByte)
        return member(SingleForm{locale.codePage});
    return member(MultiForm{locale.codePage});
}

// Calls `member` with the form of text that may carry shift bytes.
template <class Member>
auto withByteForm(const TSObject* object, const Member& member)
{
    if (tsCodePage(object).cpFlags & kStateful)
        return member(ShiftForm{object});
    return withPlainForm(object, member);
}

// Shift bytes are passed before a character. Deliberate: one of them at most; a second one is read
// as a character.
template <class Form>
void passShift(const Form&, Text<Form>&)
{
}
inline void passShift(const ShiftForm& form, Text<ShiftForm>& text)
{
    const TSCodePageHeader& page = tsCodePage(form.object);
    if (text.at == text.end || !(isShiftIn(page, *text.at) || isShiftOut(page, *text.at)))
        return;
    text.state = isShiftIn(page, *text.at);
    ++text.at;
}

// Moves to a character that stands in the text whole; false if there is none.
template <class Form>
bool settleWhole(const Form& form, Text<Form>& text)
{
    passShift(form, text);
    return text.at != text.end && form.length(text) <= text.left();
}

} // namespace vlx
