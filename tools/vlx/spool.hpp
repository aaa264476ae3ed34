// Sorted lines on disk. A file holds any number of runs one behind the other, so that a sort needs
// two open files, however many runs it makes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "record.hpp"

namespace vlx::cli {

// A file without a name: whatever ends the program, nothing is left of it.
class SpoolFile {
  public:
    explicit SpoolFile(const std::string& directory);
    ~SpoolFile();
    SpoolFile(const SpoolFile&) = delete;
    SpoolFile& operator=(const SpoolFile&) = delete;

    // At the end of the file, some time before flush() returns.
    void append(std::string_view bytes);
    void flush();
    std::uint64_t size() const { return size_; }

    // Reads bytes that were flushed.
    void readAt(std::uint64_t offset, char* buffer, std::size_t size) const;

  private:
    static constexpr std::size_t kPiece = 1 << 16;

    void write(std::string_view bytes) const;

    const std::string directory_;
    int file_ = -1;
    std::uint64_t size_ = 0;
    std::string pending_;
};

// A part of the file with records in order.
struct Run {
    std::uint64_t begin;
    std::uint64_t end;
};

void appendRecord(SpoolFile& file, const Record& record);

class RunReader {
  public:
    // The buffer is larger where a record needs it.
    RunReader(const SpoolFile& file, const Run& run, std::size_t buffer);

    // False at the end of the run; else record() is the next one, good until the next call.
    bool next();

    const Record& record() const { return record_; }
    std::uint64_t head() const { return head_; }

  private:
    bool hold(std::size_t size);

    const SpoolFile* file_;
    std::uint64_t at_; // of what is not read yet
    std::uint64_t end_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0; // of the next record
    std::size_t filled_ = 0;
    Record record_;
    std::uint64_t head_ = 0;
};

} // namespace vlx::cli
