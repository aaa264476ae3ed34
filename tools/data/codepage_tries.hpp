// The two tries of a multi-byte code page. Both are walked byte by byte from a root with one child
// for each first byte.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <vector>

#include "chars/cpfile.hpp"
#include "codepage_source.hpp"

namespace vlx::data {

// Section 2: nodes, then Unicode values.
struct UnicodeTrie {
    std::vector<TSUnicodeNode> nodes;
    std::vector<Le16> values;
};

// `cells` holds the characters of more than one byte.
UnicodeTrie buildUnicodeTrie(const std::map<Packed, std::uint16_t>& cells);

struct TypeRecord {
    std::uint32_t type = 0;
    std::uint32_t delta = 0;

    auto operator<=>(const TypeRecord&) const = default;
};

// The trie of character types: nodes, then records. Record 0 is the one of first bytes that begin
// no character.
struct TypeTrie {
    std::vector<TSTypeNode> nodes;
    std::vector<TypeRecord> records;
};

TypeTrie buildTypeTrie(const std::map<Packed, TypeRecord>& cells);

} // namespace vlx::data
