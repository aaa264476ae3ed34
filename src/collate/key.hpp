// What the members of sort keys share.
#pragma once

#include <optional>

#include "collate/fold.hpp"
#include "frame/scratch.hpp"
#include "frame/trace.hpp"
#include "host/host.hpp"

// Writes the key of Unicode values and returns its length, which can be more than the buffer has:
// then nothing is written. -1 without memory.
//
// A key is the level 1 run, two bytes a weight, the runs of level 2 and level 3 without the default
// weights at their ends, and the level 4 run, with a zero byte behind each of the first three.
std::int32_t TSSortBuildKey(const TSLocale& locale, char* buffer, std::int32_t size,
                            const TSChar16* values, std::int32_t count);

namespace vlx {

// The options of a key are one value out of three.
struct KeyOptions {
    explicit KeyOptions(std::uint32_t options) : rest(options & ~TS_OPT_CHAR_COUNT) {}

    bool isGood() const
    {
        return rest == 0 || rest == TS_OPT_IGNORE_CASE || rest == TS_OPT_IGNORE_WIDTH;
    }
    Fold fold() const
    {
        if (rest == 0)
            return Fold::kNone;
        return rest == TS_OPT_IGNORE_CASE ? Fold::kCase : Fold::kWidth;
    }

    const std::uint32_t rest;
};

// Room for the values of a string, two of each unit. A short string takes no memory of the
// allocator, where nobody can tell: slots of the caller's own see each call.
class KeyValues {
  public:
    explicit KeyValues(std::int32_t units)
    {
        if (units <= kOnStack && tsSlots.allocate == host::allocate)
            values_ = stack_;
        else
            values_ = block_.emplace(2 * sizeof(TSChar16) * static_cast<std::uint64_t>(units))
                          .as<TSChar16>();
    }

    TSChar16* get() const { return values_; } // null without memory
    void giveBack() { block_.reset(); }

  private:
    static constexpr std::int32_t kOnStack = 128;

    TSChar16 stack_[2 * kOnStack];
    std::optional<Scratch> block_;
    TSChar16* values_;
};

// The key of an empty string: three zero bytes, as far as there is room.
inline std::int32_t emptyKey(char* buffer, std::int32_t size)
{
    if (size <= 0)
        return 0;
    std::memset(buffer, 0, static_cast<std::size_t>(std::min(size, 3)));
    return 3;
}

// The key of the binary sort without a fold: the text as it is.
inline std::int32_t textKey(char* buffer, std::int32_t size, const char* string,
                            std::int32_t length)
{
    if (length <= size)
        std::memcpy(buffer, string, static_cast<std::size_t>(length));
    return length;
}

// Lays numbers out in `bytesEach` bytes, the high one first, if all of them fit; returns the number
// of bytes, or -1 for more than can be told.
template <class NumberAt>
std::int32_t numbersKey(char* buffer, std::int32_t size, std::int32_t count, int bytesEach,
                        const NumberAt& numberAt)
{
    const std::int64_t total = std::int64_t{count} * bytesEach;
    if (total > INT32_MAX)
        return -1;
    if (total <= size)
        for (std::int32_t i = 0; i < count; ++i) {
            const std::uint32_t number = numberAt(i);
            for (int shift = 8 * (bytesEach - 1); shift >= 0; shift -= 8)
                *buffer++ = static_cast<char>(number >> shift);
        }
    return static_cast<std::int32_t>(total);
}

// Writes characters one behind the other. Deliberate: a character that does not fit leaves a gap,
// and a shorter one can still stand behind it.
class KeyText {
  public:
    KeyText(char* buffer, std::int32_t size)
        : buffer_(buffer), size_(size > 0 ? size : 0), room_(size_)
    {
    }

    void put(const char* bytes, std::int32_t length)
    {
        if (length <= room_) {
            // The room can be more than there is behind the gaps.
            if (at_ + length <= size_)
                std::memcpy(buffer_ + at_, bytes, static_cast<std::size_t>(length));
            room_ -= length;
        }
        at_ += length;
    }
    // A shift byte: without room it is not there at all.
    void putShift(std::uint8_t byte)
    {
        const char bytes[] = {static_cast<char>(byte)};
        if (room_ > 0)
            put(bytes, 1);
    }

    // What was written and what was not; -1 for more than can be told.
    std::int32_t length() const { return at_ <= INT32_MAX ? static_cast<std::int32_t>(at_) : -1; }

  private:
    char* const buffer_;
    const std::int64_t size_;
    std::int64_t room_;
    std::int64_t at_ = 0;
};

} // namespace vlx
