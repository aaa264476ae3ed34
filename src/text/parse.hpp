// Numbers from tokens: the algorithms that the members share, over any form's tokens.
#pragma once

#include <cmath>

#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"
#include "text/token.hpp"

namespace vlx {

inline constexpr std::uint32_t kParseDoubleOptions =
    TS_OPT_OBJECT_VALUE | TS_OPT_MAP_DIGITS | TS_OPT_MONETARY;
inline constexpr std::uint32_t kParseLongOptions = kParseDoubleOptions | TS_OPT_UNSIGNED;

// 10 to a power, as pow() gives it.
double powerOfTen(std::int32_t exponent);

} // namespace vlx

// The state machine of a double: takes token after token until one cannot follow.
class TSNumberState {
  public:
    // False if the token ends the number.
    bool take(std::int32_t token);

    // True when the last token was the letter of an exponent.
    bool entersExponent() const { return state_ == State::kExponentLetter; }

    double value() const;

  private:
    enum class State : std::uint8_t {
        kStart,
        kSign,
        kLeadingPoint,
        kWhole,
        kGroup,
        kFraction,
        kExponentLetter,
        kExponentSign,
        kExponent
    };

    bool enter(State state)
    {
        state_ = state;
        return true;
    }
    bool takeDigit(std::int32_t digit);
    bool takeSign(bool negative);

    State state_ = State::kStart;
    double mantissa_ = 0;
    double sign_ = 1;
    std::int32_t fractionExponent_ = 0;
    std::int32_t exponent_ = 0;
    std::int32_t exponentSign_ = 1;
};

namespace vlx {

// Reads a double and moves behind it. The signs of an exponent are the fixed ones.
template <class Tokens>
double readDouble(const Tokens& tokens, NumberTexts<typename Tokens::Form::Unit>& texts,
                  const Signs& signs, Text<typename Tokens::Form>& text)
{
    TSNumberState number;
    while (text.at < text.end) {
        Text<typename Tokens::Form> behind = text;
        const std::int32_t token = tokens.next(behind);
        if (token == kTokenNone || !number.take(token))
            break;
        if (number.entersExponent())
            texts.takeFixedSigns(signs);
        text = behind;
    }
    return number.value();
}

inline bool isBase(std::int32_t base)
{
    return base == 0 || (base >= 2 && base <= 36);
}

// Reads a whole number.
template <class Tokens>
class LongReader {
    using Place = Text<typename Tokens::Form>;

  public:
    // `testsSigned`: a token behind the sign has to be one.
    LongReader(const Tokens& tokens, const Place& text, bool isUnsigned, bool testsSigned)
        : tokens_(tokens), at_(text), token_(text), unsigned_(isUnsigned), testsSigned_(testsSigned)
    {
    }

    // The number, 0 if there is none.
    std::int32_t read(std::int32_t base)
    {
        if (!begin() || !detectBase(base))
            return 0;
        std::uint32_t value = 0;
        // Deliberate: an X begins a number of base 16 without a 0, too.
        if (base != 16 || last_ != kTokenBaseMark) {
            // Deliberate: what is no token passes for the largest digit.
            if (last_ >= base)
                return 0;
            value = static_cast<std::uint32_t>(last_);
        }
        return result(value, takeDigits(value, static_cast<std::uint32_t>(base)));
    }

    // Where the parse stopped: at the last token.
    //
    // Deliberate: behind it if it ends the text, even if it is no part of the number.
    const Place& end() const { return at_.at < at_.end ? token_ : at_; }

  private:
    // Reads a token; false at the end of the text.
    bool next()
    {
        if (at_.at >= at_.end)
            return false;
        token_ = at_;
        last_ = tokens_.next(at_);
        return true;
    }

    // Reads up to the first token of the digits.
    bool begin()
    {
        if (!next() || (last_ == kTokenBlank && !next()))
            return false;
        if (last_ == kTokenMinus) {
            if (unsigned_)
                return false;
            negative_ = true;
        }
        if (last_ == kTokenMinus || last_ == kTokenPlus)
            return next() && !(testsSigned_ && last_ == kTokenNone);
        return last_ >= 0 && last_ < kTokenPlus;
    }

    bool detectBase(std::int32_t& base)
    {
        const bool guesses = base == 0;
        if (guesses && last_ != 0)
            base = 10;
        if (last_ != 0 || (!guesses && base != 16))
            return true;
        if (!next())
            return false;
        if (guesses)
            base = last_ == kTokenBaseMark ? 16 : 8;
        return true;
    }

    // Takes the digits behind the first one; true if the number is too large.
    //
    // Deliberate: the test looks one digit ahead, and a step that wraps around from below the limit
    // goes unseen.
    bool takeDigits(std::uint32_t& value, std::uint32_t base)
    {
        const std::uint32_t limit = UINT32_MAX / base + 1;
        bool atLimit = false;
        while (next()) {
            if (last_ == kTokenGroup)
                continue;
            if (last_ < 0 || static_cast<std::uint32_t>(last_) >= base)
                return false;
            if (atLimit)
                return true;
            value = value * base + static_cast<std::uint32_t>(last_);
            atLimit = value >= limit;
            if (!unsigned_ && value > INT32_MAX)
                return true;
        }
        return false;
    }

    std::int32_t result(std::uint32_t value, bool overflows) const
    {
        if (unsigned_)
            return static_cast<std::int32_t>(overflows ? UINT32_MAX : value);
        if (overflows)
            return negative_ ? INT32_MIN : INT32_MAX;
        return static_cast<std::int32_t>(negative_ ? 0 - value : value);
    }

    const Tokens& tokens_;
    Place at_;    // behind the last token
    Place token_; // at it
    std::int32_t last_ = kTokenNone;
    bool negative_ = false;
    const bool unsigned_;
    const bool testsSigned_;
};

// A position in the caller's text, as the functions hand it back.
template <class Unit>
Unit* writable(const Unit* at)
{
    return const_cast<Unit*>(at);
}

} // namespace vlx
