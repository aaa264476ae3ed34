#include "infile.hpp"

#include <cerrno>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "failure.hpp"

namespace vlx::cli {

InputFile::InputFile(const std::string& name)
    : shown_(name == "-" ? std::string("standard input") : name),
      file_(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC))
{
    if (file_ < 0)
        throw Failure(fmt::format("cannot open {}: {}; give the name of a file that can be "
                                  "read, or - for standard input",
                                  name, systemReason()));
}

InputFile::~InputFile()
{
    if (file_ != STDIN_FILENO)
        close(file_);
}

std::size_t InputFile::read(char* buffer, std::size_t size) const
{
    for (;;) {
        const ssize_t count = ::read(file_, buffer, size);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            throw Failure(fmt::format("cannot read {}: {}; give a file that can be read", shown_,
                                      systemReason()));
    }
}

std::optional<std::uint64_t> totalSize(const std::vector<std::string>& files)
{
    std::uint64_t total = 0;
    for (const std::string& file : files) {
        struct stat status = {};
        const bool known =
            file == "-" ? fstat(STDIN_FILENO, &status) == 0 : stat(file.c_str(), &status) == 0;
        if (!known || !S_ISREG(status.st_mode))
            return std::nullopt;
        total += static_cast<std::uint64_t>(status.st_size);
    }
    return total;
}

} // namespace vlx::cli
