// The environment of the test's own process.
#pragma once

#include <string>

namespace vlx::test {

void setProcessVariable(const std::string& name, const std::string& value);
void clearProcessVariable(const std::string& name);

} // namespace vlx::test
