// The tokens of a number in text, in the five forms of text.
#pragma once

#include <algorithm>
#include <cstring>

#include "chars/ctype.hpp"
#include "chars/form.hpp"
#include "chars/unitypes.hpp"
#include "text/texts.hpp"

namespace vlx {

// Whether a text stands at a place.
template <class Unit>
bool standsAt(const ValueText<Unit>& text, const Unit* at, const Unit* end)
{
    return text.length > 0 && text.length <= end - at && *text.at == *at &&
           std::equal(text.at + 1, text.at + text.length, at + 1);
}

inline constexpr std::uint32_t kBlankType = 0x040; // in a type word: white space

// The type word of a character longer than one byte, and of a packed value.
inline std::uint32_t longType(const TSLocale& locale, const char* character)
{
    return TSCpCharTypeRecord(locale.codePage, character)->type;
}
inline std::uint32_t packedType(const TSLocale& locale, TSChar32 value)
{
    if (value > 255)
        return TSCpCharTypeRecordW(locale.codePage, value)->type;
    return byteType(locale, static_cast<char>(value));
}

// TSNextNumberToken of each form: the token at `text.at`, which moves behind it.

class SingleTokens {
  public:
    using Form = SingleForm;

    SingleTokens(TSLocale& record, const NumberTexts<char>& from, const Signs& signs)
        : locale(record), texts(from), zero_(signs.zero),
          digitsAreOwn_(!from.mapsDigits && !isDigit(from.group) && !isDigit(from.point) &&
                        !beginsWithDigit(from.plus) && !beginsWithDigit(from.minus))
    {
    }

    std::int32_t next(Text<Form>& text) const
    {
        if (digitsAreOwn_ && isDigit(*text.at) && !(byteType(locale, *text.at) & kBlankType))
            return static_cast<std::int32_t>(valueOf(*text.at++) - zero_);
        return anyNext(text);
    }

  private:
    bool isDigit(char byte) const { return valueOf(byte) - zero_ <= 9; }
    bool beginsWithDigit(const ValueText<char>& text) const
    {
        return text.length > 0 && isDigit(*text.at);
    }

    std::int32_t anyNext(Text<Form>& text) const
    {
        const auto isBlank = [&](const char* at) {
            return (byteType(locale, *at) & kBlankType) != 0;
        };
        if (isBlank(text.at)) {
            text.at = std::find_if_not(text.at, text.end,
                                       [&](const char& byte) { return isBlank(&byte); });
            return kTokenBlank;
        }
        if (standsAt(texts.plus, text.at, text.end)) {
            text.at += texts.plus.length;
            return kTokenPlus;
        }
        if (standsAt(texts.minus, text.at, text.end)) {
            text.at += texts.minus.length;
            return kTokenMinus;
        }
        char byte = *text.at;
        if (texts.mapsDigits) {
            char image[5];
            TSMapString(&locale, image, sizeof image, text.at, 1, TS_MAP_DIGITS);
            byte = image[0];
        }
        std::int32_t token = texts.digits->values[static_cast<std::uint8_t>(byte)];
        // Deliberate: a separator that is empty is the byte 0.
        if (byte == texts.group)
            token = kTokenGroup;
        else if (texts.hasPoint && byte == texts.point)
            token = kTokenPoint;
        if (token >= 0)
            ++text.at;
        return token;
    }

    TSLocale& locale;
    const NumberTexts<char>& texts;
    const std::uint32_t zero_;
    const bool digitsAreOwn_; // a digit can be no sign and no separator
};

// A character of bytes, longer than one byte or not, as the byte that its token is told by. False
// if it is none.
struct ByteImage {
    char byte;
    bool isOne;
};

// The token that a byte tells, of a character of `length` bytes.
template <class Form>
std::int32_t byteToken(const NumberTexts<char>& texts, ByteImage image, Text<Form>& text,
                       std::int32_t length)
{
    if (!image.isOne)
        return kTokenNone;
    // Deliberate: these two go one byte on, whatever the length of their character.
    if (image.byte == texts.group) {
        ++text.at;
        return kTokenGroup;
    }
    if (texts.hasPoint && image.byte == texts.point) {
        ++text.at;
        return kTokenPoint;
    }
    const std::int32_t token = texts.digits->values[static_cast<std::uint8_t>(image.byte)];
    if (token >= 0)
        text.at += length;
    return token;
}

struct MultiTokens {
    using Form = MultiForm;
    TSLocale& locale;
    const NumberTexts<char>& texts;

    bool isBlank(const char* at, std::int32_t length) const
    {
        const std::uint32_t type = length == 1 ? byteType(locale, *at) : longType(locale, at);
        return (type & kBlankType) != 0;
    }

    std::int32_t next(Text<Form>& text) const
    {
        const Form form{locale.codePage};
        const std::int32_t length = form.length(text);
        if (length > text.left())
            return kTokenNone;
        if (isBlank(text.at, length)) {
            do
                text.at += form.length(text);
            while (text.at != text.end && form.length(text) <= text.left() &&
                   isBlank(text.at, form.length(text)));
            return kTokenBlank;
        }
        if (standsAt(texts.plus, text.at, text.end)) {
            text.at += texts.plus.length;
            return kTokenPlus;
        }
        if (standsAt(texts.minus, text.at, text.end)) {
            text.at += texts.minus.length;
            return kTokenMinus;
        }
        return byteToken(texts, image(text.at, length), text, length);
    }

