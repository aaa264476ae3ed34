// The comparison of most texts: without streams, by a sort that is forward on level 1 and goes one
// way on each other level.
//
// Both texts are walked together, from one element with a level 1 weight to the next. The first
// difference on level 1 decides. As long as each element of one text has an element of the other at
// its side, and both have weights on the same levels, the streams of the texts have the same
// lengths, so that one difference on level 2 and one on level 3 are all that is left to know: the
// first one, or the last one where the level is backward. Whatever else comes up needs the streams.
#pragma once

#include <optional>

#include "collate/next.hpp"
#include "strings/compare.hpp"

namespace vlx {

// The units of whole characters that two texts have in common at their beginnings, or fewer.
template <class Form>
std::int32_t sameCharacters(const Form&, const Text<Form>& text1, const Text<Form>& text2)
{
    return firstDifference(text1.at, text2.at, std::min(text1.left(), text2.left()));
}
inline std::int32_t sameCharacters(const MultiForm& form, Text<MultiForm> text1,
                                   Text<MultiForm> text2)
{
    const char* const begin = text1.at;
    while (text1.at != text1.end && text2.at != text2.end && *text1.at == *text2.at) {
        const std::int32_t length = form.length(text1);
        if (length > 1 && (length > text1.left() || length > text2.left() ||
                           std::memcmp(text1.at, text2.at, static_cast<std::size_t>(length)) != 0))
            break;
        text1.at += length;
        text2.at += length;
    }
    return static_cast<std::int32_t>(text1.at - begin);
}
inline std::int32_t sameCharacters(const ShiftForm&, const Text<ShiftForm>&, const Text<ShiftForm>&)
{
    return 0; // the same bytes are other characters in another state
}

// Such a run, as far as a character that begins no contraction: what follows it begins an element.
template <class Form>
std::int32_t withoutOpenPair(const Form& form, const Sort& sort, const Text<Form>& text,
                             std::int32_t units)
{
    while (units > 0 && sort.mayBeginPair(form.unicode({text.at + units - 1, text.end})))
        --units;
    return units;
}
inline std::int32_t withoutOpenPair(const MultiForm&, const Sort&, const Text<MultiForm>&,
                                    std::int32_t)
{
    return 0; // characters cannot be read backwards
}
inline std::int32_t withoutOpenPair(const ShiftForm&, const Sort&, const Text<ShiftForm>&,
                                    std::int32_t)
{
    return 0;
}

template <class Form>
class QuickComparison {
  public:
    // Whether a sort allows it: positions count, and those of a sort with contractions depend on
    // how the text before was read.
    static bool isFor(const Sort& sort)
    {
        const TSSortTraits& traits = sort.traits;
        return (traits.forwardLevels & forwardBit(1)) &&
               (traits.forwardLevels | traits.backwardLevels) == kAllForward &&
               (!sort.hasContractions() || traits.isWithout4);
    }

    QuickComparison(const Form& form, const Sort& sort, const Text<Form>& text1,
                    const Text<Form>& text2)
        : form_(form), sort_(sort), text1_(text1), text2_(text2)
    {
    }

    // The result; none if the streams are needed.
    std::optional<std::int32_t> run()
    {
        for (;;) {
            skipSame();
            TSSortElement element1;
            TSSortElement element2;
            const Found found1 = read(text1_, element1);
            const Found found2 = read(text2_, element2);
            if (found1 == Found::kOther || found2 == Found::kOther)
                return {};
            if (found1 == Found::kEnd || found2 == Found::kEnd)
                return found1 == found2 ? difference2_ != 0 ? difference2_ : difference3_
                                        : (found1 == Found::kEnd ? -1 : 1);
            if (element1.weight1 != element2.weight1)
                return element1.weight1 - element2.weight1;
            if (!note(2, difference2_, element1.weight2, element2.weight2) ||
                !note(3, difference3_, element1.weight3, element2.weight3))
                return {};
        }
    }

  private:
    // At the place of a text: nothing, an element with a level 1 weight, or something else.
    enum class Found : std::uint8_t { kEnd, kLetter, kOther };

    // Keeps the difference of a level that counts; false where one text alone has a weight.
    bool note(int level, std::int32_t& difference, std::uint8_t weight1, std::uint8_t weight2) const
    {
        if (weight1 != weight2 &&
            (difference == 0 || !(sort_.traits.forwardLevels & forwardBit(level))))
            difference = weight1 - weight2;
        return (weight1 == 0) == (weight2 == 0);
    }

    Found read(Text<Form>& text, TSSortElement& element) const
    {
        TSChar16 value;
        if (!readUnicode(form_, text, value))
            return Found::kEnd;
        if (sort_.hasContractions()) {
            if (value == CollationCursor<Form>::kNothing) // can be lost where it is read ahead
                return Found::kOther;
            if (sort_.mayBeginPair(value)) {
                Text<Form> ahead = text;
                TSChar16 next;
                SortElements found;
                if (readUnicode(form_, ahead, next) &&
                    TSSortLookupPair(sort_, value, next, found)) {
                    text = ahead;
                    element = found.first;
                    return element.weight1 != 0 ? Found::kLetter : Found::kOther;
                }
            }
        }
        return lookUp(value, element);
    }

    Found lookUp(TSChar16 value, TSSortElement& element) const
    {
        const TSSortPage& page = sort_.page(value);
        if (isTablePage(page)) {
            const TSSortChar& record = sort_.record(page, value);
            if (record.sortBits & (kSortExpansion | kSortSpecial))
                return Found::kOther;
            element = {record.weight1, record.weight2, record.weight3, 0};
        } else if ((page.pageFlags & (kPageWithoutWeights | kPageLevel1)) == kPageLevel1) {
            element = {static_cast<std::uint16_t>(page.pageBase + (value & 0xFF)), 0, 0, 0};
        } else {
            return Found::kOther;
        }
        return element.weight1 != 0 ? Found::kLetter : Found::kOther;
    }

    // Moves over characters that are the same in both texts. Their elements are the same, whatever
    // they are, as long as no contraction reaches over the end of the run.
    void skipSame()
    {
        std::int32_t units = sameCharacters(form_, text1_, text2_);
        if (sort_.hasContractions())
            units = withoutOpenPair(form_, sort_, text1_, units);
        text1_.at += units;
        text2_.at += units;
    }

    const Form& form_;
    const Sort& sort_;
    Text<Form> text1_;
    Text<Form> text2_;
    std::int32_t difference2_ = 0;
    std::int32_t difference3_ = 0;
};

} // namespace vlx
