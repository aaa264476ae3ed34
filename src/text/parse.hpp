// Numbers from tokens: the algorithms that the members share, over any form's tokens.
#pragma once

#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"
#include "text/power.hpp"
#include "text/token.hpp"

namespace vlx {

inline constexpr std::uint32_t kParseDoubleOptions =
    TS_OPT_OBJECT_VALUE | TS_OPT_MAP_DIGITS | TS_OPT_MONETARY;
inline constexpr std::uint32_t kParseLongOptions = kParseDoubleOptions | TS_OPT_UNSIGNED;

// Beyond this the power is zero or infinite, however much larger the exponent.
inline constexpr std::int32_t kMostExponent = 100000;

} // namespace vlx

// The state machine of a double: takes token after token until one cannot follow.
class TSNumberState {
  public:
    // False if the token ends the number.
    bool take(std::int32_t token)
    {
        return token >= 0 && token <= 9 ? takeDigit(token) : takeOther(token);
    }

    // True when the last token was the letter of an exponent.
    bool entersExponent() const { return state_ == State::kExponentLetter; }

    double value() const
    {
        const double power = exponent_ == 0 ? 1 : vlx::powerOfTen(exponentSign_ * exponent_);
        return power * (sign_ * mantissa());
    }

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

    // Below this the next digit leaves a whole number that a double holds.
    static constexpr std::uint64_t kExactLimit = (std::uint64_t{1} << 53) / 10 - 1;

    bool enter(State state)
    {
        state_ = state;
        return true;
    }

    // The digits so far: a whole number as long as it is exact, which a double would be, too.
    double mantissa() const { return isWhole_ ? static_cast<double>(whole_) : mantissa_; }
    void setMantissa(double mantissa)
    {
        mantissa_ = mantissa;
        isWhole_ = false;
    }

    bool takeDigit(std::int32_t digit)
    {
        switch (state_) {
        case State::kStart: // nothing stands before the digit
        case State::kSign:
        case State::kWhole:
        case State::kGroup:
            if (isWhole_ && whole_ < kExactLimit)
                whole_ = whole_ * 10 + static_cast<std::uint64_t>(digit);
            else
                setMantissa(mantissa() * 10 + digit);
            return enter(State::kWhole);
        case State::kLeadingPoint:
            fractionExponent_ = -1;
            setMantissa(digit / 10.0);
            return enter(State::kFraction);
        case State::kFraction:
            if (fractionExponent_ > -vlx::kMostExponent)
                --fractionExponent_;
            setMantissa(mantissa() + vlx::powerOfTen(fractionExponent_) * digit);
            return true;
        case State::kExponentLetter:
        case State::kExponentSign:
            exponent_ = digit;
            return enter(State::kExponent);
        case State::kExponent:
            exponent_ = std::min(exponent_ * 10 + digit, vlx::kMostExponent);
            return true;
        }
        return false;
    }

    bool takeOther(std::int32_t token);
    bool takeSign(bool negative);

    State state_ = State::kStart;
    bool isWhole_ = true;
    std::uint64_t whole_ = 0;
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
        const auto* const at = text.at;
        const std::int32_t state = text.state;
        const std::int32_t token = tokens.next(text);
        if (token == kTokenNone || !number.take(token)) {
            text.at = at;
            text.state = state;
            break;
        }
        if (number.entersExponent())
            texts.takeFixedSigns(signs);
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
        : tokens_(tokens), text_(text), tokenAt_(text.at), tokenState_(text.state),
          unsigned_(isUnsigned), testsSigned_(testsSigned)
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
        const bool overflows = takeDigits(value, static_cast<std::uint32_t>(base));
        return result(value, overflows);
    }

    // Where the parse stopped: at the last token.
    //
    // Deliberate: behind it if it ends the text, even if it is no part of the number.
    Place end() const
    {
        return text_.at < text_.end ? Place{tokenAt_, text_.end, tokenState_} : text_;
    }

  private:
    // Reads a token; false at the end of the text.
    bool next()
    {
        if (text_.at >= text_.end)
            return false;
        tokenAt_ = text_.at;
        tokenState_ = text_.state;
        last_ = tokens_.next(text_);
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
    Place text_;                                 // behind the last token
    const typename Tokens::Form::Unit* tokenAt_; // where it begins
    std::int32_t tokenState_;
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
