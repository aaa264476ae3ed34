// Text between two pages that nobody may touch, so that a read or write outside it ends the test.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vlx::test {

// Room for texts and sections. Where the host has no such protection it is plain memory.
class GuardedText {
  public:
    GuardedText();
    ~GuardedText();
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;

    // Places a text so that it ends at the upper guard, or begins at the lower one. The next call
    // takes the place of this one.
    char* endingAtGuard(const void* text, std::size_t size);
    char* beginningAtGuard(const void* text, std::size_t size);

  private:
    std::size_t room_;
    char* area_; // the lower guard, the room, the upper guard
};

} // namespace vlx::test
