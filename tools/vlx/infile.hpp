// The texts that a command reads: files, or standard input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vlx::cli {

class InputFile {
  public:
    // "-" is standard input.
    explicit InputFile(const std::string& name);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // The name for a reader.
    const std::string& shown() const { return shown_; }

    // What is there, without waiting for more; 0 at the end.
    std::size_t read(char* buffer, std::size_t size) const;

  private:
    const std::string shown_;
    const int file_;
};

// The bytes of all files together, if they are files.
std::optional<std::uint64_t> totalSize(const std::vector<std::string>& files);

} // namespace vlx::cli
