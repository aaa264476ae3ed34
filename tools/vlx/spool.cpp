#include "spool.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "failure.hpp"

namespace vlx::cli {

namespace {

// Makes a file without a name. Where the system has none, one is made and its name taken away, with
// signals held back in between.
int openNameless(const std::string& directory)
{
#ifdef O_TMPFILE
    constexpr mode_t mode = 0600;
    if (const int nameless = open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
        nameless >= 0)
        return nameless;
#endif
    std::string path = directory + "/vlx-sort.XXXXXX";
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const int file = mkostemp(path.data(), O_CLOEXEC);
    const int reason = errno;
    if (file >= 0)
        unlink(path.c_str());
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = reason;
    return file;
}

} // namespace

SpoolFile::SpoolFile(const std::string& directory)
    : directory_(directory), file_(openNameless(directory))
{
    if (file_ < 0)
        throw Failure(fmt::format("cannot make a temporary file in {}: {}; set TMPDIR, or give -T, "
                                  "to a directory that can be written, or a larger -S",
                                  directory, systemReason()));
}

SpoolFile::~SpoolFile()
{
    if (file_ >= 0)
        close(file_);
}

void SpoolFile::append(std::string_view bytes)
{
    size_ += bytes.size();
    if (pending_.size() + bytes.size() > kPiece)
        flush();
    if (bytes.size() > kPiece)
        write(bytes);
    else
        pending_ += bytes;
}

void SpoolFile::flush()
{
    write(pending_);
    pending_.clear();
}

void SpoolFile::write(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(file_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            throw Failure(fmt::format("a temporary file in {} could not be written: {}; set "
                                      "TMPDIR, or give -T, to a directory with more room",
                                      directory_, systemReason()));
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void SpoolFile::readAt(std::uint64_t offset, char* buffer, std::size_t size) const
{
    while (size > 0) {
        const ssize_t count = pread(file_, buffer, size, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            throw Failure(fmt::format("a temporary file in {} could not be read: {}", directory_,
                                      count < 0 ? systemReason() : "it became shorter"));
        buffer += count;
        offset += static_cast<std::uint64_t>(count);
        size -= static_cast<std::size_t>(count);
    }
}

void appendRecord(SpoolFile& file, const Record& record)
{
    const RecordSizes sizes{static_cast<std::uint32_t>(record.key.size()),
                            static_cast<std::uint32_t>(record.line.size())};
    file.append({reinterpret_cast<const char*>(&sizes), sizeof sizes});
    file.append(record.key);
    file.append(record.line);
}

RunReader::RunReader(const SpoolFile& file, const Run& run, std::size_t buffer)
    : file_(&file), at_(run.begin), end_(run.end), buffer_(buffer)
{
}

bool RunReader::next()
{
    if (!hold(sizeof(RecordSizes)))
        return false;
    const std::size_t size = sizesAt(buffer_.data() + begin_).total();
    hold(size);
    record_ = recordAt(buffer_.data() + begin_);
    head_ = headOf(record_.key);
    begin_ += size;
    return true;
}

// Sees that so many bytes stand in the buffer; false if the run is at its end.
bool RunReader::hold(std::size_t size)
{
    if (filled_ - begin_ >= size)
        return true;
    if (begin_ == filled_ && at_ == end_)
        return false;
    std::copy(buffer_.data() + begin_, buffer_.data() + filled_, buffer_.data());
    filled_ -= begin_;
    begin_ = 0;
    if (buffer_.size() < size)
        buffer_.resize(size);
    const std::size_t got =
        static_cast<std::size_t>(std::min<std::uint64_t>(end_ - at_, buffer_.size() - filled_));
    file_->readAt(at_, buffer_.data() + filled_, got);
    at_ += got;
    filled_ += got;
    return true;
}

} // namespace vlx::cli
