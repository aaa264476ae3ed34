#include "sorter.hpp"

#include <algorithm>
#include <utility>

#include "merge.hpp"

namespace vlx::cli {

namespace {

// Lets of records in order the first one of each key pass, or all.
class Filter {
  public:
    explicit Filter(bool unique) : unique_(unique) {}

    bool passes(const Record& record)
    {
        if (!unique_)
            return true;
        if (any_ && record.key == last_)
            return false;
        any_ = true;
        last_ = record.key;
        return true;
    }

  private:
    const bool unique_;
    bool any_ = false;
    std::string last_;
};

} // namespace

Sorter::Sorter(SorterSettings settings) : settings_(std::move(settings)), batch_(settings_.memory)
{
}

void Sorter::add(std::string_view key, const Line& line)
{
    if (batch_->add(key, line))
        return;
    spill();
    batch_->add(key, line);
}

// Makes a run of what is in memory.
void Sorter::spill()
{
    if (!file_)
        file_ = std::make_unique<SpoolFile>(settings_.directory);
    const std::uint64_t begin = file_->size();
    Filter filter(settings_.unique);
    batch_->sort();
    batch_->forEach([&](const Record& record) {
        if (filter.passes(record))
            appendRecord(*file_, record);
    });
    batch_->clear();
    runs_.push_back({begin, file_->size()});
}

// Gives the lines of runs in order.
void Sorter::merge(const Run* begin, const Run* end, Progress& progress,
                   const std::function<void(const Record&)>& receive) const
{
    Merger merger(*file_, begin, end, settings_.memory);
    Filter filter(settings_.unique);
    while (merger.next()) {
        progress.advance(recordSize(merger.record()));
        if (filter.passes(merger.record()))
            receive(merger.record());
    }
}

// Merges as many runs at a time as there may be, into a new file.
void Sorter::mergePass()
{
    const std::size_t most = Merger::mostRuns(settings_.memory);
    auto merged = std::make_unique<SpoolFile>(settings_.directory);
    std::vector<Run> runs;
    Progress progress(file_->size(), settings_.showsProgress);
    for (std::size_t i = 0; i < runs_.size(); i += most) {
        const Run* const begin = runs_.data() + i;
        const std::uint64_t start = merged->size();
        merge(begin, begin + std::min(most, runs_.size() - i), progress,
              [&](const Record& record) { appendRecord(*merged, record); });
        runs.push_back({start, merged->size()});
    }
    merged->flush();
    file_ = std::move(merged);
    runs_ = std::move(runs);
}

void Sorter::finish(const Receiver& receive)
{
    if (!file_) {
        Filter filter(settings_.unique);
        batch_->sort();
        batch_->forEach([&](const Record& record) {
            if (filter.passes(record))
                receive(record.line);
        });
        return;
    }
    if (!batch_->isEmpty())
        spill();
    batch_.reset();
    file_->flush();
    while (runs_.size() > Merger::mostRuns(settings_.memory))
        mergePass();
    Progress progress(file_->size(), settings_.showsProgress);
    merge(runs_.data(), runs_.data() + runs_.size(), progress,
          [&](const Record& record) { receive(record.line); });
}

} // namespace vlx::cli
