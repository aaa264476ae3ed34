#include "merge.hpp"

#include <algorithm>

namespace vlx::cli {

namespace {

constexpr std::size_t kSmallestBuffer = 1 << 14;
constexpr std::size_t kLargestBuffer = 1 << 20;
constexpr std::size_t kMostRuns = 256;

} // namespace

std::size_t Merger::mostRuns(std::size_t memory)
{
    return std::clamp<std::size_t>(memory / kSmallestBuffer, 2, kMostRuns);
}

Merger::Merger(const SpoolFile& file, const Run* begin, const Run* end, std::size_t memory)
{
    const auto runs = static_cast<std::size_t>(end - begin);
    const std::size_t buffer = std::clamp(memory / runs, kSmallestBuffer, kLargestBuffer);
    readers_.reserve(runs);
    for (const Run* run = begin; run != end; ++run)
        readers_.emplace_back(file, *run, buffer);
}

bool Merger::isLater(std::size_t one, std::size_t other) const
{
    const RunReader& first = readers_[one];
    const RunReader& second = readers_[other];
    if (first.head() != second.head())
        return first.head() > second.head();
    const int order = first.record().key.compare(second.record().key);
    return order != 0 ? order > 0 : one > other;
}

bool Merger::next()
{
    const auto later = [this](std::size_t one, std::size_t other) { return isLater(one, other); };
    if (!begun_) {
        for (std::size_t i = 0; i < readers_.size(); ++i)
            if (readers_[i].next())
                heap_.push_back(i);
        std::make_heap(heap_.begin(), heap_.end(), later);
        begun_ = true;
    } else if (readers_[heap_.back()].next()) {
        std::push_heap(heap_.begin(), heap_.end(), later);
    } else {
        heap_.pop_back();
    }
    if (heap_.empty())
        return false;
    std::pop_heap(heap_.begin(), heap_.end(), later);
    return true;
}

} // namespace vlx::cli
