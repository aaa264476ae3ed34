// Read-only views of files on a POSIX host.
//
// A mapping holds the whole file, as it was when the mapping was made, and its views are parts of
// that: a second view costs no call of the system. The end of a view needs its mapping, and the
// library keeps only its address: so all views of the process are registered here. That also keeps
// a wrong address from taking away memory that is not ours.
#include "host/host.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <mutex>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/posix/hostlock.hpp"

namespace vlx::host {

namespace {

// The memory of a mapping, until the mapping and all of its views have ended.
struct Region {
    std::byte* memory;
    std::uint64_t size;
    std::uint32_t users; // the mapping and its views
    int descriptor;      // of the mapping's own, so that it outlives the file as on other hosts
};

struct View {
    const void* address;
    Region* region;
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
    ++view->region->users;
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

// Ends a user of a region, and the region with the last one. What could be unmapped when it was
// mapped can be now: the call gets the addresses that the system gave.
void leave(Region* region)
{
    {
        const std::lock_guard guard(viewLock);
        if (--region->users != 0)
            return;
    }
    munmap(region->memory, region->size);
    std::free(region);
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
    const std::uint64_t size = sizeOf(descriptor);
    if (size == 0)
        return 0;
    auto* const region = static_cast<Region*>(std::malloc(sizeof(Region)));
    if (!region)
        return 0;
    // Refused where the file is open for writing alone.
    void* const memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED) {
        std::free(region);
        return 0;
    }
    const int own = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (own < 0) {
        munmap(memory, size);
        std::free(region);
        return 0;
    }
    *region = {static_cast<std::byte*>(memory), size, 1, own};
    return reinterpret_cast<Mapping>(region);
}

bool closeMapping(Mapping mapping)
{
    if (mapping == 0)
        return false;
    auto* const region = reinterpret_cast<Region*>(mapping);
    const bool closed = ::close(region->descriptor) == 0;
    leave(region);
    return closed;
}

std::uint32_t granularity()
{
    return static_cast<std::uint32_t>(sysconf(_SC_PAGESIZE));
}

const void* mapView(Mapping mapping, std::uint32_t offset, std::uint32_t length)
{
    auto* const region = reinterpret_cast<Region*>(mapping);
    // A file that has shrunk since would end the process at the first read behind its end.
    const std::uint64_t size = std::min(region->size, sizeOf(region->descriptor));
    if (length == 0 || offset % granularity() != 0 || std::uint64_t{offset} + length > size)
        return nullptr;
    View* const view = static_cast<View*>(std::malloc(sizeof(View)));
    if (!view)
        return nullptr;
    const void* const address = region->memory + offset;
    *view = {address, region, nullptr};
    enter(view); // from here on whoever ends a view at this address may take it
    return address;
}

bool unmapView(const void* view)
{
    View* const record = take(view);
    if (!record)
        return false;
    leave(record->region);
    std::free(record);
    return true;
}

} // namespace vlx::host
