// The comparison of most texts: without streams, by a sort that is forward on level 1 and goes one
// way on each other level.
//
// Both texts are walked together, from one element with a level 1 weight to the next. The first
// difference on level 1 decides. As long as each element of one text has an element of the other at
// its side, and both have weights on the same levels, the streams of the texts have the same
// lengths, so that one difference on level 2 and one on level 3 are all that is left to know: the
// first one, or the last one where the level is backward. Whatever else comes up needs the streams.
#pragma once

#include <algorithm>
#include <optional>
#include <type_traits>

#include "collate/samestart.hpp"

namespace vlx {

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

// The record of the character at the beginning of a text, which is read, if that is a letter of its
// own: with a forward level 1 weight, and no part of a contraction; else null.
template <class Form>
[[gnu::always_inline]] inline const TSSortChar* readLetter(const Form& form, const Sort& sort,
                                                           Text<Form>& text)
{
    TSChar16 value;
    if (!readUnicode(form, text, value))
        return nullptr;
    // With contractions a character can also be lost where it is read ahead.
    if (sort.hasContractions() &&
        (sort.mayBeginPair(value) || value == CollationCursor<Form>::kNothing))
        return nullptr;
    const TSSortPage& page = sort.page(value);
    if (!isTablePage(page))
        return nullptr;
    const TSSortChar& record = sort.record(page, value);
    constexpr unsigned kLetter = forwardBit(1) << kDirectionShift;
    constexpr unsigned kLooked = kSortExpansion | kSortSpecial | kLetter;
    return (record.sortBits & kLooked) == kLetter && record.weight1 != 0 ? &record : nullptr;
}

// The difference of the first letters of two texts, by which most comparisons end; 0 if there is
// none, or if it takes more than two records to tell. A call would
// put both texts down and wait for them.
template <class Form>
[[gnu::always_inline]] inline std::int32_t firstLetters(const Form& form, const Sort& sort,
                                                        Text<Form> text1, Text<Form> text2)
{
    if (text1.at == text1.end || text2.at == text2.end || *text1.at == *text2.at)
        return 0;
    const TSSortChar* const letter1 = readLetter(form, sort, text1);
    const TSSortChar* const letter2 = readLetter(form, sort, text2);
    return letter1 && letter2 ? letter1->weight1 - letter2->weight1 : 0;
}

// The result of a comparison, if it takes no more than the letters behind what both texts begin
// with: one text has no more, or the letters differ, on any level and with the same text behind
// them. Only for sorts that allow a quick comparison.
template <class Form>
std::optional<std::int32_t> behindSameStart(const Form& form, const Sort& sort, Text<Form> text1,
                                            Text<Form> text2)
{
    const bool hasMore1 = text1.at != text1.end;
    const bool hasMore2 = text2.at != text2.end;
    if (!hasMore1 && !hasMore2)
        return 0;
    const TSSortChar* const letter1 = hasMore1 ? readLetter(form, sort, text1) : nullptr;
    const TSSortChar* const letter2 = hasMore2 ? readLetter(form, sort, text2) : nullptr;
    if (!letter1 || !letter2) {
        if (letter1 && !hasMore2)
            return 1;
        if (letter2 && !hasMore1)
            return -1;
        return {};
    }
    if (letter1->weight1 != letter2->weight1)
        return letter1->weight1 - letter2->weight1;
    if ((letter1->weight2 == 0) != (letter2->weight2 == 0) ||
        (letter1->weight3 == 0) != (letter2->weight3 == 0) || text1.state != text2.state ||
        text1.left() != text2.left() || !std::equal(text1.at, text1.end, text2.at))
        return {};
    const std::int32_t difference = letter1->weight2 - letter2->weight2;
    return difference != 0 ? difference : letter1->weight3 - letter2->weight3;
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
