// A double as text: the digits that "%f" gives, those of them that are asked for, and groups.
#pragma once

#include "text/fixed.hpp"
#include "text/group.hpp"

namespace vlx {

// A value without its minus sign: digits with separators, the point, digits behind it, and zeros.
template <class Unit>
class Amount {
  public:
    // `skip` characters of the text are left out at the start.
    Amount(const FixedText& text, std::int32_t skip, Groups<Unit>& groups, bool behindFirst,
           Unit point, std::int32_t digits, std::int32_t zero)
    {
        // Deliberate: beyond six digits only five of the text are shown, and zeros for all but one
        // of the others.
        std::int32_t shown = digits;
        if (digits > FixedText::kDigits) {
            shown = FixedText::kDigits - 1;
            zeros_ = digits - FixedText::kDigits;
        }
        Unit* at = room_ + kPoint;
        begin_ = putGrouped(at, text.begin() + skip, text.wholeLength() - skip, groups, zero,
                            behindFirst);
        // Deliberate: the point is written even where no digit follows, an empty one as a zero, and
        // digits that are not asked for are cut, not rounded.
        *at++ = point;
        for (std::int32_t i = 0; i < shown && text.hasFraction(); ++i)
            *at++ = static_cast<Unit>(text.fraction()[i] - '0' + zero);
        written_ = static_cast<std::int32_t>(at - begin_);
    }
    Amount(const Amount&) = delete;
    Amount& operator=(const Amount&) = delete;

    // Behind the written units stand the zeros, which no one has written.
    const Unit* begin() const { return begin_; }
    std::int32_t written() const { return written_; }
    std::int32_t zeros() const { return zeros_; }
    std::int32_t length() const { return written_ + zeros_; }

    // Copies the first `count` units.
    void copy(Unit* destination, std::int32_t count, std::int32_t zero) const
    {
        const std::int32_t direct = std::min(count, written_);
        std::copy_n(begin_, direct, destination);
        std::fill_n(destination + direct, count - direct, static_cast<Unit>(zero));
    }

  private:
    static constexpr int kPoint = 2 * FixedText::kMostWhole;

  public:
    static constexpr int kMostWritten = kPoint + 1 + FixedText::kDigits;

  private:
    Unit room_[kMostWritten];
    Unit* begin_;
    std::int32_t written_;
    std::int32_t zeros_ = 0;
};

} // namespace vlx
