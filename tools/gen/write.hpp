// Writes the generated tables as C++.
#pragma once

#include <string>

#include "sources.hpp"

namespace vlx::data {

std::string typeTableSource(const UnicodeTables& tables);    // src/chars/unitypes.cpp
std::string mappingTableSource(const UnicodeTables& tables); // src/mapping/unitabs.cpp

} // namespace vlx::data
