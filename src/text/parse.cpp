#include "text/parse.hpp"

namespace vlx {

constexpr double kPowers[2 * kListedPowers + 1] = {
    1e-22, 1e-21, 1e-20, 1e-19, 1e-18, 1e-17, 1e-16, 1e-15, 1e-14, 1e-13, 1e-12, 1e-11,
    1e-10, 1e-9,  1e-8,  1e-7,  1e-6,  1e-5,  1e-4,  1e-3,  1e-2,  1e-1,  1e0,   1e1,
    1e2,   1e3,   1e4,   1e5,   1e6,   1e7,   1e8,   1e9,   1e10,  1e11,  1e12,  1e13,
    1e14,  1e15,  1e16,  1e17,  1e18,  1e19,  1e20,  1e21,  1e22,
};

} // namespace vlx

bool TSNumberState::takeOther(std::int32_t token)
{
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
