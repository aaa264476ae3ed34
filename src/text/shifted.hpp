// Stateful text that is written piece by piece into a buffer.
#pragma once

#include <algorithm>
#include <cstring>

#include "chars/form.hpp"
#include "text/values.hpp"

namespace vlx {

// Reads texts that begin and end in the single-byte state.
struct ShiftReader {
    using Unit = char;
    const TSLocale& locale;
    bool ofObject;

    ValueText<Unit> text(int item, Unit* buffer, std::int32_t size) const
    {
        return shiftItem(locale, item, ofObject, 0, buffer, size);
    }
};

// A text of the locale without the shift byte that closes it.
inline ValueText<char> unclosed(const TSCodePageHeader& page, ValueText<char> text)
{
    if (text.length > 0 && isShiftOut(page, text.at[text.length - 1]))
        --text.length;
    return text;
}

class ShiftedOutput {
  public:
    ShiftedOutput(TSLocale& locale, char* destination, std::int32_t state, std::int32_t size)
        : locale_(locale), page_(tsCodePage(locale.codePage)), destination_(destination),
          size_(size), state_(state)
    {
    }

    std::int32_t count() const { return count_; }
    std::int32_t state() const { return state_; }
    std::int32_t room() const { return size_ - count_; }

    // Writes a character of its state, and before it the shift byte that it needs. False if there
    // is no room for both.
    bool putCharacter(const char* bytes, std::int32_t characterState)
    {
        const std::int32_t length = characterState ? page_.maxCharBytes : 1;
        const bool shifts = (characterState != 0) != (state_ != 0);
        if (length + shifts > room())
            return false;
        if (shifts)
            putShift(characterState);
        std::memcpy(destination_ + count_, bytes, static_cast<std::size_t>(length));
        count_ += length;
        return true;
    }

    // Writes a shift byte, for which there must be room.
    void putShift(std::int32_t newState)
    {
        if (newState)
            lastShiftIn_ = count_;
        destination_[count_++] = static_cast<char>(newState ? page_.shiftIn : page_.shiftOut);
        state_ = newState;
    }

    // Copies the characters of a text that begins in `textState`, as many as fit; false if some do
    // not. A shift byte at the end of the text is left out.
    bool putText(const char* text, std::int32_t textState, std::int32_t length)
    {
        if (length == 0)
            return true;
        const bool skips = textState == 0 && state_ != 0 && isShiftIn(page_, *text);
        const bool shifts = (textState != 0) != (state_ != 0) && !skips;
        const bool closes = isShiftOut(page_, text[length - 1]) && length > 1;
        const bool fits = length + shifts - skips - closes <= room();
        const std::int32_t copied =
            TSStrcpyEx(&locale_, destination_ + count_, state_, room(), text, textState, length, 0);
        carryState(copied);
        return fits;
    }

    // Takes over bytes that were written behind the last one.
    void carryState(std::int32_t written)
    {
        for (const std::int32_t end = count_ + written; count_ < end;) {
            if (isShiftIn(page_, destination_[count_])) {
                state_ = 1;
                lastShiftIn_ = count_++;
            } else if (isShiftOut(page_, destination_[count_])) {
                state_ = 0;
                ++count_;
            } else {
                count_ = std::min(end, count_ + (state_ ? page_.maxCharBytes : 1));
            }
        }
    }

    // Takes over what another output wrote into the same text.
    void advance(const ShiftedOutput& other)
    {
        // Its shift byte stands before the end only if it wrote from here on.
        const bool continues = other.destination_ == destination_ + count_;
        lastShiftIn_ = continues && other.lastShiftIn_ >= 0 ? count_ + other.lastShiftIn_ : -1;
        count_ += other.count_;
        state_ = other.state_;
    }

    // Closes the text for its terminator. False if the last character had to give way for the shift
    // byte.
    bool close()
    {
        const bool fits = !state_ || room() > 0;
        if (!fits && count_ >= page_.maxCharBytes)
            count_ -= page_.maxCharBytes;
        if (state_ && count_ > 0 && lastShiftIn_ == count_ - 1)
            --count_;
        else if (state_ && room() > 0)
            destination_[count_++] = static_cast<char>(page_.shiftOut);
        return fits;
    }

    // Closes the text and writes the terminator behind `size`, where a place was kept for it.
    bool terminate()
    {
        const bool fits = close();
        destination_[count_++] = 0;
        return fits;
    }

  private:
    TSLocale& locale_;
    const TSCodePageHeader& page_;
    char* const destination_;
    const std::int32_t size_;
    std::int32_t count_ = 0;
    std::int32_t state_;
    std::int32_t lastShiftIn_ = -1;
};

} // namespace vlx
