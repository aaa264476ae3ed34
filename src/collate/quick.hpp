// The comparison of most texts: without streams, by a sort that is forward on level 1 and goes one
// way on each other level.
//
// Both texts are walked together, from one element with a level 1 weight to the next. The first
// difference on level 1 decides. As long as each element of one text has an element of the other at
// its side, and both have weights on the same levels, the streams of the texts have the same
// lengths, so that one difference on level 2 and one on level 3 are all that is left to know: the
// first one, or the last one where the level is backward. Whatever else comes up needs the streams.
#pragma once

#include <bit>
#include <cstring>
#include <optional>
#include <type_traits>

#include "collate/next.hpp"

namespace vlx {

// The bytes that two areas of a size have in common at their beginnings: a word at a time, and the
// last word where its bytes are of equal worth.
inline std::size_t sameBytes(const void* area1, const void* area2, std::size_t size)
{
    const auto* const first = static_cast<const std::uint8_t*>(area1);
    const auto* const second = static_cast<const std::uint8_t*>(area2);
    const auto differs = [&](std::size_t at) {
        std::uint64_t word1;
        std::uint64_t word2;
        std::memcpy(&word1, first + at, sizeof word1);
        std::memcpy(&word2, second + at, sizeof word2);
        return word1 ^ word2;
    };
    std::size_t same = 0;
    while (size - same >= 32 &&
           (differs(same) | differs(same + 8) | differs(same + 16) | differs(same + 24)) == 0)
        same += 32;
    for (; size - same >= 8; same += 8)
        if (const std::uint64_t bits = differs(same)) {
            if constexpr (std::endian::native == std::endian::little)
                return same + static_cast<std::size_t>(std::countr_zero(bits)) / 8;
            break;
        }
    while (same < size && first[same] == second[same])
        ++same;
    return same;
}

// The units of whole characters that two texts have in common at their beginnings, or fewer.
template <class Form>
std::int32_t sameCharacters(const Form&, const Text<Form>& text1, const Text<Form>& text2)
{
    if (text1.at == text1.end || text2.at == text2.end || *text1.at != *text2.at)
        return 0;
    constexpr std::size_t kUnit = sizeof(*text1.at);
    const auto shorter = static_cast<std::size_t>(std::min(text1.left(), text2.left()));
    return static_cast<std::int32_t>(sameBytes(text1.at, text2.at, shorter * kUnit) / kUnit);
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

// The beginning that two texts have in common.
template <class Form>
struct SameStart {
    std::int32_t measured = 0; // its units
    std::int32_t skipped = 0;  // those in front of an element
};

// Elements of the same characters are the same, whatever they are, as long as no contraction
// reaches over the end of the run.
template <class Form>
SameStart<Form> sameStart(const Form& form, const Sort& sort, const Text<Form>& text1,
                          const Text<Form>& text2)
{
    const std::int32_t units = sameCharacters(form, text1, text2);
    return {units, sort.hasContractions() ? withoutOpenPair(form, sort, text1, units) : units};
}

template <class Form>
Text<Form> textBehind(Text<Form> text, std::int32_t units)
{
    text.at += units;
    return text;
}

// One of the two texts.
template <class Form>
class QuickSide {
  public:
    // What comes next: nothing, an element with a level 1 weight, or something else.
    enum class Found : std::uint8_t { kEnd, kLetter, kOther };

    QuickSide(const Form& form, const Sort& sort, const Text<Form>& begin)
        : text(begin), form_(form), sort_(sort)
    {
    }

    bool hasText() const { return text.at != text.end; }
    bool holdsSecond() const { return holds_; } // of an expansion
    bool hasMore() const { return hasText() || holds_; }

    [[gnu::always_inline]] Found next()
    {
        if (holds_) [[unlikely]] {
            holds_ = false;
            element = second_;
            return asFound();
        }
        TSChar16 value;
        if (!readUnicode(form_, text, value))
            return Found::kEnd;
        if (sort_.hasContractions() && readPair(value))
            return asFound();
        return lookUp(value);
    }

    Text<Form> text;
    TSSortElement element{};
    bool hasExpanded = false; // an expansion was read

  private:
    Found asFound() const { return element.weight1 != 0 ? Found::kLetter : Found::kOther; }

    // Reads the second character of a contraction; false if there is none. A character that can be
    // lost where it is read ahead is left to the streams.
    [[gnu::noinline]] bool readPair(TSChar16 value)
    {
        element.weight1 = 0;
        if (value == CollationCursor<Form>::kNothing)
            return true;
        if (!sort_.mayBeginPair(value))
            return false;
        Text<Form> ahead = text;
        TSChar16 next;
        SortElements found;
        if (!readUnicode(form_, ahead, next) || !TSSortLookupPair(sort_, value, next, found))
            return false;
        text = ahead;
        element = found.first;
        return true;
    }

    Found lookUp(TSChar16 value)
    {
        const TSSortPage& page = sort_.page(value);
        if (!isTablePage(page)) {
            if ((page.pageFlags & (kPageWithoutWeights | kPageLevel1)) != kPageLevel1)
                return Found::kOther;
            element = {static_cast<std::uint16_t>(page.pageBase + (value & 0xFF)), 0, 0, 0};
            return asFound();
        }
        const TSSortChar& record = sort_.record(page, value);
        if (record.sortBits & (kSortExpansion | kSortSpecial)) [[unlikely]]
            return record.sortBits & kSortExpansion ? expand(value) : Found::kOther;
        element = {record.weight1, record.weight2, record.weight3, 0};
        return asFound();
    }

    [[gnu::noinline]] Found expand(TSChar16 value)
    {
        SortElements found;
        if (lookUpExpansion(sort_, value, found) == 0)
            return Found::kOther;
        element = found.first;
        second_ = found.second;
        holds_ = true;
        hasExpanded = true;
        return asFound();
    }

    const Form& form_;
    const Sort& sort_;
    TSSortElement second_{};
    bool holds_ = false;
};

// The difference of the first letters of two texts, by which most comparisons end; 0 if there is
// none, or if it takes more than two records to tell.
template <class Form>
std::int32_t firstLetters(const Form& form, const Sort& sort, Text<Form> text1, Text<Form> text2)
{
    TSChar16 value1;
    TSChar16 value2;
    if (!readUnicode(form, text1, value1) || !readUnicode(form, text2, value2) || value1 == value2)
        return 0;
    // With contractions a character can also be lost where it is read ahead.
    constexpr TSChar16 kNothing = CollationCursor<Form>::kNothing;
    if (sort.hasContractions() && (sort.mayBeginPair(value1) || sort.mayBeginPair(value2) ||
                                   value1 == kNothing || value2 == kNothing))
        return 0;
    const TSSortPage& page1 = sort.page(value1);
    const TSSortPage& page2 = sort.page(value2);
    if (!isTablePage(page1) || !isTablePage(page2))
        return 0;
    const TSSortChar& record1 = sort.record(page1, value1);
    const TSSortChar& record2 = sort.record(page2, value2);
    constexpr unsigned kLooked = kSortExpansion | kSortSpecial | forwardBit(1) << kDirectionShift;
    constexpr unsigned kLetter = forwardBit(1) << kDirectionShift;
    if ((record1.sortBits & kLooked) != kLetter || (record2.sortBits & kLooked) != kLetter ||
        record1.weight1 == 0 || record2.weight1 == 0)
        return 0;
    return record1.weight1 - record2.weight1;
}

template <class Form>
class QuickComparison {
  public:
    // Whether a sort allows it. With contractions positions depend on how the text before was read,
    // and so does where stateful text ends: reading ahead passes shift bytes.
    static bool isFor(const Sort& sort)
    {
        const TSSortTraits& traits = sort.traits;
        return (traits.forwardLevels & forwardBit(1)) &&
               (traits.forwardLevels | traits.backwardLevels) == kAllForward &&
               (!sort.hasContractions() || (traits.isWithout4 && !std::is_same_v<Form, ShiftForm>));
    }

    // `same` is what the texts begin with.
    QuickComparison(const Form& form, const Sort& sort, const Text<Form>& text1,
                    const Text<Form>& text2, const SameStart<Form>& same)
        : form_(form), sort_(sort), side1_(form, sort, textBehind(text1, same.skipped)),
          side2_(form, sort, textBehind(text2, same.skipped)), start1_(text1), start2_(text2),
          measured_(text1.at + same.measured), isWithout4_(sort.traits.isWithout4),
          movesStart_(isWithout4_ && sort.traits.forwardLevels == kAllForward &&
                      !sort.hasContractions())
    {
    }

    // The result; none if the streams are needed.
    std::optional<std::int32_t> run()
    {
        for (;;) {
            if (!side1_.holdsSecond() && !side2_.holdsSecond()) {
                skipSame();
                keepStart();
            }
            if (!side1_.hasMore() || !side2_.hasMore())
                return atEnd();
            const Found found1 = side1_.next();
            const Found found2 = side2_.next();
            if (found1 == Found::kOther || found2 == Found::kOther)
                return {};
            if (found1 == Found::kEnd || found2 == Found::kEnd) // of characters that are cut off
                return found1 == found2 ? lastLevels() : found1 == Found::kEnd ? -1 : 1;
            const TSSortElement& element1 = side1_.element;
            const TSSortElement& element2 = side2_.element;
            if (element1.weight1 != element2.weight1)
                return element1.weight1 - element2.weight1;
            if (!note(2, difference2_, element1.weight2, element2.weight2) ||
                !note(3, difference3_, element1.weight3, element2.weight3))
                return {};
        }
    }

    // Where the streams can begin: the texts before are the same on all levels.
    const Text<Form>& start1() const { return start1_; }
    const Text<Form>& start2() const { return start2_; }

  private:
    using Found = typename QuickSide<Form>::Found;

    // One text, or both, have no more. Deliberate: where both are at their ends, a second element
    // that one of them holds is lost; but not if a character was lost that had been read ahead,
    // which the streams know.
    std::optional<std::int32_t> atEnd()
    {
        for (QuickSide<Form>* side : {&side1_, &side2_}) {
            if (!side->hasText()) {
                if (side->holdsSecond() && sort_.hasContractions())
                    return {};
                continue;
            }
            const Found found = side->next();
            if (found == Found::kOther)
                return {};
            if (found == Found::kLetter)
                return side == &side1_ ? 1 : -1;
        }
        return lastLevels();
    }

    std::int32_t lastLevels() const { return difference2_ != 0 ? difference2_ : difference3_; }

    // Keeps the difference of a level that counts; false where one text alone has a weight.
    bool note(int level, std::int32_t& difference, std::uint8_t weight1, std::uint8_t weight2) const
    {
        if (weight1 != weight2 &&
            (difference == 0 || !(sort_.traits.forwardLevels & forwardBit(level))))
            difference = weight1 - weight2;
        return (weight1 == 0) == (weight2 == 0);
    }

    // Moves over characters that are the same in both texts. What cannot be skipped of such a run
    // is read, and not measured again. Behind an expansion the positions of the texts can part, and
    // then special characters differ by them.
    void skipSame()
    {
        if (side1_.text.at < measured_ ||
            (!isWithout4_ && (side1_.hasExpanded || side2_.hasExpanded)))
            return;
        const SameStart<Form> same = sameStart(form_, sort_, side1_.text, side2_.text);
        if (same.measured == 0)
            return;
        measured_ = side1_.text.at + same.measured;
        side1_.text.at += same.skipped;
        side2_.text.at += same.skipped;
    }

    // What is backward on a level comes behind what follows it, positions count from the beginning,
    // and a character that was read ahead can be lost: then the streams begin there, too.
    void keepStart()
    {
        if ((difference2_ | difference3_) != 0 || !movesStart_)
            return;
        start1_ = side1_.text;
        start2_ = side2_.text;
    }

    const Form& form_;
    const Sort& sort_;
    QuickSide<Form> side1_;
    QuickSide<Form> side2_;
    Text<Form> start1_;
    Text<Form> start2_;
    const typename Form::Unit* measured_; // of the first text: the end of a run that is the same
    const bool isWithout4_;               // nothing has a level 4 weight
    const bool movesStart_; // nothing in front of the first difference matters to the streams
    std::int32_t difference2_ = 0;
    std::int32_t difference3_ = 0;
};

} // namespace vlx
