#include "text/parse.hpp"

namespace vlx {

namespace {

// The powers that are the nearest double to their value, as pow() gives them, too.
constexpr std::int32_t kListedPowers = 22;
constexpr double kPowers[] = {
    1e-22, 1e-21, 1e-20, 1e-19, 1e-18, 1e-17, 1e-16, 1e-15, 1e-14, 1e-13, 1e-12, 1e-11,
    1e-10, 1e-9,  1e-8,  1e-7,  1e-6,  1e-5,  1e-4,  1e-3,  1e-2,  1e-1,  1e0,   1e1,
    1e2,   1e3,   1e4,   1e5,   1e6,   1e7,   1e8,   1e9,   1e10,  1e11,  1e12,  1e13,
    1e14,  1e15,  1e16,  1e17,  1e18,  1e19,  1e20,  1e21,  1e22,
};
static_assert(sizeof kPowers / sizeof *kPowers == 2 * kListedPowers + 1);

} // namespace

double powerOfTen(std::int32_t exponent)
{
    if (exponent >= -kListedPowers && exponent <= kListedPowers)
        return kPowers[exponent + kListedPowers];
    return std::pow(10.0, exponent);
}

} // namespace vlx

// Beyond this the power is zero or infinite, however much larger the exponent.
static constexpr std::int32_t kMostExponent = 100000;

bool TSNumberState::take(std::int32_t token)
{
    if (token >= 0 && token <= 9)
        return takeDigit(token);
    switch (token) {
    case vlx::kTokenBlank:
        return state_ == State::kStart;
    case vlx::kTokenPlus:
    case vlx::kTokenMinus:
        return takeSign(token == vlx::kTokenMinus);
    case vlx::kTokenPoint:
        if (state_ == State::kWhole)
            return enter(State::kFraction);
        return (state_ == State::kStart || state_ == State::kSign) && enter(State::kLeadingPoint);
    case vlx::kTokenGroup:
        return state_ == State::kWhole && enter(State::kGroup);
    case vlx::kTokenExponentD:
    case vlx::kTokenExponentE:
        // Deliberate: an exponent stands behind a point only.
        return state_ == State::kFraction && enter(State::kExponentLetter);
    default:
        return false;
    }
}

bool TSNumberState::takeSign(bool negative)
{
    if (state_ == State::kStart) {
        sign_ = negative ? -1 : 1;
        return enter(State::kSign);
    }
    if (state_ == State::kExponentLetter) {
        exponentSign_ = negative ? -1 : 1;
        return enter(State::kExponentSign);
    }
    return false;
}

bool TSNumberState::takeDigit(std::int32_t digit)
{
    switch (state_) {
    case State::kStart:
        mantissa_ = digit;
        return enter(State::kWhole);
    case State::kSign:
    case State::kWhole:
    case State::kGroup:
        mantissa_ = mantissa_ * 10 + digit;
        return enter(State::kWhole);
    case State::kLeadingPoint:
        fractionExponent_ = -1;
        mantissa_ = digit / 10.0;
        return enter(State::kFraction);
    case State::kFraction:
        if (fractionExponent_ > -kMostExponent)
            --fractionExponent_;
        mantissa_ = mantissa_ + vlx::powerOfTen(fractionExponent_) * digit;
        return true;
    case State::kExponentLetter:
    case State::kExponentSign:
        exponent_ = digit;
        return enter(State::kExponent);
    case State::kExponent:
        exponent_ = std::min(exponent_ * 10 + digit, kMostExponent);
        return true;
    }
    return false;
}

double TSNumberState::value() const
{
    return vlx::powerOfTen(exponentSign_ * exponent_) * (sign_ * mantissa_);
}
