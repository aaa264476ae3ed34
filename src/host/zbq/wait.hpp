// How the base services let a thread sleep until a word changes; the host's, in `posix/` and
// `windows/`.
#pragma once

#include <atomic>
#include <cstdint>

namespace zbq {

// Returns when `word` is not `value` any more and somebody woke this thread, or earlier.
void waitWhile(std::atomic<std::uint32_t>& word, std::uint32_t value);

void wakeOne(std::atomic<std::uint32_t>& word);
void wakeAll(std::atomic<std::uint32_t>& word);

} // namespace zbq
