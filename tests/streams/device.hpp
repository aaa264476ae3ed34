// The other end of a stream: bytes to be read, or bytes that were written, moved by a script of
// results. Two devices of one seed answer the same calls alike.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "tessera.h"

namespace vlx::test {

class Device {
  public:
    // How often, of 64 answers, one is unusual: short, nothing, a failure, more than was asked.
    struct Mood {
        unsigned brief = 0;
        unsigned nothing = 0;
        unsigned ended = 0; // -1, though there may be more
        unsigned failed = 0;
        unsigned tooMany = 0;
    };

    Device(std::vector<unsigned char> content, const Mood& mood, std::uint64_t seed)
        : data(std::move(content)), mood_(mood), random_(seed)
    {
    }

    // What `io` does for a reader and for a writer.
    std::int32_t give(unsigned char* buffer, std::int32_t count);
    std::int32_t take(const unsigned char* buffer, std::int32_t count);

    std::vector<unsigned char> data; // what is left to be read
    std::vector<unsigned char> written;
    std::vector<std::int32_t> asked; // the count of every call

    // The same as functions of the library, with the device's address as context.
    static std::int32_t read(TSContext context, void* buffer, std::int32_t count);
    static std::int32_t write(TSContext context, void* buffer, std::int32_t count);
    TSContext context() { return reinterpret_cast<TSContext>(this); }

  private:
    // An unusual answer, or the number of bytes to move.
    std::int32_t answer(std::int32_t count);

    Mood mood_;
    std::mt19937_64 random_;
};

} // namespace vlx::test
