// The weights of a string, each level kept apart, in the order in which they are compared.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "collate/lookup.hpp"

namespace vlx {

// The weights of one level, `Width` bytes an item and the high byte of a number first, so that
// bytes compare as the items do.
//
// What is backward belongs before the items since the last forward one. Such a run is kept in the
// order in which it came, and turned round when it ends.
template <int Width>
class SortStream {
  public:
    explicit SortStream(std::uint8_t* start) : start_(start), run_(start), end_(start) {}

    std::uint8_t* place() const { return end_; }
    // Takes the item that was put at the place.
    void push(bool isForward)
    {
        if (isForward)
            close();
        end_ += Width;
        if (isForward)
            run_ = end_;
    }
    // Takes it where all items are forward: then no run is kept, until skipRun().
    void pushForward(bool isThere) { end_ += isThere ? Width : 0; }
    void skipRun() { run_ = end_; }
    void close()
    {
        for (std::uint8_t *low = run_, *high = end_ - Width; low < high;
             low += Width, high -= Width)
            std::swap_ranges(low, low + Width, high);
        run_ = end_;
    }

    const std::uint8_t* data() const { return start_; }
    std::uint32_t size() const { return static_cast<std::uint32_t>(end_ - start_); }

    // Takes single bytes away from the end.
    void trim(std::uint8_t byte) requires(Width == 1)
    {
        while (end_ != start_ && end_[-1] == byte)
            --end_;
    }

    // Leaves the second half of each item alone.
    void dropPositions() requires(Width == 4)
    {
        std::uint8_t* to = start_;
        for (const std::uint8_t* from = start_; from != end_; from += Width, to += 2)
            std::memmove(to, from + 2, 2);
        end_ = to;
    }

  private:
    std::uint8_t* const start_;
    std::uint8_t* run_; // of backward items
    std::uint8_t* end_;
};

inline void putBig16(std::uint8_t* at, std::uint16_t value)
{
    at[0] = static_cast<std::uint8_t>(value >> 8);
    at[1] = static_cast<std::uint8_t>(value);
}

} // namespace vlx

// The four streams of one string, in memory for a number of units, each of which can be an
// expansion. Behind each of the first three a byte is free.
class TSSortStreams {
  public:
    // Bytes for the streams of a string, wherever they begin.
    static constexpr std::uint64_t bytesFor(std::uint64_t units) { return 16 * units + 4; }

    TSSortStreams(std::uint8_t* area, std::uint64_t units)
        : level1(area), level2(area + 4 * units + 1), level3(area + 6 * units + 2),
          level4(area + 8 * units + 3)
    {
    }

    void skipRuns()
    {
        level1.skipRun();
        level2.skipRun();
        level3.skipRun();
        level4.skipRun();
    }
    void close()
    {
        level1.close();
        level2.close();
        level3.close();
        level4.close();
    }

    vlx::SortStream<2> level1;
    vlx::SortStream<1> level2;
    vlx::SortStream<1> level3;
    vlx::SortStream<4> level4; // position and weight
};

// Adds the weights of an element that are not 0, of a sort without a backward weight. What is not
// added was put down, and is overwritten.
inline void TSSortPushForward(TSSortStreams& streams, const TSSortElement& element,
                              std::uint16_t position)
{
    vlx::putBig16(streams.level1.place(), element.weight1);
    streams.level1.pushForward(element.weight1 != 0);
    *streams.level2.place() = element.weight2;
    streams.level2.pushForward(element.weight2 != 0);
    *streams.level3.place() = element.weight3;
    streams.level3.pushForward(element.weight3 != 0);
    if (element.weight4 != 0) [[unlikely]] {
        vlx::putBig16(streams.level4.place(), position);
        vlx::putBig16(streams.level4.place() + 2, element.weight4);
        streams.level4.pushForward(true);
    }
}

// Adds the weights of an element that are not 0.
inline void TSSortPush(TSSortStreams& streams, const TSSortElement& element, std::uint16_t position,
                       std::uint8_t directions)
{
    if (element.weight1 != 0) {
        vlx::putBig16(streams.level1.place(), element.weight1);
        streams.level1.push((directions & vlx::forwardBit(1)) != 0);
    }
    if (element.weight2 != 0) {
        *streams.level2.place() = element.weight2;
        streams.level2.push((directions & vlx::forwardBit(2)) != 0);
    }
    if (element.weight3 != 0) {
        *streams.level3.place() = element.weight3;
        streams.level3.push((directions & vlx::forwardBit(3)) != 0);
    }
    if (element.weight4 != 0) {
        vlx::putBig16(streams.level4.place(), position);
        vlx::putBig16(streams.level4.place() + 2, element.weight4);
        streams.level4.push((directions & vlx::forwardBit(4)) != 0);
    }
}
