#include <new>
#include <sys/mman.h>
#include <unistd.h>

#include "chars/guarded_text.hpp"

namespace vlx::test {

namespace {

constexpr std::size_t kPages = 16;

} // namespace

GuardedText::GuardedText() : room_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) * kPages)
{
    void* area = mmap(nullptr, 3 * room_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (area == MAP_FAILED)
        throw std::bad_alloc();
    area_ = static_cast<char*>(area);
    if (mprotect(area_ + room_, room_, PROT_READ | PROT_WRITE) != 0)
        throw std::bad_alloc();
}

GuardedText::~GuardedText()
{
    munmap(area_, 3 * room_);
}

} // namespace vlx::test
