// A sort object's content, read without trust in its offsets: for the dump and the lint.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "collate/sort.hpp"
#include "content_view.hpp"

namespace vlx::data {

class SortView {
  public:
    // Nothing if the content is shorter than the header.
    static std::optional<SortView> open(const Bytes& content)
    {
        const auto header = ContentView(content).at<TSSortData>(0);
        return header ? std::optional(SortView(content, *header)) : std::nullopt;
    }

    const TSSortData& header() const { return header_; }
    std::size_t size() const { return view_.size(); }
    const TSSortPage& page(unsigned high) const { return header_.sortPages[high]; }

    // Of a table page; nothing if the record lies outside.
    std::optional<TSSortChar> record(unsigned character) const
    {
        return at<TSSortChar>(header_.charTableOffset,
                              page(character >> 8).pageBase + std::size_t{character & 0xFF});
    }
    std::optional<TSSortExpansion> expansion(std::size_t index) const
    {
        return at<TSSortExpansion>(header_.expansionTableOffset, index);
    }
    std::optional<TSSortContraction> contraction(std::size_t index) const
    {
        return at<TSSortContraction>(header_.contractionTableOffset, index);
    }
    // The first one of a character.
    std::optional<TSSortExpansion> expansionOf(unsigned character) const
    {
        for (std::size_t i = 0; i < header_.expansionCount; ++i)
            if (const auto one = expansion(i); one && one->character == character)
                return one;
        return std::nullopt;
    }

  private:
    SortView(const Bytes& content, const TSSortData& header) : view_(content), header_(header) {}

    template <class Record>
    std::optional<Record> at(std::size_t offset, std::size_t index) const
    {
        return view_.at<Record>(offset + index * sizeof(Record));
    }

    ContentView view_;
    TSSortData header_;
};

} // namespace vlx::data
