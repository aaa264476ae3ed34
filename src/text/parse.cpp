#include "text/parse.hpp"

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
