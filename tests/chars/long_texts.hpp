// Pages on which loops can take many characters at a time, and texts that are long enough for it:
// runs of ASCII and of other characters, of every length around a block, with broken ones between.
#pragma once

#include <string>
#include <vector>

#include "chars/situations.hpp"

namespace vlx::test {

struct LongPage {
    PageBuilder page;
    oracle::Locale reference;
    std::vector<oracle::Bytes> characters; // other than ASCII, with a Unicode value
    std::vector<TSChar16> unicode;         // their values
};

// One page for each shape that bytes can have: Latin, Cyrillic, characters of two, three and four
// bytes, stateful pages with ASCII and without, UTF-8, and UTF-8 with lengths of its own.
std::vector<LongPage>& longPages();

// A text of at most about `size` bytes that begins in a state; some are terminated.
oracle::Bytes longText(Random& random, const LongPage& on, std::int32_t state, std::int32_t size);

// 16-bit text of at most `count` values, of which a page can represent most.
std::vector<TSChar16> longUnits(Random& random, const LongPage& on, std::int32_t count);

} // namespace vlx::test
