// The lines that are in memory together, and their order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "record.hpp"

namespace vlx::cli {

// One block of memory: records grow from its front, the list of them from its back.
class Batch {
  public:
    explicit Batch(std::size_t bytes);

    bool isEmpty() const { return entries_ == behindEntries(); }

    // False if there is no room. An empty batch takes any record, in a larger block if need be.
    bool add(std::string_view key, const Line& line);

    // Into the order of the keys; lines of one key stay in the order in which they came.
    void sort();

    template <class Receiver>
    void forEach(const Receiver& receive) const
    {
        // The list grows downwards, and sort() keeps it so.
        for (const Entry* entry = behindEntries(); entry != entries_;)
            receive(recordAt((--entry)->record));
    }

    void clear();

  private:
    struct Entry {
        std::uint64_t head; // of the key
        const char* record; // later ones stand behind earlier ones
    };
    static bool isLater(const Entry& one, const Entry& other);

    void take(std::size_t bytes);
    void begin();
    Entry* behindEntries() const { return reinterpret_cast<Entry*>(block_.get() + size_); }

    const std::size_t usual_; // size of the block where no record needs a larger one
    std::unique_ptr<char[]> block_;
    std::size_t size_ = 0;
    char* records_ = nullptr; // behind the last one
    Entry* entries_ = nullptr;
};

} // namespace vlx::cli
