// Where converted text goes: standard output, or a file that takes its name only once it is whole.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vlx::cli {

class OutputFile {
  public:
    // "-" is standard output. A device or a pipe is written as it is; a file is written beside the
    // one of that name, with its permissions.
    explicit OutputFile(const std::string& name);
    // Without finish() nothing is left of a file.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void write(std::string_view text);

    // Puts the file in its place.
    void finish();

    bool isTerminal() const;

  private:
    void openBeside(const std::string& name);

    std::string shown_;
    std::filesystem::path place_;     // empty for what is written as it is
    std::filesystem::path temporary_; // empty once it is gone
    int file_ = -1;
};

} // namespace vlx::cli
