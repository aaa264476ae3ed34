#include "batch.hpp"

#include <algorithm>
#include <new>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

Batch::Batch(std::size_t bytes) : usual_(bytes)
{
    take(usual_);
}

// Memory that is not written yet takes no room in a system that gives it out by pages.
void Batch::take(std::size_t bytes)
{
    size_ = (bytes + sizeof(Entry) - 1) / sizeof(Entry) * sizeof(Entry);
    block_.reset();
    block_.reset(new (std::nothrow) char[size_]);
    if (!block_)
        throw Failure(fmt::format("no memory for {} bytes of lines and keys; give a smaller size "
                                  "with -S",
                                  size_));
    begin();
}

void Batch::begin()
{
    records_ = block_.get();
    entries_ = behindEntries();
}

bool Batch::add(std::string_view key, const Line& line)
{
    const std::size_t size = recordSize(key, line);
    const auto room = static_cast<std::size_t>(reinterpret_cast<char*>(entries_) - records_);
    if (room < size + sizeof(Entry)) {
        if (!isEmpty())
            return false;
        take(size + sizeof(Entry));
    }
    storeRecord(records_, key, line);
    new (--entries_) Entry{headOf(key), records_};
    records_ += size;
    return true;
}

bool Batch::isLater(const Entry& one, const Entry& other)
{
    if (one.head != other.head)
        return one.head > other.head;
    const int order = recordAt(one.record).key.compare(recordAt(other.record).key);
    return order != 0 ? order > 0 : one.record > other.record;
}

void Batch::sort()
{
    std::sort(entries_, behindEntries(),
              [](const Entry& one, const Entry& other) { return isLater(one, other); });
}

void Batch::clear()
{
    if (size_ > usual_ + sizeof(Entry))
        take(usual_);
    else
        begin();
}

} // namespace vlx::cli
