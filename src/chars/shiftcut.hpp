// Where stateful text is cut.
#pragma once

#include "chars/truncate.hpp"

namespace vlx {

// A place in the text and the state there.
struct Cut {
    std::int32_t offset;
    std::int32_t state;
};

// Walks the text of a string, to its end at most.
class ShiftCut {
  public:
    // The string has `whole` bytes with its terminator; `blanks` is null if they are to stay.
    ShiftCut(TraceGuard& trace, const TSCodePageHeader& page, const char* string,
             std::int32_t whole, const Blanks* blanks)
        : tsTrace(trace), page_(page), string_(string), whole_(whole), blanks_(blanks)
    {
    }

    // Walks to the character or shift byte that reaches the size, or to the blanks before it.
    Cut run(std::int32_t state, std::int32_t size)
    {
        Cut at{0, state};
        for (;;) {
            const char byte = string_[at.offset];
            const bool isShift = isShiftIn(page_, byte) || isShiftOut(page_, byte);
            const std::int32_t step = at.state && !isShift ? page_.maxCharBytes : 1;
            if (blanks_ && !isShift)
                look(at, step);
            if (step >= size - at.offset)
                break;
            if (isShift)
                at.state = isShiftIn(page_, byte);
            at.offset += step;
        }
        if (blank_.offset == 0)
            return at;
        // Deliberate: the cut lies one byte before the blanks.
        TS_PRINT(TRC1_DETAIL, "Setting index to %d", blank_.offset - 1);
        return {blank_.offset - 1, blank_.state};
    }

  private:
    // Follows the blanks: they begin at `blank_`, or nowhere if its offset is 0. The character that
    // reaches the size counts, too.
    void look(const Cut& at, std::int32_t step)
    {
        const char* const character = string_ + at.offset;
        if (step == 1 && blanks_->isBlank(*character)) {
            TS_PRINT(TRC1_DETAIL, "Blank encountered at %d", at.offset);
            if (blank_.offset == 0) {
                blank_ = {at.offset, 0};
                TS_PRINT(TRC1_DETAIL, "Setting blank position to %d", at.offset);
            }
        } else if (step <= whole_ - at.offset && blanks_->isFull(character, step)) {
            TS_PRINT(TRC1_DETAIL, "Full width blank encountered at %d", at.offset);
            if (blank_.offset == 0) {
                blank_ = {at.offset, 1};
                TS_PRINT(TRC1_DETAIL, "Blank position set to %d", at.offset);
            }
        } else if (blank_.offset != 0 && !(step == 1 && *character == 0)) {
            TS_PRINT(TRC1_DETAIL, "Resetting blank position");
            blank_.offset = 0;
        }
    }

    TraceGuard& tsTrace; // by the name that the trace looks for
    const TSCodePageHeader& page_;
    const char* const string_;
    const std::int32_t whole_;
    const Blanks* const blanks_;
    Cut blank_{0, 0};
};

} // namespace vlx
