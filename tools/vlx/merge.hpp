// Runs of sorted lines become one.
#pragma once

#include <cstddef>
#include <vector>

#include "spool.hpp"

namespace vlx::cli {

class Merger {
  public:
    // Lines of one key come from earlier runs first. The readers share `memory`, as far as it goes.
    Merger(const SpoolFile& file, const Run* begin, const Run* end, std::size_t memory);

    // The runs that can be merged at once with so much memory.
    static std::size_t mostRuns(std::size_t memory);

    // False at the end; else record() is the next line, good until the next call.
    bool next();

    const Record& record() const { return readers_[heap_.back()].record(); }

  private:
    bool isLater(std::size_t one, std::size_t other) const;

    std::vector<RunReader> readers_;
    // The runs that are not at their ends. Behind the first call, the one whose line stands is at
    // the back, and the others are a heap.
    std::vector<std::size_t> heap_;
    bool begun_ = false;
};

} // namespace vlx::cli
