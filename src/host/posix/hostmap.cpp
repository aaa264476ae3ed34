// Read-only views of files on a POSIX host.
//
// The end of a view needs its length, and the library keeps only its address: so all views of the
// process are registered here. That also keeps a wrong address from taking away memory that is not
// ours.
#include "host/host.hpp"

#include <cstdlib>
#include <mutex>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/posix/hostlock.hpp"

namespace vlx::host {

namespace {

struct View {
    void* address;
    std::size_t length;
    View* next;
};

// Some thousand views are the most that a full locale directory gives: a few in each bucket.
constexpr std::size_t kBuckets = 1024;

constinit Lock viewLock;
constinit View* views[kBuckets] = {};

View*& bucketOf(const void* address)
{
    return views[reinterpret_cast<std::uintptr_t>(address) / granularity() % kBuckets];
}

void enter(View* view)
{
    const std::lock_guard guard(viewLock);
    View*& bucket = bucketOf(view->address);
    view->next = bucket;
    bucket = view;
}

// Takes a view out of the registry; null if there is none.
View* take(const void* address)
{
    const std::lock_guard guard(viewLock);
    for (View** link = &bucketOf(address); *link; link = &(*link)->next)
        if (View* const view = *link; view->address == address) {
            *link = view->next;
            return view;
        }
    return nullptr;
}

// A mapping is a descriptor of its own, so that it outlives the file as on other hosts. It is one
// higher than its descriptor, since 0 is no mapping.
int descriptorOf(Mapping mapping)
{
    return static_cast<int>(mapping - 1);
}

std::uint64_t sizeOf(int descriptor)
{
    struct stat status;
    return fstat(descriptor, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

} // namespace

Mapping createMapping(File file)
{
    const int descriptor = static_cast<int>(file);
    const int mode = fcntl(descriptor, F_GETFL);
    if (mode < 0 || (mode & O_ACCMODE) == O_WRONLY || sizeOf(descriptor) == 0)
        return 0;
    return Mapping{fcntl(descriptor, F_DUPFD_CLOEXEC, 0)} + 1;
}

bool closeMapping(Mapping mapping)
{
    return mapping != 0 && ::close(descriptorOf(mapping)) == 0;
}

std::uint32_t granularity()
{
    return static_cast<std::uint32_t>(sysconf(_SC_PAGESIZE));
}

const void* mapView(Mapping mapping, std::uint32_t offset, std::uint32_t length)
{
    // The system maps what lies behind the end of a file too, and ends the process at its first
    // read.
    const int descriptor = descriptorOf(mapping);
    if (length == 0 || std::uint64_t{offset} + length > sizeOf(descriptor))
        return nullptr;
    View* const view = static_cast<View*>(std::malloc(sizeof(View)));
    if (!view)
        return nullptr;
    void* const address = mmap(nullptr, length, PROT_READ, MAP_SHARED, descriptor, offset);
    if (address == MAP_FAILED) {
        std::free(view);
        return nullptr;
    }
    view->address = address;
    view->length = length;
    enter(view);
    return address;
}

bool unmapView(const void* view)
{
    View* const record = take(view);
    if (!record)
        return false;
    if (munmap(record->address, record->length) != 0) {
        enter(record);
        return false;
    }
    std::free(record);
    return true;
}

} // namespace vlx::host
