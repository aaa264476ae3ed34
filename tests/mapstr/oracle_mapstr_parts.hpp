// What the rules of the mapping oracle share.
#pragma once

#include "mapstr/oracle_mapstr.hpp"
#include "support/oracle_strings_walk.hpp"

namespace vlx::oracle {

// The values of the list, with TS_OPT_CHAR_COUNT taken away.
bool isKnown(std::uint32_t mapping);
bool isCopy(std::uint32_t mapping);
bool isCase(std::uint32_t mapping);
bool isUpper(std::uint32_t mapping);
bool usesPairs(const Language& language, std::uint32_t mapping);

// The results for one character, `second` being 0, or for two; none on a miss.
std::vector<std::uint16_t> mapPair(const Language& language, bool upper, std::uint16_t first,
                                   std::uint16_t second);

std::uint32_t byteType(const Page& page, unsigned byte);
std::uint32_t recordType(const Page& page, std::size_t record);
std::uint32_t pairValue(const Page& page, std::uint32_t character); // of a longer one; 0 if none

} // namespace vlx::oracle
