// Sorts lines by their keys, in memory as long as they fit, and else by runs on disk.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "batch.hpp"
#include "progress.hpp"
#include "spool.hpp"

namespace vlx::cli {

struct SorterSettings {
    std::size_t memory;    // bytes of lines and keys that are held at a time
    std::string directory; // of temporary files
    bool unique;           // of the lines of one key, the first one alone
    bool showsProgress;
};

class Sorter {
  public:
    explicit Sorter(SorterSettings settings);

    void add(std::string_view key, const Line& line);

    // Gives the lines in order, and ends.
    using Receiver = std::function<void(std::string_view line)>;
    void finish(const Receiver& receive);

  private:
    void spill();
    void merge(const Run* begin, const Run* end, Progress& progress,
               const std::function<void(const Record&)>& receive) const;
    void mergePass();

    const SorterSettings settings_;
    std::optional<Batch> batch_;
    std::unique_ptr<SpoolFile> file_; // none as long as all is in memory
    std::vector<Run> runs_;           // earlier lines first
};

} // namespace vlx::cli
