// An array between guards: one of its ends lies at memory that nobody may touch, the other at bytes
// that nobody may change.
#pragma once

#include <algorithm>
#include <cstring>
#include <vector>

#include "chars/guarded_text.hpp"

namespace vlx::test {

class GuardedArea {
  public:
    // Which end lies at memory that nobody may touch.
    enum class Guard { kAbove, kBelow };

    // Places an array; the next call takes the place of this one.
    template <class Unit>
    Unit* place(const std::vector<Unit>& units, Guard guard)
    {
        content_.assign(units.size() * sizeof(Unit) + kMargin, kFill);
        margin_ = guard == Guard::kAbove ? kMargin : 0;
        if (!units.empty())
            std::memcpy(content_.data() + margin_, units.data(), units.size() * sizeof(Unit));
        place_ = guard == Guard::kAbove ? room_.endingAtGuard(content_.data(), content_.size())
                                        : room_.beginningAtGuard(content_.data(), content_.size());
        return reinterpret_cast<Unit*>(place_ + margin_);
    }

    // True if the area holds just these units, and its margin is as it was.
    template <class Unit>
    bool holds(const std::vector<Unit>& units)
    {
        if (units.size() * sizeof(Unit) + kMargin != content_.size())
            return false;
        if (!units.empty())
            std::memcpy(content_.data() + margin_, units.data(), units.size() * sizeof(Unit));
        return std::memcmp(place_, content_.data(), content_.size()) == 0;
    }

  private:
    // Keeps the alignment of the units, too.
    static constexpr std::size_t kMargin = 32;
    static constexpr char kFill = static_cast<char>(0xA5);

    GuardedText room_;
    std::vector<char> content_;
    std::size_t margin_ = 0;
    char* place_ = nullptr;
};

} // namespace vlx::test
