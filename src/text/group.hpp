// Group sizes, and whole numbers written with their separators.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "text/signs.hpp"
#include "text/values.hpp"

// Reads one group size of a list. `left` is what remains of the list and `next` where the next size
// stands, null behind the last one; -1 where no size can be read. Sizes saturate.
template <class Unit>
std::int32_t TSParseGroup(const vlx::Signs& signs, const Unit* list, std::int32_t& left,
                          const Unit*& next)
{
    if (!list || left <= 0 || *list == 0)
        return -1;
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    std::int32_t size = 0;
    std::int32_t read = 0;
    for (; read < left; ++read) {
        const std::uint32_t unit = vlx::valueOf(list[read]);
        if (unit == 0 || unit == signs.listSeparator)
            break;
        const std::uint32_t digit = unit - signs.zero;
        if (digit > 9)
            return -1;
        const bool fits = size <= (kMost - 9) / 10;
        size = fits ? size * 10 + static_cast<std::int32_t>(digit) : kMost;
    }
    if (read == left || list[read] == 0) {
        left = 0;
        next = nullptr;
    } else {
        // Deliberate: the separator is not taken off what remains.
        left -= read;
        next = list + read + 1;
    }
    return size;
}

namespace vlx {

// The sizes of the groups of a number, from the right.
template <class Unit>
class Groups {
  public:
    static constexpr std::int32_t kEndless = std::numeric_limits<std::int32_t>::max();
    static constexpr std::int32_t kMostListSize = 128;

    // A list is cut to `listSize`, a terminator included. Without a list or a separator there is
    // one group.
    template <class Reader>
    Groups(const Reader& reader, const Signs& signs, int listItem, std::int32_t listSize,
           Unit separator)
        : signs_(signs), separator_(separator)
    {
        if (separator == 0)
            return;
        const ValueText<Unit> list = reader.text(listItem, room_, listSize);
        if (list.at != room_ && list.at[list.length] != 0) // what is in place goes on
            std::copy_n(list.at, list.length, room_);
        room_[list.length] = 0;
        next_ = list.at[list.length] == 0 ? list.at : room_;
        left_ = list.length;
    }
    Groups(const Groups&) = delete;
    Groups& operator=(const Groups&) = delete;

    Unit separator() const { return separator_; }

    // The size of the next group: the next one of the list, the last one again if a 0 ends the
    // list, and else all that is left.
    std::int32_t next()
    {
        if (repeats_)
            return last_;
        const std::int32_t size = TSParseGroup(signs_, next_, left_, next_);
        if (size > 0)
            return last_ = size;
        repeats_ = true;
        return last_ = size == 0 ? last_ : kEndless;
    }

  private:
    const Signs& signs_;
    const Unit separator_;
    const Unit* next_ = nullptr;
    std::int32_t left_ = 0;
    std::int32_t last_ = kEndless;
    bool repeats_ = false;
    Unit room_[kMostListSize];
};

// Writes the digits of a number and its separators backward from `end` and gives their start.
// `text` is ASCII. A separator goes behind the first digit only if `behindFirst` is set.
template <class Unit>
Unit* putGrouped(Unit* end, const char* text, std::int32_t length, Groups<Unit>& groups,
                 std::int32_t zero, bool behindFirst = true)
{
    std::int32_t room = groups.next();
    for (std::int32_t i = length - 1; i >= 0; --i) {
        if (room == 0) {
            if (i > 0 || behindFirst)
                *--end = groups.separator();
            room = groups.next();
        }
        --room;
        *--end = static_cast<Unit>(text[i] - '0' + zero);
    }
    return end;
}

} // namespace vlx
