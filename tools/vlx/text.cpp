#include "text.hpp"

#include <cstdio>
#include <limits>
#include <memory>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const
    {
        if (file != stdin)
            std::fclose(file);
    }
};

std::string shownName(const std::string& fileName)
{
    return fileName == "-" ? "standard input" : fileName;
}

} // namespace

PaddedText::PaddedText(const std::string& fileName)
{
    const std::unique_ptr<std::FILE, CloseFile> file(
        fileName == "-" ? stdin : std::fopen(fileName.c_str(), "rb"));
    if (!file)
        throw Failure(fmt::format("cannot open {}: {}; give the name of a file that can be read, "
                                  "or - for standard input",
                                  fileName, systemReason()));

    constexpr std::size_t piece = 1 << 20;
    constexpr std::size_t largest = std::numeric_limits<std::int32_t>::max();
    std::size_t filled = kRoom;
    for (std::size_t read = piece; read == piece; filled += read) {
        buffer_.resize(filled + piece);
        read = std::fread(buffer_.data() + filled, 1, piece, file.get());
        if (filled - kRoom > largest - piece)
            throw Failure(fmt::format("{} is longer than {} bytes, the most that the library takes "
                                      "in one call; split it",
                                      shownName(fileName), largest - piece));
    }
    if (std::ferror(file.get()))
        throw Failure(fmt::format("cannot read {}: {}; give a file that can be read",
                                  shownName(fileName), systemReason()));
    buffer_.resize(filled);
    buffer_.resize(filled + kRoom); // zeros behind the text
}

} // namespace vlx::cli
