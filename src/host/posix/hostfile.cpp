// Files of a POSIX host.
#include "host/host.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vlx::host {

namespace {

constexpr mode_t kNewFileMode = 0666;

int descriptorOf(File file)
{
    return static_cast<int>(file);
}

// O_NONBLOCK means nothing to a regular file and keeps the open of a pipe from waiting for a peer.
int openFlags(Access access)
{
    constexpr int kAlways = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    switch (access) {
    case Access::kWrite:
        return O_WRONLY | O_CREAT | O_TRUNC | kAlways;
    case Access::kUpdate:
        return O_RDWR | kAlways;
    case Access::kRead:
        break;
    }
    return O_RDONLY | kAlways;
}

OpenError errorOf(int number)
{
    switch (number) {
    case ENOENT:
    case ENOTDIR:
        return OpenError::kNotFound;
    case EACCES:
    case EPERM:
        return OpenError::kAccessDenied;
    default:
        return OpenError::kOther;
    }
}

// Directories, pipes and devices can be opened too, but are nothing to read here and there.
bool isRegular(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

File open(const char* path, Access access, OpenError& error)
{
    int descriptor;
    do
        descriptor = ::open(path, openFlags(access), kNewFileMode);
    while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) {
        error = errorOf(errno);
        return kNoFile;
    }
    if (!isRegular(descriptor)) {
        ::close(descriptor);
        error = OpenError::kOther;
        return kNoFile;
    }
    if (access == Access::kRead)
        posix_fadvise(descriptor, 0, 0, POSIX_FADV_RANDOM);
    error = OpenError::kNone;
    return descriptor;
}

bool close(File file)
{
    // An interrupted close has closed: to try again could close somebody else's file.
    return ::close(descriptorOf(file)) == 0 || errno == EINTR;
}

bool exists(const char* path)
{
    struct stat status;
    return stat(path, &status) == 0;
}

bool read(File file, void* buffer, std::uint32_t count, std::uint32_t& done)
{
    // A regular file gives less than asked for when a signal comes or the file ends; only the
    // second may be seen by the caller.
    done = 0;
    while (done < count) {
        char* const rest = static_cast<char*>(buffer) + done;
        const ssize_t got = ::read(descriptorOf(file), rest, count - done);
        if (got == 0)
            break;
        if (got > 0)
            done += static_cast<std::uint32_t>(got);
        else if (errno != EINTR)
            return false;
    }
    return true;
}

bool seek(File file, std::int32_t offset, Origin origin)
{
    const int whence = origin == Origin::kBegin     ? SEEK_SET
                       : origin == Origin::kCurrent ? SEEK_CUR
                                                    : SEEK_END;
    return lseek(descriptorOf(file), offset, whence) >= 0;
}

bool size(File file, std::uint64_t& bytes)
{
    struct stat status;
    if (fstat(descriptorOf(file), &status) != 0)
        return false;
    bytes = static_cast<std::uint64_t>(status.st_size);
    return true;
}

bool remove(const char* path)
{
    return unlink(path) == 0;
}

std::uint32_t replace(const char* source, const char* target)
{
    return std::rename(source, target) == 0 ? 0 : static_cast<std::uint32_t>(errno);
}

std::size_t stemLength(const char* path)
{
    const char* const slash = std::strrchr(path, '/');
    const char* const name = slash ? slash + 1 : path;
    const char* const dot = std::strrchr(name, '.');
    // The dot that hides a file is part of its name.
    return dot && dot != name ? static_cast<std::size_t>(dot - path) : std::strlen(path);
}

} // namespace vlx::host
