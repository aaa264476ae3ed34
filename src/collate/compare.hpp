// The comparison of two texts by their collation elements.
#pragma once

#include "collate/next.hpp"
#include "collate/streams.hpp"
#include "strings/compare.hpp"

namespace vlx {

// One of the two texts.
template <class Form>
class CollationSide {
  public:
    CollationSide(const Form& form, const Sort& sort, const CollationCursor<Form>& cursor,
                  TSSortStreams& streams)
        : form_(form), sort_(sort), cursor_(cursor), streams_(streams)
    {
    }

    bool hasMore() const { return cursor_.hasMore(); }
    bool holdsSecond() const { return got_ == 2; }
    bool hasElement() const { return got_ != 0; }
    std::uint16_t weight1() const { return found_.first.weight1; }
    // Whether the element here takes part in level 1.
    bool stands() const { return got_ != 0 && found_.first.weight1 != 0; }
    bool isBackward() const { return stands() && !(found_.directions & forwardBit(1)); }

    void next()
    {
        if (got_ == 2) {
            found_.first = found_.second;
            got_ = 1;
        } else {
            got_ = TSCollNext(form_, sort_, cursor_, found_);
        }
    }
    void push()
    {
        if (got_ != 0)
            TSSortPush(streams_, found_.first, cursor_.position, found_.directions);
    }

    // A text that stands on a level 1 weight waits until the other one does.
    bool advance = true;

  private:
    const Form& form_;
    const Sort& sort_;
    CollationCursor<Form> cursor_;
    TSSortStreams& streams_;
    SortElements found_;
    std::int32_t got_ = 0; // elements of the last lookup that are not behind us
};

// The difference of two runs of bytes, over the shorter one.
inline std::int32_t runDifference(const std::uint8_t* run1, std::uint32_t size1,
                                  const std::uint8_t* run2, std::uint32_t size2)
{
    const std::uint32_t common = std::min(size1, size2);
    if (common == 0 || std::memcmp(run1, run2, common) == 0)
        return 0;
    const auto at = std::mismatch(run1, run1 + common, run2);
    return *at.first - *at.second;
}

// The same, and of runs that agree the shorter one is less.
inline std::int32_t compareRuns(const std::uint8_t* run1, std::uint32_t size1,
                                const std::uint8_t* run2, std::uint32_t size2)
{
    const std::int32_t result = runDifference(run1, size1, run2, size2);
    if (result != 0 || size1 == size2)
        return result;
    return size1 < size2 ? -1 : 1;
}

template <class Stream>
std::int32_t compareStreams(const Stream& first, const Stream& second)
{
    return compareRuns(first.data(), first.size(), second.data(), second.size());
}

// Both texts are walked together. Level 1 is compared on the way, as long as all that was seen is
// forward on it; the other levels are kept in streams for the end.
template <class Form>
class Collation {
  public:
    using Cursor = CollationCursor<Form>;

    Collation(const Form& form, const Sort& sort, const Cursor& cursor1, TSSortStreams& streams1,
              const Cursor& cursor2, TSSortStreams& streams2)
        : sort_(sort), streams1_(streams1), streams2_(streams2),
          side1_(form, sort_, cursor1, streams1), side2_(form, sort_, cursor2, streams2)
    {
    }

    std::int32_t run()
    {
        while (goesOn()) {
            const std::int32_t result = round();
            if (result != 0)
                return result;
        }
        // Deliberate: where both texts are at their ends, a second element that one of them holds
        // is lost.
        std::int32_t result = 0;
        if (side1_.hasMore() && !side2_.hasMore())
            result = tail(side1_, 1);
        else if (side2_.hasMore() && !side1_.hasMore())
            result = tail(side2_, -1);
        return result != 0 ? result : compareLevels();
    }

  private:
    using Side = CollationSide<Form>;

    bool goesOn() const
    {
        const bool more1 = side1_.hasMore();
        const bool more2 = side2_.hasMore();
        return (more1 && more2) || (side1_.holdsSecond() && (more2 || side2_.holdsSecond())) ||
               (side2_.holdsSecond() && (more1 || side1_.holdsSecond()));
    }

    std::int32_t round()
    {
        for (Side* side : {&side1_, &side2_}) {
            if (side->advance)
                side->next();
            if (side->isBackward())
                forward_ = false;
        }
        const bool stands1 = side1_.stands();
        const bool stands2 = side2_.stands();
        if (forward_) {
            if (stands1 && stands2 && side1_.weight1() != side2_.weight1())
                return side1_.weight1() - side2_.weight1();
            if (!(stands1 && stands2) && stands1 && !side2_.hasMore())
                return 1;
            if (!(stands1 && stands2) && stands2 && !side1_.hasMore())
                return -1;
        }
        for (Side* side : {&side1_, &side2_})
            if (side->advance)
                side->push();
        side1_.advance = !stands1 || stands2;
        side2_.advance = !stands2 || stands1;
        return 0;
    }

    // What is left of the longer text; `greater` is the result if it has a level 1 weight.
    std::int32_t tail(Side& side, std::int32_t greater)
    {
        while (side.hasMore() || side.holdsSecond()) {
            side.next();
            if (forward_ && side.stands())
                return greater;
            side.push();
        }
        return 0;
    }

    std::int32_t compareLevels()
    {
        streams1_.close();
        streams2_.close();
        std::int32_t result = 0;
        // Deliberate: of level 1 runs where one begins the other, level 2 decides.
        if (!forward_)
            result = runDifference(streams1_.level1.data(), streams1_.level1.size(),
                                   streams2_.level1.data(), streams2_.level1.size());
        if (result == 0)
            result = compareStreams(streams1_.level2, streams2_.level2);
        if (result == 0)
            result = compareStreams(streams1_.level3, streams2_.level3);
        if (result == 0)
            result = compareStreams(streams1_.level4, streams2_.level4);
        return result;
    }

    const Sort sort_;
    TSSortStreams& streams1_;
    TSSortStreams& streams2_;
    Side side1_;
    Side side2_;
    bool forward_ = true; // no level 1 weight was backward
};

} // namespace vlx
