// SYS1_ResolveProcess, SYS1_ResolveThread: data of the process and of each thread.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>
#include <thread>

#include "host/services.hpp"
#include "host/zbq/lock.hpp"
#include "host/zbq/slot.hpp"

namespace {

// What stands before the data of a descriptor, which begins right behind it.
struct alignas(std::max_align_t) Block {
    Block* next;
    SYS1_Descriptor* descriptor;
    std::thread::id creator;
    std::atomic<std::uint32_t> ready; // 1 when init is done

    void* data() { return this + 1; }
};

Block* createBlock(SYS1_Descriptor* descriptor)
{
    void* const memory = std::calloc(1, sizeof(Block) + descriptor->dataSize);
    return memory ? new (memory) Block{nullptr, descriptor, std::this_thread::get_id(), 0}
                  : nullptr;
}

Block* findBlock(Block* list, const SYS1_Descriptor* descriptor)
{
    while (list && list->descriptor != descriptor)
        list = list->next;
    return list;
}

void initialize(Block& block)
{
    if (block.descriptor->init)
        block.descriptor->init(block.data());
}

// Whoever ends the process inside an init has no whole data to end.
void terminate(Block& block)
{
    if (block.descriptor->term && block.ready.load(std::memory_order_acquire))
        block.descriptor->term(block.data());
}

constinit zbq::Mutex processLock;
constinit Block* processBlocks = nullptr; // the youngest first
constinit std::atomic<bool> processEnded = false;
constinit std::atomic<bool> endArmed = false;

// The data of one thread, in the thread's word.
struct ThreadData {
    Block* first; // the youngest
    bool ending;
};

// Ends the data, the youngest first. While its term runs a block can be resolved, but no other one
// is made, so that the end has an end.
void endThread(ThreadData* thread)
{
    thread->ending = true;
    while (Block* const block = thread->first) {
        // What the data stands on went with the data of the process.
        if (!processEnded.load(std::memory_order_acquire))
            terminate(*block);
        thread->first = block->next;
        std::free(block);
    }
    zbq::setThreadWord(nullptr);
    std::free(thread);
}

void endProcess();

// Any data is ended at the end of the process, data made during the end too.
void armEnd()
{
    if (!endArmed.exchange(true))
        std::atexit(endProcess);
}

// The data of this thread, empty at first; null if there is no memory.
ThreadData* threadData()
{
    if (void* const known = zbq::threadWord())
        return static_cast<ThreadData*>(known);
    armEnd();
    auto* const thread = static_cast<ThreadData*>(std::calloc(1, sizeof(ThreadData)));
    if (thread && !zbq::setThreadWord(thread)) {
        std::free(thread);
        return nullptr;
    }
    return thread;
}

// The thread that ends the process ends its own data first, in whatever order the system would do
// it. The blocks stay, as others may know their addresses.
void endProcess()
{
    endArmed = false;
    if (void* const thread = zbq::threadWord())
        endThread(static_cast<ThreadData*>(thread));
    processEnded.store(true, std::memory_order_release);
    processLock.lock();
    Block* block = processBlocks;
    processBlocks = nullptr;
    processLock.unlock();
    for (; block; block = block->next)
        terminate(*block);
}

// The block of a process descriptor; `created` if it is new. Null if there is no memory.
Block* processBlock(SYS1_Descriptor* descriptor, bool& created)
{
    const std::lock_guard guard(processLock);
    if (Block* const known = findBlock(processBlocks, descriptor))
        return known;
    Block* const block = createBlock(descriptor);
    if (!block)
        return nullptr;
    armEnd();
    block->next = processBlocks;
    processBlocks = block;
    created = true;
    return block;
}

} // namespace

void* SYS1_ResolveProcess(SYS1_Descriptor* descriptor, const char*, std::int32_t)
{
    const std::atomic_ref<void*> resolved(descriptor->resolved);
    if (void* const data = resolved.load(std::memory_order_acquire))
        return data;

    bool created = false;
    Block* const block = processBlock(descriptor, created);
    if (!block)
        return nullptr;
    if (created) {
        initialize(*block);
        resolved.store(block->data(), std::memory_order_release);
        block->ready.store(1, std::memory_order_release);
        zbq::wakeAll(block->ready);
    } else if (block->creator != std::this_thread::get_id()) {
        while (!block->ready.load(std::memory_order_acquire))
            zbq::waitWhile(block->ready, 0);
    }
    return block->data();
}

void* SYS1_ResolveThread(SYS1_Descriptor* descriptor, const char*, std::int32_t)
{
    ThreadData* const thread = threadData();
    if (!thread)
        return nullptr;
    if (Block* const known = findBlock(thread->first, descriptor))
        return known->data();
    Block* const block = thread->ending ? nullptr : createBlock(descriptor);
    if (!block)
        return nullptr;
    block->next = thread->first;
    thread->first = block;
    initialize(*block);
    block->ready.store(1, std::memory_order_relaxed);
    return block->data();
}

void zbq::endThreadWord(void* word)
{
    // The terms may ask for the data of their thread.
    setThreadWord(word);
    endThread(static_cast<ThreadData*>(word));
}