  private:
    ByteImage image(const char* at, std::int32_t length) const
    {
        if (!texts.mapsDigits)
            return {*at, length == 1};
        char bytes[5];
        const std::int32_t mapped =
            TSMapString(&locale, bytes, sizeof bytes, at, length, TS_MAP_DIGITS);
        return {bytes[0], mapped == 1};
    }
};

struct ShiftTokens {
    using Form = ShiftForm;
    TSLocale& locale;
    const NumberTexts<char>& texts;

    // A place in front of which a shift byte was stepped over is kept only with a token.
    std::int32_t next(Text<Form>& text) const
    {
        Text<Form> at = text;
        const std::int32_t token = tokenBehindShift(at);
        if (token != kTokenNone)
            text = at;
        return token;
    }

  private:
    const TSCodePageHeader& page() const { return tsCodePage(locale.codePage); }

    bool passShift(Text<Form>& text) const
    {
        const bool isIn = isShiftIn(page(), *text.at);
        if (!isIn && !isShiftOut(page(), *text.at))
            return false;
        text.state = isIn;
        ++text.at;
        return true;
    }

    bool isBlank(const Text<Form>& text) const
    {
        const std::uint32_t type =
            text.state ? longType(locale, text.at) : byteType(locale, *text.at);
        return (type & kBlankType) != 0;
    }

    std::int32_t tokenBehindShift(Text<Form>& text) const
    {
        const Form form{locale.codePage};
        passShift(text);
        if (text.at == text.end || form.length(text) > text.left())
            return kTokenNone;
        if (isBlank(text)) {
            while (form.settle(text) && form.length(text) <= text.left() && isBlank(text))
                text.at += form.length(text);
            return kTokenBlank;
        }
        if (takeSign(texts.plus, text))
            return kTokenPlus;
        if (takeSign(texts.minus, text))
            return kTokenMinus;
        return byteToken(texts, image(text), text, form.length(text));
    }

    // The shift bytes around a sign are left out of the comparison, and those inside it are
    // followed.
    bool takeSign(ValueText<char> sign, Text<Form>& text) const
    {
        if (sign.length > 0 && isShiftIn(page(), sign.at[0])) {
            ++sign.at;
            --sign.length;
        }
        if (sign.length > 0 && isShiftOut(page(), sign.at[sign.length - 1]))
            --sign.length;
        if (!standsAt(sign, text.at, text.end))
            return false;
        for (const char* const end = text.at + sign.length; text.at != end;)
            if (!passShift(text))
                ++text.at;
        return true;
    }

    ByteImage image(const Text<Form>& text) const
    {
        const std::int32_t length = text.state ? page().maxCharBytes : 1;
        if (!texts.mapsDigits)
            return {*text.at, length == 1};
        char bytes[5];
        const std::int32_t mapped = TSMapStringEx(&locale, bytes, 0, sizeof bytes, text.at,
                                                  text.state, length, TS_MAP_DIGITS);
        return {bytes[0], mapped == 1};
    }
};

// What 16-bit and 32-bit text have in common; `Type` tells the type word of a unit, `Map` its image
// as a digit.
template <class TokenForm, class Type, class Map>
std::int32_t unitToken(const NumberTexts<typename TokenForm::Unit>& texts, Text<TokenForm>& text,
                       const Type& type, const Map& map)
{
    if (type(*text.at) & kBlankType) {
        do
            ++text.at;
        while (text.at != text.end && (type(*text.at) & kBlankType));
        return kTokenBlank;
    }
    if (standsAt(texts.plus, text.at, text.end)) {
        text.at += texts.plus.length;
        return kTokenPlus;
    }
    if (standsAt(texts.minus, text.at, text.end)) {
        text.at += texts.minus.length;
        return kTokenMinus;
    }
    const auto unit = texts.mapsDigits ? map(text.at) : *text.at;
    std::int32_t token = kTokenNone;
    if (unit != 0 && unit == texts.group)
        token = kTokenGroup;
    else if (unit != 0 && texts.hasPoint && unit == texts.point)
        token = kTokenPoint;
    else if (unit < 256)
        token = texts.digits->values[unit];
    if (token >= 0)
        ++text.at;
    return token;
}

struct UnicodeTokens {
    using Form = UnicodeForm;
    TSLocale& locale;
    const NumberTexts<TSChar16>& texts;

    std::int32_t next(Text<Form>& text) const
    {
        return unitToken(
            texts, text, [](TSChar16 unit) { return uniTypeWord(unit); },
            [&](const TSChar16* unit) {
                TSChar16 image = *unit;
                TSMapStringU(&locale, &image, 1, unit, 1, TS_MAP_DIGITS);
                return image;
            });
    }
};

struct PackedTokens {
    using Form = PackedForm;
    TSLocale& locale;
    const NumberTexts<TSChar32>& texts;

    std::int32_t next(Text<Form>& text) const
    {
        return unitToken(
            texts, text, [&](TSChar32 unit) { return packedType(locale, unit); },
            [&](const TSChar32* unit) {
                TSChar32 image = *unit;
                TSMapStringW(&locale, &image, 1, unit, 1, TS_MAP_DIGITS);
                return image;
            });
    }
};

} // namespace vlx
