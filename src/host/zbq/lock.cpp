// SYS1_InitializeLock, SYS1_GetLock, SYS1_ReleaseLock, SYS1_DestroyLock.
#include "host/zbq/lock.hpp"

#include <new>
#include <type_traits>

#include "host/services.hpp"

using zbq::RecursiveLock;

static_assert(sizeof(RecursiveLock) <= sizeof(SYS1_Lock::storage));
static_assert(alignof(RecursiveLock) <= alignof(SYS1_Lock));
static_assert(std::is_trivially_destructible_v<RecursiveLock>);

namespace {

RecursiveLock& lockIn(SYS1_Lock* lock)
{
    return *std::launder(reinterpret_cast<RecursiveLock*>(lock->storage));
}

} // namespace

void SYS1_InitializeLock(SYS1_Lock* lock)
{
    new (lock->storage) RecursiveLock;
}

void SYS1_GetLock(SYS1_Lock* lock)
{
    lockIn(lock).take();
}

void SYS1_ReleaseLock(SYS1_Lock* lock)
{
    lockIn(lock).give();
}

// What is left is a free lock, so that a late user of it does not wait for ever.
void SYS1_DestroyLock(SYS1_Lock* lock)
{
    new (lock->storage) RecursiveLock;
}
