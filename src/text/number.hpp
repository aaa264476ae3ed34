// What the members share that write a number: its text, and how much of it is delivered.
#pragma once

#include <charconv>

#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "text/amount.hpp"

namespace vlx {

// What a member that writes was asked for.
struct WriteOptions {
    explicit WriteOptions(std::uint32_t options)
        : ofObject((options & TS_OPT_OBJECT_VALUE) != 0),
          terminated((options & TS_OPT_TERMINATE) != 0), counted((options & TS_OPT_CHAR_COUNT) != 0)
    {
    }

    bool ofObject;
    bool terminated;
    bool counted; // sizes and results count characters
};

inline constexpr std::uint32_t kDoubleOptions = TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE;
inline constexpr std::uint32_t kLongOptions = kDoubleOptions | TS_OPT_UNSIGNED;

// The bytes of `count` characters of a number read from its end, and no more than its length and
// one. The written part of a number has `length` bytes, and zeros stand behind it.
std::int32_t bytesFromEnd(const TSLocale& locale, const char* text, std::int32_t length,
                          std::int32_t zeros, char zero, std::int32_t count);

inline constexpr std::int32_t kListSize = 32; // longer lists of group sizes are cut

// A whole number with its separators.
template <class Unit>
class LongText {
  public:
    template <class Reader>
    LongText(const Reader& reader, const Signs& signs, std::uint32_t magnitude)
    {
        char digits[10];
        const std::to_chars_result result =
            std::to_chars(digits, digits + sizeof digits, magnitude);
        Groups<Unit> groups(reader, signs, TS_LI_GROUPING, kListSize,
                            reader.separator(TS_LI_THOUSANDS_SEP));
        begin_ = putGrouped(room_ + kSize, digits, static_cast<std::int32_t>(result.ptr - digits),
                            groups, signs.zero);
    }
    LongText(const LongText&) = delete;
    LongText& operator=(const LongText&) = delete;

    const Unit* begin() const { return begin_; }
    std::int32_t length() const { return static_cast<std::int32_t>(room_ + kSize - begin_); }

  private:
    static constexpr int kSize = 19; // ten digits, nine separators

    Unit room_[kSize];
    Unit* begin_;
};

// Units written, and the code that goes with them.
struct Written {
    std::int32_t count;
    std::int32_t code;
};

// Writes a whole number: the sign first, then as many digits as fit, then the terminator, for which
// `size` already has a place less. `roomFor(text, size)` turns a size into units.
template <class Reader, class RoomFor>
Written putLong(const Reader& reader, const Signs& signs, std::int32_t value, bool isUnsigned,
                typename Reader::Unit* destination, std::int32_t size, bool terminated,
                const RoomFor& roomFor)
{
    using Unit = typename Reader::Unit;
    const bool negative = value < 0 && !isUnsigned;
    const auto bits = static_cast<std::uint32_t>(value);
    const LongText<Unit> text(reader, signs, negative ? 0 - bits : bits);
    std::int32_t count = 0;
    if (negative && size > 0) {
        destination[count++] = static_cast<Unit>(signs.minus);
        --size;
    }
    const std::int32_t copied = std::min(roomFor(text, size), text.length());
    std::copy_n(text.begin(), copied, destination + count);
    count += copied;
    if (terminated)
        destination[count++] = 0;
    return {count, copied < text.length() ? TS_ERR_BUFFER : TS_ERR_NONE};
}

// A double with its separators, its point and its digits behind that.
template <class Unit>
class DoubleText {
  public:
    template <class Reader>
    DoubleText(const Reader& reader, const Signs& signs, double value)
        : text_(value),
          groups_(reader, signs, TS_LI_GROUPING, kListSize, reader.separator(TS_LI_THOUSANDS_SEP)),
          // Deliberate: the sign of a negative zero is no minus sign but passes for its first
          // digit; no separator stands behind that.
          amount_(text_, value < 0 ? 1 : 0, groups_, value<0 || value> 0,
                  reader.separator(TS_LI_DECIMAL_POINT),
                  numberItem(reader.locale, TS_LI_FRAC_DIGITS, reader.ofObject), signs.zero)
    {
    }

    const Amount<Unit>& amount() const { return amount_; }

  private:
    FixedText text_;
    Groups<Unit> groups_;
    Amount<Unit> amount_;
};

// Writes a double behind the first `count` units: the sign, as much of the number as fits into
// `size` units, and the terminator.
template <class Unit>
Written putDouble(const DoubleText<Unit>& text, const Signs& signs, bool negative,
                  Unit* destination, std::int32_t count, std::int32_t size, bool terminated)
{
    const Amount<Unit>& amount = text.amount();
    if (negative && count < size)
        destination[count++] = static_cast<Unit>(signs.minus);
    const std::int32_t copied = std::clamp(size - count, 0, amount.length());
    amount.copy(destination + count, copied, signs.zero);
    count += copied;
    if (terminated)
        destination[count++] = 0;
    // Deliberate: one unit that is missing is no error.
    return {count, amount.length() - copied > 1 ? TS_ERR_BUFFER : TS_ERR_NONE};
}

// A size in characters as bytes, if the call counts characters.
inline std::int32_t roomForDouble(const TSLocale& locale, const DoubleText<char>& text,
                                  const Signs& signs, std::int32_t size, const WriteOptions& asked)
{
    const Amount<char>& amount = text.amount();
    return asked.counted ? bytesFromEnd(locale, amount.begin(), amount.written(), amount.zeros(),
                                        static_cast<char>(signs.zero), size)
                         : size;
}

// The place that a size in units leaves for a number.
inline constexpr auto kSameRoom = [](const auto&, std::int32_t size) { return size; };

} // namespace vlx
