// Comparison of stateful text.
#pragma once

#include "mapping/mapbytes.hpp"
#include "strings/compare.hpp"

namespace vlx {

// One of the texts, as far as it is compared.
class ShiftSide {
  public:
    // The text can be read up to `end`. What is compared may be shorter, and end inside a
    // character.
    ShiftSide(const TSObject* object, const CompareText& text, const char* end)
        : object_(object), page_(tsCodePage(object)), at_(text.string), end_(end),
          left_(text.length), state_(text.state)
    {
    }

    const char* at() const { return at_; }
    void takeState(const ShiftSide& other) { state_ = other.state_; }
    std::int32_t left() const { return left_; } // negative behind a character that was cut off
    std::int32_t state() const { return state_; }
    std::int32_t length() const { return state_ ? page_.maxCharBytes : 1; }

    bool atShift() const
    {
        return left_ > 0 && (isShiftIn(page_, *at_) || isShiftOut(page_, *at_));
    }
    // Takes the state of the shift byte here and moves behind it.
    void passShift()
    {
        state_ = isShiftIn(page_, *at_);
        move(1);
    }
    void move(std::int32_t count)
    {
        at_ += std::min<std::ptrdiff_t>(count, end_ - at_);
        left_ -= count;
    }

    // The character here; zeros stand for what cannot be read.
    Image character() const
    {
        Image image;
        image.length = length();
        std::memcpy(image.bytes, at_,
                    static_cast<std::size_t>(std::min<std::ptrdiff_t>(image.length, end_ - at_)));
        return image;
    }

    // Its half-width form, for which a byte stands by itself.
    Image narrow() const
    {
        const Image source = character();
        if (!state_)
            return source;
        Image image;
        image.length = TSCpPutWide(
            image.bytes, TSCpUnmapValue(object_, TSCpGetWideEx(object_, source.bytes, state_)));
        return image.bytes[0] != 0 ? image : source;
    }

    // Its upper-case form.
    Image upper() const
    {
        Image image;
        if (!state_)
            image.bytes[0] = static_cast<char>(page_.toUpper[static_cast<std::uint8_t>(*at_)]);
        else if (length() <= end_ - at_)
            TSCpMapCharEx(object_, at_, image.bytes, kMapsToUpper);
        else
            TSCpMapCharEx(object_, character().bytes, image.bytes, kMapsToUpper);
        return image;
    }

  private:
    const TSObject* const object_;
    const TSCodePageHeader& page_;
    const char* at_;
    const char* const end_;
    std::int32_t left_;
    std::int32_t state_;
};

// The bytes that whole characters span, up to a length: a shift byte at the end is one of them.
inline std::int32_t adjustLength(const TSCodePageHeader& page, const char* string,
                                 std::int32_t state, std::int32_t length)
{
    std::int32_t offset = 0;
    while (offset < length) {
        if (isShiftIn(page, string[offset]) || isShiftOut(page, string[offset])) {
            state = isShiftIn(page, string[offset]);
            ++offset;
        }
        const std::int32_t step = state ? page.maxCharBytes : 1;
        if (step > length - offset)
            break;
        offset += step;
    }
    return offset;
}

// A text and the end of what can be read of it.
struct ShiftText {
    ShiftText(const TSLocale& locale, const char* string, std::int32_t state, std::int32_t length,
              bool counted)
        : text{string, length, state}
    {
        if (length < 0)
            text.length = unitsOf(string);
        else if (!counted)
            text.length = adjustLength(tsCodePage(locale.codePage), string, state, length);
        else if (length > 0)
            text.length = TSCpCharsToBytes(locale.codePage, string, state, length);
        end = string + text.length + (length < 0 ? 1 : 0);
    }

    // A shift byte at the beginning sets the state and is left out.
    void begin(const TSCodePageHeader& page)
    {
        if (text.length == 0)
            return;
        const bool isIn = isShiftIn(page, *text.string);
        if (!isIn && !isShiftOut(page, *text.string))
            return;
        text.state = isIn;
        ++text.string;
        --text.length;
    }

    CompareText text;
    const char* end;
};

// By half-width forms. Gives the result: of what differs first, or of what is left behind it.
inline std::int32_t compareShiftWidth(TraceGuard& tsTrace, ShiftSide first, ShiftSide second)
{
    while (first.left() > 0 && second.left() > 0) {
        ShiftSide* const shifted = first.atShift() ? &first : second.atShift() ? &second : nullptr;
        if (shifted) {
            shifted->passShift();
            continue;
        }
        const Image image1 = first.narrow();
        const Image image2 = second.narrow();
        const bool alike = image1.length == image2.length;
        const std::int32_t result = alike
                                        ? byteDifference(image1.bytes, image2.bytes, image1.length)
                                        : image1.length - image2.length;
        if (result != 0) {
            TS_PRINT(TRC1_DETAIL, "Strings are unequal: len1 = %d, len2 = %d", image1.length,
                     image2.length);
            if (alike) {
                const Image text1 = first.character();
                const Image text2 = second.character();
                TS_DUMP(TRC1_DETAIL, text1.bytes, text1.size(), "String1");
                TS_DUMP(TRC1_DETAIL, text2.bytes, text2.size(), "String2");
            }
            return result;
        }
        first.move(first.length());
        second.move(second.length());
    }
    for (ShiftSide* side : {&first, &second})
        while (side->atShift())
            side->passShift();
    return first.left() - second.left();
}

// By upper-case forms, without pairs: what differs first, or 0. Both texts are in one state all the
// time, that of the first one, since only equal shift bytes are passed. A character that the end of
// a text cuts off is the last one that counts.
inline std::int32_t compareShiftCase(ShiftSide first, ShiftSide second)
{
    std::int32_t left = std::min(first.left(), second.left());
    if (first.length() != second.length() || left < first.length())
        return first.length() - second.length();
    second.takeState(first); // another one has characters of the same length
    while (left > 0) {
        if (first.atShift() || second.atShift()) {
            const char byte1 = *first.at();
            const char byte2 = *second.at();
            if (byte1 != byte2) {
                if (first.state() == 1)
                    return first.atShift() ? -1 : 1;
                return static_cast<signed char>(byte1) - static_cast<signed char>(byte2);
            }
            first.passShift();
            second.passShift();
            if (--left == 0)
                return 0;
        }
        const std::int32_t length = first.length();
        const Image image1 = first.upper();
        const Image image2 = second.upper();
        const std::int32_t result = byteDifference(image1.bytes, image2.bytes, 4);
        if (result != 0)
            return result;
        first.move(length);
        second.move(length);
        left -= length;
    }
    return 0;
}

} // namespace vlx
