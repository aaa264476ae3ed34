// Sort keys of Unicode values.
#include "collate/key.hpp"

#include <optional>

#include "collate/streams.hpp"
#include "frame/scratch.hpp"

namespace {

using vlx::Sort;

constexpr std::uintptr_t kAlignment = 4;
constexpr std::int32_t kSeparators = 3;

// Where the streams are kept: in the caller's buffer from its first aligned byte, if it has room
// for them, and otherwise in memory of its own.
class KeyArea {
  public:
    KeyArea(char* buffer, std::int32_t size, std::int32_t count)
        : buffer_(reinterpret_cast<std::uint8_t*>(buffer))
    {
        const std::uintptr_t past = reinterpret_cast<std::uintptr_t>(buffer) % kAlignment;
        const auto skipped = static_cast<std::int32_t>(past == 0 ? 0 : kAlignment - past);
        available_ = size > skipped ? size - skipped : 0;
        const std::uint64_t need = TSSortStreams::bytesFor(static_cast<std::uint64_t>(count));
        isInBuffer_ = static_cast<std::uint64_t>(available_) >= need;
        if (isInBuffer_)
            start_ = buffer_ + skipped;
        else if (need <= INT32_MAX)
            start_ = block_.emplace(need).as<std::uint8_t>();
    }

    std::uint8_t* start() const { return start_; } // null without memory

    // Puts the key together at the beginning of the buffer, if it fits behind the step to the
    // aligned byte. No run moves up, since the streams leave room for the separators.
    std::int32_t write(const TSSortStreams& streams)
    {
        const auto total =
            static_cast<std::int32_t>(streams.level1.size() + streams.level2.size() +
                                      streams.level3.size() + streams.level4.size() + kSeparators);
        if (total > available_)
            return total;
        at_ = buffer_;
        put(streams.level1);
        *at_++ = 0;
        put(streams.level2);
        *at_++ = 0;
        put(streams.level3);
        *at_++ = 0;
        put(streams.level4);
        if (isInBuffer_)
            std::memset(at_, 0, static_cast<std::size_t>(available_ - total));
        return total;
    }

  private:
    template <class Stream>
    void put(const Stream& stream)
    {
        if (stream.size() != 0)
            std::memmove(at_, stream.data(), stream.size());
        at_ += stream.size();
    }

    std::uint8_t* const buffer_;
    std::int32_t available_;
    bool isInBuffer_;
    std::optional<vlx::Scratch> block_;
    std::uint8_t* start_ = nullptr;
    std::uint8_t* at_ = nullptr;
};

// The position of an element is the index of its last value, from 1, so that a value without
// weights leaves a gap. `push` adds an element.
template <class Push>
void walkElements(const Sort& sort, const TSChar16* values, std::int32_t count, const Push& push)
{
    const bool looksAhead = sort.hasContractions();
    vlx::SortElements found;
    for (std::int32_t i = 0; i < count; ++i) {
        std::int32_t elements = 0;
        if (looksAhead && i < count - 1 &&
            TSSortLookupPair(sort, values[i], values[i + 1], found)) {
            elements = 1;
            ++i;
        } else {
            elements = TSSortLookupChar(sort, values[i], found);
        }
        const auto position = static_cast<std::uint16_t>(i + 1);
        if (elements >= 1)
            push(found.first, position, found.directions);
        if (elements == 2)
            push(found.second, position, found.directions);
    }
}

void fillStreams(const Sort& sort, const TSChar16* values, std::int32_t count,
                 TSSortStreams& streams)
{
    if (sort.traits.forwardLevels == vlx::kAllForward) {
        walkElements(sort, values, count,
                     [&streams](const TSSortElement& element, std::uint16_t position,
                                std::uint8_t) { TSSortPushForward(streams, element, position); });
        streams.skipRuns();
    } else {
        walkElements(sort, values, count,
                     [&streams](const TSSortElement& element, std::uint16_t position,
                                std::uint8_t directions) {
                         TSSortPush(streams, element, position, directions);
                     });
        streams.close();
    }
}

} // namespace

std::int32_t TSSortBuildKey(const TSLocale& locale, char* buffer, std::int32_t size,
                            const TSChar16* values, std::int32_t count)
{
    if (count == 0) {
        if (size >= kSeparators)
            std::memset(buffer, 0, kSeparators);
        return kSeparators;
    }
    KeyArea area(buffer, size, count);
    if (!area.start())
        return -1;
    const Sort sort = vlx::sortOf(locale);
    TSSortStreams streams(area.start(), static_cast<std::uint64_t>(count));
    fillStreams(sort, values, count, streams);
    streams.level2.trim(sort.data.defaultWeight2);
    streams.level3.trim(sort.data.defaultWeight3);
    if (streams.level1.size() + streams.level2.size() + streams.level3.size() == 0)
        streams.level4.dropPositions();
    return area.write(streams);
}
